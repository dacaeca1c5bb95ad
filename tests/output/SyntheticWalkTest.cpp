// A build through the test plug-in, loaded from its library as an installed plug-in is, with
// a synthetic model and the standard template's page layouts.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "definitions/Configuration.h"
#include "kavrel/INamespaceProvider.h"
#include "output/PageGeneration.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "support/RecordingHost.h"
#include "support/TestConfiguration.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

const char* kConfiguration = R"(<KavrelConfiguration>
  <DocType Name="kv.test" Description="Synthetic models" PlugIn="KVTest.ProjectPlugIn"/>
</KavrelConfiguration>)";

// The standard template's layouts over the test provider's definitions.
const char* kTemplate = R"(<Template Name="Synthetic">
  <DocType Name="kv.test"/><ItemType Name="source"/>
  <Variable Name="Copyright" Default=""/><Variable Name="FooterText" Default=""/>
  <Namespace Name="KV:TestRoot" DisplayName="Projects" Handler="KVTest.Provider" CoreDefinition="True" ChildKinds="m">
    <Namespace Name="KV:Component" DisplayName="Components" Handler="KVTest.Provider" ChildKinds="m">
      <Namespace Name="KV:Block" DisplayName="Procedures" Handler="KVTest.Provider" ChildKinds="m"/>
      <Namespace Name="KV:Enumeration" DisplayName="Enumerations" Handler="KVTest.Provider" ChildKinds="mx"/>
    </Namespace>
  </Namespace>
  <PageLayout Name="Item" File="layouts/item.html" Namespaces="KV:TestRoot,KV:Component,KV:Block,KV:Enumeration"/>
  <PageLayout Name="Index" File="index.html"/>
  <PageLayout Name="WebFrame" File="webframe.html"/>
</Template>)";

class SyntheticWalk : public ::testing::Test {
 protected:
  void SetUp() override {
    config.write("kavrel.xml", kConfiguration);
    const fs::path standard = fs::path(KV_SOURCE_CONFIG_DIR) / "Templates/Standard";
    fs::create_directories(config.path("Templates"));
    fs::copy(standard, config.path("Templates/Synthetic"), fs::copy_options::recursive);
    config.write("Templates/Synthetic/template.xml", kTemplate);
    ConfigurationRoot::instance().Reset();

    project = KVProject::New();
    project->Silent = true;
    project->CompileHelpFile(false);
    project->OutputFolder(config.scratch("out"));
    project->ProjectGroupName("Acme");
    auto plugIn = std::dynamic_pointer_cast<Object>(project->DocTypes->Item("kv.test")->ProjectPlugIn());
    plugIn->call("AddRoot", {"synthetic:Acme:200", "source"});
    provider = project->GetNamespaceProvider("KVTest.Provider");
    root = provider->LoadRootItem("synthetic:Acme:200");
  }
  void TearDown() override { project->Terminate(); }

  std::vector<ObjectPtr> items(const std::string& definition, const ObjectPtr& parent) {
    auto def = std::make_shared<NamespaceDef>();
    def->Name = definition;
    return *provider->GetItems(def, parent, "");
  }

  TestConfiguration config;
  ScopedRecordingHost host;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<INamespaceProvider> provider;
  ObjectPtr root;
};

TEST_F(SyntheticWalk, EveryItemOfEveryDefinitionGetsItsPageAndTheProviderHearsOfIt) {
  ASSERT_EQ(PageGeneration(*project).Build(), BuildResultCompletedOK);

  std::vector<std::string> expected{"Acme.html"};
  for (const auto& component : items("KV:Component", root)) {
    const std::string name = component->get("QualifiedName").toString();
    expected.push_back(name + ".html");
    for (const auto& block : items("KV:Block", component))
      expected.push_back(block->get("QualifiedName").toString() + ".html");
    // A definition with "x" among its child kinds is left out of the walk.
    for (const auto& e : items("KV:Enumeration", component))
      EXPECT_FALSE(fs::exists(config.scratch("out/" + e->get("QualifiedName").toString() + ".html")));
  }
  ASSERT_GT(expected.size(), 30u);
  for (const auto& page : expected) EXPECT_TRUE(fs::exists(config.scratch("out/" + page))) << page;

  const std::string told = std::dynamic_pointer_cast<Object>(provider)->get("PageOutputs").toString();
  EXPECT_THAT(told, HasSubstr(config.scratch("out/Acme~Widget1~Run.html")));
  EXPECT_THAT(told, HasSubstr(config.scratch("out/index.html")));
  const std::string page = test::readFile(config.scratch("out/Acme~Widget1.html"));
  EXPECT_THAT(page, HasSubstr("<h1>Widget1</h1>"));
  EXPECT_THAT(page, Not(HasSubstr("!UNRECOGNISED")));
  EXPECT_THAT(page, HasSubstr("<meta name=\"id\" content=\"Acme~Widget1\" />"));
  EXPECT_TRUE(fs::exists(config.scratch("out/webframe.html")));
}

}  // namespace
}  // namespace kv::test
