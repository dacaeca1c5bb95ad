// The Standard template's general files rendered for a small model and compiled into a help file
// that is read back: the pages, the table of contents and the index inside it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contents/ContentsWriter.h"
#include "contents/HelpCompile.h"
#include "definitions/Configuration.h"
#include "host/Process.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/Keywords.h"
#include "support/ChmFile.h"
#include "support/Files.h"
#include "support/Items.h"
#include "support/RecordingHost.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"
#include "support/TestNamespaceProvider.h"
#include "template/CommonProvider.h"
#include "template/ParserTemplate.h"

namespace kv::test {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

struct HeaderPlugIn : IKVProjectPlugIn {
  ObjectPtr root = makeItem("vbProject", {{"Name", "widgets"}, {"QualifiedName", "widgets"}});
  bool SomethingToDocument() override { return true; }
  ObjectPtr RootItems(const std::string&) override { return makeCollection({{"widgets", root}}); }
};

ObjectPtr item(const std::string& type, const std::string& name, const std::string& qualifiedName) {
  auto made = makeItem(type, {{"Name", name}, {"QualifiedName", qualifiedName}});
  made->field("TaggedComments", Variant(makeCollection({})));
  return made;
}

class StandardHelpProjectTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->ProjectGroupName("Widgets Größe");
    project->OutputFolder(temp.path("out"));
    project->HelpFileName(temp.path("out/widgets.chm"));
    project->ProjectFileName(temp.path("out/widgets.hhp"));
    auto docType = std::make_shared<KVDocType>("kv.test", plugIn);
    docType->mSelectedTemplate = ConfigurationRoot::instance().Templates().Item("Standard");
    project->DocTypes->Add(docType);

    TestNamespaceProvider::registerAs("KVCpp.NamespaceProvider", provider);
    const auto header = item("Header", "widgets.h", "widgets.h");
    const auto gadget = item("Class", "Gadget", "widgets.h~Gadget");
    provider->items["KV:Header"] = [=](const ObjectPtr&) { return std::vector<ObjectPtr>{header}; };
    provider->items["KV:Class"] = [=](const ObjectPtr&) { return std::vector<ObjectPtr>{gadget}; };
    provider->items["KV:Method"] = [](const ObjectPtr&) {
      return std::vector<ObjectPtr>{item("Method", "Run", "widgets.h~Gadget~Run"),
                                    item("Method", "Stop", "widgets.h~Gadget~Stop")};
    };
    provider->items["KV:Function"] = [](const ObjectPtr&) {
      return std::vector<ObjectPtr>{item("Function", "make_gadget", "widgets.h~make_gadget")};
    };

    ContentsWriter::Install(project);
    project->NewKeywordStores();
    for (const char* page : {"index.html", "widgets.h.html", "widgets.h~Gadget.html", "widgets.h~Gadget~Run.html",
                             "widgets.h~Gadget~Stop.html", "widgets.h~make_gadget.html"})
      writeFile(
          temp.path(std::string("out/") + page),
          std::string("<html><head><title>") + page + "</title></head><body><p>Größe " + page + "</p></body></html>\n");
    project->KKeywords()->AddSimpleKeyword("Gadget", "widgets.h~Gadget.html");
    project->KKeywords()->AddHierarchicalKeyword("Gadget, Run", "widgets.h~Gadget~Run.html");
    project->KKeywords()->AddSimpleKeyword("make_gadget", "widgets.h~make_gadget.html");
  }
  void TearDown() override {
    ClassRegistry::instance().remove("KVCpp.NamespaceProvider");
    project->Terminate();
  }

  // Renders a general file of the template into the output folder as the build does.
  std::string render(const std::string& layout, const std::string& output) {
    project->CurrentDocType(project->DocTypes->Item("kv.test"));
    auto provider = std::make_shared<CommonProvider>();
    provider->KVProject(project);
    ParserTemplate parser;
    parser.DataProvider(provider);
    parser.Load(project->CurrentDocType()->Template()->Folder + layout);
    auto file = std::make_shared<FileSystem>(temp.path("out/" + output));
    file->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
    parser.ParseTo(file);
    file->Close();
    return FileSystem(temp.path("out/" + output)).ReadAll();
  }

  ScopedRecordingHost host;
  TempFolder temp;
  ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", temp.path("settings")};
  std::shared_ptr<KVProject> project;
  std::shared_ptr<HeaderPlugIn> plugIn = std::make_shared<HeaderPlugIn>();
  std::shared_ptr<TestNamespaceProvider> provider = std::make_shared<TestNamespaceProvider>();
};

TEST_F(StandardHelpProjectTest, GeneralFilesCompileIntoAHelpFileWithContentsAndIndex) {
  if (FindOnPath("chmcmd").empty()) GTEST_SKIP() << "chmcmd is not installed";
  const std::string hhc = render("help/project.hhc", "widgets.hhc");
  EXPECT_THAT(hhc, HasSubstr("<param name=\"Name\" value=\"Functions\">"));
  render("help/project.hhk", "widgets.hhk");
  const std::string hhp = render("help/project.hhp", "widgets.hhp");
  EXPECT_THAT(hhp, HasSubstr("Default topic=index.html"));

  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileOK) << project->CompilerOutput;
  ChmFile chm(temp.path("out/widgets.chm"));
  ASSERT_TRUE(chm.IsOpen());
  for (const char* page : {"/index.html", "/widgets.h~Gadget~Run.html", "/widgets.h~make_gadget.html"})
    EXPECT_THAT(chm.Files(), Contains(page));
  EXPECT_THAT(chm.Read("/widgets.h~Gadget.html"), HasSubstr("Größe"));
  const std::string contents = chm.Read("/widgets.hhc");
  for (const char* entry : {"value=\"Overview\"", "value=\"widgets.h\"", "value=\"Gadget\"", "value=\"Stop\"",
                            "value=\"widgets.h~make_gadget.html\""})
    EXPECT_THAT(contents, HasSubstr(entry));
  const std::string index = chm.Read("/widgets.hhk");
  EXPECT_THAT(index, HasSubstr("value=\"Gadget\""));
  EXPECT_THAT(index, HasSubstr("value=\"widgets.h~make_gadget.html\""));
}

TEST_F(StandardHelpProjectTest, WebContentsAndIndexUseTheTemplatesScraps) {
  const std::string toc = render("webtoc.html", "webtoc.html");
  EXPECT_THAT(toc, HasSubstr("<li><a href=\"widgets.h~Gadget~Run.html\">Run</a>"));
  EXPECT_THAT(toc, HasSubstr("<ul>"));
  const std::string index = render("webindex.html", "webindex.html");
  EXPECT_THAT(index, HasSubstr("<li><a href=\"widgets.h~Gadget.html\">Gadget</a></li>"));
  EXPECT_THAT(index, HasSubstr("<br />"));
  EXPECT_THAT(index, Not(HasSubstr("!MISSING")));
}

}  // namespace
}  // namespace kv::test
