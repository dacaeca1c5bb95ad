// A model made inside a plug-in library, loaded with dlopen and delivered through its namespace
// provider, answers the library's typed and late-bound calls alike.
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "kavrel/ClassRegistry.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Model.h"
#include "project/PlugInLoader.h"
#include "support/TestConfiguration.h"

namespace kv {
namespace {

class PlugInModel : public ::testing::Test {
 protected:
  void SetUp() override {
    LoadPlugInLibraries(config.path("plugins"));
    object = ClassRegistry::instance().create("KVTest.Provider");
    provider = std::dynamic_pointer_cast<INamespaceProvider>(object);
    ASSERT_TRUE(provider);
  }
  std::vector<ObjectPtr> items(const std::string& definition, const ObjectPtr& parent) {
    auto def = std::make_shared<NamespaceDef>();
    def->Name = definition;
    return *provider->GetItems(def, parent, "forpagegeneration=true");
  }

  test::TestConfiguration config;
  ObjectPtr object;
  std::shared_ptr<INamespaceProvider> provider;
};

void collect(const ItemPtr& item, std::map<std::string, long>& kinds) {
  ++kinds[item->typeName()];
  item->ForEachChild([&](const ItemPtr& child) {
    collect(child, kinds);
    return true;
  });
}

TEST_F(PlugInModel, ASyntheticModelHasEveryKindAndTheSizeAsked) {
  const ObjectPtr root = provider->LoadRootItem("synthetic:Acme:500");
  ASSERT_TRUE(TypeMatch(root, "vbProject"));
  EXPECT_EQ(provider->LoadRootItem("synthetic:Acme:500"), root);  // loaded once
  const auto project = std::dynamic_pointer_cast<vbProject>(root);
  ASSERT_TRUE(project);  // the library's own type, across the library boundary

  std::map<std::string, long> kinds;
  collect(project, kinds);
  long total = 0;
  for (const auto& [kind, count] : kinds) total += count;
  EXPECT_GE(total, 500);
  const std::set<std::string> expected{
      "vbProject",   "Component", "Block", "PropertyGroup", "EventDeclaration", "DeclareDeclaration",
      "Enumeration", "Structure", "UDT",   "Variable",      "Parameter",        "GenericArgument"};
  for (const auto& kind : expected) EXPECT_GT(kinds[kind], 0) << kind;
}

TEST_F(PlugInModel, ProviderWalksTheModelByDefinitionAndQualifiedName) {
  const ObjectPtr root = provider->LoadRootItem("synthetic:Acme:100");
  ASSERT_EQ(items("KV:TestRoot", nullptr), std::vector<ObjectPtr>{root});
  const auto components = items("KV:Component", root);
  ASSERT_FALSE(components.empty());
  const auto blocks = items("KV:Block", components[0]);
  ASSERT_EQ(blocks.size(), 4u);
  EXPECT_EQ(items("KV:Enumeration", components[0]).size(), 1u);

  const ObjectPtr let = provider->GetItemByQualifiedName("Acme~Widget1~Size~Let");
  ASSERT_TRUE(TypeMatch(let, "block"));
  EXPECT_TRUE(let->get("IsProperty").toBool());
  EXPECT_EQ(let->call("Parameters", {1}).toObject()->get("QualifiedName").toString(), "Acme~Widget1~Size~Let~value");
  EXPECT_EQ(provider->MonikerForItem(root), "synthetic:Acme:100");
  EXPECT_EQ(provider->LoadRootItem("elsewhere:Acme"), nullptr);
}

TEST_F(PlugInModel, CommentsMadeInThePlugInAreTheLibrarysComments) {
  const ObjectPtr root = provider->LoadRootItem("synthetic:Acme:30");
  const ObjectPtr run = provider->GetItemByQualifiedName("Acme~Widget1~Run");
  ASSERT_TRUE(run);
  const ObjectPtr comments = run->get("TaggedComments").toObject();
  EXPECT_EQ(comments->call("Item", {"##SUMMARY"}).toObject()->get("Description").toString(),
            run->get("TaggedDescription").toString());
  const ObjectPtr times = run->call("Parameters", {"times"}).toObject();
  EXPECT_EQ(times->get("TaggedComments").toObject()->call("Item", {1}).toObject()->get("Qualifier").toString(),
            "times");
  // The library clears what the plug-in made.
  std::dynamic_pointer_cast<vbProject>(root)->ClearComments();
  EXPECT_EQ(comments->get("Count").toInteger(), 0);
  EXPECT_EQ(run->get("TaggedDescription").toString(), "");
}

}  // namespace
}  // namespace kv
