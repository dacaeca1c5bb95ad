// The bundled C++ example built by the kavrel program with the kv.cpp plug-in: the pages are
// written, and every local link in them leads to a file of the output folder.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libxml/HTMLparser.h>
#include <libxml/tree.h>
#include <libxml/uri.h>

#include <filesystem>
#include <functional>

#include "kavrel/Text.h"
#include "support/Files.h"
#include "support/KavrelProgram.h"
#include "support/ScopedEnvironment.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class ExampleBuild : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    // One build for every test: parsing the headers takes a while.
    program = new KavrelProgram();
    ScopedEnvironment config{"KAVREL_CONFIG_DIR", KV_BUILD_CONFIG_DIR};
    ScopedEnvironment cache{"XDG_CACHE_HOME", program->temp.path("cache")};
    fs::copy(fs::path(KV_SOURCE_CONFIG_DIR).parent_path() / "examples/cpplib", program->temp.path("cpplib"),
             fs::copy_options::recursive);
    result = program->run({"build", program->temp.path("cpplib/cpplib.kvp"), "--output", out(), "--no-compile"});
  }
  static void TearDownTestSuite() { delete program; }
  static std::string out(const std::string& name = "") { return program->temp.path("out/" + name); }

  static inline KavrelProgram* program = nullptr;
  static inline ProcessResult result;
};

// The local targets of href and src attributes in an HTML document.
void collectLinks(xmlNode* node, std::vector<std::string>& links) {
  for (; node; node = node->next) {
    if (node->type == XML_ELEMENT_NODE)
      for (xmlAttr* a = node->properties; a; a = a->next) {
        const std::string name = reinterpret_cast<const char*>(a->name);
        if (!text::equalsIgnoreCase(name, "href") && !text::equalsIgnoreCase(name, "src")) continue;
        xmlChar* value = xmlNodeListGetString(node->doc, a->children, 1);
        if (value) links.emplace_back(reinterpret_cast<const char*>(value));
        xmlFree(value);
      }
    collectLinks(node->children, links);
  }
}

bool isLocal(const std::string& link) {
  return !link.empty() && link[0] != '#' && link.find(':') == std::string::npos;
}

TEST_F(ExampleBuild, WritesAPageForEveryHeaderAndDeclaration) {
  ASSERT_TRUE(result.Started);
  ASSERT_EQ(result.ExitCode, 0) << result.Output;
  for (const char* page : {"index.html", "webframe.html", "webtoc.html", "webindex.html"})
    EXPECT_TRUE(fs::exists(out(page))) << page;
  long pages = 0;
  for (const auto& entry : fs::directory_iterator(out()))
    if (entry.path().extension() == ".html" && entry.path().filename().string().find('~') != std::string::npos) ++pages;
  EXPECT_GT(pages, 10);
  EXPECT_THAT(result.Output, HasSubstr("Build complete."));
}

TEST_F(ExampleBuild, EveryLocalLinkOfAGeneratedPageResolves) {
  ASSERT_EQ(result.ExitCode, 0) << result.Output;
  std::vector<std::string> broken;
  long checked = 0;
  // The pages the build wrote: the layouts and scraps it copies as support files are not pages.
  for (const auto& entry : fs::directory_iterator(out())) {
    if (entry.path().extension() != ".html" || entry.path().filename() == "buildresults.html") continue;
    htmlDocPtr doc =
        htmlReadFile(entry.path().c_str(), "UTF-8", HTML_PARSE_NONET | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING);
    ASSERT_NE(doc, nullptr) << entry.path();
    std::vector<std::string> links;
    collectLinks(xmlDocGetRootElement(doc), links);
    xmlFreeDoc(doc);
    for (const std::string& link : links) {
      if (!isLocal(link)) continue;
      ++checked;
      // A browser reads "%20" in a link as the blank of the file's name.
      char* unescaped = xmlURIUnescapeString(link.substr(0, link.find_first_of("#?")).c_str(), 0, nullptr);
      const std::string file = unescaped ? unescaped : "";
      xmlFree(unescaped);
      if (!fs::exists(entry.path().parent_path() / file))
        broken.push_back(entry.path().filename().string() + " -> " + link);
    }
  }
  EXPECT_GT(checked, 0);
  EXPECT_THAT(broken, IsEmpty());
}

}  // namespace
}  // namespace kv::test
