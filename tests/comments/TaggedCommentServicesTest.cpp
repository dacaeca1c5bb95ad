// The tagged comment services as Root publishes them: adding by the rules of a kind, retired
// kinds, the text a page reads, descriptions rebuilt from comments, and the lookups.
#include <gtest/gtest.h>

#include "kavrel/Model.h"
#include "kavrel/TaggedCommentDef.h"
#include "project/AdditionalFiles.h"
#include "project/KVProject.h"
#include "root/Root.h"
#include "support/Items.h"

namespace kv {
namespace {

struct DefSpec {
  const char* tag;
  const char* flags = "h";
  long wrap = 2;
  bool append = false;
  bool mergeInBuffer = false;
  const char* upgradedTo = "";
  bool stop = false;
};

std::shared_ptr<TaggedCommentDefs> makeDefs(std::initializer_list<DefSpec> specs) {
  auto defs = std::make_shared<TaggedCommentDefs>();
  for (const auto& s : specs) {
    auto def = std::make_shared<TaggedCommentDef>();
    def->TagIdentifier = s.tag;
    def->CommentFlags = s.flags;
    def->WrapType = s.wrap;
    def->AppendToDescription = s.append;
    def->MergeInBuffer = s.mergeInBuffer;
    def->UpgradedTagIdentifier = s.upgradedTo;
    def->UpgradeStop = s.stop;
    defs->Add(def, s.tag);
  }
  return defs;
}

TaggedCommentPtr makeComment(const std::shared_ptr<TaggedCommentDefs>& defs, const char* tag, const char* text,
                             const char* qualifier = "") {
  auto c = std::make_shared<TaggedComment>(tag, text, qualifier);
  c->TaggedCommentDefs(defs);
  return c;
}

class TaggedCommentServices : public ::testing::Test {
 protected:
  Root root;
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("Acme");
  std::shared_ptr<Component> widget = project->AddComponent("Widget");
  std::shared_ptr<Block> run = widget->AddBlock("Run");
};

TEST_F(TaggedCommentServices, AppendDescriptionTurnsAnEmptyAdditionIntoABlank) {
  std::string description = "Größe", text;
  EXPECT_EQ(root.AppendDescription(description, text, 1), "Größe  ");
  EXPECT_EQ(text, " ");  // the caller's text takes the blank too
}

TEST_F(TaggedCommentServices, AddMergesOnlyKindsThatAskForIt) {
  struct {
    const char* name;
    DefSpec def;
    bool defined, isBuffer, preserve;
    const char* secondQualifier;
    long count;
    const char* firstText;
  } cases[] = {
      {"merging kind, different qualifiers", {"##PARAM"}, true, false, false, "y", 1, "one<crlf>two"},
      {"merging kind, preserved", {"##PARAM"}, true, false, true, "y", 2, "one"},
      {"merging kind in a buffer, other qualifier", {"##PARAM"}, true, true, false, "y", 2, "one"},
      {"merging kind in a buffer, same qualifier", {"##PARAM"}, true, true, false, "x", 1, "one<crlf>two"},
      {"kept apart in buffers", {"##PARAM", "h", 2, false, true}, true, true, false, "x", 2, "one"},
      {"merged outside buffers", {"##PARAM", "h", 2, false, true}, true, false, false, "x", 1, "one<crlf>two"},
      {"kind without h, merge asked", {"##SEEALSO", "f"}, true, false, false, "", 2, "one"},
      {"undefined kind merges by a blank", {"##PARAM"}, false, false, false, "y", 1, "one two"},
      {"undefined kind, preserved", {"##PARAM"}, false, false, true, "y", 2, "one"},
  };
  for (const auto& c : cases) {
    const auto defs = c.defined ? makeDefs({c.def}) : std::make_shared<TaggedCommentDefs>();
    TaggedComments col;
    root.AddTaggedComment(col, makeComment(defs, c.def.tag, "one", "x"), c.isBuffer, c.preserve);
    root.AddTaggedComment(col, makeComment(defs, c.def.tag, "two", c.secondQualifier), c.isBuffer, c.preserve);
    ASSERT_EQ(col.Count(), c.count) << c.name;
    EXPECT_EQ(col.Item(1)->Description(), c.firstText) << c.name;
  }
}

TEST_F(TaggedCommentServices, AddClearsTheBufferMarkOutsideBuffersAndExcludesTheItem) {
  const auto defs = makeDefs({{"##SUMMARY"}, {"##exclude"}});
  const auto buffered = makeComment(defs, "##SUMMARY", "a");
  buffered->BufferComment(true);
  TaggedComments buffer;
  root.AddTaggedComment(buffer, buffered, true, false);
  EXPECT_TRUE(buffered->BufferComment());
  root.AddTaggedComment(run->TaggedComments(), buffered, false, false);
  EXPECT_FALSE(buffered->BufferComment());

  // The item is the comment's, or else the collection's.
  for (const auto& [item, parent] : {std::pair{ItemPtr(run), ItemPtr(run)}, {ItemPtr(project), ItemPtr()}}) {
    const auto exclude = makeComment(defs, "##EXCLUDE", "");
    exclude->Parent(parent);
    root.AddTaggedComment(item->TaggedComments(), exclude, false, false);
    EXPECT_TRUE(item->ExcludeFlag()) << item->Name();
    EXPECT_FALSE(item->IncludeFlag()) << item->Name();
  }

  // Without a definition the comment is only a comment.
  const auto undefined = std::make_shared<TaggedComment>("##EXCLUDE", "");
  undefined->Parent(widget);
  root.AddTaggedComment(widget->TaggedComments(), undefined, false, false);
  EXPECT_FALSE(widget->ExcludeFlag());
}

TEST_F(TaggedCommentServices, UpgradeFollowsRetiredKindsToTheLastDefinedOne) {
  const auto defs = makeDefs({{"##DESC", "h", 2, false, false, "##ABSTRACT"},
                              {"##ABSTRACT", "h", 2, false, false, "##SUMMARY"},
                              {"##SUMMARY"},
                              {"##NOTE", "h", 2, false, false, "##GONE"},
                              {"##KEPT", "h", 2, false, false, "##SUMMARY", true},
                              {"##PING", "h", 2, false, false, "##PONG"},
                              {"##PONG", "h", 2, false, false, "##PING"}});
  struct {
    const char* from;
    const char* to;  // nullptr: no definition
  } cases[] = {{"##DESC", "##SUMMARY"}, {"##desc", "##SUMMARY"}, {"##SUMMARY", "##SUMMARY"}, {"##NOTE", "##NOTE"},
               {"##KEPT", "##KEPT"},    {"##UNKNOWN", nullptr},  {"##PING", "##PONG"}};
  for (const auto& c : cases) {
    const auto def = root.UpgradeTaggedComment(c.from, defs.get());
    if (!c.to) {
      EXPECT_EQ(def, nullptr) << c.from;
      continue;
    }
    ASSERT_NE(def, nullptr) << c.from;
    EXPECT_EQ(def->TagIdentifier, c.to) << c.from;
  }
  EXPECT_EQ(root.UpgradeTaggedComment("##SUMMARY", nullptr), nullptr);
}

TEST_F(TaggedCommentServices, GetTaggedCommentReadsEachKindOnceWithLineBreaksForPages) {
  const auto defs =
      makeDefs({{"##SUMMARY"}, {"##REMARKS"}, {"##VALUE"}, {"##OLDSUMMARY", "h", 2, false, false, "##SUMMARY"}});
  auto& col = run->TaggedComments();
  col.CollectionIsNotKeyed_SearchByTagID(true);
  col.Add(makeComment(defs, "##REMARKS", "Ünter<CRLF>zwei"));
  col.Add(makeComment(defs, "##SUMMARY", "Größe<crlf>"));
  col.Add(makeComment(defs, "##SUMMARY", "second summary"));    // only the first of a kind is read
  col.Add(makeComment(defs, "##VALUE", "5 \u212A<Crlf>warm"));  // the Kelvin sign lower-cases to a one-byte "k"
  struct {
    const char* ids;
    const char* expected;
  } cases[] = {{"##SUMMARY", "Größe<br>"},
               {"##oldsummary", "Größe<br>"},
               {"##OLDSUMMARY,##SUMMARY,##REMARKS", "Größe<br>Ünter<br>zwei"},
               {"##REMARKS, ##SUMMARY", "Ünter<br>zweiGröße<br>"},
               {"##UNKNOWN,##REMARKS", "Ünter<br>zwei"},
               {"##VALUE", "5 \u212A<br>warm"},
               {"##UNKNOWN", ""}};
  for (const auto& c : cases) EXPECT_EQ(root.GetTaggedComment(run, c.ids, defs.get()), c.expected) << c.ids;

  EXPECT_EQ(root.GetTaggedComment(nullptr, "##SUMMARY", defs.get()), "");
  EXPECT_EQ(root.GetTaggedComment(test::makeItem("Folder"), "##SUMMARY", defs.get()), "");
}

TEST_F(TaggedCommentServices, GetTaggedCommentExChecksOnlyTextsWithImages) {
  const auto defs = makeDefs({{"##SUMMARY"}, {"##REMARKS"}});
  run->TaggedComments().Add(makeComment(defs, "##SUMMARY", "See <IMG src=\"a.png\">"), "##SUMMARY");
  run->TaggedComments().Add(makeComment(defs, "##REMARKS", "plain"), "##REMARKS");
  int checks = 0;
  const comments::ImageTagCheck check = [&](const std::string& text) {
    ++checks;
    return text + "!";
  };
  EXPECT_EQ(root.GetTaggedCommentEx(run, "##SUMMARY", defs.get(), check), "See <IMG src=\"a.png\">!");
  EXPECT_EQ(root.GetTaggedCommentEx(run, "##REMARKS", defs.get(), check), "plain");
  EXPECT_EQ(checks, 1);
}

TEST_F(TaggedCommentServices, ImagesOfAProjectsCommentsPointAtItsAdditionalFiles) {
  const auto defs = makeDefs({{"##SUMMARY"}});
  run->TaggedComments().Add(makeComment(defs, "##SUMMARY", "Größe <img src=\"file:///art/chart.png\">"), "##SUMMARY");
  const auto project = KVProject::New();
  EXPECT_EQ(root.GetTaggedCommentEx(run, "##SUMMARY", defs.get(), *project),
            "Größe <img src=\"file:///art/chart.png\">");
  auto chart = std::make_shared<AdditionalFile>();
  chart->FileName = "/art/chart.png";
  project->AdditionalFiles->Add(chart);
  EXPECT_EQ(root.GetTaggedCommentEx(run, "##SUMMARY", defs.get(), *project), "Größe <img src=\"chart.png\">");
  project->Terminate();
}

TEST_F(TaggedCommentServices, UpdateObjectDescriptionRebuildsFromAppendingKinds) {
  const auto defs = makeDefs({{"##SUMMARY", "h", 3, true}, {"##REMARKS", "h", 2, true}, {"##SEEALSO", "", 2, false}});
  const auto count = run->AddParameter("count");
  const auto colours = widget->AddEnumeration("Colours");
  const auto red = colours->AddMember("Red");
  widget->TaggedComments().Add(makeComment(defs, "##SUMMARY", "Ein Widget"), "##SUMMARY");
  run->TaggedComments().Add(makeComment(defs, "##SUMMARY", "Läuft"), "##SUMMARY");
  run->TaggedComments().Add(makeComment(defs, "##SEEALSO", "Stop"), "##SEEALSO");
  run->TaggedComments().Add(makeComment(defs, "##REMARKS", "schnell"), "##REMARKS");
  count->TaggedComments().Add(makeComment(defs, "##SUMMARY", "<P>Wie oft</P>"), "##SUMMARY");
  red->TaggedComments().Add(makeComment(defs, "##REMARKS", "Rot"), "##REMARKS");
  run->TaggedDescription("stale");
  count->Description("stale");

  root.UpdateObjectDescription(run);
  EXPECT_EQ(run->TaggedDescription(), "<p>Läuft</p><crlf>schnell");
  EXPECT_EQ(run->Description(), "");
  EXPECT_EQ(count->Description(), "stale");  // not visited without recursion

  root.UpdateObjectDescription(project, true);
  EXPECT_EQ(widget->TaggedDescription(), "<p>Ein Widget</p>");
  EXPECT_EQ(count->Description(), "<P>Wie oft</P>");  // a parameter has no tagged description
  EXPECT_EQ(red->TaggedDescription(), "Rot");
  EXPECT_EQ(colours->TaggedDescription(), "");

  // A walk from the project reaches every kind of member.
  const auto point = widget->AddUDT("Point");
  const auto delegate = std::make_shared<Block>("Handler");
  widget->Block(delegate);
  const ItemPtr reached[] = {point->AddMember("X"), widget->AddEvent("Clicked")->AddParameter("sender"),
                             widget->AddDeclaration("Beep")->AddParameter("hz"), widget->AddVariable("mSize"),
                             delegate->AddParameter("e")};
  for (const auto& item : reached) item->TaggedComments().Add(makeComment(defs, "##REMARKS", "Hinweis"), "##REMARKS");
  root.UpdateObjectDescription(project, true);
  for (const auto& item : reached)
    EXPECT_EQ(getOr(item, "TaggedDescription", item->Description()).toString(), "Hinweis") << item->Name();
}

TEST_F(TaggedCommentServices, LookupsAndKindQuestions) {
  TaggedComments col;
  col.CollectionIsNotKeyed_SearchByTagID(true);
  col.Add(std::make_shared<TaggedComment>("##PARAM", "first", "x"));
  col.Add(std::make_shared<TaggedComment>("##PARAM", "second", "y"));
  EXPECT_EQ(root.FindTaggedComment(&col, "##param")->Description(), "first");
  EXPECT_EQ(root.FindTaggedComment(&col, "##RETURNS"), nullptr);
  EXPECT_EQ(root.FindTaggedComment(nullptr, "##PARAM"), nullptr);

  const auto count = run->AddParameter("count");
  EXPECT_EQ(root.GetParameter(&run->Parameters(), "COUNT"), count);
  EXPECT_EQ(root.GetParameter(&run->Parameters(), "size"), nullptr);
  EXPECT_EQ(root.GetParameter(nullptr, "count"), nullptr);

  const auto list = project->AddComponent("WidgetList");
  list->TaggedComments().Add(std::make_shared<TaggedComment>("##MODULE_IS_COLLECTION", ""), "##MODULE_IS_COLLECTION");
  const auto marked = project->AddComponent("Widgets");
  marked->ModuleIsCollection(true);
  run->TaggedComments().Add(std::make_shared<TaggedComment>("##MODULE_IS_COLLECTION", ""), "##MODULE_IS_COLLECTION");
  struct {
    const char* name;
    ObjectPtr item;
    bool collection, supports, has;
  } cases[] = {
      {"plain component", widget, false, true, false},
      {"component with the comment", list, true, true, true},
      {"marked component", marked, true, true, false},
      {"block with the comment", run, false, true, true},
      {"diagram item", test::makeItem("DiagramItem", {{"IsCollection", true}}), true, false, false},
      {"item without comments", test::makeItem("Folder"), false, false, false},
      {"item answering for itself", test::makeItem("Folder", {{"HasTaggedComments", true}}), false, false, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(root.IsItemCollection(c.item), c.collection) << c.name;
    EXPECT_EQ(root.SupportsTaggedComments(c.item), c.supports) << c.name;
    EXPECT_EQ(root.ItemHasTaggedComments(c.item), c.has) << c.name;
  }
}

TEST_F(TaggedCommentServices, StandardCommentFileHasTheRootAttributesInOrder) {
  const XMLDocument doc = root.CreateStandardCommentFile("VB6", "Acme~Größe");
  EXPECT_EQ(doc.RootNode().Name(), "KavrelComments");
  EXPECT_NE(doc.Xml().find(R"(<KavrelComments Version="5.00" DocType="VB6" Moniker="Acme~Größe" )"
                           R"(ShowInherited="False" Template=""/>)"),
            std::string::npos)
      << doc.Xml();
}

}  // namespace
}  // namespace kv
