#include <gtest/gtest.h>

#include "kavrel/IKVProjectPlugIn.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "project/VariableValues.h"
#include "support/Items.h"
#include "support/RecordingHost.h"
#include "support/TemplateParts.h"
#include "support/TestNamespaceProvider.h"

namespace kv::test {
namespace {

constexpr const char* kHandler = "Test.AliasProvider";

class FileNameAliasesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->Subscribe(errors);
    tmpl = std::make_shared<Template>();
    auto classes = namespaceDef("KV:Class", kHandler);
    classes->ChildNamespaceDefs.Add(namespaceDef("KV:Method", kHandler), "KV:Method");
    classes->ChildNamespaceDefs.Add(namespaceDef("KV:Hidden", kHandler, "x"), "KV:Hidden");
    tmpl->NamespaceDefs.Add(classes, "KV:Class");
    tmpl->PageLayouts.Add(layout("item.html", "KV:Class,KV:Method,KV:Hidden"), "item");
    tmpl->PageLayouts.Add(layout("members.html", "KV:Class", "%%itemqualifiedname%%_members.html"), "members");
    tmpl->PageLayouts.Add(layout("index.html", ""), "index");
    tmpl->PageLayouts.Add(layout("project.hhp", "", "%%projectgroup_name%%.hhp"), "hhp");
    auto docType = std::make_shared<KVDocType>("kv.test", plugIn);
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);

    TestNamespaceProvider::registerAs(kHandler, provider);
    const auto a = makeItem("Component", {{"Name", "A"}, {"QualifiedName", "Lib~A"}});
    const auto b = makeItem("Component", {{"Name", "B"}, {"QualifiedName", "Lib~B"}});
    provider->items["KV:Class"] = [a, b](const ObjectPtr&) { return std::vector<ObjectPtr>{a, b}; };
    provider->items["KV:Method"] = [](const ObjectPtr& parent) {
      const std::string owner = parent->get("QualifiedName").toString();
      return std::vector<ObjectPtr>{makeItem("Block", {{"QualifiedName", owner + "~Run"}})};
    };
    provider->items["KV:Hidden"] = [](const ObjectPtr&) { return std::vector<ObjectPtr>{makeItem("Block")}; };
    project->ProjectGroupName("Lib Help");
    project->UseFileNameAliases(true);
  }
  void TearDown() override {
    ClassRegistry::instance().remove(kHandler);
    project->Terminate();
  }

  ScopedRecordingHost host;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<Template> tmpl;
  std::shared_ptr<RootPlugIn> plugIn = std::make_shared<RootPlugIn>();
  std::shared_ptr<TestNamespaceProvider> provider = std::make_shared<TestNamespaceProvider>();
  std::shared_ptr<BuildErrors> errors = std::make_shared<BuildErrors>();
};

TEST_F(FileNameAliasesTest, EveryPageNameGetsANumberInWalkingOrder) {
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  const struct {
    const char* page;
    const char* alias;
  } cases[] = {
      {"Lib~A.html", "topic1.html"},
      {"Lib~A_members.html", "topic2.html"},
      {"Lib~A~Run.html", "topic3.html"},
      {"Lib~B.html", "topic4.html"},
      {"Lib~B_members.html", "topic5.html"},
      {"Lib~B~Run.html", "topic6.html"},
      {"index.html", "topic7.html"},
      // Help project files keep their names, and so does any page that has no alias.
      {"LibHelp.hhp", "LibHelp.hhp"},
      {"Other.html", "Other.html"},
  };
  for (const auto& c : cases) EXPECT_EQ(project->GetFileNameAlias(c.page), c.alias) << c.page;
  for (const auto& request : provider->requests) EXPECT_EQ(request, "forpagegeneration=true");

  project->UseFileNameAliases(false);
  EXPECT_EQ(project->GetFileNameAlias("Lib~A.html"), "Lib~A.html");
}

TEST_F(FileNameAliasesTest, ADuplicateNameKeepsItsFirstNumberAndUsesOneUp) {
  provider->items["KV:Method"] = [](const ObjectPtr&) {
    return std::vector<ObjectPtr>{makeItem("Block", {{"QualifiedName", "Lib~Same"}})};
  };
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  EXPECT_EQ(project->GetFileNameAlias("Lib~Same.html"), "topic3.html");
  EXPECT_EQ(project->GetFileNameAlias("Lib~B.html"), "topic4.html");
  EXPECT_EQ(project->GetFileNameAlias("index.html"), "topic7.html");
}

TEST_F(FileNameAliasesTest, APassStartsCountingAgainAndCancelStopsIt) {
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  provider->items["KV:Class"] = [](const ObjectPtr&) {
    return std::vector<ObjectPtr>{makeItem("Component", {{"QualifiedName", "Lib~Z"}})};
  };
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  EXPECT_EQ(project->GetFileNameAlias("Lib~Z.html"), "topic1.html");
  EXPECT_EQ(project->GetFileNameAlias("Lib~A.html"), "Lib~A.html");

  project->Cancel(true);
  EXPECT_FALSE(project->CreateAllFileNameAliases());
}

TEST_F(FileNameAliasesTest, DefaultTopicFollowsItsAlias) {
  project->DefaultTopic("Lib~B.html");
  EXPECT_EQ(project->DefaultTopic(), "Lib~B.html") << "no alias pass yet";
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  EXPECT_EQ(project->DefaultTopic(), "topic4.html");
  project->DefaultTopic("intro.html");
  EXPECT_EQ(project->DefaultTopic(), "intro.html");
  project->DefaultTopic("Lib~B.html");
  project->UseFileNameAliases(false);
  EXPECT_EQ(project->DefaultTopic(), "Lib~B.html");
}

TEST_F(FileNameAliasesTest, LinksToAliasedPagesAreRewritten) {
  project->OutputFolder("/out/help");
  EXPECT_FALSE(project->LookForFileNameAliases("<a href=\"Lib~A.html\">A</a>")) << "no alias pass yet";
  ASSERT_TRUE(project->CreateAllFileNameAliases());
  const std::string page =
      "<html><head><title>T</title></head><body>"
      "<p><A HREF=\"Lib~A.html#remarks\">a</A> <a href=\"Other.html\">o</a> <a href=\"mailto:a@b.c\">m</a>"
      "<a href=\"Lib%7EB.html\">b</a><a href=\"file:///out/help/Lib~A_members.html\">ms</a>"
      "<a href=\"https://example.com/Lib~A.html\">w</a><a name=\"top\">t</a></p></body></html>";
  const auto rewritten = project->LookForFileNameAliases(page);
  ASSERT_TRUE(rewritten);
  for (const char* kept : {"href=\"Other.html\"", "href=\"mailto:a@b.c\"", "href=\"https://example.com/Lib~A.html\"",
                           "name=\"top\"", "<title>T</title>"})
    EXPECT_NE(rewritten->find(kept), std::string::npos) << kept;
  for (const char* aliased : {"href=\"topic1.html\">a<", "href=\"topic4.html\">b<", "href=\"topic2.html\">ms<"})
    EXPECT_NE(rewritten->find(aliased), std::string::npos) << aliased;
  EXPECT_EQ(rewritten->find("remarks"), std::string::npos);

  EXPECT_FALSE(project->LookForFileNameAliases("<p><a href=\"Other.html\">o</a><a href=\"mailto:x\">m</a></p>"));
}

TEST_F(FileNameAliasesTest, LinkAnalysis) {
  const struct {
    const char* url;
    bool isFile;
    const char* fileName;
  } cases[] = {
      {"page.html", true, "page.html"},
      {"sub/page.html", true, "sub/page.html"},
      {"FILE://host/a%20b.html", true, "host/a b.html"},
      {"file:///out/a.html", true, "out/a.html"},
      {"sub\\page.html", true, "sub/page.html"},
      {"mailto:someone", false, "mailto:someone"},
      {"ms-its:help.chm::/a.html", false, "ms-its:help.chm::/a.html"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(KVProject::IsFileURL(c.url), c.isFile) << c.url;
    if (c.isFile) {
      EXPECT_EQ(KVProject::FileURLToFileName(c.url), c.fileName) << c.url;
    }
  }
  project->OutputFolder("/Out");
  EXPECT_EQ(project->GetLocalFileName("file:///out/a.html"), "a.html");
  EXPECT_EQ(project->GetLocalFileName("mailto:someone"), "mailto:someone");
}

TEST_F(FileNameAliasesTest, RemoveEntitiesDecodesAgainFromTheStart) {
  const struct {
    const char* source;
    std::string decoded;
  } cases[] = {
      {"a%20b", "a b"},
      {"%2541", "A"},  // "%25" gives "%", and "%41" then gives "A"
      {"%7e%7E", "~~"},
      {"100%zz", std::string("100\0", 4)},
      {"no escapes", "no escapes"},
  };
  for (const auto& c : cases) EXPECT_EQ(KVProject::RemoveEntities(c.source), c.decoded) << c.source;
  EXPECT_EQ(KVProject::RemoveEntities("50%"), std::string("50\0", 3));
}

TEST_F(FileNameAliasesTest, PageNamesComeFromPatternsAndAreMadeValid) {
  CommonProvider ddp;
  ddp.KVProject(project);
  const auto def = tmpl->NamespaceDefs.Item(1);
  const auto item = makeItem("Component", {{"Name", "A"}, {"QualifiedName", "Lib~A<T>"}});
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("item"), def, item, ddp), "Lib~A_T_.html");
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("members"), def, item, ddp),
            "Lib~A_T__members.html");
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("index"), def, item, ddp), "index.html");
  // A definition's pattern names its item pages, and general files named for that definition too.
  def->OutputFileNamePattern = "%%itemname%%.html";
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("item"), def, item, ddp), "A.html");
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("index"), def, item, ddp), "A.html");
  def->OutputFileNamePattern.clear();
  project->OutputFileExtension(".htm");
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("index"), def, item, ddp), "index.htm");
  EXPECT_EQ(project->GetPageLayoutFileName(*tmpl->PageLayouts.Item("members"), def, item, ddp), "Lib~A_T__members.htm");
}

TEST_F(FileNameAliasesTest, LayoutsServeTheRightEdgeOfTheFirstMatch) {
  const struct {
    const char* list;
    const char* name;
    bool serves;
  } cases[] = {
      {"KV:Class", "KV:Class", true},    {"KV:Header,kv:class", "KV:Class", true},  {"KV:BigClass", "Class", true},
      {"KV:Classes", "KV:Class", false}, {"KV:ClassX,KV:Class", "KV:Class", false}, {"", "KV:Class", false},
  };
  for (const auto& c : cases) EXPECT_EQ(KVProject::LayoutListsNamespace(c.list, c.name), c.serves) << c.list;
}

TEST_F(FileNameAliasesTest, TheLongPathWarningComesOncePerBuild) {
  const std::string longName = "/out/" + std::string(260, 'a') + ".html";
  project->CheckOutputPathLength("/out/short.html");
  EXPECT_TRUE(errors->texts.empty());
  project->CheckOutputPathLength(longName);
  ASSERT_EQ(errors->texts.size(), 2u) << "the path warning and the help compiler warning";
  EXPECT_NE(errors->texts[0].find("Output of the file [" + std::string(260, 'a') + ".html] will fail."),
            std::string::npos);
  project->CheckOutputPathLength(longName);
  EXPECT_EQ(errors->texts.size(), 2u);

  project->ResetPathLengthWarning();
  project->CompileHelpFile(false);
  project->CheckOutputPathLength(longName);
  EXPECT_EQ(errors->texts.size(), 3u);
}

TEST_F(FileNameAliasesTest, NewItems) {
  auto comments = [](std::vector<std::pair<std::string, ObjectPtr>> entries) { return makeCollection(entries); };
  project->CreateVariableValue("IsNewDate", "2026-06-01");
  const auto marked = makeItem("Block", {{"IsNew", true}});
  const auto tagged = makeItem("Block", {{"TaggedComments", comments({{"##ISNEW", makeItem("TaggedComment")}})}});
  const auto expired = makeItem(
      "Block",
      {{"TaggedComments", comments({{"##ISNEW", makeItem("TaggedComment", {{"Description", "2026-01-15"}})}})}});
  const auto recent = makeItem(
      "Block",
      {{"TaggedComments", comments({{"##ISNEW", makeItem("TaggedComment", {{"Description", "2026-07-01"}})}})}});
  const auto module =
      makeItem("Component", {{"TaggedComments", comments({{"##MODULE_ISNEW", makeItem("TaggedComment")}})}});
  const auto moduleTagOnBlock =
      makeItem("Block", {{"TaggedComments", comments({{"##MODULE_ISNEW", makeItem("TaggedComment")}})}});
  const auto member = makeItem("Block", {{"Component", module}});
  const auto plain = makeItem("Block", {{"Component", makeItem("Component")}});
  const struct {
    const char* what;
    ObjectPtr item;
    bool isNew;
  } cases[] = {
      {"marked", marked, true},
      {"tagged", tagged, true},
      {"expired", expired, false},
      {"recent", recent, true},
      {"module", module, true},
      {"module tag on a block", moduleTagOnBlock, false},
      {"member of new module", member, true},
      {"plain", plain, false},
      {"bare", makeItem("Block"), false},
  };
  for (const auto& c : cases) EXPECT_EQ(project->IsItemNew(c.item), c.isNew) << c.what;

  NodeDef node;
  node.NodeType = NodeDef::ItemsNode;
  EXPECT_TRUE(project->GetIsNew(node, marked));
  EXPECT_FALSE(project->GetIsNew(node, plain));
  node.NodeType = NodeDef::StaticNode;
  EXPECT_FALSE(project->GetIsNew(node, marked));
  node.MarkAsNew = true;
  EXPECT_TRUE(project->GetIsNew(node, plain));
}

TEST_F(FileNameAliasesTest, ShortHelpFileNameIsComputedOnce) {
  project->HelpFileName("/out/first.chm");
  EXPECT_EQ(project->Short_HelpFileName(), "first.chm");
  project->HelpFileName("/out/second.chm");
  EXPECT_EQ(project->Short_HelpFileName(), "first.chm");
}

}  // namespace
}  // namespace kv::test
