// The gate before the pages: the output folder, additional files, model comments and ignored
// relationships, on real folders and real model items.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "comments/TaggedCommentServices.h"
#include "definitions/ModelComments.h"
#include "host/MessageBox.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/Model.h"
#include "output/PageGeneration.h"
#include "output/SystemFolders.h"
#include "project/AdditionalFiles.h"
#include "project/ExcludeFilters.h"
#include "project/IgnoreRelationships.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"
#include "support/TemplateParts.h"
#include "support/TestNamespaceProvider.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class BuildPreparationTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project->Subscribe(errors);
    project->CompileHelpFile(false);
    project->OutputFolder(temp.path("out"));
  }
  void TearDown() override { project->Terminate(); }

  TempFolder temp;
  ScopedRecordingHost host;
  std::shared_ptr<KVProject> project = KVProject::New();
  std::shared_ptr<BuildErrors> errors = std::make_shared<BuildErrors>();
  PageGeneration generation{*project};
};

TEST(SystemFolders, TheSystemAndTheHomeFolderAreNeverCleared) {
  const std::string home = "/home/tester";
  ScopedEnvironment homeFolder{"HOME", home};
  const struct {
    std::string folder;
    bool protectedFolder;
  } cases[] = {
      {"/", true},
      {"/usr", true},
      {"/usr/share/doc/", true},
      {"/etc/../var/lib", true},
      {"/lib64", true},
      {home, true},
      {home + "/", true},
      {home + "/docs/out", false},
      {"/opt/docs/kavrel-out", false},
      {"/usrlocal/out", false},
      {"/srv/help", false},
  };
  for (const auto& c : cases) EXPECT_EQ(IsProtectedFolder(c.folder), c.protectedFolder) << c.folder;
}

TEST_F(BuildPreparationTest, ASystemFolderIsNotClearedAndStopsTheBuildOnlyWhenClearingIsAsked) {
  project->OutputFolder("/usr");
  project->ClearBeforeBuild(true);
  EXPECT_FALSE(generation.BeforeBuild());
  ASSERT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.messages()[0].title, "Cannot clear output folder");
  EXPECT_THAT(host.messages()[0].text, HasSubstr("Kavrel cannot delete files and directories"));

  project->ClearBeforeBuild(false);
  EXPECT_TRUE(generation.BeforeBuild());
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_TRUE(fs::is_directory("/usr/bin"));
}

TEST_F(BuildPreparationTest, ClearingEmptiesTheOutputFolder) {
  writeFile(temp.path("out/old/page.html"), "old");
  project->ClearBeforeBuild(true);
  ASSERT_TRUE(generation.BeforeBuild());
  EXPECT_TRUE(fs::is_directory(temp.path("out")));
  EXPECT_TRUE(fs::is_empty(temp.path("out")));
}

TEST_F(BuildPreparationTest, AMissingOutputFolderIsCreatedUnlessTheUserSaysNo) {
  project->OutputFolder(temp.path("a/b/out"));
  host->answer = mb::No;
  EXPECT_FALSE(generation.BeforeBuild());
  EXPECT_FALSE(fs::exists(temp.path("a")));
  ASSERT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.messages()[0].text,
            "The specified output path '" + temp.path("a/b/out") + "/' doesn't exist.  Would you like to create it?");
  EXPECT_EQ(host.messages()[0].buttons, mb::YesNo + mb::Question);

  // A silent build takes the default answer, Yes.
  project->Silent = true;
  EXPECT_TRUE(generation.BeforeBuild());
  EXPECT_TRUE(fs::is_directory(temp.path("a/b/out")));
  EXPECT_EQ(host.messages().size(), 1u);
}

TEST_F(BuildPreparationTest, TheOutputCodePageFollowsTheLocale) {
  fs::create_directories(temp.path("out"));
  const struct {
    long locale;
    long codePage;
  } cases[] = {{0, 65001}, {1033, 1252}, {1049, 1251}, {1041, 932}};
  for (const auto& c : cases) {
    project->LocaleID(c.locale);
    ASSERT_TRUE(generation.BeforeBuild());
    EXPECT_EQ(project->CodePage, c.codePage) << c.locale;
  }
}

TEST_F(BuildPreparationTest, AdditionalFilesAreCopiedAndPagesAmongThemRendered) {
  writeFile(temp.path("extra/logo.png"), "PNG");
  writeFile(temp.path("extra/about.html"), "<p>%%projectgroup_name%% help</p>");
  writeFile(temp.path("out/inplace.css"), "body {}");
  for (const char* name : {"extra/logo.png", "extra/about.html", "extra/missing.gif", "out/inplace.css"}) {
    auto file = std::make_shared<AdditionalFile>();
    file->FileName = temp.path(name);
    project->AdditionalFiles->Add(file);
  }
  project->ProjectGroupName("Lib");
  TestNamespaceProvider::registerAs("Test.AdditionalProvider", std::make_shared<TestNamespaceProvider>());
  struct PlugIn : IKVProjectPlugIn {
    std::shared_ptr<kv::NamespaceDefs> defs = std::make_shared<kv::NamespaceDefs>();
    bool SomethingToDocument() override { return true; }
    std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() override { return defs; }
  };
  auto plugIn = std::make_shared<PlugIn>();
  auto def = std::make_shared<NamespaceDef>();
  def->Name = "KV:Any";
  def->Handler = "Test.AdditionalProvider";
  plugIn->defs->Add(def, def->Name);
  project->DocTypes->Add(std::make_shared<KVDocType>("kv.test", plugIn), "kv.test");

  generation.CopyAdditionalFiles();
  ClassRegistry::instance().remove("Test.AdditionalProvider");
  EXPECT_EQ(readFile(temp.path("out/logo.png")), "PNG");
  EXPECT_EQ(readFile(temp.path("out/about.html")), "<p>Lib help</p>");
  EXPECT_THAT(errors->texts, ElementsAre("Additional file 'missing.gif' could not be found.  The file will not be "
                                         "included in the generated HTML Help unless already present in the target "
                                         "output folder."));
}

TEST_F(BuildPreparationTest, ExcludeFiltersAreWildcardsOrRegularExpressions) {
  auto useFilters = [&](std::initializer_list<const char*> patterns) {
    while (project->ExcludeFilters->Count() > 0) project->ExcludeFilters->Remove(1);
    for (const char* pattern : patterns) {
      auto filter = std::make_shared<ExcludeFilter>();
      filter->FilterWildCard = pattern;
      project->ExcludeFilters->Add(filter);
    }
  };
  const struct {
    const char* name;
    bool byWildcards, byRegExps;
  } cases[] = {
      {"mCount", false, false},       {"Run", true, true},   {"_debug", false, false},
      {"TestRunHelper", true, false}, {"Größe", true, true},
  };
  useFilters({"m*", "_?ebug"});
  for (const auto& c : cases) EXPECT_EQ(generation.ValidMemberName(c.name), c.byWildcards) << c.name;

  // A pattern that does not compile ("[") matches nothing; the others are searched for anywhere.
  useFilters({"^m[A-Z]", "ebug$", "[", "^Test.*Helper$"});
  project->ExcludeFiltersRegExp(true);
  for (const auto& c : cases) EXPECT_EQ(generation.ValidMemberName(c.name), c.byRegExps) << c.name;
}

// Model comments on real items: a project with classes and their methods.
class ModelCommentTest : public BuildPreparationTest {
 protected:
  void SetUp() override {
    BuildPreparationTest::SetUp();
    for (const char* name : {"Widget", "Gadget"}) {
      auto c = model->AddComponent(name);
      c->AddBlock("Run", BlockType::Function);
      c->AddBlock("~Widget", BlockType::Sub);
    }
    TestNamespaceProvider::registerAs("Test.ModelProvider", provider);
    provider->items["KV:Class"] = [this](const ObjectPtr&) {
      std::vector<ObjectPtr> items;
      model->ForEachChild([&](const ItemPtr& c) {
        items.push_back(c);
        return true;
      });
      return items;
    };
    provider->items["KV:Method"] = [](const ObjectPtr& parent) {
      std::vector<ObjectPtr> items;
      std::dynamic_pointer_cast<Item>(parent)->ForEachChild([&](const ItemPtr& b) {
        items.push_back(b);
        return true;
      });
      return items;
    };
    classDef->Name = "KV:Class";
    classDef->Handler = "Test.ModelProvider";
    methodDef->Name = "KV:Method";
    methodDef->Handler = "Test.ModelProvider";
    methodDef->ChildKinds = "m";
    classDef->ChildNamespaceDefs.Add(methodDef, methodDef->Name);
    provider->provider->CurrentRootItem(model);
  }
  void TearDown() override {
    ClassRegistry::instance().remove("Test.ModelProvider");
    BuildPreparationTest::TearDown();
  }
  static std::shared_ptr<ModelComment> comment(const std::string& kind, const std::string& name,
                                               const std::string& text, bool onlyIfBlank = false) {
    auto c = std::make_shared<ModelComment>();
    c->ItemKind = kind;
    c->ItemName = name;
    c->TagIdentifier = "##SUMMARY";
    c->Text = text;
    c->OnlyIfBlank = onlyIfBlank;
    return c;
  }
  // The summaries of every item, "Component.Block: text|text".
  std::vector<std::string> summaries() const {
    std::vector<std::string> out;
    model->ForEachChild([&](const ItemPtr& c) {
      c->ForEachChild([&](const ItemPtr& b) {
        std::string texts;
        for (const auto& tc : b->TaggedComments()) texts += (texts.empty() ? "" : "|") + tc->Description();
        if (!texts.empty()) out.push_back(c->Name() + "." + b->Name() + ": " + texts);
        return true;
      });
      return true;
    });
    return out;
  }
  void apply() {
    for (const auto& c : provider->items["KV:Class"](nullptr)) generation.ApplyAllModelComments(classDef, *provider, c);
  }

  std::shared_ptr<vbProject> model = std::make_shared<vbProject>("Lib");
  std::shared_ptr<TestNamespaceProvider> provider = std::make_shared<TestNamespaceProvider>();
  std::shared_ptr<NamespaceDef> classDef = std::make_shared<NamespaceDef>();
  std::shared_ptr<NamespaceDef> methodDef = std::make_shared<NamespaceDef>();
};

TEST_F(ModelCommentTest, ExactNamesAllApplyAndWildcardsMatchAsPatterns) {
  generation.SetModelComments({comment("KV:Method", "Run", "Runs it."), comment("KV:Method", "run", "Again."),
                               comment("KV:Method", "~*", "Destroys it."), comment("KV:Class", "Run", "Wrong kind.")});
  apply();
  // Both comments of the exact name apply; summaries merge into one comment.
  EXPECT_THAT(summaries(), ElementsAre("Widget.Run: Runs it. Again.", "Widget.~Widget: Destroys it.",
                                       "Gadget.Run: Runs it. Again.", "Gadget.~Widget: Destroys it."));
}

TEST_F(ModelCommentTest, OnlyIfBlankLeavesACommentedItemAlone) {
  ObjectPtr widget;
  model->ForEachChild([&](const ItemPtr& c) {
    widget = c;
    return false;
  });
  auto run = std::dynamic_pointer_cast<kv::Item>(provider->items["KV:Method"](widget)[0]);
  comments::AddTaggedComment(run->TaggedComments(), std::make_shared<TaggedComment>("##SUMMARY", "Written."));
  generation.SetModelComments({comment("KV:Method", "Run", "Default.", true)});
  apply();
  EXPECT_THAT(summaries(), ElementsAre("Widget.Run: Written.", "Gadget.Run: Default."));
}

TEST_F(ModelCommentTest, ADefinitionWithoutTheLetterTakesNoneButItsChildrenDo) {
  methodDef->ChildKinds = "";
  auto hidden = std::make_shared<NamespaceDef>(*methodDef);
  hidden->Name = "KV:Inner";
  hidden->ChildKinds = "m";
  provider->items["KV:Inner"] = provider->items["KV:Method"];
  // KV:Method has no "m": nothing applies there, but the walk still reaches KV:Inner below it.
  classDef->ChildNamespaceDefs.Remove("KV:Method");
  auto middle = std::make_shared<NamespaceDef>(*methodDef);
  middle->Name = "KV:Class2";
  provider->items["KV:Class2"] = [](const ObjectPtr& parent) { return std::vector<ObjectPtr>{parent}; };
  middle->ChildNamespaceDefs.Add(hidden, hidden->Name);
  classDef->ChildNamespaceDefs.Add(middle, middle->Name);
  generation.SetModelComments({comment("KV:Class2", "*", "Not here."), comment("KV:Inner", "R*", "Below.")});
  apply();
  EXPECT_THAT(summaries(), ElementsAre("Widget.Run: Below.", "Gadget.Run: Below."));
}

TEST_F(BuildPreparationTest, IgnoredRelationshipsBecomeCommentsOnTheirComponents) {
  auto model = std::make_shared<vbProject>("Lib");
  auto widget = model->AddComponent("Widget");
  struct PlugIn : IKVProjectPlugIn {
    ObjectPtr found;
    bool SomethingToDocument() override { return true; }
    ObjectPtr GetObjectFromQualifiedName(const std::string& name) override {
      return name == "Lib.Widget" ? found : nullptr;
    }
  };
  auto plugIn = std::make_shared<PlugIn>();
  plugIn->found = widget;
  project->DocTypes->Add(std::make_shared<KVDocType>("kv.test", plugIn), "kv.test");
  for (const char* procedure : {"Helper", "Other"}) {
    auto ignored = std::make_shared<IgnoreRelationship>();
    ignored->QualifiedName = "Lib.Widget";
    ignored->ProcedureName = procedure;
    project->IgnoreRelationships->Add(ignored);
  }
  auto unknown = std::make_shared<IgnoreRelationship>();
  unknown->QualifiedName = "Lib.Missing";
  unknown->ProcedureName = "X";
  project->IgnoreRelationships->Add(unknown);
  fs::create_directories(temp.path("out"));

  ASSERT_TRUE(generation.BeforeBuild());
  const auto found = comments::FindTaggedComment(&widget->TaggedComments(), "##IGNORE_REFERENCES");
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->Description(), "Helper,Other");
  EXPECT_THAT(errors->texts, IsEmpty());
}

}  // namespace
}  // namespace kv::test
