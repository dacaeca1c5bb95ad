#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "support/TempFolder.h"
#include "template/ParserTemplate.h"
#include "template/TestProvider.h"
#include "template/TextExpansion.h"

using namespace kv;
using kv::testing::TestProvider;
using ::testing::HasSubstr;

namespace {

struct Rendered {
  std::string output;
  std::string errors;
};

Rendered render(std::string_view layout, const std::shared_ptr<TestProvider>& provider, bool stripMetaData = false) {
  ParserTemplate t;
  t.MetaStartOpen("<!--KVMETADATA start");
  t.MetaStartClose("-->");
  t.MetaEndOpen("<!--KVMETADATA end");
  t.MetaEndClose("-->");
  t.StripMetaData(stripMetaData);
  t.LoadText(layout);
  t.DataProvider(provider);
  return {t.ParseToString(), t.LoadErrors()};
}

std::shared_ptr<TestProvider> provider() {
  auto p = std::make_shared<TestProvider>();
  p->properties = {{"itemname", "Größe"}, {"title", "T"}};
  return p;
}

}  // namespace

TEST(ParserElement, ParameterNamesIgnoreCaseAndTheFirstValueStays) {
  ParserElement e(ParserElement::DataTag);
  e.AddParameter("variable", "Type");
  e.AddParameter("other", "TYPE");
  EXPECT_TRUE(e.HasParameter("type"));
  EXPECT_EQ(e.Parameters().Item("tYpE"), "variable");
  EXPECT_EQ(e.Parameters().Count(), 1);
  EXPECT_THROW(e.Parameters().Item("name"), Failure);
  StringCollection replaced;
  replaced.Add("x", "name");
  e.Parameters(replaced);
  EXPECT_FALSE(e.HasParameter("type"));
  EXPECT_THROW(replaced.Add("y", "NAME"), Failure);
}

TEST(ParserTemplate, RendersTagsAtTheirPlaces) {
  auto p = provider();
  EXPECT_EQ(render(R"(<kv:data type="variable" name="itemname"/>)", p).output, "[type=variable|name=itemname]");
  EXPECT_EQ(render("<h1><KV:Data Type=\"a\" >|<kv:data\n\ttype=\"b\"\r\n/></h1>", p).output,
            "<h1>[Type=a]|[type=b]</h1>");
  EXPECT_EQ(render(R"(start<kv:data type="x"/>)", p).output, "start[type=x]");
  EXPECT_EQ(render("", p).output, "");
  EXPECT_EQ(p->calls.size(), 4u);
}

TEST(ParserTemplate, TakesParameterValuesAsWritten) {
  auto p = provider();
  p->onData = [](ParserElement& e, std::shared_ptr<FileSystem>&) {
    return e.Parameters().Item("CAPTION") + "|" + e.Parameters().Item("Condition");
  };
  const Rendered r = render(
      "<kv:data type=\"scrap\" caption=\"a, b = c %%title%% <b class=\"\"x\"\">it's</b>\nline 2\" "
      "condition=\"itemtype=Class\" />",
      p);
  EXPECT_EQ(r.output, "a, b = c %%title%% <b class=\"x\">it's</b>\nline 2|itemtype=Class");
  EXPECT_EQ(r.errors, "");
  // Text that looks like a tag inside a value is part of the value.
  p->onData = nullptr;
  EXPECT_EQ(render(R"(<kv:data type="t" v="<kv:data type=""inner""/>"/>)", p).output,
            R"([type=t|v=<kv:data type="inner"/>])");
}

TEST(ParserTemplate, TagResults) {
  auto p = provider();
  p->onData = [](ParserElement& e, std::shared_ptr<FileSystem>&) {
    const std::string& type = e.Parameters().Item("type");
    if (type == "discard") return std::string("{Discard}");
    if (type == "xml") return std::string("<pre>a/%%b/%%</pre>");
    if (type == "nested") return std::string("%%title%% <kv:data type=\"x\"/>");
    if (type == "empty") return std::string();
    throw Failure(438, "no such member");
  };
  // "{Discard}" adds nothing, "/%" becomes "%" in results but not in the layout's own text, and
  // results are not scanned for references or tags again.
  EXPECT_EQ(render(R"(a<kv:data type="discard"/>b<kv:data type="empty"/>c)", p).output, "abc");
  EXPECT_EQ(render(R"(url/%20 <kv:data type="xml"/>)", p).output, "url/%20 <pre>a%%b%%</pre>");
  EXPECT_EQ(render(R"(<kv:data type="nested"/>)", p).output, "%%title%% <kv:data type=\"x\"/>");
  EXPECT_EQ(render(R"(<kv:data type="fails"/>|%%fails:x=1%%)", p).output,
            "!ERROR 438.2 FETCHING ELEMENT!|!ERROR 438.7 FETCHING ELEMENT!");
  EXPECT_EQ(render(R"(<kv:data type="x"/>%%title%%)", nullptr).output,
            "!ERROR 91.2 FETCHING ELEMENT!!ERROR 91.5 FETCHING PROPERTY!");
}

TEST(ParserTemplate, ExpandsReferencesInLayoutTextLikeTheTextExpansion) {
  auto p = provider();
  const std::string text =
      "<title>%%title%%</title> 100%% %%itemname%%%%x:a=\"1,2\",b=3%%\n<a href=\"%%title%%\">%%unknown%%</a> %%";
  EXPECT_EQ(render(text, p).output, ParseForProviderProperties(text, *p));
  // The quote state and the %%ReplaceInQuotes%% switch carry over tags.
  EXPECT_EQ(render(R"(%%ReplaceInQuotes:Value=False%%<a href="<kv:data type="t"/>/%%title%%">%%title%%</a>)", p).output,
            R"(<a href="[type=t]/%%title%%">T</a>)");
  // $$key$$ is left for phrase tags.
  EXPECT_EQ(render("$$TITLE$$", p).output, "$$TITLE$$");
}

TEST(ParserTemplate, ReportsMalformedTagsAndRendersTheRest) {
  auto p = provider();
  const Rendered r = render(
      "line 1 <kv:data type=\"a\"/>\n"
      "<kv:dta type=\"b\"/>\n"
      "<kv:data type=\"c\" name=unquoted/>\n"
      "<kv:data type=\"d\" name/>\n"
      "<kv:data type=\"e\"name=\"x\"/>\n"
      "<kv:data type=\"f\" name=\"x\" NAME=\"y\"/>\n"
      "<kv:data name=\"g\"/>\n"
      "<kv:data type=\"i\"/> <kv:data type=\"h\" caption=\"never closed/>",
      p);
  EXPECT_EQ(r.output,
            "line 1 [type=a]\n"
            "<kv:dta type=\"b\"/>\n"
            "<kv:data type=\"c\" name=unquoted/>\n"
            "<kv:data type=\"d\" name/>\n"
            "<kv:data type=\"e\"name=\"x\"/>\n"
            "[type=f|name=x]\n"
            "[name=g]\n"
            "[type=i] <kv:data type=\"h\" caption=\"never closed/>");
  EXPECT_THAT(r.errors, HasSubstr("Line 2: unknown tag \"<kv:dta\""));
  EXPECT_THAT(r.errors, HasSubstr("Line 3: the value of parameter 'name' is not in double quotes"));
  EXPECT_THAT(r.errors, HasSubstr("Line 4: parameter 'name' has no value"));
  EXPECT_THAT(r.errors, HasSubstr("Line 5: unexpected character 'n'"));
  EXPECT_THAT(r.errors, HasSubstr("Line 6: parameter 'NAME' is given more than once"));
  EXPECT_THAT(r.errors, HasSubstr("Line 7: the tag has no type parameter: <kv:data name=\"g\"/>"));
  EXPECT_THAT(r.errors, HasSubstr("Line 8: the value of parameter 'caption' has no closing quote"));
  EXPECT_EQ(std::count(r.errors.begin(), r.errors.end(), '\n'), 6);
  const Rendered open = render("x\n\n<kv:data type=\"j\" ", p);
  EXPECT_EQ(open.output, "x\n\n<kv:data type=\"j\" ");
  EXPECT_THAT(open.errors, HasSubstr("Line 3: the tag is not closed"));
  EXPECT_EQ(render("<kv:data type=\"a\"/>", p).errors, "");
}

TEST(ParserTemplate, MetadataMarkers) {
  auto p = provider();
  const std::string layout =
      "<html><!--KVMETADATA start--><meta name=\"id\" content=\"<kv:data type=\"id\"/>\"><!--KVMETADATA end-->"
      "</html>";
  EXPECT_EQ(render(layout, p).output,
            "<html><!--KVMETADATA start--><meta name=\"id\" content=\"[type=id]\"><!--KVMETADATA end--></html>");
  EXPECT_EQ(render(layout, p, true).output, "<html><meta name=\"id\" content=\"[type=id]\"></html>");
  // Text inside a marker is not expanded.
  EXPECT_EQ(render("<!--KVMETADATA start %%title%%-->x<!--KVMETADATA end-->", p).output,
            "<!--KVMETADATA start %%title%%-->x<!--KVMETADATA end-->");

  EXPECT_THAT(render("<!--KVMETADATA start-->\nx", p).errors, HasSubstr("Line 1: the metadata block is not ended"));
  EXPECT_THAT(render("x\n<!--KVMETADATA end-->", p).errors,
              HasSubstr("Line 2: a metadata block ends that was not started"));
  const Rendered unclosed = render("a<!--KVMETADATA start b", p, true);
  EXPECT_EQ(unclosed.output, "a<!--KVMETADATA start b");
  EXPECT_THAT(unclosed.errors, HasSubstr("not closed with \"-->\""));
}

TEST(ParserTemplate, RendersALargeLayoutTheSameEveryTime) {
  auto p = provider();
  p->onData = [](ParserElement& e, std::shared_ptr<FileSystem>&) {
    std::string v = e.Parameters().Item("n");
    e.Parameters(StringCollection());  // a provider may change the element it is given
    return v;
  };
  std::string layout, expected;
  for (int i = 0; i < 20000; ++i) {
    layout += "<tr><td class=\"ü\">" + std::to_string(i) + "</td><td><kv:data type=\"v\" n=\"" + std::to_string(i) +
              "\"/></td><td>%%itemname%%</td></tr>\n";
    expected +=
        "<tr><td class=\"ü\">" + std::to_string(i) + "</td><td>" + std::to_string(i) + "</td><td>Größe</td></tr>\n";
  }
  ParserTemplate t;
  t.LoadText(layout);
  t.DataProvider(p);
  EXPECT_EQ(t.ParseToString(), expected);
  EXPECT_EQ(t.ParseToString(), expected);
}

TEST(ParserTemplate, RendersIntoTheOpenOutputFileAndFollowsTagsThatWriteOrReplaceIt) {
  kv::test::TempFolder temp;
  FileSystem layoutFile(temp.path("page.hhp"));
  layoutFile.WriteAll(
      "[OPTIONS]\nTitle=%%title%% – ü\n[FILES]\n<kv:data type=\"files\" />\n<kv:data type=\"next\" />tail\n");

  auto p = provider();
  auto second = std::make_shared<FileSystem>(temp.path("second.txt"));
  p->onData = [&](ParserElement& e, std::shared_ptr<FileSystem>& file) {
    if (e.Parameters().Item("type") == "files") {
      file->WriteLine("a.html");
      file->WriteLine("b.html");
    } else {
      file->Close();
      second->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
      file = second;
    }
    return std::string(ParserTemplate::Discard);
  };
  auto t = std::make_shared<ParserTemplate>();
  t->Load(layoutFile.FileName());
  EXPECT_EQ(t->LoadErrors(), "");
  t->DataProvider(p);

  auto out = std::make_shared<FileSystem>(temp.path("out.hhp"));
  out->Open(FileSystem::CreateAlways, FileSystem::AccessWrite, FileSystem::ShareNone, codepage::UTF8);
  t->ParseTo(out);
  EXPECT_EQ(out, second);
  out->Close();
  EXPECT_EQ(FileSystem(temp.path("out.hhp")).ReadAll(), "[OPTIONS]\nTitle=T – ü\n[FILES]\na.html\nb.html\n\n");
  EXPECT_EQ(second->ReadAll(), "tail\n");

  // A layout file that does not exist leaves the template empty.
  t->Load(temp.path("missing.html"));
  EXPECT_EQ(t->ParseToString(), "");
  EXPECT_EQ(t->LoadErrors(), "");
}
