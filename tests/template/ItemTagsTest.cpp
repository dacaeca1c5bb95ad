// The tags that show the page's item: its comments, members, code, page address and lists of
// the items below it, rendered through a layout so that the page's own expansion has run.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kavrel/model/Block.h"
#include "kavrel/model/Parameter.h"
#include "kavrel/model/TaggedComments.h"
#include "template/ProviderFixture.h"

namespace kv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

class ItemTagsTest : public ProviderFixture {
 protected:
  void SetUp() override {
    ProviderFixture::SetUp();
    writeFile(folder.path("template/HTMLScraps/row.html"),
              "[<kv:data type=\"member\" name=\"Name\" />:<kv:data type=\"comment\" tagidentifier=\"##PARAM\" />]");
    writeFile(folder.path("template/HTMLScraps/start.html"), "<%%Caption%% of %%itemname%%>");
    writeFile(folder.path("template/HTMLScraps/end.html"), "</$$WORD$$>");
    writeFile(folder.path("template/HTMLScraps/sec.html"), "(%%Caption%%|%%Text%%|%%itemname%%)");
    block = std::make_shared<Block>(Atom("a<b"), BlockType::Function);
    block->SourceText("int f(double x);");
    block->TaggedComments().Add(std::make_shared<TaggedComment>(Atom("##SUMMARY"), "Adds <i>two</i>."));
    const auto x = block->AddParameter(Atom("x"), Atom("double"));
    // Comment text is never read for references; its percent signs survive the page.
    x->TaggedComments().Add(std::make_shared<TaggedComment>(Atom("##PARAM"), "100% sure, %%itemname%% and $$WORD$$"));
    block->AddParameter(Atom("y"), Atom("int"));
    show(block, "Functions");
  }

  std::shared_ptr<Block> block;
};

TEST_F(ItemTagsTest, EachTagShowsWhatTheItemHasAndNothingOtherwise) {
  const struct {
    std::string layout, expected;
  } cases[] = {
      {R"(<kv:data type="comment" tagidentifier="##SUMMARY" />)", "Adds <i>two</i>."},
      {R"(<kv:data type="comment" tagidentifier="##SUMMARY" scrap="sec" phrase="WORD" />)",
       "(word|Adds <i>two</i>.|a<b)"},
      {R"(<kv:data type="comment" tagidentifier="##REMARKS" scrap="sec" phrase="WORD" />)", ""},
      {R"(<kv:data type="member" name="Name" />)", "a&lt;b"},
      {R"(<kv:data type="member" name="NoSuchMember" scrap="sec" />)", ""},
      {R"(<kv:data type="items" member="Parameters" scrap="row" start="start" end="end" phrase="WORD" />)",
       "<word of a<b>[x:100% sure, %%itemname%% and $$WORD$$][y:]</word>"},
      {R"(<kv:data type="items" member="GenericArguments" scrap="row" start="start" end="end" />)", ""},
      {R"(<kv:data type="items" namespace="KV:Method" scrap="row" />)", ""},
      {R"(<kv:data type="examples" scrap="sec" />)", ""},
      {R"(<a href="<kv:data type="pageurl" />">)", "<a href=\"a%3Cb.html\">"},
  };
  for (const auto& c : cases) EXPECT_EQ(render(c.layout), c.expected) << c.layout;
}

TEST_F(ItemTagsTest, CodeIsColouredByItsLanguage) {
  const std::string code = render(R"(<kv:data type="code" member="SourceText" language="C++" />)");
  EXPECT_THAT(code, HasSubstr("<pre class=\"kvcode\"><span class=\"hl-type\">int</span>"));
  EXPECT_EQ(render(R"(<kv:data type="code" member="Name" language="C++" scrap="sec" />)"),
            "(|<pre class=\"kvcode\">a<span class=\"hl-symbol\">&lt;</span>b</pre>|a<b)");
  block->TaggedComments().Add(
      std::make_shared<TaggedComment>(Atom("##REMARKS"), "Call it:<pre>int r = f(1.0);<crlf>return r;</pre>"));
  EXPECT_THAT(render(R"(<kv:data type="comment" tagidentifier="##REMARKS" language="C++" />)"),
              HasSubstr("Call it:<pre class=\"kvcode\"><span class=\"hl-type\">int</span> r"));
}

TEST_F(ItemTagsTest, AMissingParameterFailsTheTag) {
  for (const std::string layout : {R"(<kv:data type="comment" />)", R"(<kv:data type="items" member="Parameters" />)",
                                   R"(<kv:data type="member" />)", R"(<kv:data type="code" />)"})
    EXPECT_THAT(render(layout), MatchesRegex("!ERROR [0-9]+\\.14 FETCHING ELEMENT!")) << layout;
}

}  // namespace
}  // namespace kv::test
