#include <gtest/gtest.h>

#include "definitions/Configuration.h"
#include "kavrel/XmlDocument.h"
#include "support/TestConfiguration.h"

namespace kv {
namespace {

const char* kMain = R"(<?xml version="1.0" encoding="UTF-8"?>
<KavrelConfiguration>
  <DocType Name="kv.test" Description="Test sources" PlugIn="KVTest.ProjectPlugIn"/>
  <DocType Name="KV.TEST" Description="the same key again" PlugIn="KVTest.ProjectPlugIn"/>
  <CodeLanguage Name="C++"/>
  <CodeLanguage Name="Pascal" On="False"/>
  <TaggedComment TagIdentifier="Summary" Caption="Summary" WrapType="2" XMLTagNames="summary,brief"
                 AppendToDescription="True" CommentFlags="h"/>
  <ModelCommentProfile Name="Collections">
    <ModelComment ItemKind="KV:Method" ItemName="Add*" TagIdentifier="Summary" OnlyIfBlank="True">Adds an item.</ModelComment>
  </ModelCommentProfile>
  <FileNames InvalidCharacters="/:*" Replacement="-"/>
</KavrelConfiguration>)";

const char* kTemplate = R"(<?xml version="1.0" encoding="UTF-8"?>
<Template Name="Plain" Description="A plain template" SingleItemTOC="One" MultipleItemTOC="Many">
  <DocType Name="kv.test"/>
  <DocType Name="kv.unknown"/>
  <ItemType Name="source"/>
  <Variable Name="Copyright" Default="(c) Somebody"/>
  <Variable Name="Accent" Default="255" Type="4"/>
  <DiagramStyle objFillColor="#FF8000" BorderWidth="2" UseDropShadow="True"/>
  <Namespace Name="KV:Module" DisplayName="Modules" Handler="KVTest.Provider" ChildKinds="mi" CoreDefinition="True">
    <Namespace Name="KV:Method" Selectable="True" DefaultInclude="False"/>
    <Namespace Name="KV:Property" Selectable="True">
      <Namespace Name="KV:Method"/>
    </Namespace>
  </Namespace>
  <PageLayout Name="Item" File="item.html" Namespaces="KV:Module,KV:Method" DependsOnNamespaceName="KV:Method"
              DependsOnMinimum="2">
    <Keyword Kind="A">%%itemname%%</Keyword>
    <Keyword>$$METHODS$$</Keyword>
  </PageLayout>
  <PageLayout File="index.html"/>
  <TOC Name="One">
    <NodeDef Name="Top" Caption="Contents" FileName="index.html" HasPage="True"/>
    <NodeDef Name="Items" Parent="Top" NodeType="1" NamespaceName="KV:Module"/>
  </TOC>
  <TOC Name="Many"/>
</Template>)";

class ConfigurationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    config.write("kavrel.xml", kMain);
    config.write("Templates/Plain/template.xml", kTemplate);
    config.write("Templates/Plain/Phrases/English.xml",
                 R"(<Phrases><Phrase Key="METHODS">Methods</Phrase><Phrase Key="Größe">Größe</Phrase></Phrases>)");
    config.write("Templates/Plain/Phrases/German.xml", R"(<Phrases><Phrase Key="METHODS">Methoden</Phrase></Phrases>)");
    config.write("Templates/Plain/HTMLScraps/banner.html", "<div>banner</div>");
    config.write("Templates/Broken/template.xml", "<Template Name=\"Broken\">");
    config.write("Templates/NotATemplate/readme.txt", "no definition here");
  }
  test::TestConfiguration config;
  ConfigurationRoot& root = ConfigurationRoot::instance();
};

TEST_F(ConfigurationTest, ReadsDocTypesAndTheInstallationLists) {
  ASSERT_EQ(root.DocTypeDefs().size(), 1u);
  EXPECT_EQ(root.DocTypeDefs()[0]->Name, "kv.test");
  EXPECT_EQ(root.DocTypeDefs()[0]->Description, "Test sources");
  EXPECT_EQ(root.DocTypeDefs()[0]->PlugInProgID, "KVTest.ProjectPlugIn");

  EXPECT_TRUE(root.CodeLanguages().Item("c++")->SwitchedOn);
  EXPECT_FALSE(root.CodeLanguages().Item("Pascal")->SwitchedOn);

  const auto& summary = root.TaggedCommentDefs().Item("summary");
  EXPECT_EQ(summary->WrapType, 2);
  EXPECT_EQ(summary->XMLTagNames, "summary,brief");
  EXPECT_TRUE(summary->AppendToDescription);
  EXPECT_EQ(summary->DisplayName, "Summary");

  const auto& profile = root.ModelCommentProfiles().Item("Collections");
  ASSERT_EQ(profile->Count(), 1);
  EXPECT_EQ(profile->Item(1)->NamespaceName(), "KV:Method");
  EXPECT_EQ(profile->Item(1)->Text, "Adds an item.");
  EXPECT_TRUE(profile->Item(1)->OnlyIfBlank);

  EXPECT_EQ(root.ConfigPath(), config.folder() + "/");
  EXPECT_EQ(root.ApplicationPath(), config.folder() + "/");
  EXPECT_EQ(root.ValidFileName("a/b:c*d\te"), "a-b-c-d-e");
}

TEST_F(ConfigurationTest, ReadsTemplatesWithTheirDefinitions) {
  ASSERT_EQ(root.Templates().Count(), 1);
  const auto& tmpl = root.Templates().Item("plain");
  EXPECT_EQ(tmpl->Folder, config.path("Templates/Plain/"));
  EXPECT_EQ(tmpl->DefinitionFileName, config.path("Templates/Plain/template.xml"));
  ASSERT_EQ(tmpl->DocTypeDefs.size(), 1u);
  EXPECT_EQ(tmpl->DocTypeDefs[0], root.DocTypeDefs()[0]);
  EXPECT_TRUE(tmpl->SupportsItemType("Source"));
  EXPECT_FALSE(tmpl->SupportsItemType("binary"));
  ASSERT_EQ(tmpl->VariableDefs.size(), 2u);
  EXPECT_EQ(tmpl->VariableDefs[1].Type, 4);
  EXPECT_EQ(tmpl->objFillColor, 0x0080FF);  // red in the lowest byte
  EXPECT_EQ(tmpl->BorderWidth, 2);
  EXPECT_TRUE(tmpl->UseDropShadow);

  ASSERT_EQ(tmpl->NamespaceDefs.Count(), 1);
  const auto& module = tmpl->NamespaceDefs.Item(1);
  EXPECT_EQ(module->DisplayName, "Modules");
  EXPECT_EQ(module->ChildKinds, "mi");
  EXPECT_TRUE(module->CoreDefinition);
  EXPECT_FALSE(module->ChildNamespaceDefs.Item("KV:Method")->DefaultInclude);
  EXPECT_EQ(module->ChildNamespaceDefs.Item("KV:Method")->DisplayName, "KV:Method");
  // Children without a handler of their own have their parent's, at every depth.
  EXPECT_EQ(module->ChildNamespaceDefs.Item("KV:Property")->ChildNamespaceDefs.Item(1)->Handler, "KVTest.Provider");
  EXPECT_EQ(tmpl->NamespaceDefs.FindByName("kv:method").size(), 2u);
  module->ItemCounter = 5;
  module->ChildNamespaceDefs.Item(1)->ItemCounter = 3;
  module->Prepare();
  EXPECT_EQ(module->ItemCounter, 0);
  EXPECT_EQ(module->ChildNamespaceDefs.Item(1)->ItemCounter, 0);

  const auto& item = tmpl->PageLayouts.Item("Item");
  EXPECT_EQ(item->TemplateFileName, "item.html");
  EXPECT_EQ(item->NamespaceList, "KV:Module,KV:Method");
  EXPECT_EQ(item->DependsOnMinimum, 2);
  ASSERT_EQ(item->Keywords.size(), 2u);
  EXPECT_EQ(item->Keywords[0].Kind, "A");
  EXPECT_EQ(item->Keywords[1].Kind, "K");
  EXPECT_EQ(tmpl->PageLayouts.Item("index.html")->DependsOnMinimum, -1);

  EXPECT_EQ(tmpl->SingleItemTOCName, "One");
  const auto& toc = tmpl->TOCDefinitions.Item("One");
  EXPECT_EQ(toc->Template.lock(), tmpl);
  EXPECT_EQ(toc->NodeDefs.Item("Items")->ParentNode.lock(), toc->NodeDefs.Item("Top"));
  EXPECT_TRUE(toc->NodeDefs.Item("Top")->ParentNode.expired());
  EXPECT_THROW(tmpl->TOCDefinitions.Item("None"), Failure);
}

TEST_F(ConfigurationTest, ProblemsAreCollectedAndTheRestIsRead) {
  const auto& errors = root.LoadErrors();
  ASSERT_EQ(errors.size(), 3u);
  EXPECT_NE(errors[0].find("'KV.TEST'"), std::string::npos);
  EXPECT_NE(errors[1].find("Broken/template.xml"), std::string::npos);
  EXPECT_NE(errors[2].find("'kv.unknown'"), std::string::npos);
}

TEST_F(ConfigurationTest, PhrasesFollowTheLanguageAndScrapsComeFromTheirFolder) {
  const auto& tmpl = root.Templates().Item("Plain");
  EXPECT_EQ(tmpl->Phrase("methods"), "Methods");
  EXPECT_EQ(tmpl->Phrase("GRÖßE"), "Größe");
  EXPECT_EQ(tmpl->Phrase("Unknown"), "Unknown");
  EXPECT_EQ(tmpl->Phrase("Größe"), "Größe");
  tmpl->Language("German");
  EXPECT_EQ(tmpl->Phrase("METHODS"), "Methoden");
  tmpl->Language("Klingon");  // no phrase file: English
  EXPECT_EQ(tmpl->Phrase("METHODS"), "Methods");
  EXPECT_EQ(tmpl->Scrap("BANNER"), "<div>banner</div>");
  EXPECT_EQ(tmpl->Scrap("footer"), "!MISSING Scrap footer!");
}

TEST_F(ConfigurationTest, ResetReadsTheFolderAgain) {
  EXPECT_EQ(root.Templates().Count(), 1);
  config.write("Templates/Second/template.xml", R"(<Template><DocType Name="kv.test"/></Template>)");
  EXPECT_EQ(root.Templates().Count(), 1);
  root.Reset();
  ASSERT_EQ(root.Templates().Count(), 2);
  EXPECT_EQ(root.Templates().Item(2)->Name, "Second");  // named after its folder
}

TEST(ConfigurationDefinitions, NodeDefinitionsAndModelCommentsRoundTrip) {
  TOCDefinition toc;
  toc.Name = "Custom";
  auto node = std::make_shared<NodeDef>();
  node->Name = "Classes";
  node->NodeType = NodeDef::ItemsNode;
  node->ParentName = "Top";
  node->DependsOnMinimum = 3;
  node->GenerateWhenBelowMinimum = true;
  toc.NodeDefs.Add(node, node->Name);

  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(toc.SaveToText()));
  TOCDefinition again;
  again.Name = "Custom";
  again.Load(doc.RootNode());
  EXPECT_EQ(again.SaveToText(), toc.SaveToText());
  EXPECT_TRUE(again.NodeDefs.Item("Classes")->GenerateWhenBelowMinimum);

  struct Counter : ModelCommentsEvents {
    int changes = 0;
    void DirtyStateChanged() override { ++changes; }
  };
  auto counter = std::make_shared<Counter>();
  ModelComments comments;
  comments.Subscribe(counter);
  comments.Name("kv.test");
  auto comment = std::make_shared<ModelComment>();
  comment->ItemKind = "KV:Class";
  comment->ItemName = "C*";
  comment->Text = "A <b>class</b> & more";
  comments.Add(comment);
  EXPECT_EQ(counter->changes, 1);

  XMLDocument saved;
  XMLNode savedRoot = saved.RootNode();
  comments.Save(savedRoot);
  ModelComments loaded;
  loaded.Load(saved.RootNode());
  ASSERT_EQ(loaded.Count(), 1);
  EXPECT_EQ(loaded.Item(1)->Text, "A <b>class</b> & more");
  EXPECT_EQ(loaded.Item(1)->ItemName, "C*");
  EXPECT_EQ(saved.RootNode().Attributes().ValueOr("Name"), "kv.test");
}

}  // namespace
}  // namespace kv
