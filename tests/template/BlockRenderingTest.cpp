// The page-piece services: exact markup of headings and paragraphs, the format parameters, the
// source of blocks, properties and modules, which blocks are excluded, examples from the model
// and from comments, enumerations by name, the stripping of an outer paragraph and the design
// view's editable span.
#include <gtest/gtest.h>

#include "kavrel/Model.h"
#include "template/BlockRendering.h"

namespace kv {
namespace {

using namespace blocks;

TEST(BlockRendering, HeadingsAndParagraphs) {
  EXPECT_EQ(Heading("Größe & <b>"), "<p><b>Größe & <b></b></p>");
  EXPECT_EQ(PageHeading("Title"), "<h1>Title</h1>");
  EXPECT_EQ(Paragraph("text"), "<p>text</p>\r\n");
  EXPECT_EQ(Paragraph(""), "<p></p>\r\n");
}

TEST(BlockRendering, FormatParametersFallBackWhenAbsentOrEmpty) {
  ParserElement e(ParserElement::DataTag);
  EXPECT_EQ(GetFormat(e, "dflt"), "dflt");
  e.AddParameter("", "Format");
  e.AddParameter("<i>none</i>", "BLANKFORMAT");
  EXPECT_EQ(GetFormat(e, "dflt"), "dflt");  // present but empty
  EXPECT_EQ(GetBlankFormat(e, "dflt"), "<i>none</i>");
  ParserElement f(ParserElement::DataTag);
  f.AddParameter("<b>%s</b>", "format");
  EXPECT_EQ(GetFormat(f, "dflt"), "<b>%s</b>");
  EXPECT_EQ(GetBlankFormat(f, ""), "");
}

struct StripCase {
  const char* source;
  const char* result;
};

TEST(BlockRendering, StripFirstParaLooksOnlyAtTheEnds) {
  const StripCase cases[] = {
      {"", ""},
      {"  plain text  ", "plain text"},
      {"<p>x</p>", "x"},
      {" <P>x</P> ", "x"},  // the plain tag ignores case at both ends
      {"<p class=\"note\">x</p>", "x"},
      {"<p title=\"a>b\">x</p>", "x"},            // a ">" in a quoted value is not the tag's end
      {"<P CLASS=a>x</P>", "<P CLASS=a>x</P>"},   // after attributes the end is compared as written
      {"<p>one</p><p>two</p>", "one</p><p>two"},  // two paragraphs lose only their outer tags
      {"<p>x", "<p>x"},
      {"<pre>x</p>", "<pre>x</p>"},
      {"<p></p>", ""},
      {"<p>é😀</p>", "é😀"},
  };
  for (const auto& c : cases) EXPECT_EQ(StripFirstPara(c.source), c.result) << c.source;
}

TEST(BlockRendering, CommentEditSpanNamesTheComment) {
  auto project = std::make_shared<vbProject>("Tools");
  auto block = project->AddComponent("Widget")->AddBlock("Run");
  EXPECT_EQ(CommentEditSpan(*block, "##SUMMARY", "Summary", "<div><span class=\"cap\">", "<!--end-->"),
            "<div><span class=\"cap\">Summary</span></div><div><span class=\"kveditwrapper\" style=\"width: 100%\" "
            "CONTENTEDITABLE id=\"TaggedComment|Tools~Widget~Run|##SUMMARY\"></span></div><!--end-->");
}

TEST(BlockRendering, ExcludedBlocks) {
  struct Case {
    bool exclude, hidden;
    const char* reason;
    bool excluded;
  };
  const Case cases[] = {{false, false, "", false},
                        {true, false, "", true},
                        {false, true, "", true},
                        {false, false, "filtered", true},
                        {true, true, "both", true}};
  for (const auto& c : cases) {
    Block b("Run");
    b.ExcludeFlag(c.exclude);
    b.HiddenFlag(c.hidden);
    b.ExclusionText(c.reason);
    EXPECT_EQ(IsExcludedBlock(b), c.excluded) << c.exclude << c.hidden << c.reason;
  }
}

class SourceCodeTest : public ::testing::Test {
 protected:
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("Tools");
  std::shared_ptr<Component> widget = [this] {
    auto c = project->AddComponent("Widget");
    c->SourceFileName("widget.cpp");
    return c;
  }();
  std::shared_ptr<Block> block(const char* name, const char* source, BlockType type = BlockType::Sub) {
    auto b = widget->AddBlock(name, type);
    b->SourceText(source);
    return b;
  }
};

TEST_F(SourceCodeTest, BlockIsColouredInItsComponentsLanguage) {
  EXPECT_EQ(SourceCode(block("Run", "return 1;"), 0),
            "<pre class=\"kvcode\"><span class=\"hl-keyword\">return</span> <span class=\"hl-number\">1</span>"
            "<span class=\"hl-symbol\">;</span></pre>");
  EXPECT_EQ(SourceCode(nullptr, 0), "");
  EXPECT_EQ(SourceCode(project, 0), "");  // a project has no source of its own
}

TEST_F(SourceCodeTest, PropertyGivesAParagraphPerAccessor) {
  block("Size", "get", BlockType::PropertyGet);
  EXPECT_EQ(SourceCode(widget->PropertyGroup("Size"), 0), "<p><pre class=\"kvcode\">get</pre></p>\r\n");
  block("Size", "set", BlockType::PropertySet);
  block("Size", "let", BlockType::PropertyLet);
  EXPECT_EQ(SourceCode(widget->PropertyGroup("Size"), 0),
            "<p><pre class=\"kvcode\">get</pre></p>\r\n<p><pre class=\"kvcode\">let</pre></p>\r\n"
            "<p><pre class=\"kvcode\">set</pre></p>\r\n");
}

TEST_F(SourceCodeTest, ModuleSeparatesBlocksAndSkipsTheDeclarations) {
  block("(Declarations)", "int x;", BlockType::Declarations);
  block("A", "a");
  block("B", "b");
  const std::string a = "<pre class=\"kvcode\">a</pre>", b = "<pre class=\"kvcode\">b</pre>";
  const std::string separator = "\r\n<BR>&nbsp;\r\n";
  EXPECT_EQ(SourceCode(widget, 0), a + separator + b);
  // A declarations section at the very end leaves the separator after the block before it.
  block("(Declarations)", "int y;", BlockType::Declarations);
  EXPECT_EQ(SourceCode(widget, 0), a + separator + b + separator);
}

class ExamplesTest : public ::testing::Test {
 protected:
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("Tools");
  std::shared_ptr<Block> run = project->AddComponent("Widget")->AddBlock("Run");
  void comment(const char* tag, const char* text, const char* language = "") {
    run->TaggedComments().Add(std::make_shared<TaggedComment>(tag, text, language), tag);
  }
};

TEST_F(ExamplesTest, ModelExamplesComeFirstThenOnePerCommentPiece) {
  auto own = std::make_shared<Example>();
  own->Code = "run();";
  run->Examples().Add(own);
  comment("##EXAMPLECODE", "first();<crlf>second();", "C++");
  comment("##Module_ExampleCode", "module();");
  comment("##SUMMARY", "not an example");

  const auto examples = GetExamples(run, "/projects/tools/");
  ASSERT_EQ(examples->Count(), 4);
  EXPECT_EQ(examples->Item(1), own);
  const struct {
    const char* code;
    const char* language;
    const char* id;
  } expected[] = {{"first();", "C++", "Tools~Widget~Run|##EXAMPLECODE"},
                  {"second();", "C++", "Tools~Widget~Run|##EXAMPLECODE"},
                  {"module();", "", "Tools~Widget~Run|##Module_ExampleCode"}};
  for (long i = 0; i < 3; ++i) {
    const Example& e = *examples->Item(i + 2);
    EXPECT_EQ(e.Code, expected[i].code);
    EXPECT_EQ(e.Language, expected[i].language);
    EXPECT_EQ(e.TaggedCommentID, expected[i].id);
    EXPECT_EQ(e.Item, "Tools~Widget~Run");
    EXPECT_EQ(e.BaseFolder, "/projects/tools/");
    EXPECT_TRUE(e.FromComment);
  }
}

TEST_F(ExamplesTest, CommentsAreTakenOnce) {
  comment("##EXAMPLECODE", "once();");
  EXPECT_EQ(GetExamples(run, "")->Count(), 1);
  EXPECT_EQ(run->TaggedComments().Item("##EXAMPLECODE")->ExampleSourceType(), "P");
  EXPECT_EQ(GetExamples(run, "")->Count(), 0);
}

TEST_F(ExamplesTest, EmptyPiecesAreDropped) {
  // The split keeps a last piece only from two characters up, and empty pieces make no example.
  comment("##EXAMPLECODE", "<crlf>ab<crlf><crlf>c");
  const auto examples = GetExamples(run, "");
  ASSERT_EQ(examples->Count(), 1);
  EXPECT_EQ(examples->Item(1)->Code, "ab");
}

TEST_F(ExamplesTest, ItemsWithoutExamplesOrComments) {
  EXPECT_EQ(GetExamples(run, "")->Count(), 0);
  EXPECT_EQ(GetExamples(std::make_shared<Example>(), "")->Count(), 0);  // no member Examples
  EXPECT_EQ(GetExamples(nullptr, "")->Count(), 0);
}

class EnumerationTest : public ::testing::Test {
 protected:
  std::shared_ptr<VBProjectGroup> group = std::make_shared<VBProjectGroup>("All");
  std::shared_ptr<vbProject> tools = group->AddProject("Tools");
  std::shared_ptr<vbProject> shapes = group->AddProject("Shapes");
  std::shared_ptr<Component> widget = tools->AddComponent("Widget");
  std::shared_ptr<Component> circle = shapes->AddComponent("Circle");

  void SetUp() override {
    widget->AddEnumeration("Mode")->Scope("PUBLIC");
    widget->AddEnumeration("Secret")->Scope("PRIVATE");
    widget->AddEnumeration("Lower")->Scope("Public");  // scope compared exactly
    circle->AddEnumeration("Fill")->Scope("PUBLIC");
    auto run = widget->AddBlock("Run");
    run->Scope("PUBLIC");
    circle->AddBlock("Draw")->Scope("PUBLIC");
  }
  std::string found(std::string_view name, bool includePrivate, const Component* from = nullptr) {
    const ItemPtr e = GetEnumeration(*tools, from ? from : widget.get(), name, includePrivate);
    return e ? e->QualifiedName() : "nothing";
  }
};

TEST_F(EnumerationTest, ByNameInTheProject) {
  EXPECT_EQ(found("Mode", false), "Tools~Widget~Mode");
  EXPECT_EQ(found("mode", false), "Tools~Widget~Mode");
  EXPECT_EQ(found("Secret", false), "nothing");
  EXPECT_EQ(found("Secret", true), "Tools~Widget~Secret");
  EXPECT_EQ(found("Lower", false), "nothing");
  EXPECT_EQ(found("Run", true), "nothing");  // not an enumeration
  EXPECT_EQ(found("Missing", true), "nothing");
}

TEST_F(EnumerationTest, ByProjectAndNameInTheGroup) {
  EXPECT_EQ(found("Shapes.Fill", false), "Shapes~Circle~Fill");
  EXPECT_EQ(found("SHAPES.Fill", false), "Shapes~Circle~Fill");
  EXPECT_EQ(found("Tools.Secret", false), "nothing");
  EXPECT_EQ(found("Tools.Secret", true), "Tools~Widget~Secret");
  EXPECT_EQ(found("Elsewhere.Fill", true), "nothing");
  // Across projects the kind is not checked: a public member of another kind is found too.
  EXPECT_EQ(found("Shapes.Draw", false), "Shapes~Circle~Draw");
  // A project outside any group finds nothing by project name.
  auto alone = std::make_shared<vbProject>("Alone");
  EXPECT_EQ(GetEnumeration(*alone, nullptr, "Alone.Mode", true), nullptr);
}

}  // namespace
}  // namespace kv
