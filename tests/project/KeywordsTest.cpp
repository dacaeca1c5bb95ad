#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "project/Keywords.h"

namespace kv {
namespace {

std::vector<std::string> names(const Keywords& store) {
  std::vector<std::string> out;
  for (const auto& keyword : store) out.push_back(keyword->Name);
  return out;
}

std::vector<std::string> targets(const Keyword& keyword) {
  std::vector<std::string> out;
  for (const auto& jump : keyword.Jumps) out.push_back(jump.Target);
  return out;
}

TEST(KeywordsTest, SameHierarchicalKeywordFromTwoPagesSharesLevelsAndCollectsJumps) {
  Keywords store;
  store.AddHierarchicalKeyword("Item, Sub", "a.html");
  store.AddHierarchicalKeyword("item,Sub ", "b.html");
  ASSERT_EQ(store.Count(), 1);
  const auto& top = store.Item(1);
  EXPECT_TRUE(top->Jumps.empty());
  ASSERT_TRUE(top->HasChildKeywords());
  ASSERT_EQ(top->ChildKeywords().Count(), 1);
  const auto& sub = top->ChildKeywords().Item(1);
  EXPECT_EQ(sub->Name, "Sub");
  EXPECT_EQ(targets(*sub), (std::vector<std::string>{"a.html", "b.html"}));
}

TEST(KeywordsTest, OnlyTheDeepestLevelLeadsToThePage) {
  Keywords store;
  store.AddHierarchicalKeyword("A, B, , C", "page.html");
  const auto& a = store.Item("A");
  const auto& b = a->ChildKeywords().Item("B");
  const auto& c = b->ChildKeywords().Item("C");
  EXPECT_TRUE(a->Jumps.empty());
  EXPECT_TRUE(b->Jumps.empty());
  EXPECT_EQ(targets(*c), std::vector<std::string>{"page.html"});

  // A blank last level leaves the keyword without a jump at all.
  store.AddHierarchicalKeyword("D, E, ", "lost.html");
  EXPECT_TRUE(store.Item("D")->ChildKeywords().Item("E")->Jumps.empty());
}

TEST(KeywordsTest, EmptyFirstLevelFilesUnderWhatFollows) {
  struct Case {
    std::string source;
    std::vector<std::string> top;
  };
  for (const Case& c : {Case{",Sub", {"Sub"}}, Case{", Top, Leaf", {"Top"}}, Case{", ", {}}, Case{",,", {}}}) {
    Keywords store;
    store.AddHierarchicalKeyword(c.source, "t.html");
    EXPECT_EQ(names(store), c.top) << c.source;
  }
  Keywords store;
  store.AddHierarchicalKeyword(", Top, Leaf", "t.html");
  EXPECT_EQ(targets(*store.Item("Top")->ChildKeywords().Item("Leaf")), std::vector<std::string>{"t.html"});
}

TEST(KeywordsTest, SortOrdersEveryLevelIgnoringCase) {
  Keywords store;
  for (const char* source : {"zeta, b", "beta, Z", "beta, a", "zeta, A"})
    store.AddHierarchicalKeyword(source, "x.html");
  store.AddSimpleKeyword("Alpha", "x.html");
  store.AddSimpleKeyword("alpha", "y.html");
  store.Sort();
  EXPECT_EQ(names(store), (std::vector<std::string>{"Alpha", "beta", "zeta"}));
  EXPECT_EQ(names(store.Item("beta")->ChildKeywords()), (std::vector<std::string>{"a", "Z"}));
  EXPECT_EQ(names(store.Item("zeta")->ChildKeywords()), (std::vector<std::string>{"A", "b"}));
  EXPECT_EQ(targets(*store.Item("alpha")), (std::vector<std::string>{"x.html", "y.html"}));
  // Keys survive the sort: the store is still found by name.
  store.AddSimpleKeyword("BETA", "z.html");
  EXPECT_EQ(store.Count(), 3);
}

TEST(KeywordsTest, KeywordIsReachableByMemberName) {
  Keywords store;
  auto keyword = store.AddHierarchicalKeyword("Top, Leaf", "t.html");
  ObjectPtr object = keyword;
  EXPECT_EQ(object->get("name").toString(), "Top");
  EXPECT_TRUE(object->get("HasChildKeywords").toBool());
  EXPECT_EQ(object->get("JumpCount").toInteger(), 0);
  EXPECT_ANY_THROW(object->get("Nope"));
}

}  // namespace
}  // namespace kv
