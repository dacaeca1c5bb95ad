// The XML tag's document through the real libxslt and the configuration's stylesheets: the plain
// and coloured forms, the author's stylesheet, XPath, the build messages for missing and broken
// files, and stylesheets that try to write.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kavrel/Failure.h"
#include "support/Files.h"
#include "support/TempFolder.h"
#include "template/XmlTagRendering.h"

namespace kv {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const char* const kCopyStylesheet = R"x(<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:template match="/"><out><xsl:value-of select="count(//*)"/></out></xsl:template>
</xsl:stylesheet>)x";

class XmlTagTest : public ::testing::Test {
 protected:
  test::TempFolder folder;
  XmlTagRequest request(const std::string& xml, const std::string& xsl = {}) {
    XmlTagRequest r;
    r.XmlFile = folder.path(xml);
    if (!xsl.empty()) {
      r.XslFile = folder.path(xsl);
      r.XslParameter = xsl;
    }
    r.ConfigPath = KV_SOURCE_CONFIG_DIR;
    return r;
  }
  void write(const std::string& name, const std::string& text) { test::writeFile(folder.path(name), text); }
  std::string missing(const std::string& name) {
    return "XML File '" + folder.path(name) +
           "' could not be loaded - it may contain invalid XML. Content "
           "referencing this file will be missing.";
  }
};

TEST_F(XmlTagTest, PlainFormIsTheEscapedDocument) {
  write("a.xml", "<?xml version=\"1.0\"?>\n<a k=\"1\">x &amp; é %%name%%</a>");
  XmlTagResult r = RenderXmlTag(request("a.xml"));
  EXPECT_TRUE(r.HasDocument);
  EXPECT_TRUE(r.Errors.empty());
  EXPECT_EQ(r.Html,
            "<pre class=\"plainxml\">&lt;?xml version=&quot;1.0&quot; encoding=&quot;UTF-8&quot;?&gt;\n"
            "&lt;a k=&quot;1&quot;&gt;x &amp;amp; é %%name%%&lt;/a&gt;</pre>");
  // A document without a declaration is shown without one; XPath plays no part in this form.
  write("b.xml", "<b/>");
  XmlTagRequest b = request("b.xml");
  b.XPath = "/nothing";
  r = RenderXmlTag(b);
  EXPECT_EQ(r.Html, "<pre class=\"plainxml\">&lt;b/&gt;</pre>");
  EXPECT_TRUE(r.Errors.empty());
}

TEST_F(XmlTagTest, ColouredFormsThroughTheConfigurationsStylesheets) {
  write("a.xml", "<a k=\"v&amp;w\"><!--note--><b>té&lt;xt</b><c/></a>");
  XmlTagRequest q = request("a.xml");
  q.Colorized = true;
  XmlTagResult r = RenderXmlTag(q);
  ASSERT_TRUE(r.HasDocument);
  EXPECT_EQ(r.Html,
            "<div class=\"colorizedxml\"><div class=\"xmlelement\"><span class=\"xmlpunct\">&lt;</span>"
            "<span class=\"xmltag\">a</span> <span class=\"xmlattrname\">k</span><span class=\"xmlpunct\">=\"</span>"
            "<span class=\"xmlattrvalue\">v&amp;w</span><span class=\"xmlpunct\">\"</span>"
            "<span class=\"xmlpunct\">&gt;</span><div class=\"xmlcomment\">&lt;!--note--&gt;</div>"
            "<div class=\"xmlelement\"><span class=\"xmlpunct\">&lt;</span><span class=\"xmltag\">b</span>"
            "<span class=\"xmlpunct\">&gt;</span><span class=\"xmltext\">té&lt;xt</span>"
            "<span class=\"xmlpunct\">&lt;/</span><span class=\"xmltag\">b</span><span class=\"xmlpunct\">&gt;</span>"
            "</div><div class=\"xmlelement\"><span class=\"xmlpunct\">&lt;</span><span class=\"xmltag\">c</span>"
            "<span class=\"xmlpunct\"> /&gt;</span></div><span class=\"xmlpunct\">&lt;/</span>"
            "<span class=\"xmltag\">a</span><span class=\"xmlpunct\">&gt;</span></div></div>");
  q.Dynamic = true;
  r = RenderXmlTag(q);
  EXPECT_THAT(r.Html, ::testing::StartsWith("<div class=\"dynamicxml\"><div class=\"xmlelement\"><span "
                                            "class=\"xmltoggle\">-</span><span class=\"xmlpunct\">&lt;</span>"));
  EXPECT_THAT(r.Html, HasSubstr("<div class=\"xmlchildren\"><div class=\"xmlcomment\">"));
  // Only elements with element children fold.
  EXPECT_EQ(r.Html.find("xmltoggle", r.Html.find("xmltoggle") + 1), std::string::npos);
}

TEST_F(XmlTagTest, XPathShowsOneNode) {
  write("a.xml", "<a><b n=\"1\"><c/></b><b n=\"2\"/></a>");
  XmlTagRequest q = request("a.xml");
  q.Colorized = true;
  q.XPath = "/a/b[@n='2']";
  XmlTagResult r = RenderXmlTag(q);
  EXPECT_TRUE(r.Errors.empty());
  EXPECT_THAT(r.Html, HasSubstr("<span class=\"xmlattrvalue\">2</span>"));
  EXPECT_THAT(r.Html, ::testing::Not(HasSubstr(">a<")));
  q.XPath = "/a/b/@n";  // not an element: its text
  EXPECT_EQ(RenderXmlTag(q).Html, "<div class=\"colorizedxml\">1</div>");

  for (const char* bad : {"/a/missing", "/a[", ""}) {
    q.XPath = bad;
    if (q.XPath.empty()) continue;
    r = RenderXmlTag(q);
    EXPECT_TRUE(r.HasDocument) << bad;
    EXPECT_EQ(r.Html, "<div class=\"colorizedxml\"></div>") << bad;
    EXPECT_THAT(r.Errors,
                ElementsAre("Could not resolve XPath '" + std::string(bad) + "' in XML File '" + folder.path("a.xml") +
                            "'. Content referencing this file and XPath will be missing."));
  }
}

TEST_F(XmlTagTest, TheAuthorsStylesheetRunsFirst) {
  write("a.xml", "<a><b/><c/></a>");
  write("count.xsl", kCopyStylesheet);
  XmlTagResult r = RenderXmlTag(request("a.xml", "count.xsl"));
  EXPECT_TRUE(r.Errors.empty());
  EXPECT_EQ(r.Html,
            "<pre class=\"plainxml\">&lt;?xml version=&quot;1.0&quot; encoding=&quot;UTF-8&quot;?&gt;\n"
            "&lt;out&gt;3&lt;/out&gt;</pre>");
  // An empty stylesheet file is no stylesheet.
  write("empty.xsl", "");
  EXPECT_EQ(RenderXmlTag(request("a.xml", "empty.xsl")).Html,
            "<pre class=\"plainxml\">&lt;a&gt;&lt;b/&gt;&lt;c/&gt;&lt;/a&gt;</pre>");
}

struct FailureCase {
  const char* name;
  const char* xml;      // nullptr: no file
  const char* xsl;      // nullptr: no stylesheet named; "-": named but no file
  std::string message;  // with {xml}, {xsl} for the paths and {param} for the stylesheet as named
};

class XmlTagFailureTest : public XmlTagTest, public ::testing::WithParamInterface<FailureCase> {};

std::string fill(std::string text, const std::string& from, const std::string& to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

TEST_P(XmlTagFailureTest, NothingToShowAndOneMessage) {
  const FailureCase& c = GetParam();
  if (c.xml) write("doc.xml", c.xml);
  if (c.xsl && std::string(c.xsl) != "-") write("style.xsl", c.xsl);
  XmlTagRequest q = request("doc.xml", c.xsl ? "style.xsl" : "");
  q.Colorized = true;
  const XmlTagResult r = RenderXmlTag(q);
  EXPECT_FALSE(r.HasDocument);
  EXPECT_EQ(r.Html, "");
  std::string message = fill(c.message, "{xml}", folder.path("doc.xml"));
  message = fill(message, "{xsl}", folder.path("style.xsl"));
  EXPECT_THAT(r.Errors, ElementsAre(fill(message, "{param}", "style.xsl")));
}

const char* const kNotLoaded =
    "' could not be loaded - it may contain invalid XML. Content referencing this file will be missing.";
const char* const kResult =
    "The result of XML File '{xsl}' transformed by XSL '{param}' could not be loaded - it may contain invalid XML. "
    "Content referencing these files will be missing.";

INSTANTIATE_TEST_SUITE_P(
    Xml, XmlTagFailureTest,
    ::testing::Values(
        FailureCase{"MissingXml", nullptr, nullptr,
                    "XML File '{xml}' could not be found. Content referencing this file will be missing."},
        FailureCase{"MissingXsl", "<a/>", "-",
                    "XSL File '{xsl}' could not be found. Content referencing this file will be missing."},
        FailureCase{"BrokenXml", "<a><b></a>", nullptr, std::string("XML File '{xml}") + kNotLoaded},
        // Once a stylesheet is named, the messages name it, even for a broken document.
        FailureCase{"BrokenXmlWithStylesheet", "<a", kCopyStylesheet, std::string("XML File '{xsl}") + kNotLoaded},
        FailureCase{"BrokenStylesheet", "<a/>", "<xsl:stylesheet", std::string("XML File '{xsl}") + kNotLoaded},
        FailureCase{"NotAStylesheet", "<a/>", "<html/>", kResult},
        FailureCase{"ResultIsNoXml", "<a/>",
                    R"(<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
                         <xsl:output method="text"/><xsl:template match="/">plain text</xsl:template>
                       </xsl:stylesheet>)",
                    kResult},
        FailureCase{"StylesheetStops", "<a/>",
                    R"(<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
                         <xsl:template match="/"><xsl:message terminate="yes">stop</xsl:message></xsl:template>
                       </xsl:stylesheet>)",
                    kResult}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(XmlTagTest, StylesheetsMayNotWriteFilesOrMakeFolders) {
  write("a.xml", "<a/>");
  for (const std::string target : {"written.xml", "newfolder/written.xml"}) {
    write("write.xsl", R"(<xsl:stylesheet version="1.1" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
      <xsl:template match="/"><xsl:document href=")" +
                           folder.path(target) + R"("><x/></xsl:document><out/></xsl:template></xsl:stylesheet>)");
    const XmlTagResult r = RenderXmlTag(request("a.xml", "write.xsl"));
    EXPECT_FALSE(r.HasDocument) << target;
    EXPECT_THAT(r.Errors, ElementsAre(HasSubstr("The result of XML File"))) << target;
    EXPECT_FALSE(std::filesystem::exists(folder.path(target))) << target;
  }
  EXPECT_FALSE(std::filesystem::exists(folder.path("newfolder")));
}

TEST_F(XmlTagTest, EmptyDocumentShowsNothingWithoutAMessage) {
  write("a.xml", "");
  const XmlTagResult r = RenderXmlTag(request("a.xml"));
  EXPECT_FALSE(r.HasDocument);
  EXPECT_TRUE(r.Errors.empty());
}

TEST_F(XmlTagTest, MissingConfigurationStylesheetFailsTheTag) {
  write("a.xml", "<a/>");
  XmlTagRequest q = request("a.xml");
  q.Colorized = true;
  q.ConfigPath = folder.path("noconfig");
  EXPECT_THROW(RenderXmlTag(q), Failure);
}

}  // namespace
}  // namespace kv

namespace kv {
namespace {

TEST(XmlInScrap, PutsTheDocumentAndCaptionIntoTheScrap) {
  struct Case {
    const char* scrap;
    const char* caption;
    const char* html;
    const char* result;
  };
  const Case cases[] = {
      {"<h4>%%caption%%</h4>%%XML%%", "Größe", "<pre>x</pre>", "<h4>Größe</h4><pre>x</pre>"},
      {"<h4>%%CAPTION%%</h4>%%XML%%", "", "x", "<h4>&nbsp;</h4>x"},
      // The document's "%" are kept from the page's expansion; the scrap's own are not touched.
      {"100%% %%XML%%", "", "%%name%% 50%", "100%% /%/%name/%/% 50/%"},
      // Only "%%XML%%" in this case takes the document.
      {"%%xml%%|%%XML%%|%%XML%%", "", "d", "%%xml%%|d|d"},
      // The caption goes in first, so a caption may itself place the document.
      {"%%Caption%%", "see %%XML%%", "d", "see d"},
      {"!MISSING SCRAP '_XML_STATIC'!", "c", "d", "<div class=\"formattedxml\" onclick=\"javascript:cl()\">d</div>"},
      {"!MISSIN", "c", "d", "!MISSIN"},
  };
  for (const auto& c : cases) EXPECT_EQ(XmlInScrap(c.scrap, c.caption, c.html), c.result) << c.scrap;
}

}  // namespace
}  // namespace kv

namespace kv {
namespace {

TEST(XmlTagColours, NamespacesShowWhereTheyAreDeclared) {
  test::TempFolder folder;
  test::writeFile(folder.path("a.xml"), "<a xmlns=\"urn:x\" xmlns:p=\"urn:p\"><p:b/><c xmlns=\"urn:y\"/></a>");
  XmlTagRequest q;
  q.XmlFile = folder.path("a.xml");
  q.ConfigPath = KV_SOURCE_CONFIG_DIR;
  q.Colorized = true;
  const std::string html = RenderXmlTag(q).Html;
  const auto declaration = [](const char* name, const char* uri) {
    return std::string("<span class=\"xmlattrname\">") + name +
           "</span><span class=\"xmlpunct\">=\"</span><span class=\"xmlattrvalue\">" + uri + "</span>";
  };
  const auto count = [&](const std::string& what) {
    long n = 0;
    for (auto at = html.find(what); at != std::string::npos; at = html.find(what, at + 1)) ++n;
    return n;
  };
  EXPECT_EQ(count(declaration("xmlns", "urn:x")), 1);
  EXPECT_EQ(count(declaration("xmlns:p", "urn:p")), 1);  // not repeated on p:b
  EXPECT_EQ(count(declaration("xmlns", "urn:y")), 1);    // a redeclaration shows where it is made
  EXPECT_EQ(count("<span class=\"xmltag\">p:b</span>"), 1);
}

}  // namespace
}  // namespace kv
