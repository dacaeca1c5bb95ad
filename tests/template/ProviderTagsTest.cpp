// The layout tags that read files or depend on the rendering's purpose: include, xml,
// checkforfile, examplecode and the design-view tags, through the real file system, libxml2
// and libxslt.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kavrel/FileSystem.h"
#include "kavrel/ParserElement.h"
#include "kavrel/model/Example.h"
#include "project/KVProjectEvents.h"
#include "support/ScopedEnvironment.h"
#include "template/ProviderFixture.h"
#include "template/TestProvider.h"

namespace kv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

using Parameters = std::vector<std::pair<std::string, std::string>>;

struct BuildErrors : KVProjectEvents {
  void BuildError(const std::string& text, KVErrorLevel level) override {
    errors.push_back(text);
    levels.push_back(level);
  }
  std::vector<std::string> errors;
  std::vector<KVErrorLevel> levels;
};

class ProviderTagsTest : public ProviderFixture {
 protected:
  std::string provide(const Parameters& parameters) {
    ParserElement element(ParserElement::DataTag);
    for (const auto& [name, value] : parameters) element.AddParameter(value, name);
    std::shared_ptr<FileSystem> file;
    return provider->ProvideData(element, file);
  }
};

TEST_F(ProviderTagsTest, IncludeFindsItsFileBelowTheTemplateFolderOrWhereAnAbsoluteNameSays) {
  writeFile(folder.path("template/part.htm"), "part");
  writeFile(folder.path("template/sub/inner.htm"), "inner");
  writeFile(folder.path("template/Capital.htm"), "capital");
  writeFile(folder.path("outside.htm"), "outside");
  writeFile(folder.path("elsewhere/abs.htm"), "absolute");
  const struct {
    std::string source, expected;
  } cases[] = {
      {"Part.HTM", "part"},
      {"sub\\Inner.htm", "inner"},
      {"sub/../part.htm", "part"},
      {"..\\outside.htm", "outside"},
      {folder.path("elsewhere/abs.htm"), "absolute"},
      {"Capital.htm", "capital"},
      {"Sub\\Nope.HTM", "!INCLUDE NOT FOUND 'sub\\nope.htm'!"},
      {"outside.htm", "!INCLUDE NOT FOUND 'outside.htm'!"},
  };
  for (const auto& c : cases) EXPECT_EQ(provide({{"type", "include"}, {"source", c.source}}), c.expected) << c.source;
  EXPECT_THAT(provide({{"type", "include"}}), MatchesRegex("!ERROR [0-9]+\\.[0-9]+ FETCHING ELEMENT!"));
}

TEST_F(ProviderTagsTest, IncludedTextReachesThePageAsWritten) {
  writeFile(folder.path("template/raw.htm"), "%%itemname%% 50/% 5%");
  show(makeItem("Block", {{"Name", "Run"}}));
  EXPECT_EQ(render("[<kv:data type=\"include\" source=\"raw.htm\"/>] %%itemname%%"), "[%%itemname%% 50/% 5%] Run");
}

class XmlTagProviderTest : public ProviderTagsTest {
 protected:
  void SetUp() override {
    ProviderTagsTest::SetUp();
    project->KVProjectFileName = std::make_shared<FileSystem>(folder.path("project/docs.kvp"));
    project->Subscribe(events);
    writeFile(folder.path("project/data.xml"), "<a>%%x%% 5/%</a>");
    writeFile(folder.path("project/bad.xml"), "<a>");
    writeFile(folder.path("template/HTMLScraps/_XML_DYNAMIC.html"), "<dyn>%%XML%%</dyn>");
    writeFile(folder.path("template/HTMLScraps/framed.html"), "<f title=\"%%CAPTION%%\">%%XML%%</f>");
  }
  ScopedEnvironment config{"KAVREL_CONFIG_DIR", KV_SOURCE_CONFIG_DIR};
  std::shared_ptr<BuildErrors> events = std::make_shared<BuildErrors>();
};

TEST_F(XmlTagProviderTest, SwitchesChooseTheFormAndTheWrapper) {
  const std::string plain = "<pre class=\"plainxml\">";
  const std::string fixed = "<div class=\"formattedxml\" onclick=\"javascript:cl()\">";
  const struct {
    Parameters parameters;
    std::string start, contains;
  } cases[] = {
      // Absent switches are off; the missing static scrap gives way to the fixed div.
      {{{"file", "data.xml"}}, fixed + plain, "&lt;a&gt;/%/%x/%/% 5//%&lt;/a&gt;</pre></div>"},
      {{{"file", "data.xml"}, {"escaped", "false"}}, fixed + plain, "</pre></div>"},
      // Present and empty is on: dynamic without colour is the plain form in the dynamic scrap.
      {{{"file", "data.xml"}, {"dynamic", ""}}, "<dyn>" + plain, "</pre></dyn>"},
      {{{"file", "data.xml"}, {"dynamic", "FALSE"}}, fixed + plain, "</pre></div>"},
      {{{"file", "data.xml"}, {"colorized", "yes"}}, fixed + "<div class=\"colorizedxml\">", "</div></div>"},
      {{{"file", "data.xml"}, {"colorized", "1"}, {"dynamic", "no"}}, "<dyn><div class=\"dynamicxml\">", "</dyn>"},
      {{{"file", "data.xml"}, {"scrap", "framed"}}, "<f title=\"&nbsp;\">" + plain, "</f>"},
      {{{"file", "data.xml"}, {"scrap", "framed"}, {"caption", "Data"}}, "<f title=\"Data\">", "</f>"},
  };
  for (const auto& c : cases) {
    Parameters parameters = c.parameters;
    parameters.emplace_back("type", "xml");
    const std::string html = provide(parameters);
    EXPECT_THAT(html, StartsWith(c.start)) << html;
    EXPECT_THAT(html, HasSubstr(c.contains)) << html;
  }
  EXPECT_TRUE(events->errors.empty());
}

TEST_F(XmlTagProviderTest, AMissingOrBrokenDocumentIsABuildErrorAndNoText) {
  EXPECT_EQ(provide({{"type", "xml"}, {"file", "missing.xml"}}), "{Discard}");
  EXPECT_EQ(provide({{"type", "xml"}, {"file", "bad.xml"}, {"colorized", ""}}), "{Discard}");
  EXPECT_EQ(provide({{"type", "xml"}}), "{Discard}");
  ASSERT_EQ(events->errors.size(), 3u);
  EXPECT_EQ(events->errors[0], "XML File '" + folder.path("project/missing.xml") +
                                   "' could not be found. Content referencing this file will be missing.");
  EXPECT_THAT(events->errors[1], StartsWith("XML File '" + folder.path("project/bad.xml") + "' could not be loaded"));
  EXPECT_EQ(events->levels, (std::vector<KVErrorLevel>{KVError, KVError, KVError}));
}

TEST_F(XmlTagProviderTest, TheDocumentsPercentSignsSurviveThePage) {
  show(makeItem("Block", {{"Name", "Run"}}));
  EXPECT_THAT(render("<kv:data type=\"xml\" file=\"data.xml\"/>%%itemname%%"),
              HasSubstr("&lt;a&gt;%%x%% 5/%&lt;/a&gt;</pre></div>Run"));
}

TEST_F(ProviderTagsTest, CheckForFileGivesTheRelativePathUnlessRelativeIsFalse) {
  project->OutputFolder(folder.path("out") + "/");
  writeFile(folder.path("out/sub/page.htm"), "x");
  const struct {
    Parameters parameters;
    std::string expected;
  } cases[] = {
      {{{"filename", "sub/page.htm"}}, "sub/page.htm"},
      {{{"filename", "sub\\page.htm"}, {"relative", "true"}}, "sub/page.htm"},
      {{{"filename", "sub/page.htm"}, {"relative", "no"}}, "sub/page.htm"},
      {{{"filename", "sub/page.htm"}, {"relative", "FALSE"}}, folder.path("out/sub/page.htm")},
      {{{"filename", "sub/none.htm"}, {"relative", "false"}}, "{Discard}"},
      {{}, "{Discard}"},
  };
  for (const auto& c : cases) {
    Parameters parameters = c.parameters;
    parameters.emplace_back("type", "checkforfile");
    EXPECT_EQ(provide(parameters), c.expected) << c.expected;
  }
}

TEST_F(ProviderTagsTest, ExampleCodeIsForExamplesAndKeepsItsPercentSigns) {
  show(makeItem("Block", {{"Name", "Run"}}));
  EXPECT_EQ(provide({{"type", "examplecode"}}), "");
  auto example = std::make_shared<Example>();
  example->Code = "x = 50/% %%itemname%%";
  example->Title = "Sample";
  example->Highlight = false;
  show(example, "Example");
  const std::string page = render("<kv:data type=\"examplecode\"/>");
  EXPECT_THAT(page, StartsWith("<div class=\"kvexample\">"));
  EXPECT_THAT(page, HasSubstr("x = 50/% %%itemname%%"));
}

TEST_F(ProviderTagsTest, DesignTagsShowOnlyInTheDesignView) {
  writeFile(folder.path("template/HTMLScraps/_DESIGN_LIST.html"), "[%%itemtype%%|%%tagidentifier%%|%%ItemType%%]");
  writeFile(folder.path("template/HTMLScraps/_DESIGN_SUPPORT.html"), "<script/>");
  writeFile(folder.path("template/HTMLScraps/_DESIGN_BANNER.html"), "<b>%%BannerContents%%</b>");
  const Parameters list = {{"type", "designlist"}, {"itemtype", "Class"}};
  const Parameters banner = {{"type", "designbanner"}};
  EXPECT_EQ(provide(list), "{Discard}");
  EXPECT_EQ(provide(banner), "{Discard}");
  provider->ForEdit = true;
  EXPECT_EQ(provide(list), "[Class|%%tagidentifier%%|%%ItemType%%]");
  EXPECT_EQ(provide(banner), "<script/>");
  provider->DesignBanner = "Draft";
  EXPECT_EQ(provide(banner), "<script/><b>Draft</b>");
}

}  // namespace
}  // namespace kv::test
