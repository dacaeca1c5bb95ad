// The model that a parse becomes: kinds, qualified names, places, and doc comments as tagged
// comments of the kinds a configuration defines.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CppItems.h"
#include "kavrel/model/Block.h"
#include "kavrel/model/TaggedComments.h"

namespace kv::cpp {
namespace {

const std::string kData = KV_TEST_DATA_DIR "/kvcpp/";

std::shared_ptr<const TaggedCommentDefs> definitions(std::vector<std::string> tags) {
  auto defs = std::make_shared<TaggedCommentDefs>();
  for (const auto& tag : tags) {
    auto def = std::make_shared<TaggedCommentDef>();
    def->TagIdentifier = tag;
    defs->Add(def, tag);
  }
  return defs;
}

std::string comment(const Item& item, const std::string& tag) {
  return item.HasTaggedComments() && item.TaggedComments().Exists(tag) ? item.TaggedComments().Item(tag)->Description()
                                                                       : std::string();
}

class CppItemsTest : public testing::Test {
 protected:
  CppItems make(const std::string& theme, std::vector<std::string> tags) {
    CppInput input;
    input.Sources = {kData + theme};
    parsed = Parse(input);
    return CppItems(
        parsed, "test", [](const std::string& f) { return f.substr(f.rfind('/') + 1); }, definitions(std::move(tags)));
  }
  ParseResult parsed;
};

TEST_F(CppItemsTest, CommentsBecomeTaggedCommentsOnItemsAndTheirParameters) {
  const CppItems items = make("comments", {"##SUMMARY", "##REMARKS", "##PARAM", "##TYPEPARAM", "##RETURNS", "##NOTE",
                                           "##SEEALSO", "##DEPRECATED"});
  const auto slashes = std::dynamic_pointer_cast<Block>(items.Find("slashes"));
  ASSERT_TRUE(slashes);
  EXPECT_EQ(slashes->Description(), "Triple-slash summary.");
  EXPECT_EQ(comment(*slashes, "##SUMMARY"), "Triple-slash summary.");
  EXPECT_EQ(comment(*slashes, "##REMARKS"), "<p>Details in a second paragraph.</p>");
  EXPECT_EQ(comment(*slashes, "##RETURNS"), "the sum of <code>a</code> and <code>b</code>");
  ASSERT_EQ(slashes->Parameters().size(), 2u);
  EXPECT_EQ(slashes->Parameters()[1]->TypeText(), "int");
  EXPECT_EQ(comment(*slashes->Parameters()[1], "##PARAM"), "the second value");
  EXPECT_EQ(slashes->Parameters()[1]->TaggedComments().Item("##PARAM")->Qualifier(), "b");

  const auto exclamation = items.Find("exclamation");
  EXPECT_EQ(comment(*exclamation, "##NOTE"), "<p>Mind the gap.</p>");
  EXPECT_EQ(comment(*exclamation, "##SEEALSO"), "slashes");
  EXPECT_EQ(comment(*items.Find("stars"), "##DEPRECATED"), "Use slashes instead.");
  const auto qt = std::dynamic_pointer_cast<Block>(items.Find("qtStyle"));
  EXPECT_EQ(comment(*qt->GenericArguments().at(0), "##TYPEPARAM"), "the element type");
  EXPECT_EQ(comment(*items.Find("Holder~count"), "##SUMMARY"), "How many there are.");
  EXPECT_FALSE(items.Find("undocumented")->HasTaggedComments());
}

TEST_F(CppItemsTest, SectionsOfKindsTheConfigurationLacksJoinTheRemarks) {
  const CppItems items = make("comments", {"##SUMMARY", "##REMARKS"});
  const auto slashes = items.Find("slashes");
  EXPECT_THAT(comment(*slashes, "##REMARKS"),
              testing::HasSubstr("<p>the sum of <code>a</code> and <code>b</code></p>"));
  EXPECT_THAT(comment(*slashes, "##REMARKS"), testing::HasSubstr("<p><code>b</code>: the second value</p>"));
  EXPECT_FALSE(slashes->TaggedComments().Exists("##RETURNS"));
}

TEST_F(CppItemsTest, DeclarationsBecomeTheKindsOfTheModel) {
  const CppItems items = make("overloads", {"##SUMMARY"});
  EXPECT_EQ(items.Headers().size(), 1u);
  const auto point = std::dynamic_pointer_cast<Component>(items.Find("geo~Point"));
  ASSERT_TRUE(point);
  EXPECT_EQ(point->ComponentKind(), "Class");
  EXPECT_EQ(point->QualifiedPrefix(), "geo");
  struct Expect {
    const char* name;
    const char* type;
    const char* definition;
  };
  for (const Expect& e :
       {Expect{"overloads.h", "Component", defs::Header},
        Expect{"geo~Point~scale~(double, double)", "Block", defs::Method},
        Expect{"geo~Point~x", "Variable", defs::Field}, Expect{"geo~Point~mY", "Variable", defs::Private},
        Expect{"geo~distance~(const Point &)", "Block", defs::Function},
        Expect{"geo~Colour", "Enumeration", defs::Enumeration}, Expect{"geo~Coordinate", "Variable", defs::Typedef},
        Expect{"geo~pointCount", "Variable", defs::Variable}}) {
    const ItemPtr item = items.Find(e.name);
    ASSERT_TRUE(item) << e.name;
    EXPECT_EQ(item->typeName(), e.type) << e.name;
    EXPECT_EQ(CppItems::DefinitionOf(*item), e.definition) << e.name;
  }
  const auto ctor = std::dynamic_pointer_cast<Block>(items.Find("geo~Point~Point~(double, double)"));
  EXPECT_EQ(ctor->BlockType(), BlockType::Constructor);
  EXPECT_EQ(std::dynamic_pointer_cast<Block>(items.Find("geo~Point~operator=="))->BlockType(), BlockType::Operator);
  EXPECT_EQ(std::dynamic_pointer_cast<Block>(items.Find("geo~Point~length"))->ReturnType(), "double");
  // Where each declaration stands, by member name as templates read it.
  EXPECT_EQ(ctor->get("SourceLine").toString(), "12");
  EXPECT_EQ(ctor->get("SourceFileName").toString(), kData + "overloads/overloads.h");
  EXPECT_EQ(ctor->get("DeclarationText").toString(), "Point(double x, double y)");
  EXPECT_EQ(items.Find("geo~Colour")->get("Members").toObject()->get("Count").toString(), "3");
}

TEST_F(CppItemsTest, ItemsFollowTheDefinitionsAndTheAccessFilter) {
  const CppItems items = make("overloads", {});
  const ObjectPtr header = items.Headers().front();
  const ObjectPtr point = items.Find("geo~Point");
  const auto names = [&](const std::string& def, const ObjectPtr& parent, AccessFilter access) {
    std::vector<std::string> out;
    for (const auto& item : items.Items(def, parent, access)) out.push_back(item->get("Name").toString());
    return out;
  };
  EXPECT_EQ(names(defs::Class, header, {}), std::vector<std::string>{"Point"});
  EXPECT_EQ(names(defs::Typedef, header, {}), (std::vector<std::string>{"Points", "Coordinate"}));
  EXPECT_EQ(names(defs::Field, point, {}), std::vector<std::string>{"x"});
  EXPECT_THAT(names(defs::Method, point, {}), testing::Not(testing::Contains("touch")));
  EXPECT_THAT(names(defs::Method, point, {true, false}), testing::Contains("touch"));
  EXPECT_TRUE(names(defs::Private, point, {true, false}).empty());
  EXPECT_EQ(names(defs::Private, point, {false, true}), std::vector<std::string>{"mY"});
  EXPECT_TRUE(names(defs::Header, point, {}).empty());
}

// Bases are read by member name, as link and diagram features read them: "access [virtual] type".
TEST_F(CppItemsTest, BasesKeepTheirAccessAndVirtualness) {
  const CppItems items = make("bases", {});
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"shapes~Shape", {}},
      {"shapes~Plain", {"private Shape"}},
      {"shapes~Open", {"public Shape"}},
      {"shapes~Mixed", {"public Shape", "protected virtual Named", "private Counted"}},
      {"shapes~Box", {"public Holder<T>", "public virtual Shape"}},
      {"shapes~Circle", {"public Holder<Circle>"}},
      {"shapes~ViaAlias", {"public ShapeAlias"}},
  };
  for (const auto& [name, expected] : cases) {
    const ItemPtr item = items.Find(name);
    ASSERT_TRUE(item) << name;
    const ObjectPtr list = item->get("BaseTypes").toObject();
    ASSERT_TRUE(list) << name;
    EXPECT_EQ(item->get("HasBaseTypes").toBool(), !expected.empty()) << name;
    std::vector<std::string> bases;
    for (std::int64_t i = 1; i <= list->get("Count").toInteger(); ++i) {
      const ObjectPtr base = list->call("Item", {i}).toObject();
      std::string text = base->get("Access").toString();
      if (base->get("IsVirtual").toBool()) text += " virtual";
      bases.push_back(text + " " + base->get("Name").toString());
    }
    EXPECT_EQ(bases, expected) << name;
  }
}

TEST(CppItemNames, QualifiedNamesAreUsableAsPageNames) {
  CppInput input;
  input.Sources = {kData + "templates"};
  const ParseResult parsed = Parse(input);
  // A header in a subfolder, and overloads told apart by template arguments.
  const CppItems items(
      parsed, "test", [](const std::string&) { return std::string("sub/templates.h"); }, definitions({}));
  ASSERT_EQ(items.Headers().size(), 1u);
  EXPECT_EQ(items.Headers()[0]->Name(), "sub/templates.h");
  EXPECT_TRUE(items.Find("sub~templates.h"));
  EXPECT_TRUE(items.Find("take~(Buffer[int])"));
  EXPECT_TRUE(items.Find("take~(Buffer[char])"));
}

}  // namespace
}  // namespace kv::cpp
