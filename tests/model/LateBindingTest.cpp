// The model as templates and comment services see it: items reached by member name, kinds told
// apart by type name, qualified names, and the failures of members a kind lacks.
#include <gtest/gtest.h>

#include "kavrel/Model.h"
#include "support/Failures.h"

namespace kv {
namespace {

// One item of every kind, built through the typed interface a plug-in uses.
struct SampleModel {
  std::shared_ptr<VBProjectGroup> group = std::make_shared<VBProjectGroup>("Tools");
  std::shared_ptr<vbProject> project = group->AddProject("Acme", true);
  std::shared_ptr<vbProject> other = group->AddProject("Extras");
  std::shared_ptr<Component> widget = project->AddComponent("Widget");
  std::shared_ptr<Block> run = widget->AddBlock("Run", BlockType::Function);
  std::shared_ptr<Block> getter = widget->AddBlock("Size", BlockType::PropertyGet);
  std::shared_ptr<Block> setter = widget->AddBlock("Size", BlockType::PropertyLet);
  std::shared_ptr<Enumeration> colour = widget->AddEnumeration("Colour");
  std::shared_ptr<Structure> point = widget->AddStructure("Point");
  std::shared_ptr<EventDeclaration> changed = widget->AddEvent("Changed");
  std::shared_ptr<DeclareDeclaration> beep = widget->AddDeclaration("Beep");
  std::shared_ptr<Variable> count = widget->AddVariable("mCount", "Long");
  std::shared_ptr<Component> helper = other->AddComponent("Helper", "Module");

  SampleModel() {
    project->Description("The tools");
    widget->QualifiedPrefix("Acme.Ui");
    run->AddParameter("times", "Integer")->IsOptional(true);
    run->AddGenericArgument("T");
    run->ReturnType("Boolean");
    run->Description("Runs it");
    getter->Qualifier("Get");
    setter->Qualifier("Let");
    colour->AddMember("Red")->Value("1");
    point->AddMember("X")->TypeText("Double");
    changed->AddParameter("sender");
    beep->LibraryName("kernel32");
    helper->AddBlock("Help");
  }
  ItemPtr item(std::string_view qualifiedName) const {
    ItemPtr found = group->Assemblies()->GetObjectFromQualifiedName(qualifiedName);
    EXPECT_TRUE(found) << qualifiedName;
    return found;
  }
};

struct MemberCase {
  const char* item;  // qualified name
  const char* typeName;
  const char* member;
  const char* expected;  // the value as text
};

class MemberByName : public ::testing::TestWithParam<MemberCase> {};

TEST_P(MemberByName, EveryKindAnswersItsMembers) {
  SampleModel model;
  const MemberCase& c = GetParam();
  const ItemPtr item = model.item(c.item);
  ASSERT_TRUE(item);
  EXPECT_TRUE(TypeMatch(item, c.typeName)) << item->typeName();
  const Variant value = item->get(c.member);
  const std::string text = value.isObject() ? value.toObject()->typeName() : value.toString();
  EXPECT_EQ(text, c.expected) << c.item << "." << c.member;
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, MemberByName,
    ::testing::Values(MemberCase{"Acme", "vbproject", "Description", "The tools"},
                      MemberCase{"Acme", "vbProject", "IsDotNet", "True"},
                      MemberCase{"Acme", "vbProject", "Components", "Components"},
                      MemberCase{"Acme", "vbProject", "Assemblies", "Assemblies"},
                      MemberCase{"Acme~Widget", "COMPONENT", "QualifiedName", "Acme~Widget"},
                      MemberCase{"Acme~Widget", "Component", "DotNetName", "T:Acme.Ui.Widget"},
                      MemberCase{"Acme~Widget", "Component", "vbProject", "vbProject"},
                      MemberCase{"Acme~Widget~Run", "Block", "Component", "Component"},
                      MemberCase{"Acme~Widget~Run", "Block", "HasParameters", "True"},
                      MemberCase{"Acme~Widget~Run", "Block", "HasGenericArguments", "True"},
                      MemberCase{"Acme~Widget~Run", "Block", "IsProperty", "False"},
                      MemberCase{"Acme~Widget~Run", "Block", "Parameters", "Parameters"},
                      MemberCase{"Acme~Widget~Run~times", "Parameter", "TypeText", "Integer"},
                      MemberCase{"Acme~Widget~Run~times", "Parameter", "Parent", "Block"},
                      MemberCase{"Acme~Widget~Run~T", "GenericArgument", "Name", "T"},
                      MemberCase{"Acme~Widget~Size~Get", "Block", "IsProperty", "True"},
                      MemberCase{"Acme~Widget~Size", "PropertyGroup", "PrimaryBlock", "Block"},
                      MemberCase{"Acme~Widget~Size", "PropertyGroup", "PropertyLetBlock", "Block"},
                      MemberCase{"Acme~Widget~Colour", "Enumeration", "Members", "Members"},
                      MemberCase{"Acme~Widget~Colour~Red", "Variable", "Value", "1"},
                      MemberCase{"Acme~Widget~Point", "Structure", "Component", "Component"},
                      MemberCase{"Acme~Widget~Point~X", "Variable", "TypeText", "Double"},
                      MemberCase{"Acme~Widget~Changed", "EventDeclaration", "HasParameters", "True"},
                      MemberCase{"Acme~Widget~Beep", "DeclareDeclaration", "LibraryName", "kernel32"},
                      MemberCase{"Acme~Widget~mCount", "Variable", "Assembly", "vbProject"},
                      MemberCase{"Extras~Helper~Help", "Block", "QualifiedName", "Extras~Helper~Help"}));

TEST(ModelLateBinding, MembersAKindLacksFailAsMissingMembers) {
  SampleModel model;
  struct {
    ItemPtr item;
    const char* member;
  } cases[] = {{model.run->Parameters()[0], "TaggedDescription"},  // parameters have only a description
               {model.widget, "Parameters"},
               {model.project, "Component"},
               {model.colour, "IsProperty"},
               {model.run, "NoSuchMember"}};
  for (const auto& c : cases) {
    EXPECT_EQ(test::failureNumber([&] { c.item->get(c.member); }), err::MemberNotSupported) << c.member;
    EXPECT_EQ(getOr(c.item, c.member, "fallback").toString(), "fallback");
  }
  // Writing a member that can only be read fails the same way, which sends callers to another.
  EXPECT_EQ(test::failureNumber([&] { model.run->Parameters()[0]->set("TaggedDescription", "x"); }),
            err::MemberNotSupported);
  EXPECT_EQ(test::failureNumber([&] { model.run->set("Name", "x"); }), err::MemberNotSupported);
  EXPECT_EQ(test::failureNumber([&] { model.project->call("GetObjectByName"); }), err::ArgumentNotOptional);
}

TEST(ModelLateBinding, WritesReachTheTypedFields) {
  SampleModel model;
  model.run->set("description", "Runs it twice");
  model.run->set("TaggedDescription", "<p>Runs</p>");
  model.run->set("ExcludeFlag", true);
  model.run->set("IncludeFlag", false);
  EXPECT_EQ(model.run->Description(), "Runs it twice");
  EXPECT_EQ(model.run->TaggedDescription(), "<p>Runs</p>");
  EXPECT_TRUE(model.run->ExcludeFlag());
  EXPECT_FALSE(model.run->IncludeFlag());
}

TEST(ModelLateBinding, ListsAreIndexedByPositionOrName) {
  SampleModel model;
  const ObjectPtr run = model.run;
  EXPECT_EQ(run->call("Parameters", {"TIMES"}).toObject(), model.run->Parameters()[0]);
  EXPECT_EQ(run->call("GenericArguments", {1}).toObject(), model.run->GenericArguments()[0]);
  const ObjectPtr parameters = run->get("Parameters").toObject();
  EXPECT_EQ(parameters->get("Count").toInteger(), 1);
  EXPECT_EQ(test::failureNumber([&] { parameters->call("Item", {2}); }), err::SubscriptOutOfRange);
  EXPECT_EQ(test::failureNumber([&] { parameters->call("Item", {"missing"}); }), err::InvalidProcedureCall);
  // A list keeps its owner alive.
  std::weak_ptr<Item> owner = model.colour;
  ObjectPtr members = model.colour->get("Members").toObject();
  model = SampleModel();
  ASSERT_FALSE(owner.expired());
  EXPECT_EQ(members->call("Item", {"red"}).toObject()->get("Value").toString(), "1");
}

TEST(ModelLateBinding, PropertyGroupsKeepTheirTextUntilReset) {
  SampleModel model;
  model.getter->TaggedDescription("The size.");
  model.setter->Description("Sets the size.");
  const ObjectPtr widget = model.widget;
  const ObjectPtr group = widget->call("PropertyGroups", {"size"}).toObject();
  EXPECT_EQ(group->get("PrimaryBlock").toObject(), ObjectPtr(model.getter));
  EXPECT_EQ(group->get("ConsolidatedDescription").toString(), "The size. Sets the size.");
  model.getter->TaggedDescription("The size in pixels.");
  EXPECT_EQ(group->get("ConsolidatedDescription").toString(), "The size. Sets the size.");
  group->call("ResetConsolidatedDescriptions");
  EXPECT_EQ(group->get("ConsolidatedDescription").toString(), "The size in pixels. Sets the size.");
  // Only accessors join a group, and only items held by a shared pointer take children.
  auto group2 = std::static_pointer_cast<PropertyGroup>(group);
  EXPECT_EQ(test::failureNumber([&] { group2->AddAccessor(model.run); }), err::InvalidProcedureCall);
  Component loose("Loose");
  EXPECT_EQ(test::failureNumber([&] { loose.AddBlock("Run"); }), err::InvalidProcedureCall);
}

TEST(ModelLateBinding, QualifiedNamesFindItemsAcrossTheAssemblies) {
  SampleModel model;
  const ObjectPtr assemblies = model.group->get("Assemblies").toObject();
  struct {
    const char* name;
    ItemPtr expected;
  } cases[] = {{"acme~widget~run", model.run},  {"Acme~Widget~Size~Let", model.setter},
               {"Extras~Helper", model.helper}, {"Acme~Widget~Nothing", nullptr},
               {"Acme~Widge", nullptr},         {"Unknown~Widget", nullptr}};
  for (const auto& c : cases) {
    const Variant found = assemblies->call("GetObjectFromQualifiedName", {c.name});
    EXPECT_EQ(found.toObject(), ObjectPtr(c.expected)) << c.name;
  }
  // Components added after a lookup are found too, and among namesakes the qualifier decides.
  auto later = model.project->AddComponent("Later");
  auto twin = model.project->AddComponent("Widget");
  twin->Qualifier("Twin");
  twin->AddBlock("Run");
  EXPECT_EQ(model.project->FindByQualifiedName("Acme~later"), later);
  EXPECT_EQ(model.project->FindByQualifiedName("Acme~Widget~Twin~Run"), twin->Blocks()[0]);
  EXPECT_EQ(model.project->FindByQualifiedName("Acme~Widget~Run"), model.run);
  EXPECT_EQ(assemblies->get("Count").toInteger(), 2);
  EXPECT_EQ(assemblies->call("Item", {"extras"}).toObject(), model.other);
}

}  // namespace
}  // namespace kv
