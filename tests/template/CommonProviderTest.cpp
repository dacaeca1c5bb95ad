#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <regex>

#include "kavrel/ParserElement.h"
#include "kavrel/XmlDocument.h"
#include "project/CommunityProperties.h"
#include "project/VariableValues.h"
#include "template/ParserTemplate.h"
#include "template/ProviderFixture.h"
#include "template/TestProvider.h"

namespace kv::test {
namespace {

using ::testing::MatchesRegex;

struct Case {
  const char* name;
  const char* expected;
};

class CommonProviderTest : public ProviderFixture {
 protected:
  void expectAll(std::initializer_list<Case> cases) {
    for (const auto& c : cases) EXPECT_EQ(provider->GetProperty(c.name), c.expected) << "property " << c.name;
  }
  void enableCommunity(const std::string& attributes) {
    XMLDocument doc;
    ASSERT_TRUE(doc.LoadXML("<CommunityExtensions Enabled=\"True\" " + attributes + "/>"));
    project->CommunityProperties->Load(doc.RootNode());
  }
};

TEST_F(CommonProviderTest, ProjectPropertiesAnswerUnderEveryNameAndCase) {
  project->ProjectGroupName("My Help");
  project->OutputFolder(folder.path("out"));
  project->HelpFileName(folder.path("out/chm/my.chm"));
  project->HHNamespace("Velmora.Help");
  project->HHIdentifier("VH1");
  project->DefaultTopic("start.html");
  project->Language("");

  expectAll({{"crlf", "\r\n"},
             {"CrLf", "\r\n"},
             {"projectgrouptitle", "My Help"},
             {"ProjectGroup_Title", "My Help"},
             {"helpprojecttitle", "My Help"},
             {"projectgroup_name", "MyHelp"},
             {"projectgroupname", "MyHelp"},
             {"helpcompilerprojectfilename", "MyHelp"},
             {"shortchmfilename", "my.chm"},
             {"shortoutputfilename", "my.chm"},
             {"relativechmfilename", "chm/my.chm"},
             {"hhnamespace", "Velmora.Help"},
             {"hhidentifier", "VH1"},
             {"hhcollection", "VH1"},
             {"defaulttopic", "start.html"},
             {"phraselanguage", "English"}});
  EXPECT_EQ(provider->GetProperty("chmfilename"), folder.path("out/chm/my.chm"));
  EXPECT_EQ(provider->GetProperty("OutputFileName"), folder.path("out/chm/my.chm"));
  project->Language("Deutsch");
  EXPECT_EQ(provider->GetProperty("phraselanguage"), "Deutsch");
}

// Items of the model are covered in ModelProviderTest; pages also show objects of other kinds.
TEST_F(CommonProviderTest, ItemPropertiesAnswerForObjectsOutsideTheModel) {
  for (const char* kind : {"Keyword", "KeywordJump", "MenuLinkCategory", "Namespace"}) {
    SCOPED_TRACE(kind);
    auto parent = makeItem("vbProject", {{"Name", "Lib"}, {"QualifiedName", "Lib"}});
    auto item = makeItem(kind, {{"Name", "Item<T>"}, {"QualifiedName", "Lib~Item"}});
    show(item, "KV:Thing", parent);
    expectAll({{"itemname", "Item<T>"},
               {"NAME", "Item<T>"},
               {"ShortItemName", "Item<T>"},
               {"item_qualified_name", "Lib~Item"},
               {"itemqualifiedname", "Lib~Item"},
               {"parentitemname", "Lib"},
               {"parentqualifedname", "Lib"},
               {"filename", "Lib~Item.html"},
               {"itemtype", "KV:Thing"},
               {"rawitemtype", "KV:Thing"}});
  }
  show(nullptr);
  EXPECT_EQ(provider->GetProperty("filename"), "");
}

TEST_F(CommonProviderTest, FailuresBecomeTextThatNamesTheFailureAndTheRow) {
  const std::string failure = "!ERROR ([0-9]+)\\.([0-9]+) FETCHING PROPERTY!";
  // No current item, an item without the member, no parent, no project.
  EXPECT_THAT(provider->GetProperty("itemname"), MatchesRegex("!ERROR 91\\.[0-9]+ FETCHING PROPERTY!"));
  show(makeItem("Component", {{"Name", "A"}}));
  EXPECT_THAT(provider->GetProperty("itemqualifiedname"), MatchesRegex("!ERROR 438\\.[0-9]+ FETCHING PROPERTY!"));
  EXPECT_THAT(provider->GetProperty("parentitemname"), MatchesRegex("!ERROR 91\\.[0-9]+ FETCHING PROPERTY!"));
  EXPECT_NE(provider->GetProperty("itemqualifiedname"), provider->GetProperty("parentqualifedname"))
      << "rows report steps of their own";

  CommonProvider orphan;
  for (const char* name : {"hhidentifier", "defaulttopic", "SomeVariable", "metacharset"})
    EXPECT_THAT(orphan.GetProperty(name), MatchesRegex(failure)) << name;
}

TEST_F(CommonProviderTest, UnknownNamesGoToTheVariablesWithTheCallersSpelling) {
  project->CreateVariableValue("MyVar", "mine");
  expectAll({{"MyVar", "mine"},
             {"myvar", "mine"},
             {"parentqualifiedname", "!UNRECOGNISED ELEMENT TYPE 'parentqualifiedname'!"},
             {"NoSuchThing", "!UNRECOGNISED ELEMENT TYPE 'NoSuchThing'!"},
             // Template defaults show only in the design view.
             {"FooterText", "!UNRECOGNISED ELEMENT TYPE 'FooterText'!"}});
  provider->ForEdit = true;
  EXPECT_EQ(provider->GetProperty("footertext"), "Made by Kavrel");
  project->CurrentDocType(nullptr);
  EXPECT_THAT(provider->GetProperty("FooterText"), MatchesRegex("!ERROR 91\\.[0-9]+ FETCHING PROPERTY!"));
}

TEST_F(CommonProviderTest, ExpansionRunsAtMostThreePasses) {
  show(makeItem("Block", {{"Name", "Run"}, {"QualifiedName", "A~Run"}}));
  project->CreateVariableValue("Title", "%%itemname%% of %%Two%%");
  project->CreateVariableValue("Two", "%%itemqualifiedname%%");
  project->CreateVariableValue("Loop", "(%%Loop%%)");
  project->CreateVariableValue("Keep", "!UNCRECOGNISED and more");
  const struct {
    const char* text;
    const char* expected;
  } cases[] = {
      {"plain text", "plain text"},
      {"<h1>%%Title%%</h1>", "<h1>Run of A~Run</h1>"},
      {"%%Loop%%", "(((%%Loop%%)))"},
      {"50%% off", "50%% off"},
      {"%%itemname:escaped=true%%", "!UNRECOGNISED ELEMENT TYPE 'itemname:escaped=true'!"},
      {"a %%Keep%% b", "a %%Keep%% b"},
      {"%%nope%%", "!UNRECOGNISED ELEMENT TYPE 'nope'!"},
  };
  for (const auto& c : cases) EXPECT_EQ(provider->ParseForProperties(c.text), c.expected) << c.text;
}

TEST_F(CommonProviderTest, KeywordTargetsFollowAliasesDifferentlyForJumpsAndKeywords) {
  auto jump = makeItem("KeywordJump", {{"Name", "a<b"}, {"Target", "A~B.html"}});
  auto keyword =
      makeItem("Keyword",
               {{"Name", "k&w"}, {"Jumps", makeCollection({{"", makeItem("KeywordJump", {{"Target", "A~B.html"}})}})}});
  show(jump);
  EXPECT_EQ(provider->GetProperty("keywordtarget"), "A~B.html");
  EXPECT_EQ(provider->GetProperty("keyword"), "a&lt;b");
  show(keyword);
  EXPECT_EQ(provider->GetProperty("keywordtarget"), "A~B.html");
  EXPECT_EQ(provider->GetProperty("keyword"), "k&amp;w");

  // Aliases on before any alias pass: a jump keeps its target, a keyword gets nothing.
  project->UseFileNameAliases(true);
  show(jump);
  EXPECT_EQ(provider->GetProperty("keywordtarget"), "A~B.html");
  show(keyword);
  EXPECT_EQ(provider->GetProperty("keywordtarget"), "");

  show(makeItem("Component", {{"Name", "C"}}));
  EXPECT_EQ(provider->GetProperty("keywordtarget"), "");
  EXPECT_EQ(provider->GetProperty("keyword"), "");
}

TEST_F(CommonProviderTest, DesignViewRowsAndTheirClone) {
  auto item = makeItem("Block", {{"Name", "Run"}, {"TaggedCommentID", "A~Run|Summary"}});
  show(item);
  EXPECT_EQ(provider->GetProperty("designitem"), "");
  EXPECT_EQ(provider->GetProperty("tcid"), "");
  EXPECT_THAT(provider->GetProperty("metacharset"), ::testing::HasSubstr("charset=utf-8\">"));

  provider->ForEdit = true;
  provider->DesignBanner = "banner";
  EXPECT_EQ(provider->GetProperty("designitem"), "<span class=\"design\"/>");
  EXPECT_EQ(provider->GetProperty("tcid"), "A~Run|Summary");
  EXPECT_EQ(provider->GetProperty("metacharset"), "");
  item->set("TaggedCommentID", "A~Run|hidden");
  EXPECT_EQ(provider->GetProperty("designitem"), "");

  // Namespaces of a designer-built project get no design markup.
  item->set("TaggedCommentID", "A~Run|Summary");
  provider->CurrentRootItem(makeItem("Assembly", {{"FileName", "/src/app.CSPROJ"}}));
  show(makeItem("Namespace", {{"Name", "N"}, {"TaggedCommentID", "N|Summary"}}));
  EXPECT_EQ(provider->GetProperty("designitem"), "");

  show(item);
  auto clone = std::dynamic_pointer_cast<CommonProvider>(provider->Clone());
  ASSERT_TRUE(clone);
  EXPECT_FALSE(clone->ForEdit);
  EXPECT_EQ(clone->DesignBanner, "");
  EXPECT_EQ(clone->CurrentItem(), provider->CurrentItem());
  EXPECT_EQ(clone->CurrentRootItem(), provider->CurrentRootItem());
  EXPECT_EQ(clone->CurrentItemType(), "Item");
  EXPECT_EQ(clone->KVProject(), project);
  EXPECT_EQ(clone->GetProperty("designitem"), "");
  EXPECT_NE(clone->GetProperty("metacharset"), "");
}

TEST_F(CommonProviderTest, ResetKeepsTypeAndDesignState) {
  provider->ForEdit = true;
  provider->CurrentRootItem(makeItem("vbProject"));
  show(makeItem("Block"), "KV:Method", makeItem("Component"));
  provider->Reset();
  EXPECT_FALSE(provider->CurrentItem());
  EXPECT_FALSE(provider->CurrentParentItem());
  EXPECT_FALSE(provider->CurrentRootItem());
  EXPECT_EQ(provider->CurrentItemType(), "KV:Method");
  EXPECT_TRUE(provider->ForEdit);
}

TEST_F(CommonProviderTest, CategoriesAndExamplesHaveCaptions) {
  show(makeItem("menulinkcategory", {{"Name", ""}}));
  EXPECT_EQ(provider->GetProperty("linkcategoryname"), "See also");
  show(makeItem("MenuLinkCategory", {{"Name", "Related"}}));
  EXPECT_EQ(provider->GetProperty("linkcategoryname"), "Related");

  show(makeItem("Example", {{"Language", "c++"}, {"Caption", ""}}));
  EXPECT_EQ(provider->GetProperty("examplelanguagecaption"), "C++");
  show(makeItem("Example", {{"Language", "Cobol"}, {"Caption", "Payroll"}}));
  EXPECT_EQ(provider->GetProperty("examplelanguagecaption"), "Payroll (Cobol)");
  show(makeItem("Block", {{"Language", "C"}}));
  EXPECT_EQ(provider->GetProperty("examplelanguagecaption"), "");
  EXPECT_EQ(provider->GetProperty("linkcategoryname"), "");
}

TEST_F(CommonProviderTest, LocaleRowsUseTheProjectLocaleOrTheSystems) {
  project->LocaleID(1033);
  expectAll({{"localestring", "0x409 English (United States)"}, {"charset", "0"}});
  project->LocaleID(1041);
  EXPECT_THAT(provider->GetProperty("localestring"), MatchesRegex("0x411 .+"));
  EXPECT_EQ(provider->GetProperty("charset"), "128");
  project->LocaleID(0);
  EXPECT_THAT(provider->GetProperty("localestring"), MatchesRegex("0x[0-9A-F]+ .+"));
}

TEST_F(CommonProviderTest, DateRowsGiveThePresentDate) {
  const auto today =
      std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
  EXPECT_EQ(provider->GetProperty("year"), std::to_string(int(today.year())));
  for (const char* name : {"longdate", "shortdate", "longtime", "shorttime", "generaldate"})
    EXPECT_THAT(provider->GetProperty(name), MatchesRegex(".*[0-9].*")) << name;
}

TEST_F(CommonProviderTest, CommunityRowsNeedTheExtensionsAndTheKeyArrivesOneRequestLate) {
  show(makeItem("Component", {{"QualifiedName", "Lib~C"}}));
  EXPECT_EQ(provider->GetProperty("communityprojectkey"), "");
  EXPECT_EQ(provider->GetProperty("communityitemid"), "");

  enableCommunity("TargetURL=\"https://c.example/proxy\" BaseURL=\"https://c.example/\" HostingKey=\"host1\"");
  project->CommunityProjectKey = "K1";
  EXPECT_EQ(provider->GetProperty("communityproxytargeturl"), "https://c.example/proxy");
  EXPECT_EQ(provider->GetProperty("communitybaseurl"), "https://c.example/");
  EXPECT_EQ(provider->GetProperty("communityitemid"), "Lib~C");
  EXPECT_EQ(provider->GetProperty("communityprojectkey"), "");
  EXPECT_EQ(provider->GetProperty("communityprojectkey"), "4b31");
  // The cache is shared: another provider sees the value at once, a new key starts over.
  CommonProvider other;
  other.KVProject(project);
  EXPECT_EQ(other.GetProperty("communityprojectkey"), "4b31");
  project->CommunityProjectKey = "K2";
  EXPECT_EQ(other.GetProperty("communityprojectkey"), "");
  EXPECT_EQ(provider->GetProperty("communityprojectkey"), "4b32");
}

// --- Tags -------------------------------------------------------------------------------------

ParserElement tag(std::initializer_list<std::pair<std::string, std::string>> parameters,
                  long kind = ParserElement::DataTag) {
  ParserElement element(kind);
  for (const auto& [name, value] : parameters) element.AddParameter(value, name);
  return element;
}

TEST_F(CommonProviderTest, TagEntryChecksComeInTheirOrder) {
  provider->NamespaceDef(std::make_shared<NamespaceDef>());
  show(makeItem("Block", {{"Name", "Run"}}));
  provider->NamespaceDef(std::make_shared<NamespaceDef>());
  std::shared_ptr<FileSystem> file;
  const struct {
    ParserElement element;
    const char* expected;
  } cases[] = {
      {tag({{"type", "variable"}, {"name", "itemname"}}, 1), ""},
      {tag({{"condition", "helpversion:Value=1"}}), "!MISSING Type PROPERTY!"},
      {tag({{"Type", "unknown"}, {"condition", "bogus"}}), "!INVALID CONDITION TYPE!"},
      {tag({{"type", "unknown"}, {"condition", "helpversion:Value=2"}}), ""},
      {tag({{"type", "Variable"}, {"name", "itemname"}, {"condition", "HelpVersion:value=1"}}), "Run"},
      {tag({{"type", "variable:x"}, {"name", "itemname"}}), ""},
      {tag({{"type", "Phrase"}, {"name", "TITLE"}}), "Title of Run"},
      {tag({{"type", "scrap"}, {"name", "box"}}), "[Run word]"},
      {tag({{"type", "helpprojecttitle"}, {"escaped", "TRUE"}}), "A &amp; B"},
      {tag({{"type", "helpprojecttitle"}, {"escaped", "yes"}}), "A & B"},
  };
  project->ProjectGroupName("A & B");
  for (auto c : cases)
    EXPECT_EQ(provider->ProvideData(c.element, file), c.expected) << kv::testing::TestProvider::describe(c.element);

  auto noName = tag({{"type", "phrase"}});
  EXPECT_THAT(provider->ProvideData(noName, file), MatchesRegex("!ERROR [0-9]+\\.[0-9]+ FETCHING ELEMENT!"));
}

TEST_F(CommonProviderTest, RendersALayoutForAnItem) {
  ParserTemplate layout;
  layout.LoadText(
      "<h1><kv:data type=\"variable\" name=\"itemname\" /></h1><p>%%itemqualifiedname%% in %%projectgrouptitle%%"
      "<kv:data type=\"phrase\" name=\"WORD\" condition=\"variablevalue:VariableName=Edition,Value=Lite\" />"
      "</p>%%item_qualified_name:x=1%%");
  ASSERT_EQ(layout.LoadErrors(), "");
  layout.DataProvider(provider);
  project->ProjectGroupName("Docs");
  project->CreateVariableValue("Edition", "Pro");
  show(makeItem("Block", {{"Name", "Run"}, {"QualifiedName", "Lib~Run"}}));
  provider->NamespaceDef(std::make_shared<NamespaceDef>());
  EXPECT_EQ(layout.ParseToString(), "<h1>Run</h1><p>Lib~Run in Docsword</p>");
}

}  // namespace
}  // namespace kv::test
