#include <gtest/gtest.h>

#include "definitions/Configuration.h"
#include "host/MessageBox.h"
#include "project/AdditionalFiles.h"
#include "project/KVDiagramStyle.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVPropertyBag.h"
#include "project/SortableCollection.h"
#include "project/TOCSource.h"
#include "project/VariableValues.h"

namespace kv {
namespace {

std::vector<std::string> keysOf(const SortableCollection<ObjectPtr>& col) {
  std::vector<std::string> keys;
  for (long i = 1; i <= col.Count(); ++i) keys.push_back(col.SortKey(i));
  return keys;
}

ObjectPtr named(const std::string& name) {
  auto item = std::make_shared<DynamicObject>("Item");
  item->field("Name", name);
  return item;
}

TEST(SortableCollection, InsertsByKeyIgnoringCaseAndKeepsEqualKeys) {
  SortableCollection<ObjectPtr> col;
  col.Add(named("b"), "b");
  col.Add(named("a"), "a");
  EXPECT_EQ(keysOf(col), (std::vector<std::string>{"a", "b"}));
  col.Add(named("c"), "c");
  col.Add(named("B"), "B");
  EXPECT_EQ(col.Count(), 4);
  const auto keys = keysOf(col);
  EXPECT_EQ(keys.front(), "a");
  EXPECT_EQ(keys.back(), "c");
  EXPECT_TRUE(text::equalsIgnoreCase(keys[1], "b") && text::equalsIgnoreCase(keys[2], "b"));
}

TEST(SortableCollection, EqualKeysLandWhereTheSearchPathPutsThem) {
  // With one "b" an equal key goes before it; with "a","b" after it.
  SortableCollection<ObjectPtr> one;
  one.Add(named("first"), "b");
  EXPECT_EQ(one.Search("B"), 0);
  SortableCollection<ObjectPtr> two;
  two.Add(nullptr, "a");
  two.Add(nullptr, "b");
  EXPECT_EQ(two.Search("B"), 2);
  SortableCollection<ObjectPtr> three;
  for (const char* k : {"a", "b", "c"}) three.Add(nullptr, k);
  EXPECT_EQ(three.Search("b"), 2);
  EXPECT_EQ(three.Search("a"), 0);
  EXPECT_EQ(three.Search("bb"), 2);
  EXPECT_EQ(three.Search("z"), 3);
  EXPECT_EQ(three.Search(""), 0);
}

TEST(SortableCollection, ManyKeysComeOutSorted) {
  SortableCollection<ObjectPtr> col;
  std::vector<std::string> keys;
  for (int i = 0; i < 200; ++i) keys.push_back("k" + std::to_string((i * 7919) % 211));
  for (const auto& k : keys) col.Add(nullptr, k);
  auto got = keysOf(col);
  std::sort(keys.begin(), keys.end());
  EXPECT_EQ(got, keys);  // case plays no part here
}

TEST(SortableCollection, UnsortedModeEmptyKeysAndBadPositions) {
  SortableCollection<ObjectPtr> col;
  col.SortEnabled(false);
  col.Add(named("z"), "z");
  col.Add(named("a"), "a");
  EXPECT_EQ(keysOf(col), (std::vector<std::string>{"z", "a"}));

  SortableCollection<ObjectPtr> byName;
  byName.Add(named("m"), "m");
  byName.Add(named("c"));                                 // sorts by the object's Name
  byName.Add(std::make_shared<DynamicObject>("NoName"));  // no Name: an empty key, to the front
  EXPECT_EQ(keysOf(byName), (std::vector<std::string>{"", "c", "m"}));
  EXPECT_EQ(byName.Item(0), nullptr);
  EXPECT_EQ(byName.Item(4), nullptr);
  byName.Remove(1);
  EXPECT_EQ(keysOf(byName), (std::vector<std::string>{"c", "m"}));
}

class CollectionsWithProject : public ::testing::Test {
 protected:
  void TearDown() override { project->Terminate(); }
  std::shared_ptr<KVProject> project = KVProject::New();
};

TEST_F(CollectionsWithProject, PropertyBagStoresOnlyWhatDiffersFromTheDefault) {
  KVPropertyBag& bag = *project->PropertyBag;
  bag.PropertyValue("Flag", "False", "False");
  EXPECT_EQ(bag.PropertyValues().Count(), 0);
  EXPECT_FALSE(project->Dirty());
  bag.PropertyValue("Flag", "False", "True");
  EXPECT_EQ(bag.PropertyValues().Count(), 1);
  EXPECT_EQ(bag.PropertyValue("flag", "False"), "True");
  EXPECT_TRUE(project->Dirty());
  project->Dirty(false);
  bag.PropertyValue("Flag", "False", "True");
  EXPECT_FALSE(project->Dirty());
  bag.PropertyValue("Flag", "False", "False");
  EXPECT_EQ(bag.PropertyValues().Count(), 0);
  EXPECT_EQ(bag.PropertyValue("Flag", "dflt"), "dflt");
  EXPECT_TRUE(project->Dirty());

  // Without a project (the included namespace names) nothing is marked.
  project->Dirty(false);
  project->IncludedNamespaceNames->PropertyValue("KV:Method", "", "True");
  EXPECT_FALSE(project->Dirty());
}

TEST_F(CollectionsWithProject, VariableValuesMarkChangesExceptForSystemRecords) {
  auto& vars = *project->VariableValues;
  vars.AddValue("Stamp", "1", project, true);
  vars.AddValue("Stamp", "2", project, true);
  EXPECT_EQ(vars.Count(), 1);
  EXPECT_EQ(vars.Item("stamp")->Value(), "2");
  EXPECT_FALSE(project->Dirty());
  vars.Item("Stamp")->Value("3");
  EXPECT_FALSE(project->Dirty());
  vars.Remove("Stamp");
  EXPECT_FALSE(project->Dirty());

  auto var = project->CreateVariableValue("Colour", "red");
  EXPECT_TRUE(project->Dirty());
  EXPECT_FALSE(var->IsDefaultValue);
  EXPECT_TRUE(vars.Exists("COLOUR"));
  EXPECT_EQ(project->GetVariableValue("Colour"), "red");
  EXPECT_THROW(vars.Add(var, "colour"), Failure);

  project->Dirty(false);
  var->IsDefaultValue = true;
  var->Value("red");
  EXPECT_TRUE(var->IsDefaultValue);
  var->Value("blue");
  EXPECT_FALSE(var->IsDefaultValue);
  EXPECT_TRUE(project->Dirty());

  // A record whose project has gone marks nothing and does not fail.
  auto orphan = std::make_shared<VariableValue>();
  orphan->KVProject = KVProject::New();
  orphan->Value("x");
  EXPECT_TRUE(orphan->KVProject.expired());
}

TEST_F(CollectionsWithProject, AdditionalFilesKnowImagesAndFindNamesInOtherFolders) {
  auto& files = *project->AdditionalFiles;
  auto add = [&](const std::string& name) {
    auto file = std::make_shared<AdditionalFile>();
    file->FileName = name;
    files.Add(file, name);
  };
  add("/a/style.CSS");
  EXPECT_FALSE(files.ContainsImages());
  add("/a/x.PNG");
  EXPECT_TRUE(files.ContainsImages());
  files.Remove("/a/x.PNG");
  EXPECT_TRUE(files.ContainsImages());  // stays true once seen
  EXPECT_TRUE(files.Item(1)->IsStyleSheet());

  add("/b/x.PNG");
  EXPECT_TRUE(files.Exists("/other/x.png"));
  EXPECT_FALSE(files.Exists("/b/y.png"));
  AdditionalFile noExtension{"/a.b/readme"};
  EXPECT_FALSE(noExtension.IsImage());
  EXPECT_TRUE(AdditionalFile{"/x/script.Js"}.IsScript());
  EXPECT_TRUE(AdditionalFile{"/x/Ä.jpg"}.IsImage());
}

struct PopulatedPlugIn : IKVProjectPlugIn {
  long items = 1;
  bool SomethingToDocument() override { return true; }
  ObjectPtr RootItems(const std::string&) override {
    auto col = std::make_shared<DynamicObject>("Collection");
    col->field("Count", items);
    return col;
  }
};

struct RecordingHost : MessageHandler {
  std::vector<std::string> titles;
  int show(const std::string&, int, const std::string& t) override {
    titles.push_back(t);
    return mb::OK;
  }
};

struct BuildErrors : KVProjectEvents {
  std::vector<std::string> texts;
  void BuildError(const std::string& t, KVErrorLevel) override { texts.push_back(t); }
};

// A populated doc type with its template chosen.
class TemplateFixture : public CollectionsWithProject {
 protected:
  void SetUp() override {
    tmpl = std::make_shared<Template>();
    tmpl->Name = "Standard";
    for (const char* name : {"One", "Many", "Extra"}) {
      auto def = std::make_shared<TOCDefinition>();
      def->Name = name;
      tmpl->TOCDefinitions.Add(def, name);
    }
    tmpl->SingleItemTOCName = "One";
    tmpl->MultipleItemTOCName = "Many";
    tmpl->objFillColor = 0x123456;
    tmpl->DiagramBold = true;
    plugIn = std::make_shared<PopulatedPlugIn>();
    docType = std::make_shared<KVDocType>("kv.net", plugIn);
    docType->KVProject = project;
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);
  }
  std::shared_ptr<Template> tmpl;
  std::shared_ptr<PopulatedPlugIn> plugIn;
  std::shared_ptr<KVDocType> docType;
};

TEST_F(TemplateFixture, TOCDefinitionFollowsTheSourceAndFallsBackWithOneWarning) {
  TOCSource& source = *docType->TOCSource;
  EXPECT_EQ(source.TOCDefinition()->Name, "One");
  plugIn->items = 2;
  EXPECT_EQ(source.TOCDefinition()->Name, "Many");

  source.Source(tsTemplateSpecific);
  source.SpecificTOCName("extra");
  EXPECT_EQ(source.TOCDefinition()->Name, "Extra");
  EXPECT_TRUE(project->Dirty());

  auto errors = std::make_shared<BuildErrors>();
  project->Subscribe(errors);
  source.SpecificTOCName("Gone");
  EXPECT_EQ(source.TOCDefinition()->Name, "Many");
  EXPECT_EQ(source.Source(), tsTemplateDefault);
  source.TOCDefinition();
  ASSERT_EQ(errors->texts.size(), 1u);
  EXPECT_EQ(errors->texts[0],
            "Table of Contents definition 'Gone' could not be found in this template.  Using default definition "
            "instead.");

  source.Source(tsCustom);
  EXPECT_EQ(source.TOCDefinition(), source.CustomTOCDefinition());
}

TEST(TOCSourceAlone, MissingDefinitionWithoutADocTypeIsAPlainMessage) {
  auto host = std::make_shared<RecordingHost>();
  setMessageHandler(host);
  TOCSource source;
  source.Source(tsTemplateSpecific);
  source.SpecificTOCName("Gone");
  EXPECT_EQ(source.TOCDefinition(), nullptr);
  setMessageHandler(nullptr);
  EXPECT_EQ(host->titles, std::vector<std::string>{"Table of Contents definition"});
}

TEST_F(TemplateFixture, DiagramStyleReadsTheTemplateUntilSwitchedToCustom) {
  KVDiagramStyle& style = *project->DiagramStyle;
  style.mobjFillColor = 7;
  EXPECT_EQ(style.objFillColor(), 0x123456);
  EXPECT_TRUE(style.DiagramBold());
  style.DiagramStyleSource(dssCustom);
  EXPECT_EQ(style.mobjFillColor, 0x123456);  // copied from the template on the switch
  style.objFillColor(9);
  EXPECT_EQ(style.objFillColor(), 9);
  EXPECT_TRUE(project->Dirty());

  // Without a template the raw values count.
  KVDiagramStyle alone;
  alone.mBorderWidth = 3;
  EXPECT_EQ(alone.BorderWidth(), 3);
}

TEST_F(TemplateFixture, TemplateVariablesComeBackAsDefaults) {
  tmpl->VariableDefs = {{"Company", "Velmora"}, {"Year", "2024"}, {"Accent", "255", 4}};
  project->CreateVariableValue("Year", "2025");
  project->LoadAllVariables();
  EXPECT_EQ(project->VariableValues->Count(), 3);
  EXPECT_EQ(project->GetVariableValue("accent"), "#FF0000");
  EXPECT_TRUE(project->VariableValues->Item("Company")->IsDefaultValue);
  EXPECT_EQ(project->GetVariableValue("Company"), "Velmora");
  EXPECT_EQ(project->GetVariableValue("Year"), "2025");
}

}  // namespace
}  // namespace kv
