// Code as pages show it: lines, wrapping counted in UTF-16 units, colouring by language with the
// installed language definitions, and the markup of a code block.
#include <gtest/gtest.h>

#include <random>

#include "kavrel/Text.h"
#include "template/CodeHighlighter.h"
#include "template/CodeRendering.h"

namespace kv {

// Readable tokens in failure messages.
void PrintTo(const CodeToken& t, std::ostream* os) {
  *os << (t.Class.empty() ? "plain" : t.Class) << ":\"" << t.Text << "\"";
}

namespace {

using Lines = std::vector<std::string>;

struct LinesCase {
  const char* name;
  std::string code;
  Lines lines;
};

class CodeLinesTest : public ::testing::TestWithParam<LinesCase> {};

TEST_P(CodeLinesTest, CutsAndTidiesLines) {
  EXPECT_EQ(CodeLines(GetParam().code), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(
    Code, CodeLinesTest,
    ::testing::Values(
        LinesCase{"EveryLineEnd", "a\r\nb\rc\nd", {"a", "b", "c", "d"}},
        LinesCase{"EmptyLinesInsideStay", "a\r\n\r\nb", {"a", "", "b"}},
        LinesCase{"BlankLinesAroundGo", "\n  \n\ta\n \n\n", {"a"}},
        LinesCase{"TrailingBlanksGo", "a  \nb\t", {"a", "b"}},
        LinesCase{"CommonIndentationGoes", "    if (x)\n      y();\n\n    z();", {"if (x)", "  y();", "", "z();"}},
        // Tabs reach the next multiple of four, columns counted in UTF-16 units: "é" is one,
        // the emoji two.
        LinesCase{"TabsToColumnsOfFour", "ab\tc\né\tx\n😀\ty\n\t\tz", {"ab  c", "é   x", "😀  y", "        z"}},
        LinesCase{"NothingButBlanks", " \r\n\t", {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CommentTextToCode, ReadsTheInternalFormAsTheAuthorWroteIt) {
  EXPECT_EQ(CommentTextToCode("if (a &lt; b &amp;&amp; c &gt; d)<crlf>  x = &quot;&#233;&#x1F600;&quot;;"),
            "if (a < b && c > d)\n  x = \"é😀\";");
  EXPECT_EQ(CommentTextToCode("a<br>b<BR/>c<br />d<CRLF>e"), "a\nb\nc\nd\ne");
  EXPECT_EQ(CommentTextToCode("<b>bold</b>&nbsp;x"), "bold x");
  // What is not an entity or not a closed tag stays as it stands.
  EXPECT_EQ(CommentTextToCode("a & b &unknown; &#xZZ; <open"), "a & b &unknown; &#xZZ; <open");
}

struct WrapCase {
  const char* name;
  CodeLine line;
  long width;
  std::vector<CodeLine> pieces;
};

CodeLine plain(std::string text) {
  return {{"", std::move(text)}};
}

class WrapTest : public ::testing::TestWithParam<WrapCase> {};

TEST_P(WrapTest, CutsLongLines) {
  EXPECT_EQ(WrapCodeLine(GetParam().line, GetParam().width), GetParam().pieces);
}

INSTANTIATE_TEST_SUITE_P(
    Code, WrapTest,
    ::testing::Values(
        WrapCase{"ShortLineStays", plain("abc def"), 7, {plain("abc def")}},
        WrapCase{"NoWidthNoCut", plain("abc def"), 0, {plain("abc def")}},
        WrapCase{"AtTheLastBlank", plain("abc def ghi"), 8, {plain("abc def"), plain("ghi")}},
        WrapCase{"BlankRightAtTheWidth", plain("abcd efgh"), 4, {plain("abcd"), plain("efgh")}},
        WrapCase{"HardCutWithoutBlank", plain("abcdefghij"), 4, {plain("abcd"), plain("efgh"), plain("ij")}},
        // Widths are UTF-16 units: "é" counts one, so ten of them fill ten.
        WrapCase{"AccentsCountOne", plain("éééé éééé"), 4, {plain("éééé"), plain("éééé")}},
        // An emoji is two units and is never cut in half.
        WrapCase{"SurrogatePairsStayWhole", plain("😀😀😀"), 3, {plain("😀"), plain("😀"), plain("😀")}},
        WrapCase{"PairWiderThanTheWidth", plain("😀a"), 1, {plain("😀"), plain("a")}},
        WrapCase{"MixedUnitsAtTheCut", plain("ab😀cd"), 3, {plain("ab"), plain("😀c"), plain("d")}},
        // Continuations repeat the indentation while it leaves half the width; blanks of the
        // indentation are no place to cut.
        WrapCase{"IndentationRepeats", plain("  aa bb cc"), 6, {plain("  aa"), plain("  bb"), plain("  cc")}},
        WrapCase{"DeepIndentationDoesNot", plain("    abcdef"), 6, {plain("    ab"), plain("cdef")}},
        // Colours go with their text across a cut.
        WrapCase{"TokensKeepTheirClass",
                 CodeLine{{"keyword", "return"}, {"", " "}, {"string", "\"a b\""}},
                 8,
                 {CodeLine{{"keyword", "return"}}, CodeLine{{"string", "\"a b\""}}}},
        WrapCase{"TokenCutInTheMiddle",
                 CodeLine{{"comment", "// abcdefgh"}},
                 6,
                 {CodeLine{{"comment", "//"}}, CodeLine{{"comment", "abcdef"}}, CodeLine{{"comment", "gh"}}}}),
    [](const auto& info) { return std::string(info.param.name); });

struct LanguageCase {
  const char* language;
  const char* fileName;
  const char* definition;
};

TEST(CodeHighlighter, FindsTheDefinitionOfTheConfigurationsLanguages) {
  const LanguageCase cases[] = {
      {"C++", "", "cpp.lang"},
      {"c", "", "c.lang"},
      {"SQL", "", "sql.lang"},
      {"XML", "", "xml.lang"},
      {"", "query.SQL", "sql.lang"},
      {"Klingon", "widget.cpp", "cpp.lang"},
      {"Klingon", "", ""},
      {"", "", ""},
      {"", "README", ""},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CodeHighlighter::LanguageDefinition(c.language, c.fileName), c.definition)
        << c.language << " / " << c.fileName;
}

struct HighlightCase {
  const char* name;
  const char* language;
  Lines lines;
  std::vector<CodeLine> expected;
};

class HighlightTest : public ::testing::TestWithParam<HighlightCase> {};

TEST_P(HighlightTest, ColoursByLanguage) {
  const auto& c = GetParam();
  EXPECT_EQ(CodeHighlighter::Highlight(c.lines, CodeHighlighter::LanguageDefinition(c.language)), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Code, HighlightTest,
    ::testing::Values(
        HighlightCase{
            "Cpp",
            "C++",
            {"return x; // done"},
            {CodeLine{{"keyword", "return"}, {"", " x"}, {"symbol", ";"}, {"", " "}, {"comment", "// done"}}}},
        HighlightCase{"CommentOverLines",
                      "C",
                      {"/* one", "two */ int"},
                      {CodeLine{{"comment", "/* one"}}, CodeLine{{"comment", "two */"}, {"", " "}, {"type", "int"}}}},
        HighlightCase{"SqlIgnoresCase",
                      "SQL",
                      {"select name from t"},
                      {CodeLine{{"keyword", "select"}, {"", " name "}, {"keyword", "from"}, {"", " t"}}}},
        HighlightCase{"Xml",
                      "XML",
                      {"<a href=\"x\">&amp;</a>"},
                      {CodeLine{{"keyword", "<a"},
                                {"", " "},
                                {"type", "href"},
                                {"symbol", "="},
                                {"string", "\"x\""},
                                {"keyword", ">"},
                                {"preproc", "&amp;"},
                                {"keyword", "</a>"}}}},
        HighlightCase{"UnknownLanguageIsPlain", "Klingon", {"return x;", ""}, {plain("return x;"), CodeLine{}}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CodeBlockHtml, EscapesTextInsideAndOutsideColours) {
  EXPECT_EQ(CodeBlockHtml("  if (a < b)\n    s = \"<&>\";", "cpp.lang", true, 0),
            "<pre class=\"kvcode\"><span class=\"hl-keyword\">if</span> <span class=\"hl-symbol\">(</span>a "
            "<span class=\"hl-symbol\">&lt;</span> b<span class=\"hl-symbol\">)</span>\n"
            "  s <span class=\"hl-symbol\">=</span> <span class=\"hl-string\">&quot;&lt;&amp;&gt;&quot;</span>"
            "<span class=\"hl-symbol\">;</span></pre>");
  EXPECT_EQ(CodeBlockHtml("if (a < b)", "cpp.lang", false, 0), "<pre class=\"kvcode\">if (a &lt; b)</pre>");
  EXPECT_EQ(CodeBlockHtml("", "cpp.lang", true, 0), "<pre class=\"kvcode\"></pre>");
}

TEST(CodeBlockHtml, TakesColoursGivenWithTheCodeWhenTheyFitIt) {
  // Indented lines: both are cut and dedented alike. Non-ASCII text has a letter per byte.
  const std::string code = "  int größe;\n    f(\"é\");";
  const std::string colours = "  ttt .......y\n    fyssssyy";
  EXPECT_EQ(CodeBlockHtml(code, "", true, 0, colours),
            "<pre class=\"kvcode\"><span class=\"hl-type\">int</span> größe<span class=\"hl-symbol\">;</span>\n"
            "  <span class=\"hl-function\">f</span><span class=\"hl-symbol\">(</span>"
            "<span class=\"hl-string\">&quot;é&quot;</span><span class=\"hl-symbol\">);</span></pre>");
  // Colours that do not fit (a byte short, a blank out of place) leave it to the definition.
  const std::string byDefinition = CodeBlockHtml(code, "cpp.lang", true, 0);
  EXPECT_EQ(CodeBlockHtml(code, "cpp.lang", true, 0, colours.substr(1)), byDefinition);
  EXPECT_EQ(CodeBlockHtml(code, "cpp.lang", true, 0, "  tttt" + colours.substr(6)), byDefinition);
  // Not highlighted is plain, colours or not.
  EXPECT_EQ(CodeBlockHtml("int a;", "", false, 0, "ttt .y"), "<pre class=\"kvcode\">int a;</pre>");
}

TEST(CodeBlockHtml, WrapsColouredLinesAtTheWidth) {
  EXPECT_EQ(CodeBlockHtml("int a; int b;", "c.lang", true, 7),
            "<pre class=\"kvcode\"><span class=\"hl-type\">int</span> a<span class=\"hl-symbol\">;</span>\n"
            "<span class=\"hl-type\">int</span> b<span class=\"hl-symbol\">;</span></pre>");
}

}  // namespace
}  // namespace kv

namespace kv {
namespace {

std::string textOf(const CodeLine& line) {
  std::string s;
  for (const auto& t : line) s += t.Text;
  return s;
}

std::string withoutBlanks(std::string s) {
  std::erase(s, ' ');
  return s;
}

// Over many generated lines: no piece is wider than the width unless it is one character, no
// character is lost, doubled or cut in half, and colours stay with their text.
TEST(WrapCodeLine, KeepsEveryCharacterAndTheWidth) {
  const char* const alphabet[] = {" ", " ", "a", "b", "é", "😀", "\xE2\x82\xAC"};
  std::mt19937 random(11);
  for (int round = 0; round < 2000; ++round) {
    CodeLine line;
    const int tokens = 1 + int(random() % 4);
    for (int t = 0; t < tokens; ++t) {
      std::string s;
      for (int n = 1 + int(random() % 12); n > 0; --n) s += alphabet[random() % std::size(alphabet)];
      line.push_back({t % 2 ? "keyword" : "", s});
    }
    const long width = 1 + long(random() % 12);
    const std::vector<CodeLine> pieces = WrapCodeLine(line, width);
    std::string joined;
    for (const CodeLine& piece : pieces) {
      const std::string s = textOf(piece);
      const std::u32string chars = text::toUtf32(s);
      EXPECT_TRUE(text::length(s) <= width || chars.size() == 1) << s << " / " << width;
      EXPECT_EQ(s.find("\xEF\xBF\xBD"), std::string::npos) << s;
      joined += s;
      for (const CodeToken& t : piece)
        if (t.Class == "keyword") {
          // Keyword text of a piece comes from a keyword token of the line.
          bool found = false;
          for (const CodeToken& original : line)
            found = found || (original.Class == "keyword" && original.Text.find(t.Text) != std::string::npos);
          EXPECT_TRUE(found) << t.Text;
        }
    }
    EXPECT_EQ(withoutBlanks(joined), withoutBlanks(textOf(line))) << width;
  }
}

}  // namespace
}  // namespace kv
