#include <gtest/gtest.h>

#include "kavrel/Text.h"

using namespace kv::text;

TEST(Text, CountsUtf16CodeUnits) {
  EXPECT_EQ(length("abc"), 3);
  EXPECT_EQ(length("Größe"), 5);
  EXPECT_EQ(length("日本語"), 3);
  EXPECT_EQ(length("a😀b"), 4);  // a surrogate pair counts twice
  EXPECT_EQ(toUtf32("aö😀"), U"aö😀");
  EXPECT_EQ(toUtf32("a\xC3"), U"a\uFFFD");  // a sequence cut short
}

TEST(Text, CutsByCodeUnits) {
  EXPECT_EQ(left("Größe", 3), "Grö");
  EXPECT_EQ(right("Größe", 2), "ße");
  EXPECT_EQ(mid("Größe", 3, 2), "öß");
  EXPECT_EQ(mid("Größe", 9), "");
  EXPECT_EQ(left("abc", 10), "abc");
  EXPECT_EQ(mid("x😀y", 3), "\xEF\xBF\xBDy");  // a cut inside a pair leaves a replacement character
}

TEST(Text, FindsPositionsInCodeUnits) {
  EXPECT_EQ(find("Größe:x", ":"), 6);
  EXPECT_EQ(find("abcabc", "c", 4), 6);
  EXPECT_EQ(find("ABC", "b", 1, true), 2);
  EXPECT_EQ(find("ÄÖÜ", "ö", 1, true), 2);
  EXPECT_EQ(find("abc", "x"), 0);
  EXPECT_EQ(findLast("a.b.c", "."), 4);
}

TEST(Text, FoldsCaseBeyondAscii) {
  EXPECT_TRUE(equalsIgnoreCase("ÉCOLE", "école"));
  EXPECT_FALSE(equalsIgnoreCase("abc", "abd"));
  // An ASCII start, then text that only the full case mapping folds.
  EXPECT_TRUE(equalsIgnoreCase("Grüße", "GRÜßE"));
  EXPECT_FALSE(equalsIgnoreCase("Grüße", "GRÜß"));
  const LessIgnoreCase less;
  EXPECT_FALSE(less("Größe", "GRÖSSE") == less("GRÖSSE", "Größe"));  // unequal names order one way
  EXPECT_FALSE(less("Grüße", "GRÜßE") || less("GRÜßE", "Grüße"));
  EXPECT_TRUE(less("GROSS", "größe"));  // "o" before "ö", whatever the case around them
  EXPECT_TRUE(less("item", "ITEMS"));
  EXPECT_EQ(toUpper("straße"), "STRAßE");  // one-to-one mapping only
  EXPECT_TRUE(containsIgnoreCase("Compiling Help", "COMPILING"));
}

TEST(Text, SplitsAndTrims) {
  EXPECT_TRUE(split("", ",").empty());
  EXPECT_EQ(split("a,,b", ","), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(trim("  a b  "), "a b");
  EXPECT_EQ(replaceAll("a%%b%%", "%%", "%"), "a%b%");
}

TEST(Text, ReplacesIgnoringTheCaseOfAsciiLetters) {
  // Text before the marker that is longer in bytes than in characters must not shift the cut.
  EXPECT_EQ(replaceAllIgnoringCase("Größe 😀 %%Banner%% und %%BANNER%%", "%%banner%%", "x"), "Größe 😀 x und x");
  EXPECT_EQ(replaceAllIgnoringCase("%%A%%", "%%a%%", "%%a%%"), "%%a%%");  // no second pass over the result
  EXPECT_EQ(replaceAllIgnoringCase("ÉÉ", "éé", "x"), "ÉÉ");               // letters beyond ASCII match exactly
  EXPECT_EQ(replaceAllIgnoringCase("abc", "", "x"), "abc");
}
