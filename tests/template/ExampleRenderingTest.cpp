// Examples as pages show them: the frame and its title, code from the example or from a file
// beside the project, and comment text read back as code.
#include <gtest/gtest.h>

#include "support/Files.h"
#include "support/TempFolder.h"
#include "template/ExampleRendering.h"

namespace kv {
namespace {

Example example(std::string code, std::string language = "", std::string title = "") {
  Example e;
  e.Code = std::move(code);
  e.Language = std::move(language);
  e.Title = std::move(title);
  return e;
}

TEST(ExampleRendering, FramesTheCodeUnderItsTitle) {
  const Example e = example("SELECT 1", "SQL", "Query <one>");
  EXPECT_EQ(ExampleHtml(e, "", true, 0),
            "<div class=\"kvexample\"><table class=\"kvexample\"><tr><th>Query &lt;one&gt;</th></tr><tr><td>"
            "<pre class=\"kvcode\"><span class=\"hl-keyword\">SELECT</span> <span class=\"hl-number\">1</span>"
            "</pre></td></tr></table></div>");
  EXPECT_EQ(ExampleHtml(e, "", false, 0),
            "<pre class=\"kvcode\"><span class=\"hl-keyword\">SELECT</span> <span class=\"hl-number\">1</span></pre>");
}

TEST(ExampleRendering, TitleComesFromTitleCaptionOrFileName) {
  Example e = example("x");
  e.Highlight = false;
  const std::string code = "<tr><td><pre class=\"kvcode\">x</pre></td></tr></table></div>";
  const std::string open = "<div class=\"kvexample\"><table class=\"kvexample\">";
  EXPECT_EQ(ExampleHtml(e, "", true, 0), open + code);
  e.FileName = "samples/run.cpp";
  EXPECT_EQ(ExampleHtml(e, "", true, 0), open + "<tr><th>run.cpp</th></tr>" + code);
  e.Caption = "<i>Caption</i>";  // comment text, already markup
  EXPECT_EQ(ExampleHtml(e, "", true, 0), open + "<tr><th><i>Caption</i></th></tr>" + code);
  e.Title = "A & B";
  EXPECT_EQ(ExampleHtml(e, "", true, 0), open + "<tr><th>A &amp; B</th></tr>" + code);
}

TEST(ExampleRendering, ReadsTheFileFromTheBaseFolder) {
  test::TempFolder folder;
  test::writeFile(folder.path("samples/run.sql"), "\xEF\xBB\xBF  select 'ä'\r\n");
  Example e;
  e.FileName = "samples/run.sql";
  const std::string code =
      "<pre class=\"kvcode\"><span class=\"hl-keyword\">select</span> <span class=\"hl-string\">'ä'</span></pre>";
  EXPECT_EQ(ExampleHtml(e, folder.path(), false, 0), code);
  // Without a base handed in, the example's own folder serves.
  e.BaseFolder = folder.path() + "/";
  EXPECT_EQ(ExampleHtml(e, "", false, 0), code);
  // A base handed in wins over the example's own.
  EXPECT_EQ(ExampleHtml(e, "/nowhere", false, 0), "!EXAMPLE FILE NOT FOUND '/nowhere/samples/run.sql'!");
  e.FileName = folder.path("samples/run.sql");  // absolute names need no base
  EXPECT_EQ(ExampleHtml(e, "/nowhere", false, 0), code);
  e.Code = "from code";  // code in the example wins over its file
  e.Highlight = false;
  EXPECT_EQ(ExampleHtml(e, "", false, 0), "<pre class=\"kvcode\">from code</pre>");
}

TEST(ExampleRendering, CommentCodeIsReadBackFromTheInternalForm) {
  Example e = example("if (a &lt; b)<br>&nbsp;&nbsp;run();", "C");
  e.FromComment = true;
  e.Highlight = false;
  EXPECT_EQ(ExampleHtml(e, "", false, 0), "<pre class=\"kvcode\">if (a &lt; b)\n  run();</pre>");
  e.FromComment = false;  // model code is taken as it stands
  EXPECT_EQ(ExampleHtml(e, "", false, 0),
            "<pre class=\"kvcode\">if (a &amp;lt; b)&lt;br&gt;&amp;nbsp;&amp;nbsp;run();</pre>");
}

}  // namespace
}  // namespace kv
