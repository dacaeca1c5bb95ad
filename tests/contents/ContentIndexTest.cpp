#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "contents/ContentIndex.h"
#include "contents/IndexKeywords.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/FileSystem.h"
#include "project/AdditionalFiles.h"
#include "project/Keywords.h"
#include "support/TestNamespaceProvider.h"
#include "template/ProviderFixture.h"

namespace kv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

struct PopulatedPlugIn : IKVProjectPlugIn {
  bool SomethingToDocument() override { return true; }
};

// Answers every content stream with a line naming it.
struct StreamingProvider : TestNamespaceProvider {
  void StreamContent(std::shared_ptr<FileSystem>& file, const std::string& type) override {
    file->WriteLine("provider:" + type);
  }
};

class ContentIndexTest : public ProviderFixture {
 protected:
  void SetUp() override {
    ProviderFixture::SetUp();
    writeFile(folder.path("template/HTMLScraps/_WEB_INDEX_BODY.html"),
              "<li><a href=\"%%keywordtarget%%\">%%keyword%%</a></li>");
    writeFile(folder.path("template/HTMLScraps/_WEB_INDEX_SEPARATOR.html"), "<br />");
    writeFile(folder.path("template/HTMLScraps/_HXK_V2_BODY.html"), "%%keyword%%");
    writeFile(folder.path("template/HTMLScraps/_HXK_BODY.html"), "%%keyword%%");
    writeFile(folder.path("template/HTMLScraps/_A_BODY.html"), "A:%%keyword%%");
    writeFile(folder.path("template/HTMLScraps/_F_BODY.html"), "F:%%keyword%%");
    auto def = std::make_shared<NamespaceDef>();
    def->Name = "KV:Class";
    def->Handler = "Test.StreamingProvider";
    tmpl->NamespaceDefs.Add(def, def->Name);
    TestNamespaceProvider::registerAs("Test.StreamingProvider", streaming);
    // A doc type with something to document, whose provider streams content.
    auto populated = std::make_shared<KVDocType>("kv.streaming", std::make_shared<PopulatedPlugIn>());
    populated->mSelectedTemplate = tmpl;
    project->DocTypes->Add(populated);
    project->NewKeywordStores();
  }
  void TearDown() override {
    ClassRegistry::instance().remove("Test.StreamingProvider");
    ProviderFixture::TearDown();
  }

  std::string write(const std::function<void(std::shared_ptr<FileSystem>&)>& body) {
    auto file = std::make_shared<FileSystem>(folder.path("index.txt"));
    file->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
    body(file);
    file->Close();
    return FileSystem(folder.path("index.txt")).ReadAll();
  }
  std::string index(const std::string& scrap) {
    return write([&](auto& file) { ContentIndex(*project).BuildIndex(file, scrap); });
  }

  std::shared_ptr<TestNamespaceProvider> streaming = std::make_shared<StreamingProvider>();
};

TEST_F(ContentIndexTest, KeywordsAreSortedOnceAndWrittenWithSeparators) {
  Keywords& k = *project->KKeywords();
  k.AddSimpleKeyword("über", "u.html");
  k.AddSimpleKeyword("Beta", "b.html");
  k.AddHierarchicalKeyword("alpha, first", "a1.html");
  k.AddSimpleKeyword("alpha", "a.html");
  EXPECT_EQ(index("_WEB_INDEX_BODY"),
            "<li><a href=\"a.html\">alpha</a></li>\n<br />\n<li><a href=\"b.html\">Beta</a></li>\n<br />\n"
            "<li><a href=\"u.html\">über</a></li>\n");
  // The store stays sorted for the build: a keyword added now comes last in the next index.
  k.AddSimpleKeyword("aardvark", "aa.html");
  EXPECT_THAT(index("_WEB_INDEX_BODY"), ::testing::EndsWith("<li><a href=\"aa.html\">aardvark</a></li>\n"));
}

TEST_F(ContentIndexTest, ScrapNameChoosesTheStoreAndTheHelp2Escapes) {
  project->KKeywords()->AddSimpleKeyword("k", "k.html");
  project->AKeywords()->AddSimpleKeyword("a", "a.html");
  project->FKeywords()->AddSimpleKeyword("f", "f.html");
  EXPECT_EQ(index("_A_BODY"), "A:a\n");
  EXPECT_EQ(index("_F_BODY"), "F:f\n");
  EXPECT_EQ(index("_HXK_BODY"), "k\n");

  project->KKeywords()->AddSimpleKeyword("x,y;z:w", "x.html");
  project->HTMLHelpVersion("2");
  EXPECT_EQ(index("_HXK_BODY"), "k\nx,y;z:w\n");  // no "v2" in the scrap's name
  EXPECT_EQ(index("_HXK_V2_BODY"), "k\nx%2Cy%3Bz%3Aw\n");
}

TEST_F(ContentIndexTest, MissingScrapsLeaveNoErrorTextBehind) {
  project->KKeywords()->AddSimpleKeyword("one", "1.html");
  project->KKeywords()->AddSimpleKeyword("two", "2.html");
  EXPECT_EQ(index("_HXK_BODY"), "one\ntwo\n");
  EXPECT_THAT(index(""), HasSubstr("!MISSING Scrap _INDEXCONTENT_ENTRY"));
}

TEST_F(ContentIndexTest, FilesSectionListsTheAdditionalFilesThenTheDocTypesContent) {
  for (const char* name : {"/art/logo.png", "/docs/Größe & Maß.html"}) {
    auto file = std::make_shared<AdditionalFile>();
    file->FileName = name;
    project->AdditionalFiles->Add(file);
  }
  const auto stream = [&](const std::string& type) {
    return write([&](auto& file) { ContentIndex(*project).StreamContent(file, type); });
  };
  EXPECT_EQ(stream("Files"), "logo.png\nGröße & Maß.html\nprovider:Files\n");
  EXPECT_EQ(stream("MAP"), "provider:MAP\n");
  project->HTMLHelpVersion("2");
  EXPECT_EQ(stream("files"), "<File Url = \"logo.png\"/>\n<File Url = \"Größe &amp; Maß.html\"/>\nprovider:files\n");
}

TEST_F(ContentIndexTest, CommentKeywordsOfItemsJoinTheStore) {
  const auto keywords = [](const char* text) {
    return makeCollection({{"##KEYWORDS", makeItem("TaggedComment", {{"Description", text}})}});
  };
  auto item = makeItem("Block", {{"Name", "Run"}, {"QualifiedName", "Lib~Run"}});
  item->field("TaggedComments", Variant(keywords("start|Engine, start|,Größe")));
  GetIndexKeywords(item, *project->KKeywords(), "run.html");
  Keywords& k = *project->KKeywords();
  ASSERT_EQ(k.Count(), 3);
  EXPECT_TRUE(k.Exists("start"));
  EXPECT_TRUE(k.Exists("Größe"));
  ASSERT_TRUE(k.Item("Engine")->HasChildKeywords());
  EXPECT_EQ(k.Item("Engine")->ChildKeywords().Item(1)->Jumps.at(0).Target, "run.html");

  const auto entries = IndexEntries(item);
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[1].Title, "Engine, start");
  EXPECT_EQ(entries[1].QualifiedName, "Lib~Run");
  // An item without comments has none.
  EXPECT_TRUE(IndexEntries(makeItem("Block")).empty());
}

TEST_F(ContentIndexTest, IndexedDefinitionsGiveTheirItemsAsKeywords) {
  auto classes = std::make_shared<NamespaceDef>();
  classes->Name = "KV:Class";
  classes->ChildKinds = "i";
  auto methods = std::make_shared<NamespaceDef>();
  methods->Name = "KV:Method";  // not indexed, its items are walked all the same
  classes->ChildNamespaceDefs.Add(methods, methods->Name);
  auto deep = std::make_shared<NamespaceDef>();
  deep->Name = "KV:Param";
  deep->ChildKinds = "i";
  methods->ChildNamespaceDefs.Add(deep, deep->Name);
  streaming->items["KV:Class"] = [](const ObjectPtr&) {
    return std::vector<ObjectPtr>{makeItem("Component", {{"Name", "Gadget"}, {"QualifiedName", "Lib~Gadget"}})};
  };
  streaming->items["KV:Method"] = [](const ObjectPtr&) {
    return std::vector<ObjectPtr>{makeItem("Block", {{"Name", "Run"}, {"QualifiedName", "Lib~Gadget~Run"}})};
  };
  streaming->items["KV:Param"] = [](const ObjectPtr&) {
    return std::vector<ObjectPtr>{makeItem("Parameter", {{"Name", "speed"}, {"QualifiedName", "Lib~speed"}})};
  };
  GetKeywordsEx(*project->KKeywords(), classes, nullptr, *streaming, *provider);
  Keywords& k = *project->KKeywords();
  EXPECT_EQ(k.Count(), 2);
  EXPECT_EQ(k.Item("Gadget")->Jumps.at(0).Target, "Lib~Gadget.html");
  EXPECT_EQ(k.Item("speed")->Jumps.at(0).Target, "Lib~speed.html");
  EXPECT_FALSE(k.Exists("Run"));
  for (const auto& request : streaming->requests) EXPECT_EQ(request, "forindexgeneration=true");
}

}  // namespace
}  // namespace kv::test
