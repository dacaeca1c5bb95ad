// The common provider and element conditions over a real model: one that the test plug-in builds
// after it is loaded with dlopen, delivered through its namespace provider as a doc type's would be.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "kavrel/ClassRegistry.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Model.h"
#include "project/KVProject.h"
#include "project/PlugInLoader.h"
#include "project/VariableValues.h"
#include "support/RecordingHost.h"
#include "support/TestConfiguration.h"
#include "template/CommonProvider.h"
#include "template/ElementCondition.h"

namespace kv::test {
namespace {

using ::testing::MatchesRegex;

class ModelProviderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    LoadPlugInLibraries(config.path("plugins"));
    project = KVProject::New();
    items = project->GetNamespaceProvider("KVTest.Provider");
    ASSERT_TRUE(items);
    root = std::dynamic_pointer_cast<vbProject>(items->LoadRootItem("synthetic:Acme:300"));
    ASSERT_TRUE(root);
    provider.KVProject(project);
  }
  void TearDown() override { project->Terminate(); }

  // Every item below `item`, with its parent.
  void walk(const ItemPtr& item, const ItemPtr& parent, std::vector<std::pair<ItemPtr, ItemPtr>>& out) {
    out.emplace_back(item, parent);
    item->ForEachChild([&](const ItemPtr& child) {
      walk(child, item, out);
      return true;
    });
  }
  std::shared_ptr<NamespaceDef> definition(const std::string& name, const std::string& child = "") {
    auto def = std::make_shared<NamespaceDef>();
    def->Name = name;
    def->Handler = "KVTest.Provider";
    if (!child.empty()) def->ChildNamespaceDefs.Add(definition(child), child);
    return def;
  }

  ScopedRecordingHost host;
  TestConfiguration config;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<INamespaceProvider> items;
  std::shared_ptr<vbProject> root;
  CommonProvider provider;
};

TEST_F(ModelProviderTest, EveryItemOfEveryKindAnswersItsNames) {
  std::vector<std::pair<ItemPtr, ItemPtr>> all;
  walk(root, nullptr, all);
  std::map<std::string, long> kinds;
  for (const auto& [item, parent] : all) {
    ++kinds[item->typeName()];
    provider.SetCurrentItem(nullptr, item, "KV:" + item->typeName(), parent);
    const std::string where = item->QualifiedName();
    EXPECT_EQ(provider.GetProperty("itemname"), item->Name()) << where;
    EXPECT_EQ(provider.GetProperty("item_qualified_name"), item->QualifiedName()) << where;
    EXPECT_EQ(provider.GetProperty("filename"), item->QualifiedName() + ".html") << where;
    EXPECT_EQ(provider.GetProperty("itemtype"), "KV:" + item->typeName()) << where;
    EXPECT_EQ(provider.GetProperty("keyword"), "") << where;
    EXPECT_EQ(provider.GetProperty("examplelanguagecaption"), "") << where;
    if (parent) {
      EXPECT_EQ(provider.GetProperty("parentitemname"), parent->Name()) << where;
      EXPECT_EQ(provider.GetProperty("ParentQualifedName"), parent->QualifiedName()) << where;
    } else {
      EXPECT_THAT(provider.GetProperty("parentitemname"), MatchesRegex("!ERROR 91\\.[0-9]+ FETCHING PROPERTY!"));
    }
  }
  EXPECT_GE(all.size(), 300u);
  EXPECT_GE(kinds.size(), 12u) << "every kind of item was rendered";
}

TEST_F(ModelProviderTest, MembersAKindLacksBecomeFailureText) {
  const ItemPtr block = std::dynamic_pointer_cast<Item>(items->GetItemByQualifiedName("Acme~Widget1~Run"));
  ASSERT_TRUE(block);
  provider.ForEdit = true;
  provider.SetCurrentItem(nullptr, block, "KV:Block", nullptr);
  // Model items have no comment identifier of their own: the row fails, the design row does not.
  EXPECT_THAT(provider.GetProperty("tcid"), MatchesRegex("!ERROR 438\\.[0-9]+ FETCHING PROPERTY!"));
  EXPECT_EQ(provider.GetProperty("designitem"), "");
  EXPECT_EQ(provider.ParseForProperties("<%%itemname%%|%%parentitemname%%>"),
            "<Run|" + provider.GetProperty("parentitemname") + ">");
}

TEST_F(ModelProviderTest, ExamplesOfTheModelHaveCaptions) {
  config.write("kavrel.xml",
               "<KavrelConfiguration><CodeLanguage Name=\"SQL\"/><CodeLanguage Name=\"VB\" Caption=\"Visual "
               "Basic\"/></KavrelConfiguration>");
  ConfigurationRoot::instance().Reset();
  auto example = std::make_shared<Example>();
  example->Language = "sql";
  example->Caption = "Query";
  provider.SetCurrentItem(nullptr, example, "KV:Example", root);
  EXPECT_EQ(provider.GetProperty("examplelanguagecaption"), "Query (SQL)");
  example->Language = "VB";
  example->Caption.clear();
  EXPECT_EQ(provider.GetProperty("examplelanguagecaption"), "Visual Basic");
}

TEST_F(ModelProviderTest, ChildItemConditionsCountTheProvidersItems) {
  const ObjectPtr widget = items->GetItemByQualifiedName("Acme~Widget1");
  ASSERT_TRUE(widget);
  const auto def = definition("KV:Component", "KV:Block");
  const struct {
    const char* source;
    bool holds;
  } cases[] = {
      {"childitems:itemtype=KV:Block", true},
      {"childitems:itemtype=KV:Block,Value=4", true},
      {"childitems:itemtype=KV:Block,Operator=>,Value=4", false},
      {"childitems:itemtype=KV:Block,Operator==,Value=4,Filter=forsave=true", true},
      {"childitems:itemtype=KV:Enumeration", false},
  };
  for (const auto& c : cases) {
    ElementCondition condition;
    condition.Load(c.source);
    EXPECT_EQ(condition.Evaluate(widget, def, *project), c.holds) << c.source;
  }
  EXPECT_TRUE(host.messages().empty());
}

TEST_F(ModelProviderTest, NewItemsOfTheModel) {
  const auto widget = std::dynamic_pointer_cast<Component>(items->GetItemByQualifiedName("Acme~Widget1"));
  const auto run = std::dynamic_pointer_cast<Item>(items->GetItemByQualifiedName("Acme~Widget1~Run"));
  const auto other = std::dynamic_pointer_cast<Item>(items->GetItemByQualifiedName("Acme~Widget2~Run"));
  ASSERT_TRUE(widget && run && other);
  EXPECT_FALSE(project->IsItemNew(run));
  widget->TaggedComments().Add(std::make_shared<TaggedComment>("##MODULE_ISNEW", "2026-09-01"), "##MODULE_ISNEW");
  EXPECT_TRUE(project->IsItemNew(widget));
  EXPECT_TRUE(project->IsItemNew(run)) << "a member of a new component";
  EXPECT_FALSE(project->IsItemNew(other));
  project->CreateVariableValue("IsNewDate", "2026-10-01");
  EXPECT_FALSE(project->IsItemNew(run)) << "the mark has expired";
  other->IsNew(true);
  EXPECT_TRUE(project->IsItemNew(other));
}

}  // namespace
}  // namespace kv::test
