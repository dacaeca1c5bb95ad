// Doc comments of every form and their commands.
#include <gtest/gtest.h>

#include "DocComment.h"

namespace kv::cpp {
namespace {

struct BriefCase {
  const char* raw;
  const char* brief;
  const char* details;
};

class CommentForms : public testing::TestWithParam<BriefCase> {};

TEST_P(CommentForms, GiveBriefAndDetails) {
  const DocComment c = ParseDocComment(GetParam().raw);
  EXPECT_EQ(c.Brief, GetParam().brief);
  EXPECT_EQ(c.Details, GetParam().details);
}

INSTANTIATE_TEST_SUITE_P(
    Markers, CommentForms,
    testing::Values(BriefCase{"/// One line.", "One line.", ""},
                    BriefCase{"/// First\n/// continues.\n///\n/// More.", "First continues.", "<p>More.</p>"},
                    BriefCase{"//! Bang.", "Bang.", ""}, BriefCase{"// Plain.", "Plain.", ""},
                    BriefCase{"/** Single line block. */", "Single line block.", ""},
                    BriefCase{"/**\n * Starred.\n *\n * Second.\n */", "Starred.", "<p>Second.</p>"},
                    BriefCase{"/*!\n   No stars.\n*/", "No stars.", ""}, BriefCase{"///< Trailing.", "Trailing.", ""},
                    BriefCase{"/// @brief Explicit\n/// brief.\n/// Then details.", "Explicit brief. Then details.",
                              ""},
                    BriefCase{"/// \\brief Short.\n///\n/// \\details Long.", "Short.", "<p>Long.</p>"},
                    BriefCase{"/// a < b && c", "a &lt; b &amp;&amp; c", ""},
                    BriefCase{"/// Uses @c std::vector, @p count and `x + 1`.",
                              "Uses <code>std::vector</code>, <code>count</code> and <code>x + 1</code>.", ""},
                    BriefCase{"/// @unknown stays as text", "@unknown stays as text", ""},
                    BriefCase{"////////////////\n/// Banner.\n////////////////", "Banner.", ""}));

TEST(DocComment, ReadsSectionCommands) {
  const DocComment c = ParseDocComment(
      "/**\n"
      " * Adds.\n"
      " * @param[in] a first\n"
      " *   addend\n"
      " * \\param b second\n"
      " * @tparam T the type\n"
      " * @return the sum\n"
      " * @retval 0 nothing added\n"
      " * @note one\n"
      " * \\warning two\n"
      " * @see other\n"
      " * @sa more\n"
      " * @deprecated since 2\n"
      " *\n"
      " * After the sections.\n"
      " */");
  EXPECT_EQ(c.Brief, "Adds.");
  ASSERT_EQ(c.Params.size(), 2u);
  EXPECT_EQ(c.Params[0], DocComment::Named("a", "first addend"));
  EXPECT_EQ(c.Params[1], DocComment::Named("b", "second"));
  ASSERT_EQ(c.TParams.size(), 1u);
  EXPECT_EQ(c.TParams[0], DocComment::Named("T", "the type"));
  EXPECT_EQ(c.Returns, "the sum<crlf><code>0</code> nothing added");
  EXPECT_EQ(c.Notes, (std::vector<std::string>{"one", "two"}));
  EXPECT_EQ(c.See, (std::vector<std::string>{"other", "more"}));
  EXPECT_EQ(c.Deprecated, "since 2");
  EXPECT_EQ(c.Details, "<p>After the sections.</p>");
}

TEST(DocComment, KeepsCodeAsWrittenWithoutTheCommentsIndent) {
  const DocComment c = ParseDocComment(
      "/// Example.\n"
      "/// @code{.cpp}\n"
      "///   if (a < b)\n"
      "///     run();\n"
      "///\n"
      "///   @param not a command here\n"
      "/// @endcode\n"
      "/// After.");
  EXPECT_EQ(c.Details, "<pre>if (a &lt; b)<crlf>  run();<crlf><crlf>@param not a command here</pre><p>After.</p>");
  EXPECT_TRUE(c.Params.empty());
}

TEST(DocComment, AnUnclosedCodeBlockEndsWithTheComment) {
  const DocComment c = ParseDocComment("/// Text.\n/// \\code\n/// x();");
  EXPECT_EQ(c.Details, "<pre>x();</pre>");
}

struct AboveCase {
  const char* source;
  unsigned line;
  bool plain;
  const char* expected;
};

class CommentsAbove : public testing::TestWithParam<AboveCase> {};

TEST_P(CommentsAbove, AreFound) {
  EXPECT_EQ(FindCommentAbove(GetParam().source, GetParam().line, GetParam().plain), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Sources, CommentsAbove,
                         testing::Values(AboveCase{"/// a\n/// b\n#define X 1\n", 3, false, "/// a\n/// b"},
                                         AboveCase{"int y;\n/** block\n * more */\n#define X 1\n", 4, false,
                                                   "/** block\n * more */"},
                                         AboveCase{"// plain\n#define X 1\n", 2, false, ""},
                                         AboveCase{"// plain\n#define X 1\n", 2, true, "// plain"},
                                         AboveCase{"/* plain block */\n#define X 1\n", 2, false, ""},
                                         AboveCase{"/// far\n\n#define X 1\n", 3, false, ""},
                                         AboveCase{"#define X 1 ///< trailing\n", 1, false, "///< trailing"},
                                         AboveCase{"#define X 1\n", 1, false, ""}, AboveCase{"", 5, false, ""}));

}  // namespace
}  // namespace kv::cpp
