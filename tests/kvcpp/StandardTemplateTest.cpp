// The Standard template's pages for the example library: every page of every item, rendered as a
// build renders them, shows each comment of the headers in the section a reader looks for it in,
// and no page holds a failure text.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "definitions/PageLayout.h"
#include "definitions/Template.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "template/CommonProvider.h"
#include "template/ParserTemplate.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

const fs::path kExample = fs::path(KV_TEST_DATA_DIR) / "../../examples/cpplib";

// The pages of the example, "Item:<qualified name>" and "Members:<qualified name>", rendered once
// for all tests: parsing the headers is the slow part.
class StandardTemplate : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    host = new test::ScopedRecordingHost;
    temp = new test::TempFolder;
    fs::copy(kExample, temp->path("cpplib"), fs::copy_options::recursive);
    // A comment file adds a remark that only it knows, with characters outside ASCII.
    test::writeFile(temp->path("cpplib/geometry.kvc"), R"(<KavrelComments Version="5.0" Moniker="geometry.h"
        DocType="kv.cpp" Template="Standard" ShowInherited="False"><IgnoreWordList/>
        <c eid="cpplib~Circle" tid="##REMARKS" q="" cd="46000">Kreise sind rund — 100% of them.</c></KavrelComments>)");
    std::string kvp = test::readFile(temp->path("cpplib/cpplib.kvp"));
    kvp.replace(
        kvp.find("<CommentFiles/>"), 15,
        R"(<CommentFiles><CommentFile FileName="geometry.kvc" DocType="kv.cpp" ItemMoniker="geometry.h"/></CommentFiles>)");
    kvp.replace(kvp.find("<VariableValues/>"), 17,
                R"(<VariableValues><VariableValue Name="Copyright" Value="© Example Ltd"/>)"
                R"(<VariableValue Name="FooterText" Value="Documentation of cpplib"/></VariableValues>)");
    test::writeFile(temp->path("cpplib/cpplib.kvp"), kvp);

    project = new std::shared_ptr<KVProject>(KVProject::New());
    auto& p = *project;
    p->Silent = true;
    p->LoadFromFile(temp->path("cpplib/cpplib.kvp"));
    const auto docType = p->DocTypes->Item("kv.cpp");
    p->CurrentDocType(docType);
    p->LoadVariables(*docType);
    pages = new std::map<std::string, std::string>;
    render(*docType->Template(), nullptr, docType->Template()->NamespaceDefs);
  }
  static void TearDownTestSuite() {
    (*project)->Terminate();
    delete project;
    delete pages;
    delete temp;
    delete host;
  }

  // Renders the pages of the items of `defs` below `parent`, and of their children, as the page
  // walk of a build does.
  static void render(const Template& tmpl, const ObjectPtr& parent, const NamespaceDefs& defs) {
    auto& p = *project;
    for (const auto& def : defs) {
      const auto provider = p->GetNamespaceProvider(def->Handler);
      ASSERT_TRUE(provider) << def->Name;
      const ItemCollection items = provider->GetItems(def, parent, "forpagegeneration=true");
      for (const auto& item : *items) {
        auto data = std::make_shared<CommonProvider>();
        data->KVProject(p);
        data->CurrentRootItem(parent ? parent : item);
        for (const auto& layout : tmpl.PageLayouts) {
          const std::vector<std::string> names = text::split(layout->NamespaceList, ",");
          if (std::find(names.begin(), names.end(), def->Name) == names.end()) continue;
          ParserTemplate page;
          page.Load(tmpl.Folder + layout->TemplateFileName);
          ASSERT_EQ(page.LoadErrors(), "") << layout->TemplateFileName;
          page.DataProvider(data);
          data->SetCurrentItem(def, item, def->DisplayName, parent);
          (*pages)[layout->Name + ":" + item->get("QualifiedName").toString()] = page.ParseToString();
        }
        render(tmpl, item, def->ChildNamespaceDefs);
      }
    }
  }

  static const std::string& page(const std::string& key) {
    static const std::string none;
    const auto found = pages->find(key);
    EXPECT_NE(found, pages->end()) << key;
    return found == pages->end() ? none : found->second;
  }
  // The section of a page under the heading `caption`, up to the end of the section.
  static std::string section(const std::string& html, const std::string& caption) {
    const std::size_t start = html.find("<h2>" + caption + "</h2>");
    if (start == std::string::npos) return {};
    return html.substr(start, html.find("</section>", start) - start);
  }

  static test::ScopedRecordingHost* host;
  static test::TempFolder* temp;
  static std::shared_ptr<KVProject>* project;
  static std::map<std::string, std::string>* pages;
};

test::ScopedRecordingHost* StandardTemplate::host;
test::TempFolder* StandardTemplate::temp;
std::shared_ptr<KVProject>* StandardTemplate::project;
std::map<std::string, std::string>* StandardTemplate::pages;

TEST_F(StandardTemplate, NoPageOfAnyItemHoldsAFailureText) {
  ASSERT_GT(pages->size(), 40u);
  for (const auto& [key, html] : *pages) {
    // Failure texts, and tags, references or phrases left unexpanded.
    for (const char* failure :
         {"!MISSING", "!UNRECOGNISED", "!ERROR", "!INVALID", "!INCLUDE NOT FOUND", "<kv:", "%%", "$$"})
      EXPECT_THAT(html, Not(HasSubstr(failure))) << key;
    EXPECT_THAT(html, HasSubstr("<header class=\"banner\"><a href=\"index.html\">cpplib</a></header>")) << key;
    EXPECT_THAT(html,
                HasSubstr("<p>Documentation of cpplib © Example Ltd</p><p class=\"generated\">Generated by Kavrel on "))
        << key;
  }
}

TEST_F(StandardTemplate, AClassPageShowsItsCommentsBasesAndMembers) {
  const std::string& shape = page("Item:cpplib~Shape");
  EXPECT_THAT(shape, HasSubstr("<div class=\"summary\">Something that can be drawn and measured.</div>"));
  EXPECT_THAT(section(shape, "Remarks"), HasSubstr("Derive from it to add a shape"));
  // Names in "see also" that are items of the library link to their pages.
  EXPECT_THAT(section(shape, "See also"),
              HasSubstr("<a href=\"cpplib~Circle.html\">Circle</a>, <a href=\"cpplib~Rectangle.html\">Rectangle</a>"));
  // Members link to their own pages; names that are not plain in a URL are escaped.
  const std::string methods = section(shape, "Member functions");
  EXPECT_THAT(methods,
              HasSubstr("<a href=\"cpplib~Shape~area.html\">area</a></td><td><code class=\"signature\">virtual double "
                        "area() const = 0</code>The area the shape covers.</td>"));
  EXPECT_THAT(methods, HasSubstr("<a href=\"cpplib~Shape~move~(const%20Point%20&).html\">move</a>"));
  EXPECT_THAT(shape, HasSubstr("<a href=\"cpplib~Shape_members.html\">All members</a>"));

  const std::string& circle = page("Item:cpplib~Circle");
  EXPECT_THAT(section(circle, "Base classes"), HasSubstr("<span class=\"access\">public</span> <code>Shape</code>"));
  // A remark from the comment file, with its percent sign kept.
  EXPECT_THAT(section(circle, "Remarks"), HasSubstr("Kreise sind rund — 100% of them."));

  const std::string& vec2 = page("Item:cpplib~Vec2");
  EXPECT_THAT(section(vec2, "Template parameters"),
              HasSubstr("<dt><code>T</code></dt><dd>the coordinate type, such as <code>float</code>"));
  EXPECT_THAT(section(vec2, "Data members"), HasSubstr("The horizontal coordinate."));

  const std::string& members = page("Members:cpplib~Shape");
  EXPECT_THAT(members, HasSubstr("<h1>Members of Shape</h1>"));
  EXPECT_THAT(section(members, "Member functions"), HasSubstr(">moved</a>"));
}

TEST_F(StandardTemplate, AFunctionPageShowsItsDeclarationParametersAndReturnValue) {
  const std::string& convert = page("Item:cpplib~convert");
  EXPECT_THAT(convert, HasSubstr("<div class=\"summary\">Converts a length between units.</div>"));
  const std::string declaration = section(convert, "Declaration");
  EXPECT_THAT(declaration, HasSubstr("<pre class=\"kvcode\">"));
  EXPECT_THAT(declaration, HasSubstr("<span class=\"hl-type\">double</span>"));
  const std::string parameters = section(convert, "Parameters");
  EXPECT_THAT(parameters,
              HasSubstr("<dt><code>value</code> <span class=\"type\">double</span></dt><dd>the length</dd>"));
  EXPECT_THAT(parameters,
              HasSubstr("<dt><code>to</code> <span class=\"type\">Unit</span></dt><dd>the unit wanted</dd>"));
  EXPECT_THAT(section(convert, "Return value"), HasSubstr("the length in <code>to</code>"));

  // Code in a comment is coloured as the header's language.
  EXPECT_THAT(section(page("Item:cpplib~totalArea"), "Remarks"),
              HasSubstr("<pre class=\"kvcode\">std<span class=\"hl-symbol\">::</span>"));
  const std::string& mean = page("Item:cpplib~mean");
  EXPECT_THAT(
      mean, HasSubstr("<div class=\"callout deprecated\" role=\"note\"><strong>Deprecated</strong> Use a running sum"));
  EXPECT_THAT(section(page("Item:ring_buffer.h"), "Functions"), HasSubstr("<span class=\"badge\">Deprecated</span>"));
  EXPECT_THAT(page("Item:cpplib~RingBuffer~operator[]~(size_type)"),
              HasSubstr("<div class=\"callout note\" role=\"note\"><strong>Note:</strong>"));
}

TEST_F(StandardTemplate, EnumerationsHeadersAndOtherKindsShowWhatTheyHold) {
  const std::string enumerators = section(page("Item:cpplib~Unit"), "Enumerators");
  EXPECT_THAT(enumerators,
              HasSubstr("<td><code>Millimetre</code></td><td><code>0</code></td><td>A thousandth of a metre.</td>"));
  EXPECT_THAT(enumerators, HasSubstr("<td><code>Point</code></td><td><code>3</code></td>"));

  const std::string& header = page("Item:log.h");
  EXPECT_THAT(section(header, "Classes"), HasSubstr(">log_sink</a>"));
  EXPECT_THAT(section(header, "Functions"), HasSubstr(">log_write</a>"));
  EXPECT_THAT(section(header, "Enumerations"), HasSubstr(">log_level</a>"));
  EXPECT_THAT(section(header, "Variables"), HasSubstr("The number of messages written since the program started."));
  EXPECT_THAT(section(page("Item:cpplib~Point"), "Declaration"), HasSubstr("Vec2"));
  EXPECT_THAT(page("Item:LOG_MAX_MESSAGE"), HasSubstr("The largest message, in bytes, the log writes whole."));
  EXPECT_THAT(section(page("Item:log_write"), "Parameters"), HasSubstr("nothing is written when it is null"));
}

}  // namespace
}  // namespace kv
