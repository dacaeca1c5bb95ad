// Comments on items: the keyed and unkeyed collection, by name and typed, and how a project adds
// comments of merging and non-merging kinds.
#include <gtest/gtest.h>

#include "kavrel/Model.h"
#include "kavrel/TaggedCommentDef.h"
#include "root/Root.h"
#include "support/Failures.h"

namespace kv {
namespace {

TaggedCommentPtr comment(const char* tag, const char* text, const char* qualifier = "") {
  return std::make_shared<TaggedComment>(tag, text, qualifier);
}

TEST(TaggedComments, KeyedCollectionByName) {
  auto block = std::make_shared<Block>("Run");
  const ObjectPtr col = block->get("TaggedComments").toObject();
  ASSERT_TRUE(TypeMatch(col, "taggedcomments"));
  EXPECT_FALSE(block->get("HasTaggedComments").toBool());

  col->call("Add", {comment("##SUMMARY", "first"), "##SUMMARY"});
  col->call("Add", {comment("##REMARKS", "second"), "##REMARKS", 1});  // before the summary
  EXPECT_TRUE(block->get("HasTaggedComments").toBool());
  EXPECT_EQ(col->get("Count").toInteger(), 2);
  EXPECT_EQ(col->call("Item", {1}).toObject()->get("Description").toString(), "second");
  const ObjectPtr summary = col->call("Item", {"##summary"}).toObject();
  EXPECT_EQ(summary->get("Key").toString(), "##SUMMARY");
  EXPECT_EQ(summary->get("Parent").toObject(), ObjectPtr(block));  // the owner, since none was given

  EXPECT_EQ(test::failureNumber([&] {
              col->call("Add", {comment("##SUMMARY", "again"), "##Summary"});
            }),
            err::KeyAlreadyExists);
  EXPECT_EQ(test::failureNumber([&] { col->call("Item", {"##NONE"}); }), err::InvalidProcedureCall);
  EXPECT_EQ(test::failureNumber([&] { col->call("Item", {3}); }), err::SubscriptOutOfRange);

  col->call("Remove", {"##SUMMARY"});
  col->call("Remove", {1});
  EXPECT_EQ(col->get("Count").toInteger(), 0);
}

TEST(TaggedComments, UnkeyedCollectionFindsByTagIdentifier) {
  TaggedComments col;
  col.set("CollectionIsNotKeyed_SearchByTagID", true);
  col.Add(comment("##PARAM", "a", "x"), "##PARAM");
  col.Add(comment("##PARAM", "b", "y"), "##PARAM");  // side by side: keys are not kept
  EXPECT_EQ(col.Count(), 2);
  EXPECT_EQ(col.Item("##param")->Qualifier(), "x");
  col.Remove("##PARAM");
  EXPECT_EQ(col.Item("##PARAM")->Qualifier(), "y");
  EXPECT_EQ(col.Find("##RETURNS"), nullptr);
}

TEST(TaggedComments, EveryCommentMemberByName) {
  auto item = std::make_shared<Variable>("mCount");
  const auto c = comment("##SUMMARY", "text");
  c->Parent(item);
  struct {
    const char* member;
    Variant value;
  } cases[] = {{"TagIdentifier", "##VALUE"},
               {"Qualifier", "q"},
               {"Description", "d"},
               {"Key", "k"},
               {"Hidden", true},
               {"CommentState", 3L},
               {"XMLTagName", "summary"},
               {"SourceStartLine", 12L},
               {"SourceLineCount", 3L},
               {"BufferComment", true},
               {"NoLineWrap", true},
               {"ExampleSourceType", "P"},
               {"CommentDate", DateTime(std::chrono::hours(24))}};
  for (const auto& m : cases) {
    c->set(m.member, m.value);
    EXPECT_EQ(c->get(m.member), m.value) << m.member;
  }
  EXPECT_EQ(test::failureNumber([&] { c->set("CommentState", 4); }), err::InvalidProcedureCall);
  EXPECT_TRUE(c->get("TaggedCommentDef").isNothing());
  EXPECT_TRUE(TypeMatch(c->get("SourceComments"), "TaggedComments"));
  EXPECT_EQ(test::failureNumber([&] { c->get("TaggedCommentDefs"); }), err::MemberNotSupported);

  // A clone carries the content and source comments, not the place in a collection.
  c->SourceComments().Add(comment("##SUMMARY", "line"), "1");
  const ObjectPtr copy = c->call("Clone").toObject();
  EXPECT_EQ(copy->get("Description").toString(), "d");
  EXPECT_EQ(copy->get("SourceStartLine").toInteger(), 12);
  EXPECT_TRUE(copy->get("Parent").isNothing());
  auto typed = std::static_pointer_cast<TaggedComment>(copy);
  ASSERT_EQ(typed->SourceComments().Count(), 1);
  EXPECT_NE(typed->SourceComments().Item(1), c->SourceComments().Item(1));
  typed->Description("changed");
  EXPECT_EQ(c->Description(), "d");
}

TEST(TaggedComments, DefinitionsGiveTheCommentItsKind) {
  auto defs = std::make_shared<TaggedCommentDefs>();
  auto summary = std::make_shared<TaggedCommentDef>();
  summary->TagIdentifier = "##SUMMARY";
  summary->WrapType = 2;
  defs->Add(summary, summary->TagIdentifier);
  const auto c = comment("##summary", "text");
  c->set("TaggedCommentDefs", std::make_shared<TaggedCommentDefsRef>(defs));
  EXPECT_EQ(c->TaggedCommentDef(), summary);
  EXPECT_EQ(c->get("TaggedCommentDef").toObject()->get("WrapType").toInteger(), 2);
  c->TagIdentifier("##UNDEFINED");
  EXPECT_EQ(c->TaggedCommentDef(), nullptr);
  EXPECT_EQ(test::failureNumber([&] { c->set("TaggedCommentDefs", std::make_shared<Block>()); }), err::TypeMismatch);
}

TEST(vbProjectComments, AppendDescriptionJoinsByWrapType) {
  struct {
    const char* description;
    const char* text;
    long wrap;
    const char* expected;
  } cases[] = {{"", "", 3, ""},
               {"a", "", 1, "a  "},
               {"a", "b", 2, "a<crlf>b"},
               {"a", "b", 3, "a<p>b</p>"},
               {"a", "<P>b</P>", 3, "a<P>b</P>"},
               {"", "b", 3, "<p>b</p>"},
               {"", "b", 2, "b"},
               {"a", "b", 0, "a b"}};
  for (const auto& c : cases) {
    std::string description = c.description, text = c.text;
    EXPECT_EQ(vbProject::AppendDescription(description, text, c.wrap), c.expected) << c.description << "+" << c.text;
    EXPECT_EQ(description, c.expected);
  }
}

class AddTaggedComment : public ::testing::Test {
 protected:
  void SetUp() override {
    for (auto [tag, flags] : {std::pair{"##PARAM", "h"}, {"##SEEALSO", ""}, {"##EXCLUDE", "h"}}) {
      auto def = std::make_shared<TaggedCommentDef>();
      def->TagIdentifier = tag;
      def->CommentFlags = flags;
      def->WrapType = 2;
      defs->Add(def, tag);
    }
  }
  TaggedCommentPtr make(const char* tag, const char* text, const char* qualifier = "") {
    auto c = comment(tag, text, qualifier);
    c->TaggedCommentDefs(defs);
    c->Parent(block);
    return c;
  }
  std::shared_ptr<TaggedCommentDefs> defs = std::make_shared<TaggedCommentDefs>();
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("Acme");
  std::shared_ptr<Block> block = project->AddComponent("Widget")->AddBlock("Run");
};

TEST_F(AddTaggedComment, MergingKindsJoinUnlessPreservedOrBuffered) {
  auto& col = block->TaggedComments();
  project->AddTaggedComment(col, make("##PARAM", "one", "x"));
  project->AddTaggedComment(col, make("##PARAM", "two", "y"));
  ASSERT_EQ(col.Count(), 1);
  EXPECT_EQ(col.Item(1)->Description(), "one<crlf>two");

  project->AddTaggedComment(col, make("##PARAM", "three"), false, true);  // preserved: stands beside
  EXPECT_EQ(col.Count(), 2);

  TaggedComments buffer;
  project->AddTaggedComment(buffer, make("##PARAM", "a", "x"), true);
  project->AddTaggedComment(buffer, make("##PARAM", "b", "y"), true);
  EXPECT_EQ(buffer.Count(), 2);
  EXPECT_TRUE(buffer.Exists("##PARAM:y"));
}

TEST_F(AddTaggedComment, OtherKindsNeverMergeAndExcludeMarksTheItem) {
  auto& col = block->TaggedComments();
  const ObjectPtr late = project;
  late->call("AddTaggedComment", {block->TaggedCommentsPtr(), make("##SEEALSO", "a")});
  late->call("AddTaggedComment", {block->TaggedCommentsPtr(), make("##SEEALSO", "b")});
  EXPECT_EQ(col.Count(), 2);
  EXPECT_TRUE(block->IncludeFlag());
  project->AddTaggedComment(col, make("##EXCLUDE", ""));
  EXPECT_TRUE(block->ExcludeFlag());
  EXPECT_FALSE(block->IncludeFlag());
}

TEST(RootModels, FactoriesMakeProjectsAndGroups) {
  Root root;
  const auto project = root.NewVBProject();
  const auto& o = project->ProjectOptions();
  const bool options[] = {o.IncludePublic,      o.IncludeFriend,   o.IncludeProtected,    o.IncludePrivate,
                          o.ReadSourceComments, o.ReadXMLComments, o.MergeSourceComments, o.KeepSourceText};
  EXPECT_EQ(std::count(std::begin(options), std::end(options), true), 7);
  EXPECT_FALSE(project->IsDotNet());

  vbProject::SetDotNetReader([](vbProject& p, const std::string& file) { p.AddComponent(file + ".Type"); });
  const auto dotNet = root.NewDotNetVBProject("lib.dll");
  vbProject::SetDotNetReader(nullptr);
  EXPECT_TRUE(TypeMatch(dotNet, "vbProject"));
  EXPECT_TRUE(dotNet->IsDotNet());
  EXPECT_EQ(dotNet->FileName(), "lib.dll");
  EXPECT_TRUE(dotNet->FindComponent("lib.dll.Type"));

  const auto group = root.NewVBProjectGroup();
  group->Add(project);
  EXPECT_TRUE(TypeMatch(group, "VBPROJECTGROUP"));
  EXPECT_EQ(project->Parent(), group);
  EXPECT_EQ(project->Assemblies(), group->Assemblies());
}

}  // namespace
}  // namespace kv
