#include <gtest/gtest.h>

#include "kavrel/XmlDocument.h"
#include "project/CommunityProperties.h"
#include "project/VariableValues.h"
#include "support/TestNamespaceProvider.h"
#include "template/ElementCondition.h"
#include "template/ProviderFixture.h"

namespace kv::test {
namespace {

class ElementConditionTest : public ProviderFixture {
 protected:
  void SetUp() override {
    ProviderFixture::SetUp();
    items = std::make_shared<TestNamespaceProvider>();
    TestNamespaceProvider::registerAs("Test.ConditionProvider", items);
    def = std::make_shared<NamespaceDef>();
    def->Name = "KV:Class";
    def->Handler = "Test.ConditionProvider";
    auto methods = std::make_shared<NamespaceDef>();
    methods->Name = "KV:Method";
    def->ChildNamespaceDefs.Add(methods, methods->Name);
  }
  void TearDown() override {
    ClassRegistry::instance().remove("Test.ConditionProvider");
    ProviderFixture::TearDown();
  }
  void withMethods(int count) {
    items->items["KV:Method"] = [count](const ObjectPtr&) { return std::vector<ObjectPtr>(count, makeItem("Block")); };
  }
  bool holds(const std::string& source, DataProvider* ddp = nullptr) {
    ElementCondition condition;
    condition.Load(source);
    EXPECT_NE(condition.ElementConditionType, ectNone) << source;
    return condition.EvaluateEx(item, def, *project, ddp);
  }

  std::shared_ptr<TestNamespaceProvider> items;
  std::shared_ptr<NamespaceDef> def;
  ObjectPtr item = makeItem("Component", {{"Name", "Widget"}});
};

TEST_F(ElementConditionTest, LoadReadsTheKindAndItsParameters) {
  const struct {
    const char* source;
    ElementConditionTypeEnum kind;
    std::vector<std::pair<std::string, std::string>> parameters;
  } cases[] = {
      {"CHILDITEMS", ectChidItems, {}},
      {"variablevalue:VariableName=Edition,Value=\"Pro, Team\"",
       ectVariableValue,
       {{"VariableName", "Edition"}, {"Value", "Pro, Team"}}},
      {"content:Content=%%itemname%%,noequals,Operator= =",
       ectContent,
       {{"Content", "%%itemname%%"}, {"Operator", " ="}}},
      {"HelpVersion:Value=a=b", ectHelpVersion, {{"Value", "a=b"}}},
      {"communityenabled:", ectCommunityEnabled, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.source);
    ElementCondition condition;
    condition.Load(c.source);
    EXPECT_EQ(condition.ElementConditionType, c.kind);
    ASSERT_TRUE(condition.ElementConditionProperties);
    EXPECT_EQ(condition.ElementConditionProperties->Count(), long(c.parameters.size()));
    for (const auto& [name, value] : c.parameters) EXPECT_EQ(condition.ElementConditionProperties->Item(name), value);
  }
}

TEST_F(ElementConditionTest, AnUnknownKindLeavesTheConditionEmptyAndARepeatedNameFails) {
  ElementCondition condition;
  condition.Load("children:itemtype=KV:Method");
  EXPECT_EQ(condition.ElementConditionType, ectNone);
  EXPECT_FALSE(condition.ElementConditionProperties);

  condition.Load("helpversion:Value=1,value=2");
  EXPECT_EQ(condition.ElementConditionType, ectHelpVersion);
  EXPECT_EQ(condition.ElementConditionProperties->Item("VALUE"), "1");
  ASSERT_EQ(host.messages().size(), 1u) << "the failure goes to the central handler";
}

TEST_F(ElementConditionTest, ChildItemsCountsAsText) {
  const struct {
    int children;
    const char* source;
    bool expected;
  } cases[] = {
      {1, "childitems:itemtype=KV:Method", true},
      {0, "childitems:itemtype=KV:Method", false},
      {3, "childitems:itemtype=kv:method,Value=2", true},
      // "10" sorts before "2": the comparison is of text, not numbers.
      {10, "childitems:itemtype=KV:Method,Value=2", false},
      {10, "childitems:itemtype=KV:Method,Operator=<,Value=9", true},
      {2, "childitems:itemtype=KV:Method,Operator==,Value= 2", true},
      {0, "childitems:itemtype=KV:Method,Operator==,Value=many", true},
      {2, "childitems:itemtype=KV:Method,Operator=!=,Value=1", false},
      {5, "childitems:itemtype=KV:Field", false},
  };
  for (const auto& c : cases) {
    withMethods(c.children);
    EXPECT_EQ(holds(c.source), c.expected) << c.source << " with " << c.children << " children";
  }
  withMethods(1);
  holds("childitems:itemtype=KV:Method,Filter=forsave=true");
  EXPECT_EQ(items->requests.back(), "forsave=true");
}

TEST_F(ElementConditionTest, ChildItemsWithoutProviderOrItemType) {
  withMethods(4);
  def->Handler = "Nobody.Provider";
  EXPECT_FALSE(holds("childitems:itemtype=KV:Method"));
  def->Handler = "Test.ConditionProvider";
  EXPECT_FALSE(holds("childitems"));
  EXPECT_EQ(host.messages().size(), 1u) << "the missing item type is reported";
}

TEST_F(ElementConditionTest, VariablesContentAndHelpVersion) {
  project->CreateVariableValue("Edition", "Pro, Team");
  show(item);
  const struct {
    const char* source;
    bool withProvider;
    bool expected;
  } cases[] = {
      {"variablevalue:VariableName=Edition", false, true},
      {"variablevalue:VariableName=Edition,Operator==,Value=\"Pro, Team\"", false, true},
      {"variablevalue:VariableName=Missing", false, false},
      {"variablevalue:VariableName=Missing,Operator==", false, true},
      {"variablevalue", false, false},
      {"content:Content=%%itemname%%", true, true},
      {"content:Content=%%itemname%%,Operator==,Value=Widget", true, true},
      {"content:Content=%%itemname%%", false, false},
      {"content:Content=%%itemname%%,Operator==", false, true},
      {"helpversion:Value=1", false, true},
      {"helpversion:Value=2", false, false},
      {"helpversion:Operator=<,Value=2", false, true},
  };
  for (const auto& c : cases)
    EXPECT_EQ(holds(c.source, c.withProvider ? provider.get() : nullptr), c.expected) << c.source;
}

TEST_F(ElementConditionTest, CommunityEnabledIgnoresParametersAndEveryKindNeedsADefinition) {
  EXPECT_FALSE(holds("communityenabled"));
  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML("<CommunityExtensions Enabled=\"True\"/>"));
  project->CommunityProperties->Load(doc.RootNode());
  EXPECT_TRUE(holds("communityenabled:Operator=<>,Value=True"));

  withMethods(3);
  for (const char* source : {"communityenabled", "childitems:itemtype=KV:Method", "helpversion:Value=1",
                             "content:Operator==", "variablevalue:Operator=="}) {
    ElementCondition condition;
    condition.Load(source);
    EXPECT_FALSE(condition.EvaluateEx(item, nullptr, *project, provider.get())) << source;
  }
}

}  // namespace
}  // namespace kv::test
