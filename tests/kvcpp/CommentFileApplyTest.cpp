// A comment file of the example library, read with its project: its comments land on the items
// the kv.cpp plug-in parses from the headers, at once or as the tree is asked for, and comments
// whose item has gone are kept as orphans.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "comments/KVContentFiles.h"
#include "comments/TaggedCommentServices.h"
#include "definitions/Template.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/XmlDocument.h"
#include "kavrel/model/Item.h"
#include "kavrel/model/TaggedComments.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

const fs::path kExample = fs::path(KV_TEST_DATA_DIR) / "../../examples/cpplib";

// Comments for the geometry header: item comments, a parameter's, one of an item that is gone
// and one the reader never applies. Texts hold non-ASCII characters on purpose.
std::string commentFile(bool onDemand) {
  return std::string(R"(<?xml version="1.0" encoding="UTF-8"?>
<KavrelComments Version="5.0" Moniker="geometry.h" DocType="kv.cpp" Template="Standard" ShowInherited="False"
    LoadOnDemand=")") +
         (onDemand ? "True" : "False") + R"(">
  <IgnoreWordList>cpplib</IgnoreWordList>
  <c eid="cpplib~Shape" tid="##REMARKS" q="" cd="46000">Shapes never change size — größer wird nichts.</c>
  <c eid="cpplib~convert" tid="##NOTE" q="" cd="46000">Rounds to the nearest µm.</c>
  <c eid="cpplib~convert~value" tid="##PARAM" q="" cd="46000">Any finite length.</c>
  <c eid="cpplib~Triangle" tid="##SUMMARY" q="" cd="46000">A shape that was removed.</c>
  <c eid="cpplib~Shape" tid="##XMLCOMMENT" q="" cd="46000">&lt;summary/&gt;</c>
</KavrelComments>
)";
}

class CppCommentFile : public testing::Test {
 protected:
  void SetUp() override { fs::copy(kExample, temp.path("cpplib"), fs::copy_options::recursive); }
  void TearDown() override {
    if (project) project->Terminate();
  }

  // The example's project with the comment file beside it.
  void load(bool onDemand) {
    test::writeFile(temp.path("cpplib/geometry.kvc"), commentFile(onDemand));
    std::string kvp = test::readFile(temp.path("cpplib/cpplib.kvp"));
    kvp.replace(
        kvp.find("<CommentFiles/>"), 15,
        R"(<CommentFiles><CommentFile FileName="geometry.kvc" DocType="kv.cpp" ItemMoniker="geometry.h"/></CommentFiles>)");
    test::writeFile(temp.path("cpplib/cpplib.kvp"), kvp);
    project = KVProject::New();
    project->Silent = true;
    project->LoadFromFile(temp.path("cpplib/cpplib.kvp"));
    ASSERT_EQ(project->CommentFiles->Count(), 1);
    file = project->CommentFiles->Item(1);
    ASSERT_TRUE(file->Loaded());
    provider = project->DocTypes->Item("kv.cpp")->NamespaceProvider();
    ASSERT_TRUE(provider);
  }
  ItemPtr item(const std::string& name) const {
    return std::dynamic_pointer_cast<Item>(provider->GetItemByQualifiedName(name));
  }
  // The texts of the item's comments of one kind, in collection order.
  std::vector<std::string> texts(const std::string& name, const std::string& tid) const {
    std::vector<std::string> out;
    const ItemPtr found = item(name);
    if (!found) return out;
    for (const auto& c : found->TaggedComments())
      if (c->TagIdentifier() == tid) out.push_back(c->Description());
    return out;
  }
  // The eid of each comment still waiting in the file's document.
  std::vector<std::string> waiting() const {
    std::vector<std::string> out;
    if (file->ContentDocument())
      for (const XMLNode c : file->ContentDocument()->RootNode().ChildNodes())
        if (c.Name() == "c") out.push_back(c.Attributes().ValueOr("eid") + " " + c.Attributes().ValueOr("tid"));
    return out;
  }

  test::ScopedRecordingHost host;
  test::TempFolder temp;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<KVContentFile> file;
  std::shared_ptr<INamespaceProvider> provider;
};

TEST_F(CppCommentFile, AFullLoadPutsEveryCommentOnItsItemAndKeepsTheRestAsOrphans) {
  load(false);
  EXPECT_EQ(file->RootItem(), provider->LoadRootItem("geometry.h"));
  EXPECT_EQ(texts("cpplib~Shape", "##REMARKS"),
            (std::vector<std::string>{"<p>Derive from it to add a shape; every shape knows its area and its name.</p>",
                                      "Shapes never change size — größer wird nichts."}));
  EXPECT_EQ(texts("cpplib~convert", "##NOTE"), std::vector<std::string>{"Rounds to the nearest µm."});
  EXPECT_EQ(texts("cpplib~convert~value", "##PARAM").back(), "Any finite length.");
  EXPECT_EQ(file->LoadCount, 4);  // the orphan's comment was taken from the file too

  ASSERT_EQ(file->OrphanedItems->Count(), 1);
  const auto orphan = file->OrphanedItems->Item("cpplib~Triangle");
  ASSERT_EQ(orphan->TaggedComments->Count(), 1);
  EXPECT_EQ(orphan->TaggedComments->Item(1)->Description(), "A shape that was removed.");
  // A full load needs the document no more: the comment that is never applied goes with it.
  EXPECT_FALSE(file->ContentDocument());

  // The orphan is written back under its old name; the file can be read again.
  ASSERT_TRUE(file->SaveFile());
  const std::string saved = test::readFile(temp.path("cpplib/geometry.kvc"));
  EXPECT_NE(saved.find(R"(eid="cpplib~Triangle" tid="##SUMMARY")"), std::string::npos);
  EXPECT_NE(saved.find("größer wird nichts"), std::string::npos);
}

TEST_F(CppCommentFile, ABuildThatParsesTheHeadersAgainKeepsTheCommentsOnTheNewItems) {
  load(false);
  const ItemPtr before = item("cpplib~convert");
  const auto summaries = texts("cpplib~convert", "##SUMMARY");
  const auto messages = host.messages().size();
  // The doc type's preparation copies the template's support files there.
  project->OutputFolder(temp.path("output"));
  project->DocTypes->Item("kv.cpp")->BeforeBuild();
  const ItemPtr after = item("cpplib~convert");
  ASSERT_NE(after, before);  // parsed anew
  EXPECT_EQ(texts("cpplib~convert", "##NOTE"), std::vector<std::string>{"Rounds to the nearest µm."});
  EXPECT_EQ(texts("cpplib~convert", "##SUMMARY"), summaries);  // the source's own, once
  EXPECT_EQ(file->RootItem(), provider->LoadRootItem("geometry.h"));
  EXPECT_EQ(file->OrphanedItems->Count(), 1);
  EXPECT_FALSE(file->Dirty());
  EXPECT_EQ(host.messages().size(), messages);  // the orphan was told of at the load
}

TEST_F(CppCommentFile, ApplyingAgainAddsNothing) {
  load(false);
  const auto before = texts("cpplib~Shape", "##REMARKS");
  file->ApplyContent("cpplib~Shape");
  file->ApplyContent("");
  EXPECT_EQ(texts("cpplib~Shape", "##REMARKS"), before);
  EXPECT_EQ(file->LoadCount, 4);  // the orphan's comment was taken from the file too
  EXPECT_EQ(file->OrphanedItems->Count(), 1);
}

TEST_F(CppCommentFile, LoadingOnDemandLeavesWhatHasNoItemForALaterPass) {
  load(true);
  // What was found is applied at once; what was not waits, and is no orphan yet.
  EXPECT_EQ(texts("cpplib~convert", "##NOTE"), std::vector<std::string>{"Rounds to the nearest µm."});
  EXPECT_EQ(waiting(), (std::vector<std::string>{"cpplib~Triangle ##SUMMARY", "cpplib~Shape ##XMLCOMMENT"}));
  EXPECT_EQ(file->OrphanedItems->Count(), 0);

  // A save carries the waiting comments unchanged.
  ASSERT_TRUE(file->SaveFile());
  EXPECT_NE(test::readFile(temp.path("cpplib/geometry.kvc")).find("A shape that was removed."), std::string::npos);

  // A filtered pass for the missing item makes it an orphan; the never-applied comment stays.
  file->ApplyContent("cpplib~Triangle");
  EXPECT_EQ(waiting(), std::vector<std::string>{"cpplib~Shape ##XMLCOMMENT"});
  ASSERT_EQ(file->OrphanedItems->Count(), 1);

  file->FullyPopulate();
  EXPECT_TRUE(file->FullyPopulated());
  EXPECT_EQ(texts("cpplib~Shape", "##REMARKS").size(), 2u);
}

TEST_F(CppCommentFile, ItemPopulatedAppliesTheNamedPartAndTellsTheSubscribers) {
  load(true);
  struct Recorder : KVContentFileEvents {
    std::vector<std::string> filters;
    void ItemPopulated(const ObjectPtr&, const std::string& filter) override { filters.push_back(filter); }
  };
  const auto recorder = std::make_shared<Recorder>();
  file->Subscribe(recorder);
  file->SaveSpellIgnoreWordListToFile();
  file->ItemPopulatedEx(item("cpplib~Circle"), "cpplib~Triangle");
  EXPECT_EQ(recorder->filters, std::vector<std::string>{"cpplib~Triangle"});
  EXPECT_EQ(file->OrphanedItems->Count(), 1);
  // The names below the item reach the spell checker's list at once.
  EXPECT_NE(test::readFile(file->SpellTempFile()).find("\nradius\n"), std::string::npos);
}

TEST_F(CppCommentFile, FindItemsSplitsItemsByWhetherTheyHaveComments) {
  load(false);
  const auto root = file->RootItem();
  const auto def = project->DocTypes->Item("kv.cpp")->Template()->NamespaceDefs.Item(1);
  std::vector<std::string> with, without;
  const auto withComments = file->FindItems(root, def, true);
  const auto withoutComments = file->FindItems(root, def, false);
  for (const auto& i : *withComments) with.push_back(i->get("QualifiedName").toString());
  for (const auto& i : *withoutComments) without.push_back(i->get("QualifiedName").toString());
  EXPECT_NE(std::find(with.begin(), with.end(), "cpplib~convert"), with.end());
  EXPECT_NE(std::find(without.begin(), without.end(), "cpplib~Rectangle~operator="), without.end());
  for (const auto& name : with) EXPECT_EQ(std::find(without.begin(), without.end(), name), without.end()) << name;
}

TEST(CommentFilter, MatchesTheItemAndWhatLiesBelowIt) {
  struct Case {
    const char* filter;
    const char* name;
    bool matches;
  };
  const Case cases[] = {
      {"", "A~B", true},      {"A~B", "A~B", true},   {"A~B", "A~B~C", true},
      {"A~B", "A~BC", false}, {"a~b", "A~B", true},   {"a~b", "A~B~C", false},
      {"A~B", "A", false},    {"Ä~B", "Ä~B~ö", true}, {"ä~b", "Ä~B", true},
  };
  for (const Case& c : cases)
    EXPECT_EQ(KVContentFile::FilterMatch(c.filter, c.name), c.matches) << c.filter << " / " << c.name;
}

}  // namespace
}  // namespace kv
