// The page walk and the general files on a template made in a temporary folder, with items from
// a test namespace provider and pages rendered by the real common provider into real files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kavrel/IKVProjectPlugIn.h"
#include "output/PageGeneration.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "project/Keywords.h"
#include "support/Files.h"
#include "support/Items.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "support/TemplateParts.h"
#include "support/TestNamespaceProvider.h"

namespace kv::test {
namespace {

constexpr const char* kHandler = "Test.PageProvider";

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

struct RecordingPlugIn : RootPlugIn {
  std::vector<std::string> calls;
  void BeforeBuild() override { calls.push_back("BeforeBuild"); }
  void AfterBuild() override { calls.push_back("AfterBuild"); }
  void Reset() override { calls.push_back("Reset"); }
};

struct Events : KVProjectEvents {
  std::vector<std::string> status, created, errors;
  std::function<void(const std::string&)> onCreated;
  void InitialiseStatus(long index, long max) override {
    status.push_back("init " + std::to_string(index) + " " + std::to_string(max));
  }
  void UpdateStatusByIndex(long index, const std::string& caption, long progress) override {
    status.push_back(std::to_string(index) + " " + caption + " " + std::to_string(progress));
  }
  void ContentCreated(const std::string& file) override {
    created.push_back(fs::path(file).filename().string());
    if (onCreated) onCreated(file);
  }
  void BuildError(const std::string& text, KVErrorLevel) override { errors.push_back(text); }
};

constexpr const char* kItemLayout =
    "<html><head><!--KVMETADATA start--><meta name=\"id\" content=\"%%item_qualified_name%%\" />"
    "<!--KVMETADATA end--></head><body><h1>%%itemname%%</h1></body></html>";

class PageGenerationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile(temp.path("tmpl/item.html"), kItemLayout);
    writeFile(temp.path("tmpl/members.html"), "<p>Members of %%itemname%%</p>");
    writeFile(temp.path("tmpl/index.html"), "<p>Index of %%projectgroup_name%%</p>");
    writeFile(temp.path("tmpl/project.hhp"), "[OPTIONS]\nTitle=%%projectgroup_name%%\n");
    tmpl = makeTemplate("Test");
    docType = addDocType("kv.test", tmpl, plugIn);

    project->Subscribe(events);
    project->OutputFolder(temp.path("out"));
    project->CompileHelpFile(false);
    project->ProjectGroupName("Lib");
    project->Silent = true;

    TestNamespaceProvider::registerAs(kHandler, provider);
    provider->items["KV:Class"] = [this](const ObjectPtr&) { return classes; };
    provider->items["KV:Method"] = [](const ObjectPtr& parent) {
      const std::string owner = parent->get("QualifiedName").toString();
      std::vector<ObjectPtr> methods;
      for (const char* name : {"Run", "Stop"})
        methods.push_back(makeItem("Block", {{"Name", name}, {"QualifiedName", owner + "~" + name}}));
      return methods;
    };
  }
  void TearDown() override {
    ClassRegistry::instance().remove(kHandler);
    project->Terminate();
  }

  std::shared_ptr<Template> makeTemplate(const std::string& name) {
    auto t = std::make_shared<Template>();
    t->Name = name;
    t->Folder = temp.path("tmpl") + "/";
    auto cls = namespaceDef("KV:Class", kHandler, "m");
    cls->ChildNamespaceDefs.Add(namespaceDef("KV:Method", kHandler, "m"), "KV:Method");
    t->NamespaceDefs.Add(cls, "KV:Class");
    auto item = layout("item.html", "KV:Class,KV:Method");
    item->Keywords = {{"%%itemname%%", "K"}, {"%%item_qualified_name%%", "A"}};
    t->PageLayouts.Add(item, "item");
    t->PageLayouts.Add(layout("index.html", ""), "index");
    t->PageLayouts.Add(layout("project.hhp", "", "%%projectgroup_name%%.hhp"), "hhp");
    return t;
  }
  std::shared_ptr<KVDocType> addDocType(const std::string& name, const std::shared_ptr<Template>& t,
                                        const std::shared_ptr<RecordingPlugIn>& p) {
    auto d = std::make_shared<KVDocType>(name, p);
    d->mSelectedTemplate = t;
    project->DocTypes->Add(d, name);
    return d;
  }
  KVBuildResultEnum build() { return PageGeneration(*project).Build(); }
  std::string out(const std::string& name) const { return temp.path("out/" + name); }
  std::string page(const std::string& name) const { return readFile(out(name)); }

  TempFolder temp;
  ScopedRecordingHost host;
  std::shared_ptr<KVProject> project = KVProject::New();
  std::shared_ptr<Template> tmpl;
  std::shared_ptr<RecordingPlugIn> plugIn = std::make_shared<RecordingPlugIn>();
  std::shared_ptr<KVDocType> docType;
  std::shared_ptr<TestNamespaceProvider> provider = std::make_shared<TestNamespaceProvider>();
  std::shared_ptr<Events> events = std::make_shared<Events>();
  std::vector<ObjectPtr> classes{makeItem("Component", {{"Name", "A"}, {"QualifiedName", "Lib~A"}}),
                                 makeItem("Component", {{"Name", "B"}, {"QualifiedName", "Lib~B"}})};
};

TEST_F(PageGenerationTest, WritesAPagePerItemAndLayoutThenTheGeneralFiles) {
  // The keyword stores live only during the build: look at them when the general file comes.
  long kCount = -1, aCount = -1;
  events->onCreated = [&](const std::string& file) {
    if (!file.ends_with("index.html")) return;
    kCount = project->KKeywords()->Count();
    aCount = project->AKeywords()->Count();
  };
  ASSERT_EQ(build(), BuildResultCompletedOK);

  EXPECT_THAT(events->created, ElementsAre("Lib~A.html", "Lib~A~Run.html", "Lib~A~Stop.html", "Lib~B.html",
                                           "Lib~B~Run.html", "Lib~B~Stop.html", "index.html", "Lib.hhp"));
  EXPECT_THAT(page("Lib~A~Run.html"), HasSubstr("<meta name=\"id\" content=\"Lib~A~Run\" />"));
  EXPECT_THAT(page("Lib~A~Run.html"), HasSubstr("<h1>Run</h1>"));
  EXPECT_EQ(page("index.html"), "<p>Index of Lib</p>");
  EXPECT_EQ(page("Lib.hhp"), "[OPTIONS]\nTitle=Lib\n");

  // "Run" and "Stop" twice each, "A" and "B": four K keywords; six qualified names.
  EXPECT_EQ(kCount, 4);
  EXPECT_EQ(aCount, 6);
  EXPECT_EQ(project->KKeywords(), nullptr);

  // Level 0 reports the classes, level 1 the methods of each.
  EXPECT_THAT(std::vector<std::string>(events->status.begin(), events->status.begin() + 7),
              ElementsAre("init 0 2", "0  0", "0 KV:Class : A 1", "init 1 2", "1  0", "1 KV:Method : Run 1",
                          "1 KV:Method : Run 1"));
  EXPECT_THAT(plugIn->calls, ElementsAre("BeforeBuild", "AfterBuild"));
  EXPECT_TRUE(project->CancelDisabled);
}

TEST_F(PageGenerationTest, ASecondBuildResetsThePlugInsAndWritesAgain) {
  ASSERT_EQ(build(), BuildResultCompletedOK);
  fs::remove_all(out(""));
  project->Dirty(false);
  ASSERT_EQ(build(), BuildResultCompletedOK);
  EXPECT_TRUE(fs::exists(out("Lib~B~Stop.html")));
  EXPECT_FALSE(project->Dirty());
  EXPECT_THAT(plugIn->calls, ElementsAre("BeforeBuild", "AfterBuild", "Reset", "BeforeBuild", "AfterBuild"));
}

TEST_F(PageGenerationTest, APageLayoutNeedsItsMinimumOfDependants) {
  const struct {
    long minimum;
    std::string dependsOn;
    bool written;
  } cases[] = {
      {2, "KV:Method", true},   // two methods each
      {3, "KV:Method", false},  // too few
      {-1, "KV:Method", true},  // no check at all
      {3, "", true},            // no definition named
  };
  for (const auto& c : cases) {
    auto members = layout("members.html", "KV:Class", "%%item_qualified_name%%_members.html");
    members->DependsOnNamespaceName = c.dependsOn;
    members->DependsOnMinimum = c.minimum;
    tmpl->PageLayouts.Add(members, "members");
    ASSERT_EQ(build(), BuildResultCompletedOK);
    EXPECT_EQ(fs::exists(out("Lib~A_members.html")), c.written) << c.minimum << " " << c.dependsOn;
    tmpl->PageLayouts.Remove("members");
    fs::remove_all(out(""));
  }
}

TEST_F(PageGenerationTest, ALayoutServesADefinitionNamedAtTheRightEdgeOfAnEntry) {
  const struct {
    const char* list;
    bool taken;
  } cases[] = {
      {"KV:Method,KV:Class", true}, {"KV:Class,KV:Other", true},
      {"KV:BigKV:Class", true},  // only the right edge is compared
      {"KV:Classes", false},        {"KV:Method", false},
  };
  for (const auto& c : cases) {
    auto extra = layout("members.html", c.list, "%%item_qualified_name%%_extra.html");
    tmpl->PageLayouts.Add(extra, "extra");
    ASSERT_EQ(build(), BuildResultCompletedOK);
    EXPECT_EQ(fs::exists(out("Lib~A_extra.html")), c.taken) << c.list;
    tmpl->PageLayouts.Remove("extra");
    fs::remove_all(out(""));
  }
}

TEST_F(PageGenerationTest, AnOutputExtensionOtherThanHtmlReachesPagesAndGeneralFiles) {
  struct Outputs : TestNamespaceProvider {
    std::vector<std::string> core;
    void PageOutput(const std::shared_ptr<NamespaceDef>&, const ObjectPtr&, const std::string& file, bool isCore,
                    bool) override {
      if (isCore) core.push_back(fs::path(file).filename().string());
    }
  };
  auto outputs = std::make_shared<Outputs>();
  outputs->items = provider->items;
  TestNamespaceProvider::registerAs(kHandler, outputs);
  project->OutputFileExtension(".htm");
  tmpl->PageLayouts.Add(layout("members.html", "KV:Class", "%%item_qualified_name%%_P.htm"), "p");
  tmpl->PageLayouts.Add(layout("members.html", "KV:Class", "%%item_qualified_name%%_Q.htm"), "q");
  ASSERT_EQ(build(), BuildResultCompletedOK);

  EXPECT_TRUE(fs::exists(out("Lib~A~Run.htm")));
  EXPECT_TRUE(fs::exists(out("index.htm")));
  EXPECT_FALSE(fs::exists(out("index.html")));
  // Pages without a pattern are core, and so are patterns ending in "_P" and the extension.
  EXPECT_THAT(outputs->core, ::testing::Contains("Lib~A_P.htm"));
  EXPECT_THAT(outputs->core, Not(::testing::Contains("Lib~A_Q.htm")));
  EXPECT_THAT(outputs->core, ::testing::Contains("Lib~A.htm"));
}

TEST_F(PageGenerationTest, HelpProjectFilesComeFromTheDocTypeThatGivesTheHelpTemplates) {
  project->CompileHelpFile(true);
  project->HTMLHelpVersion("1");
  writeFile(temp.path("tmpl2/project.hhp"), "second\n");
  writeFile(temp.path("tmpl2/item.html"), kItemLayout);
  writeFile(temp.path("tmpl2/index.html"), "second index");
  auto second = makeTemplate("Second");
  second->Folder = temp.path("tmpl2") + "/";
  auto secondDocType = addDocType("kv.second", second, std::make_shared<RecordingPlugIn>());

  for (const auto& from : {docType, secondDocType}) {
    project->DocTypes->HelpTemplatesFrom(from);
    ASSERT_EQ(build(), BuildResultCompletedOK);
    const bool first = from == docType;
    EXPECT_EQ(page("Lib.hhp"), first ? "[OPTIONS]\nTitle=Lib\n" : "second\n");
    // Other general files come from every doc type; the last written stays.
    EXPECT_EQ(page("index.html"), "second index");
    fs::remove_all(out(""));
  }
}

TEST_F(PageGenerationTest, CancelDuringThePagesLeavesOutTheGeneralFiles) {
  events->onCreated = [&](const std::string& file) {
    if (file.ends_with("Lib~A~Run.html")) project->Cancel(true);
  };
  EXPECT_EQ(build(), BuildResultCancelled);
  EXPECT_TRUE(fs::exists(out("Lib~A~Run.html")));
  EXPECT_FALSE(fs::exists(out("Lib~B.html")));
  EXPECT_FALSE(fs::exists(out("index.html")));
  EXPECT_THAT(plugIn->calls, ElementsAre("BeforeBuild", "AfterBuild"));
  EXPECT_FALSE(project->CancelDisabled);
}

TEST_F(PageGenerationTest, ARefreshKeepsWhatLiesOutsideTheMetadataBlock) {
  ASSERT_EQ(build(), BuildResultCompletedOK);
  std::string edited = page("Lib~A.html");
  edited.replace(edited.find("<h1>A</h1>"), 10, "<h1>Hand-written title</h1>");
  edited.replace(edited.find("content=\"Lib~A\""), 15, "content=\"stale\"");
  writeFile(out("Lib~A.html"), edited);

  project->RefreshIfExists(true);
  ASSERT_EQ(build(), BuildResultCompletedOK);
  const std::string refreshed = page("Lib~A.html");
  EXPECT_THAT(refreshed, HasSubstr("<h1>Hand-written title</h1>"));
  EXPECT_THAT(refreshed, HasSubstr("content=\"Lib~A\""));
  EXPECT_THAT(refreshed, Not(HasSubstr("stale")));
  // Pages that were not touched come out as before.
  EXPECT_THAT(page("Lib~B.html"), HasSubstr("<h1>B</h1>"));
}

TEST_F(PageGenerationTest, StrippedMetadataLeavesTheMarkersOut) {
  project->StripMetaData(true);
  ASSERT_EQ(build(), BuildResultCompletedOK);
  EXPECT_EQ(page("Lib~A.html"),
            "<html><head><meta name=\"id\" content=\"Lib~A\" /></head><body><h1>A</h1></body></html>");
}

TEST_F(PageGenerationTest, AFileThatCannotBeWrittenIsReportedAndTheBuildGoesOn) {
  fs::create_directories(out("Lib~A.html"));  // a folder where the page goes
  ASSERT_EQ(build(), BuildResultCompletedOK);
  EXPECT_THAT(events->errors, ::testing::Contains(HasSubstr("Error opening " + out("Lib~A.html") + " for write.")));
  EXPECT_TRUE(fs::exists(out("Lib~B.html")));
}

}  // namespace
}  // namespace kv::test
