// The tags that write whole sections into the output file: they hand the file to the project's
// contents writer and add no text of their own.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kavrel/FileSystem.h"
#include "project/ProjectContents.h"
#include "template/ParserTemplate.h"
#include "template/ProviderFixture.h"

namespace kv::test {
namespace {

// Writes one line per call, naming the call, into the file it is given.
struct RecordingContents : ProjectContents {
  KVProject* project = nullptr;
  void BuildTOC(std::shared_ptr<FileSystem>& file, const std::shared_ptr<KVDocType>&) override {
    file->WriteLine("TOC[" + project->TOCBookPrefix + "|" + project->TOCBookSuffix + "|" + project->TOCSuffix + "|" +
                    project->TOCNodeScrap + "]");
  }
  void BuildIndex(std::shared_ptr<FileSystem>& file, const std::string& scrap) override {
    file->WriteLine("Index[" + scrap + "]");
  }
  void StreamContent(std::shared_ptr<FileSystem>& file, const std::string& type) override {
    file->WriteLine("Stream[" + type + "]");
  }
};

class SectionTagsTest : public ProviderFixture {
 protected:
  void SetUp() override {
    ProviderFixture::SetUp();
    contents->project = project.get();
    project->Contents(contents);
  }
  std::string render(const std::string& layout) {
    ParserTemplate page;
    page.LoadText(layout);
    page.DataProvider(provider);
    auto file = std::make_shared<FileSystem>(folder.path("out.txt"));
    file->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
    page.ParseTo(file);
    file->Close();
    return FileSystem(folder.path("out.txt")).ReadAll();
  }
  std::shared_ptr<RecordingContents> contents = std::make_shared<RecordingContents>();
};

TEST_F(SectionTagsTest, EachTagWritesItsSectionAndNoTextOfItsOwn) {
  const struct {
    const char* tag;
    const char* written;
  } cases[] = {
      {R"(<kv:data type="tableofcontents" />)", "TOC[<UL>|</UL>||]"},
      // A suffix alone does not count as markup of the tag's own.
      {R"(<kv:data type="TableOfContents" Suffix="<hr>" />)", "TOC[<UL>|</UL>||]"},
      {R"(<kv:data type="tableofcontents" bookprefix="<ul>" BookSuffix="</ul>" Suffix="<hr>" NodeScrap="_N" />)",
       "TOC[<ul>|</ul>|<hr>|_N]"},
      {R"(<kv:data type="tableofcontents" NodeScrap="_N" />)", "TOC[|||_N]"},
      {R"(<kv:data type="indexcontent" scrap="_HHK_BODY" />)", "Index[_HHK_BODY]"},
      {R"(<kv:data type="indexcontent" />)", "Index[]"},
      {R"(<kv:data type="index" />)", "Stream[Index]"},
      {R"(<kv:data type="index" scrap="Größe" />)", "Stream[Index:Größe]"},
      {R"(<kv:data type="filessection" />)", "Stream[Files]"},
      {R"(<kv:data type="mapsection" />)", "Stream[MAP]"},
      {R"(<kv:data type="aliassection" />)", "Stream[ALIAS]"},
      {R"(<kv:data type="aliassection" condition="helpversion:Value=2" />)", ""},
  };
  for (const auto& c : cases) {
    const std::string written = *c.written ? std::string(c.written) + "\n" : "";
    EXPECT_EQ(render(std::string("[") + c.tag + "]"), "[" + written + "]") << c.tag;
  }
}

}  // namespace
}  // namespace kv::test
