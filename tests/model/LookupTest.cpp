// Finding items: by cref text, by name inside a project, and the examples and interned texts
// that lookups rely on.
#include <gtest/gtest.h>

#include "kavrel/Model.h"
#include "support/Failures.h"

namespace kv {
namespace {

class ProjectLookup : public ::testing::Test {
 protected:
  void SetUp() override {
    widget->QualifiedPrefix("Acme.Ui");
    widget->AddGenericArgument("T");
    run->AddParameter("times");
    project->AddComponent("Other")->AddBlock("Run");
  }
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("Acme");
  std::shared_ptr<Component> widget = project->AddComponent("Widget");
  std::shared_ptr<Block> ctor = widget->AddBlock("New", BlockType::Constructor);
  std::shared_ptr<Block> run = widget->AddBlock("Run", BlockType::Function);
  std::shared_ptr<Block> size = widget->AddBlock("Size", BlockType::PropertyGet);
  std::shared_ptr<Variable> count = widget->AddVariable("mCount");
  std::shared_ptr<EventDeclaration> changed = widget->AddEvent("Changed");
};

TEST_F(ProjectLookup, CrefTextsNameComponentsAndMembers) {
  struct {
    const char* cref;
    ItemPtr expected;
  } cases[] = {{"T:Acme.Ui.Widget", widget},
               {"acme.ui.widget", widget},
               {"M:Acme.Ui.Widget.Run(System.Int32)", run},
               {"M:Acme.Ui.Widget.#ctor", ctor},
               {"P:Acme.Ui.Widget.Size", widget->PropertyGroups()[0]},
               {"M:Acme.Ui.Widget.Size", size},
               {"F:Acme.Ui.Widget.mCount", count},
               {"E:Acme.Ui.Widget.Changed", changed},
               {"T:Acme.Ui.Widgets", nullptr},
               {"M:Acme.Ui.Widget.Missing", nullptr},
               {"T:Other", project->FindComponent("Other")}};
  for (const auto& c : cases) EXPECT_EQ(project->GetObjectFromCRef(c.cref), c.expected) << c.cref;
  EXPECT_EQ(ObjectPtr(project)->call("GetObjectFromCRef", {"T:Acme.Ui.Widget"}).toObject(), ObjectPtr(widget));
}

TEST_F(ProjectLookup, NamesFindComponentsThenMembersThenAnything) {
  const ObjectPtr late = project;
  EXPECT_EQ(late->call("GetObjectByName", {"widget"}).toObject(), ObjectPtr(widget));
  EXPECT_EQ(late->call("GetObjectByName", {"Widget.Run"}).toObject(), ObjectPtr(run));
  EXPECT_EQ(late->call("GetObjectByName", {"Run"}).toObject(), ObjectPtr(run));  // the first in the tree
  EXPECT_EQ(late->call("GetObjectByName", {"times"}).toObject(), ObjectPtr(run->Parameters()[0]));
  EXPECT_TRUE(late->call("GetObjectByName", {"nowhere"}).isNothing());
  EXPECT_EQ(late->call("GetComponent", {"OTHER"}).toObject(), ObjectPtr(project->FindComponent("Other")));
  EXPECT_EQ(late->call("Components", {"Widget"}).toObject(), ObjectPtr(widget));
  EXPECT_TRUE(ObjectPtr(widget)->get("HasGenericArguments").toBool());
}

TEST_F(ProjectLookup, ExamplesAreAddedByName) {
  const ObjectPtr examples = run->get("Examples").toObject();
  auto example = std::make_shared<Example>();
  example->set("Code", "widget.Run 3");
  example->set("Language", "VB");
  examples->call("Add", {example});
  ASSERT_TRUE(run->HasExamples());
  EXPECT_EQ(examples->call("Item", {1}).toObject()->get("Code").toString(), "widget.Run 3");
  EXPECT_EQ(test::failureNumber([&] { examples->call("Item", {2}); }), err::SubscriptOutOfRange);
  EXPECT_EQ(test::failureNumber([&] { examples->call("Add", {run}); }), err::TypeMismatch);
  EXPECT_EQ(test::failureNumber([&] { run->Parameters()[0]->get("Examples"); }), err::MemberNotSupported);
}

TEST(Atom, EqualTextsShareOneCopy) {
  const Atom a("Integer"), b(std::string("Integer")), empty(""), none;
  EXPECT_EQ(&a.str(), &b.str());
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a == Atom("integer"));  // interning keeps case
  EXPECT_TRUE(empty == none);
  EXPECT_EQ(none.str(), "");
}

}  // namespace
}  // namespace kv
