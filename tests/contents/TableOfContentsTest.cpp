#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contents/TableOfContents.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/XmlDocument.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "support/Files.h"
#include "support/Items.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "support/TemplateParts.h"
#include "support/TestNamespaceProvider.h"

namespace kv::test {
namespace {

constexpr const char* kHandler = "Test.TOCProvider";

using ::testing::HasSubstr;
using ::testing::Not;

ObjectPtr component(const std::string& name, bool excluded = false) {
  auto item = makeItem("Component", {{"Name", name}, {"QualifiedName", "Lib~" + name}});
  item->field("TaggedComments",
              Variant(excluded ? makeCollection({{"##EXCLUDE_TOC", makeItem("TaggedComment")}}) : makeCollection({})));
  return item;
}

// Classes A (two methods, Ä's name non-ASCII) and B (no methods), each with a page; a static
// overview node first.
constexpr const char* kDefinition = R"(<TOC Name="Test">
  <NodeDef Name="Overview" Caption="Overview" FileName="index.html" IsDefaultTopic="True"/>
  <NodeDef Name="Classes" NodeType="1" NamespaceName="KV:Class" Caption="%%itemname%%" HasPage="True"/>
  <NodeDef Name="Methods" Parent="Classes" NodeType="1" NamespaceName="KV:Method" Caption="%%itemname%%"
           HasPage="True"/>
</TOC>)";

class TableOfContentsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->Subscribe(errors);
    project->OutputFolder(temp.path("out"));
    writeFile(temp.path("out/index.html"), "<html></html>");
    tmpl = std::make_shared<Template>();
    tmpl->Folder = temp.path("template") + "/";
    auto classDef = namespaceDef("KV:Class", kHandler);
    classDef->ChildNamespaceDefs.Add(namespaceDef("KV:Method", kHandler), "KV:Method");
    tmpl->NamespaceDefs.Add(classDef, "KV:Class");
    auto docType = std::make_shared<KVDocType>("kv.test", plugIn);
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);
    useDefinition(kDefinition);

    TestNamespaceProvider::registerAs(kHandler, provider);
    provider->items["KV:Class"] = [this](const ObjectPtr&) { return classes; };
    provider->items["KV:Method"] = [](const ObjectPtr& parent) {
      std::vector<ObjectPtr> methods;
      if (parent->get("Name").toString() == "Ä")
        for (const char* name : {"Open", "Close"})
          methods.push_back(makeItem("Block", {{"Name", name}, {"QualifiedName", std::string("Lib~Ä~") + name}}));
      return methods;
    };
  }
  void TearDown() override {
    ClassRegistry::instance().remove(kHandler);
    project->Terminate();
  }

  void useDefinition(const std::string& xml) {
    XMLDocument doc;
    ASSERT_TRUE(doc.LoadXML(xml)) << doc.ParseError();
    auto definition = std::make_shared<TOCDefinition>();
    definition->Load(doc.RootNode());
    const auto docType = project->DocTypes->Item("kv.test");
    docType->TOCSource->Source(tsCustom);
    docType->TOCSource->CustomTOCDefinition(definition);
  }
  // The table of contents as the project's markup asks for it.
  std::string build() {
    auto file = std::make_shared<FileSystem>(temp.path("out/toc.txt"));
    file->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
    TableOfContents(*project).BuildTOC(file);
    file->Close();
    return FileSystem(temp.path("out/toc.txt")).ReadAll();
  }

  ScopedRecordingHost host;
  TempFolder temp;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<Template> tmpl;
  std::vector<ObjectPtr> classes{component("Ä"), component("B")};
  std::shared_ptr<RootPlugIn> plugIn = std::make_shared<RootPlugIn>();
  std::shared_ptr<TestNamespaceProvider> provider = std::make_shared<TestNamespaceProvider>();
  std::shared_ptr<BuildErrors> errors = std::make_shared<BuildErrors>();
};

std::string sitemapEntry(const std::string& name, const std::string& local) {
  return "<LI> <OBJECT type=\"text/sitemap\">\n        <param name=\"Name\" value=\"" + name +
         "\">\n        <param name=\"Local\" value=\"" + local + "\">\n     </OBJECT>\n";
}

TEST_F(TableOfContentsTest, SitemapNestsItemsInBooks) {
  EXPECT_EQ(build(), sitemapEntry("Overview", "index.html") + sitemapEntry("Ä", "Lib~Ä.html") + "<UL>\n" +
                         sitemapEntry("Open", "Lib~Ä~Open.html") + sitemapEntry("Close", "Lib~Ä~Close.html") +
                         "</UL>\n" + sitemapEntry("B", "Lib~B.html") + "<UL>\n</UL>\n");
  EXPECT_EQ(project->DefaultTopic(), "index.html");
  EXPECT_TRUE(errors->texts.empty());
  for (const auto& request : provider->requests) EXPECT_EQ(request, "fortoc=true");
}

TEST_F(TableOfContentsTest, Help2NodesStayOpenOverTheirChildren) {
  project->HTMLHelpVersion("2");
  project->TOCBookPrefix.clear();
  project->TOCBookSuffix.clear();
  EXPECT_EQ(build(),
            "<HelpTOCNode Title = \"Overview\" Url = \"index.html\">\n</HelpTOCNode>\n"
            "<HelpTOCNode Title = \"Ä\" Url = \"Lib~Ä.html\">\n"
            "<HelpTOCNode Title = \"Open\" Url = \"Lib~Ä~Open.html\">\n</HelpTOCNode>\n"
            "<HelpTOCNode Title = \"Close\" Url = \"Lib~Ä~Close.html\">\n</HelpTOCNode>\n</HelpTOCNode>\n"
            "<HelpTOCNode Title = \"B\" Url = \"Lib~B.html\">\n</HelpTOCNode>\n");
}

TEST_F(TableOfContentsTest, WebFormWritesEachNodeThroughItsScrap) {
  writeFile(temp.path("template/HTMLScraps/_WEB_NODE_PAGE.html"),
            "<li><a href=\"%%nodetarget%%\">%%nodecaption%%</a> %%isnew%% %%icon%% %%itemname%%</li>");
  writeFile(temp.path("template/HTMLScraps/_WEB_NODE_TITLE.html"), "<li>%%nodecaption%% at %%nodetarget%%</li>");
  useDefinition(R"(<TOC Name="Web">
    <NodeDef Name="Title" Caption="Classes" MarkAsNew="True" HasIcon="True" IconNumber="5"/>
    <NodeDef Name="Classes" Parent="Title" NodeType="1" NamespaceName="KV:Class" Caption="%%itemname%%" HasPage="True"/>
  </TOC>)");
  project->TOCBookPrefix = "<ul>";
  project->TOCBookSuffix = "</ul>";
  project->TOCNodeScrap = "_WEB_NODE";
  project->CurrentDocType(project->DocTypes->Item("kv.test"));
  EXPECT_EQ(build(),
            "<li>Classes at </li>\n<ul>\n<li><a href=\"Lib~Ä.html\">Ä</a> False -1 Ä</li>\n"
            "<li><a href=\"Lib~B.html\">B</a> False -1 B</li>\n</ul>\n");
  // Help 2 links a node without a page to a placeholder.
  project->HTMLHelpVersion("2");
  EXPECT_THAT(build(), HasSubstr("<li>Classes at ~~Empty~~.htm</li>"));
}

TEST_F(TableOfContentsTest, ExcludedItemWritesNoEntryButItsSuffix) {
  classes = {component("Ä", true), component("B")};
  project->TOCSuffix = "<!--end-->";
  // Every node writes the suffix, the expansion of a node into its items too.
  const std::string end = "<!--end-->\n";
  EXPECT_EQ(build(), sitemapEntry("Overview", "index.html") + end + end + sitemapEntry("B", "Lib~B.html") + "<UL>\n" +
                         end + "</UL>\n" + end + end);
}

TEST_F(TableOfContentsTest, BranchBelowItsDependencyMinimumVanishes) {
  useDefinition(R"(<TOC Name="Deps">
    <NodeDef Name="Classes" NodeType="1" NamespaceName="KV:Class" Caption="%%itemname%%" HasPage="True"/>
    <NodeDef Name="Methods" Parent="Classes" Caption="Methods" DependsOnNamespaceName="KV:Method"
             DependsOnParameters="public=true" DependsOnMinimum="1"/>
    <NodeDef Name="Method" Parent="Methods" NodeType="1" NamespaceName="KV:Method" Caption="%%itemname%%"/>
  </TOC>)");
  const std::string toc = build();
  EXPECT_THAT(toc, HasSubstr(sitemapEntry("Ä", "Lib~Ä.html") + "<UL>\n<LI> <OBJECT type=\"text/sitemap\">\n"
                                                               "        <param name=\"Name\" value=\"Methods\">\n"));
  EXPECT_THAT(toc, HasSubstr(sitemapEntry("B", "Lib~B.html") + "<UL>\n</UL>\n"));
  EXPECT_THAT(toc, HasSubstr("value=\"Close\""));
  // A node without a page writes no "Local".
  EXPECT_THAT(toc, Not(HasSubstr("Lib~Ä~Close")));
  EXPECT_THAT(provider->requests, ::testing::Contains("public=true,fortoc=true"));
}

TEST_F(TableOfContentsTest, MergedTableDependsOnTheOutputForm) {
  useDefinition(R"(<TOC Name="Merged"><NodeDef Name="Other" NodeType="4" FileName="other"/></TOC>)");
  const struct {
    const char* version;
    bool compile;
    const char* expected;
  } cases[] = {
      {"1", false, ""},
      {"1", true,
       "</UL>\n<OBJECT type=\"text/sitemap\">\n<param name=\"Merge\" value=\"other.chm::/other.hhc\">\n</OBJECT>\n"
       "<UL>\n"},
      {"2", false, "<HelpTOCNode NodeType=\"TOC\" Url=\"other\"/>\n"},
  };
  for (const auto& c : cases) {
    project->HTMLHelpVersion(c.version);
    project->CompileHelpFile(c.compile);
    EXPECT_EQ(build(), c.expected) << c.version << c.compile;
  }
}

TEST_F(TableOfContentsTest, StaticNodeToAMissingFileIsReportedAndWritten) {
  useDefinition(R"(<TOC Name="Static">
    <NodeDef Name="Guide" Caption="Guide" FileName="guide.html"/>
    <NodeDef Name="Site" Caption="Site" FileName="https://example.org/"/>
  </TOC>)");
  const std::string toc = build();
  EXPECT_THAT(toc, HasSubstr(sitemapEntry("Guide", "guide.html")));
  EXPECT_THAT(toc, HasSubstr(sitemapEntry("Site", "https://example.org/")));
  ASSERT_EQ(errors->texts.size(), 1u);
  EXPECT_THAT(errors->texts[0], HasSubstr("A Table of Contents Node 'Guide' points to a file that is not generated"));
}

}  // namespace
}  // namespace kv::test
