#include <gtest/gtest.h>

#include "kavrel/Failure.h"
#include "template/TestProvider.h"
#include "template/TextExpansion.h"

using namespace kv;
using kv::testing::TestProvider;

using Parts = std::vector<std::string>;

TEST(InStrEx, SkipsMatchesInsideDoubleQuotes) {
  EXPECT_EQ(InStrEx(1, R"(a="x,y",b)", ","), 8);
  EXPECT_EQ(InStrEx(1, "a,b", ","), 2);
  EXPECT_EQ(InStrEx(1, "abc", ","), 0);
  // Quotes are counted from the first character even when the search starts later.
  EXPECT_EQ(InStrEx(4, R"(a"b,c"d,e)", ","), 8);
  // A match in a string that is never closed is no match, even with a later one outside.
  EXPECT_EQ(InStrEx(1, R"(a"b,c)", ","), 0);
  // A quote at the match position counts as before it: the search restarts after the next quote.
  EXPECT_EQ(InStrEx(1, R"(a"b"c)", "\""), 0);
  EXPECT_EQ(InStrEx(1, "aXbx", "x", compare::TextCompare), 2);
  EXPECT_EQ(InStrEx(1, "aXbx", "x"), 4);
}

TEST(InStrEx, CountsPositionsInUtf16CodeUnits) {
  EXPECT_EQ(InStrEx(1, "äö😀,x", ","), 5);
  EXPECT_EQ(InStrEx(1, "ÄB,ä", "ä", compare::TextCompare), 1);
  EXPECT_EQ(InStrEx(2, "ÄB,ä", "ä", compare::TextCompare), 4);
  EXPECT_EQ(InStrEx(9, "abc", "a"), 0);
  EXPECT_THROW(InStrEx(0, "abc", "a"), Failure);
}

TEST(SplitEx, KeepsTheLastPartOnlyFromTwoCharactersUp) {
  EXPECT_EQ(SplitEx("a,b", ","), Parts{"a"});
  EXPECT_EQ(SplitEx("a,bc", ","), (Parts{"a", "bc"}));
  EXPECT_EQ(SplitEx("key=1,b", ","), Parts{"key=1"});
  EXPECT_EQ(SplitEx("a,", ","), Parts{"a"});
  EXPECT_EQ(SplitEx("a,,bc", ","), (Parts{"a", "", "bc"}));
  EXPECT_EQ(SplitEx("", ","), Parts{""});
  EXPECT_EQ(SplitEx("b", ","), Parts{"b"});
  EXPECT_EQ(SplitEx("a::bc", "::"), (Parts{"a", "bc"}));
  // The length is counted in UTF-16 code units: "é" is one, "😀" is two.
  EXPECT_EQ(SplitEx("a,é", ","), Parts{"a"});
  EXPECT_EQ(SplitEx("a,😀", ","), (Parts{"a", "😀"}));
}

TEST(SplitEx, LeavesDelimitersInQuotesAlone) {
  EXPECT_EQ(SplitEx(R"(name="a, b",x=1,yy)", ","), (Parts{R"(name="a, b")", "x=1", "yy"}));
  // An unclosed quote hides every later delimiter.
  EXPECT_EQ(SplitEx(R"(a,"b,c,d)", ","), (Parts{"a", R"("b,c,d)"}));
}

TEST(GetParameters, ReadsTrimmedNamedValues) {
  const StringCollection p = GetParameters(R"( name = Intro , caption=" a, b ",flag, NAME=second,x=""quoted"",e=)");
  EXPECT_EQ(p.Count(), 4);
  EXPECT_EQ(p.Item("name"), "Intro");
  EXPECT_EQ(p.Item("Name"), "Intro");  // names ignore case, and the first wins
  EXPECT_EQ(p.Item("caption"), " a, b ");
  EXPECT_EQ(p.Item("x"), "\"quoted\"");  // outer pair only; doubling is not undone
  EXPECT_FALSE(p.Exists("flag"));
  EXPECT_EQ(p.Item("e"), "");
  EXPECT_EQ(GetParameters("").Count(), 0);
}

TEST(ParseForProviderProperties, CopiesTextWithoutCompleteReferences) {
  TestProvider p;
  EXPECT_EQ(ParseForProviderProperties("plain <b>text</b>", p), "plain <b>text</b>");
  EXPECT_EQ(ParseForProviderProperties("100%% sure", p), "100%% sure");
  EXPECT_EQ(ParseForProviderProperties("", p), "");
  EXPECT_TRUE(p.calls.empty());
}

TEST(ParseForProviderProperties, ExpandsPropertiesAndTags) {
  TestProvider p;
  p.properties = {{"a", "A"}, {"b", "B"}, {"name", "Größe"}};
  EXPECT_EQ(ParseForProviderProperties("%%a%%%%b%%", p), "AB");
  EXPECT_EQ(ParseForProviderProperties("x %%name%%", p), "x Größe");
  EXPECT_EQ(ParseForProviderProperties("%%a%% and %%b%%.", p), "A and B.");
  // A name with an empty parameter text is a property, with its colon cut off.
  EXPECT_EQ(ParseForProviderProperties("[%%a:%%]", p), "[A]");
  EXPECT_EQ(ParseForProviderProperties("%%scrap:name=a text, with a comma%%", p), "[type=scrap|name=a text]");
  EXPECT_EQ(ParseForProviderProperties(R"(%%scrap:name="a text, with a comma"%%)", p),
            "[type=scrap|name=a text, with a comma]");
  EXPECT_EQ(ParseForProviderProperties("%%scrap:name=x,yz%%", p), "[type=scrap|name=x]");
  EXPECT_EQ(ParseForProviderProperties(R"(%%t:caption="say ""hi"" = <b>ok</b>",n=1x%%)", p),
            "[type=t|caption=say \"hi\" = <b>ok</b>|n=1x]");
  // Keys and values are not trimmed; an unquoted value keeps its quotes.
  EXPECT_EQ(ParseForProviderProperties(R"(%%t: k = v ,q=a""b%%)", p), "[type=t| k = v |q=a\"\"b]");
}

TEST(ParseForProviderProperties, DoesNotScanValuesAgain) {
  TestProvider p;
  p.properties = {{"self", "%%self%%"}, {"pct", "50%"}};
  EXPECT_EQ(ParseForProviderProperties("%%self%%|%%pct%%%", p), "%%self%%|50%%");
  EXPECT_EQ(p.calls.size(), 2u);
}

TEST(ParseForProviderProperties, KeepsReferencesTheProviderDoesNotRecognise) {
  TestProvider p;
  p.properties = {{"keep", "!UNCRECOGNISED"}};
  p.onData = [](ParserElement&, std::shared_ptr<FileSystem>&) { return std::string("!UNCRECOGNISED tag"); };
  EXPECT_EQ(ParseForProviderProperties("<%%keep%%>", p), "<%%keep%%>");
  // Only the name survives, without its parameters.
  EXPECT_EQ(ParseForProviderProperties("%%x:a=1,b=2%%", p), "%%x%%");
  // The correctly spelled failure text of an unknown property is replaced, not kept.
  EXPECT_EQ(ParseForProviderProperties("%%nope%%", p), "!UNRECOGNISED ELEMENT TYPE 'nope'!");
}

TEST(ParseForProviderProperties, ReplaceInQuotesSwitchSkipsQuotedReferences) {
  TestProvider p;
  p.properties = {{"url", "U"}, {"title", "T"}};
  EXPECT_EQ(ParseForProviderProperties(R"(<a href="%%url%%">%%title%%</a>)", p), R"(<a href="U">T</a>)");
  EXPECT_EQ(
      ParseForProviderProperties(
          R"(%%ReplaceInQuotes:Value=False%%<a href="%%url%%">%%title%%</a>%%replaceinquotes:value=TRUE%%"%%url%%")",
          p),
      R"(<a href="%%url%%">T</a>"U")");
  // A switch without "Value" leaves the setting as it was.
  EXPECT_EQ(ParseForProviderProperties(R"(%%ReplaceInQuotes:x=1%%"%%url%%")", p), R"("U")");
  // Starting with the switch off, an unclosed quote hides everything after it.
  EXPECT_EQ(InternalParseForProviderProperties(R"(%%url%% "%%title%%" " %%url%%)", p, false, false),
            R"(U "%%title%%" " %%url%%)");
}

TEST(ParseForProviderProperties, AlwaysUseProvideDataSendsPlainNamesAsTags) {
  TestProvider p;
  p.onData = [](ParserElement& e, std::shared_ptr<FileSystem>&) {
    return e.Parameters().Item("type") == "filessection" ? std::string("{files}") : std::string("?");
  };
  EXPECT_EQ(ParseForProviderPropertiesEx("[FILES]\n%%filessection%%", p), "[FILES]\n{files}");
  EXPECT_EQ(p.calls.back(), "data[Type=filessection]");
  EXPECT_EQ(ParseForProviderProperties("%%filessection%%", p), "!UNRECOGNISED ELEMENT TYPE 'filessection'!");
}

TEST(ParseForProviderProperties, AFailureReplacesTheWholeResult) {
  TestProvider p;
  p.properties = {{"a", "A"}};
  p.onData = [](ParserElement&, std::shared_ptr<FileSystem>&) -> std::string { throw Failure(91, "not set"); };
  EXPECT_EQ(ParseForProviderProperties("%%a%% then %%t:x=1%% and more", p),
            "!ERROR 91.7 IN PARSEFORPROVIDERPROPERTIES!");
  EXPECT_EQ(ParseForProviderPropertiesEx("%%a%%", p), "!ERROR 91.5 IN PARSEFORPROVIDERPROPERTIES!");
}

TEST(ParseForProviderProperties, ExpandsALargeTextInOnePass) {
  TestProvider p;
  p.properties = {{"n", "0123456789"}};
  std::string text, expected;
  for (int i = 0; i < 20000; ++i) {
    text += "line ä " + std::to_string(i) + " %%n%%\n";
    expected += "line ä " + std::to_string(i) + " 0123456789\n";
  }
  EXPECT_EQ(ParseForProviderProperties2(text, p, *std::make_unique<std::shared_ptr<FileSystem>>()), expected);
}

TEST(AppendString, GrowsAheadOfTheContent) {
  std::string buffer;
  long pointer = 0;
  AppendString(buffer, "", pointer);
  EXPECT_TRUE(buffer.empty());
  AppendString(buffer, "abc", pointer);
  EXPECT_EQ(pointer, 3);
  EXPECT_EQ(buffer.size(), 3u + 256u);
  AppendString(buffer, std::string(300, 'x'), pointer);
  EXPECT_EQ(pointer, 303);
  EXPECT_EQ(buffer.size(), 259u + 300u + 1024u);
  AppendString(buffer, "yz", pointer);
  EXPECT_EQ(buffer.substr(0, static_cast<size_t>(pointer)), "abc" + std::string(300, 'x') + "yz");
}

TEST(ParseForPhrases, ReplacesKnownKeysAndKeepsOthers) {
  const PhraseLookup phrases = [](std::string_view key) -> std::optional<std::string> {
    if (key == "TITLE") return "Title";
    if (key == "NESTED") return "<$$TITLE$$>";
    if (key == "LOOP") return "$$LOOP$$";
    return std::nullopt;
  };
  EXPECT_EQ(ParseForPhrases("$$TITLE$$: $$unknown$$ $$", phrases), "Title: $$unknown$$ $$");
  EXPECT_EQ(ParseForPhrases("no phrases", phrases), "no phrases");
  EXPECT_EQ(ParseForPhrases("$$NESTED$$", phrases), "<$$TITLE$$>");
  EXPECT_EQ(ParseForPhrasesEx("$$NESTED$$", phrases), "<Title>");
  EXPECT_EQ(ParseForPhrasesEx("$$LOOP$$", phrases), "$$LOOP$$");  // stops after three passes
  EXPECT_EQ(ParseForPhrases("##TITLE##", phrases, "##"), "Title");

  StringCollection values;
  values.Add("Value", "Key");
  EXPECT_EQ(ParseForParameters("|KEY| |x|", values, "|"), "Value |x|");
}

TEST(StringTools, StripQuotesTagsAndJoin) {
  EXPECT_EQ(StripQuotes(R"("a")"), "a");
  EXPECT_EQ(StripQuotes(R"("a)"), "a");
  EXPECT_EQ(StripQuotes(R"(a")"), "a");
  EXPECT_EQ(StripQuotes(R"(")"), "");
  EXPECT_EQ(StripQuotes("a"), "a");

  EXPECT_EQ(StripTags("<p>Größe&NBSP;<b>x</b></p>\r\nnext &Quot;q&quot;"), "Größe x next \"q\"");
  // A ">" before the first "<" keeps the stretch between them, which is then scanned again.
  EXPECT_EQ(StripTags("a>b<c>d"), "a>bbd");
  EXPECT_EQ(StripTags("a < b"), "a < b");

  StringCollection col;
  EXPECT_EQ(CollectionToString(col, ", "), "");
  col.Add("one");
  col.Add("two", "k");
  EXPECT_EQ(CollectionToString(col, ", "), "one, two");
}
