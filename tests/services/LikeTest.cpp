#include <gtest/gtest.h>

#include "kavrel/Failure.h"
#include "services/Like.h"
#include "support/Failures.h"

using kv::Like;

TEST(Like, Wildcards) {
  EXPECT_TRUE(Like("", ""));
  EXPECT_TRUE(Like("", "*"));
  EXPECT_FALSE(Like("", "?"));
  EXPECT_TRUE(Like("abc", "a*"));
  EXPECT_TRUE(Like("abc", "*c"));
  EXPECT_TRUE(Like("abc", "a*b*c"));
  EXPECT_TRUE(Like("aXbXbc", "a*bc"));  // needs a step back after the first "b"
  EXPECT_FALSE(Like("abcd", "a*c"));
  EXPECT_TRUE(Like("abc", "a?c"));
  EXPECT_FALSE(Like("ac", "a?c"));
  EXPECT_TRUE(Like("a7c", "a#c"));
  EXPECT_FALSE(Like("abc", "a#c"));
  EXPECT_TRUE(Like("x", "***x***"));
}

TEST(Like, CharacterLists) {
  EXPECT_TRUE(Like("F", "[A-Z]"));
  EXPECT_FALSE(Like("f", "[A-Z]"));
  EXPECT_TRUE(Like("b", "[a-cx-z]"));
  EXPECT_TRUE(Like("y", "[a-cx-z]"));
  EXPECT_FALSE(Like("m", "[a-cx-z]"));
  EXPECT_TRUE(Like("m", "[!a-cx-z]"));
  EXPECT_FALSE(Like("b", "[!a-c]"));
  EXPECT_TRUE(Like("-", "[-a]"));
  EXPECT_TRUE(Like("-", "[a-]"));
  EXPECT_TRUE(Like("!", "[!]"));
  EXPECT_TRUE(Like("ab", "a[]b"));
}

TEST(Like, BracketsQuoteSpecialCharacters) {
  EXPECT_TRUE(Like("[", "[[]"));
  EXPECT_TRUE(Like("*", "[*]"));
  EXPECT_FALSE(Like("x", "[*]"));
  EXPECT_TRUE(Like("a?", "a[?]"));
  EXPECT_FALSE(Like("ab", "a[?]"));
  EXPECT_TRUE(Like("#1", "[#]#"));
  EXPECT_TRUE(Like("a]", "a]"));
  EXPECT_TRUE(Like("[x]", "[[]x]"));
}

TEST(Like, CountsCharactersNotBytes) {
  EXPECT_TRUE(Like("é", "?"));
  EXPECT_TRUE(Like("日本", "??"));
  EXPECT_TRUE(Like("😀", "?"));
  EXPECT_TRUE(Like("ö", "[ä-ü]"));
  EXPECT_FALSE(Like("z", "[ä-ü]"));
  EXPECT_TRUE(Like("Größe.kvp", "Gr??e.*"));
}

TEST(Like, CaseIsBinaryUnlessIgnored) {
  EXPECT_FALSE(Like("ABC", "abc"));
  EXPECT_TRUE(Like("ABC", "abc", true));
  EXPECT_TRUE(Like("ÄRGER", "ä*", true));
  EXPECT_TRUE(Like("Q", "[a-z]", true));
}

TEST(Like, MalformedPatternsFail) {
  for (const char* pattern : {"[abc", "a[", "[z-a]"}) {
    EXPECT_EQ(kv::test::failureNumber([&] { Like("a", pattern); }), 93) << pattern;
  }
}
