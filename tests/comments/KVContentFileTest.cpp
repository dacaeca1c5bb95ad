// Comment files on disk: what the reader takes from current, old and damaged files, that a saved
// file reads back and saves to the same bytes, that item comments and orphans are written, and
// that a save that dies or fails half-way leaves the previous file as it was.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <filesystem>

#include "comments/KVContentFile.h"
#include "kavrel/Model.h"
#include "kavrel/XmlDocument.h"
#include "support/FileSizeLimit.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

const fs::path kSamples = fs::path(KV_TEST_DATA_DIR) / "comments";

std::vector<std::string> titles(const test::ScopedRecordingHost& host) {
  std::vector<std::string> out;
  for (const auto& m : host.messages()) out.push_back(m.title);
  return out;
}

// The "eid", "tid", "q" and text of each "c" element of a saved file.
std::vector<std::string> commentsIn(const std::string& xml) {
  XMLDocument doc;
  EXPECT_TRUE(doc.LoadXML(xml));
  std::vector<std::string> out;
  for (const XMLNode c : doc.RootNode().ChildNodes())
    if (c.Name() == "c")
      out.push_back(c.Attributes().Item("eid").Value() + " " + c.Attributes().Item("tid").Value() + " " +
                    c.Attributes().Item("q").Value() + " " + c.Text());
  return out;
}

class ContentFileTest : public ::testing::Test {
 protected:
  // A sample copied into the temporary folder, so that saves and ".bak" files stay there.
  std::string copySample(const std::string& name, const std::string& as = "library.kvc") {
    const std::string path = temp.path("comments/" + as);
    test::writeFile(path, test::readFile(kSamples / name));
    return path;
  }

  test::TempFolder temp;
  test::ScopedRecordingHost host;
};

struct Sample {
  const char* file;
  bool loads;
  std::vector<std::string> messages;  // titles, in order
  std::function<void(const KVContentFile&, const std::string& folder)> check;
};

class ContentFileSamples : public ContentFileTest, public ::testing::WithParamInterface<Sample> {};

TEST_P(ContentFileSamples, ReadWithDefaultsAndAtMostOneMessage) {
  const std::string path = copySample(GetParam().file);
  KVContentFile file;
  file.FileName = temp.path("before.kvc");
  EXPECT_EQ(file.LoadFile(path), GetParam().loads);
  EXPECT_EQ(titles(host), GetParam().messages);
  EXPECT_EQ(file.Loaded(), GetParam().loads);
  EXPECT_EQ(file.FileName, GetParam().loads ? path : temp.path("before.kvc"));
  if (GetParam().check) GetParam().check(file, temp.path("comments/"));
}

const Sample kSampleCases[] = {
    {"full-5.0.kvc",
     true,
     {},
     [](const KVContentFile& f, const std::string& folder) {
       EXPECT_EQ(f.ItemMoniker, fs::path(folder).parent_path().parent_path().string() + "/bin/library.so");
       EXPECT_EQ(f.DocType, "kv.cpp");
       EXPECT_EQ(f.TemplateName, "Standard");
       EXPECT_TRUE(f.ShowInherited);
       EXPECT_EQ(f.TreePath, "root|Widgets|Widget");
       EXPECT_EQ(f.RelatedProject(), folder + "project.kvp");
       EXPECT_EQ(f.LoadIncludeFilter, "Widgets*");
       EXPECT_EQ(f.LoadExcludeFilter, "*Test*");
       EXPECT_TRUE(f.LoadPrivate);
       // Repeated and padded words are kept once, trimmed.
       ASSERT_EQ(f.IgnoreWordList->Count(), 3);
       EXPECT_EQ(f.IgnoreWordList->Item(3), "widgetry");
       EXPECT_EQ(f.UserData, R"(<UserData><Editor Layout="wide"><Pane Name="tree" Width="240"/></Editor></UserData>)");
       EXPECT_EQ(f.ContentDocument()->RootNode().ChildNodes().Count(), 8);  // nothing applied without items
     }},
    {"settings-4.0.kvc",
     true,
     {},
     [](const KVContentFile& f, const std::string&) {
       EXPECT_EQ(f.FileVersion, "4.0");
       EXPECT_EQ(f.SpellLastCheckDateTime, DateTime{});
       EXPECT_EQ(f.RelatedProject(), "");
     }},
    {"legacy-3.5.kvc",
     true,
     {},
     [](const KVContentFile& f, const std::string& folder) {
       EXPECT_EQ(f.DocType, "kv.net");
       EXPECT_EQ(f.TemplateName, "Classic");
       EXPECT_EQ(f.ItemMoniker, folder + "old/library.so");
       EXPECT_TRUE(f.ShowInherited);
     }},
    {"legacy-3.0-core.kvc",
     true,
     {},
     [](const KVContentFile& f, const std::string&) {
       EXPECT_EQ(f.DocType, "Core");
       EXPECT_FALSE(f.ShowInherited);
     }},
    {"us-ascii.kvc",
     true,
     {},
     [](const KVContentFile& f, const std::string&) {
       EXPECT_EQ(f.ContentDocument()->RootNode().ChildNodes().Item("c").Text(), "Before after.");
     }},
    // Required settings missing: one message; the later settings that do not read are silent.
    {"missing-settings.kvc",
     true,
     {"Content File damaged"},
     [](const KVContentFile& f, const std::string&) {
       EXPECT_EQ(f.DocType, "kv.cpp");
       EXPECT_EQ(f.ItemMoniker, "");
       EXPECT_EQ(f.SpellLastCheckDateTime, DateTime{});
       EXPECT_TRUE(f.LoadSourceComments);
       EXPECT_FALSE(f.LoadOnDemand);  // source comments need the whole tree
     }},
    {"wrong-root.kvc", false, {"Invalid file content"}, {}},
    {"truncated.kvc", false, {"Invalid file content"}, {}},
};

INSTANTIATE_TEST_SUITE_P(Files, ContentFileSamples, ::testing::ValuesIn(kSampleCases), [](const auto& info) {
  std::string name = info.param.file;
  std::erase_if(name, [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
  return name;
});

TEST_F(ContentFileTest, ASavedFileReloadsAndSavesToTheSameBytes) {
  for (const auto& entry : fs::directory_iterator(kSamples)) {
    if (!entry.is_regular_file()) continue;
    const std::string name = entry.path().filename().string();
    const std::string path = copySample(name, name);
    KVContentFile first;
    if (!first.LoadFile(path)) continue;  // damaged beyond reading: nothing to save
    ASSERT_TRUE(first.SaveFile()) << name;
    const std::string saved = test::readFile(path);
    EXPECT_EQ(test::readFile(path + ".bak"), test::readFile(entry.path())) << name;

    KVContentFile second;
    ASSERT_TRUE(second.LoadFile(path)) << name;
    ASSERT_TRUE(second.SaveFile()) << name;
    EXPECT_EQ(test::readFile(path), saved) << name;
    EXPECT_EQ(test::readFile(path + ".bak"), saved) << name;  // only the newest backup is kept
  }
}

TEST_F(ContentFileTest, TheFileIsWrittenInItsFormatWithMonikerAndNamesRelative) {
  const std::string path = copySample("full-5.0.kvc");
  KVContentFile file;
  ASSERT_TRUE(file.LoadFile(path));
  ASSERT_TRUE(file.SaveFile(temp.path("elsewhere.kvc")));  // always written to its own file
  EXPECT_FALSE(fs::exists(temp.path("elsewhere.kvc")));

  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(test::readFile(path)));
  const XMLNode root = doc.RootNode();
  EXPECT_EQ(root.Name(), "KavrelComments");
  const std::vector<std::pair<std::string, std::string>> expected = {{"Version", "5.0"},
                                                                     {"Moniker", "../bin/library.so"},
                                                                     {"DocType", "kv.cpp"},
                                                                     {"Template", "Standard"},
                                                                     {"ShowInherited", "True"},
                                                                     {"SpellLastCheckDateTime", "24/11/2026 17:05:09"},
                                                                     {"TreePath", "root|Widgets|Widget"},
                                                                     {"RelatedProject", "project.kvp"},
                                                                     {"RelatedLDProject", ""},
                                                                     {"LoadIncludeFilter", "Widgets*"},
                                                                     {"LoadExcludeFilter", "*Test*"},
                                                                     {"LoadPrivate", "True"},
                                                                     {"LoadOnDemand", "False"},
                                                                     {"LoadSourceComments", "False"}};
  ASSERT_EQ(root.Attributes().Count(), long(expected.size()));
  for (long i = 1; i <= root.Attributes().Count(); ++i) {
    EXPECT_EQ(root.Attributes().Item(i).Name(), expected[std::size_t(i - 1)].first);
    EXPECT_EQ(root.Attributes().Item(i).Value(), expected[std::size_t(i - 1)].second);
  }
  EXPECT_EQ(root.ChildNodes().Item(1).Name(), "IgnoreWordList");
  EXPECT_EQ(root.ChildNodes().Item(1).Text(), "frobnicate|Kavrel|widgetry");
  EXPECT_EQ(root.ChildNodes().Item(2).Xml(), file.UserData);
  // Comments not yet applied go back unchanged; other elements do not.
  EXPECT_EQ(commentsIn(doc.Xml()).size(), 5u);
  EXPECT_FALSE(root.ChildNodes().Exists("Unknown"));
}

TEST_F(ContentFileTest, UserDataWithoutAnElementIsNotWritten) {
  for (const std::string userData : {"<UserData/>", "<UserData>text only</UserData>", "<UserData><broken"}) {
    KVContentFile file;
    file.UserData = userData;
    XMLDocument doc;
    ASSERT_TRUE(doc.LoadXML(file.SaveText()));
    EXPECT_FALSE(doc.RootNode().ChildNodes().Exists("UserData")) << userData;
  }
}

// A project with one component whose comments the file writes; the items come from the model.
struct Items {
  Items() {
    widget = project->AddComponent("Widget");
    resize = widget->AddBlock("Resize");
    add(*widget, "##SUMMARY", "A widget.");
    add(*resize, "##PARAM", "The width.", "width");
    auto hidden = add(*resize, "##REMARKS", "Never written.");
    hidden->Hidden(true);
    auto removed = add(*resize, "##EXAMPLE", "Removed from the source.");
    removed->CommentState(CommentState::Removed);
  }
  static TaggedCommentPtr add(Item& item, const char* tag, const char* text, const char* qualifier = "") {
    auto comment = std::make_shared<TaggedComment>(tag, text, qualifier);
    item.TaggedComments().CollectionIsNotKeyed_SearchByTagID(true);
    item.TaggedComments().Add(comment, tag);
    return comment;
  }
  std::shared_ptr<vbProject> project = std::make_shared<vbProject>("library");
  std::shared_ptr<Component> widget;
  std::shared_ptr<Block> resize;
};

TEST_F(ContentFileTest, ItemCommentsThenUnappliedCommentsThenOrphansAreWritten) {
  const std::string path = copySample("settings-4.0.kvc");
  KVContentFile file;
  ASSERT_TRUE(file.LoadFile(path));
  Items items;
  file.RootItem(items.project);
  auto orphan = std::make_shared<KVOrphanedItem>();
  orphan->OldQualifiedName = "library~Gone";
  orphan->TaggedComments->Add(std::make_shared<TaggedComment>("##SUMMARY", "Lost its item."));
  file.OrphanedItems->Add(orphan, orphan->OldQualifiedName);

  ASSERT_TRUE(file.SaveFile());
  const std::vector<std::string> expected = {"library~Widget ##SUMMARY  A widget.",
                                             "library~Widget~Resize ##PARAM width The width.",
                                             "library~Widgets ##SUMMARY  Written before the later settings existed.",
                                             "library~Gone ##SUMMARY  Lost its item."};
  EXPECT_EQ(commentsIn(test::readFile(path)), expected);
  EXPECT_EQ(file.SaveCount, 3);  // the unapplied comment is carried, not counted

  // Read back without items, every comment stays in the file and is written again unchanged.
  const std::string saved = test::readFile(path);
  KVContentFile again;
  ASSERT_TRUE(again.LoadFile(path));
  ASSERT_TRUE(again.SaveFile());
  EXPECT_EQ(test::readFile(path), saved);
}

// A binding that finds no item for some comments: they become orphans, as applying does.
struct OrphaningBinding : ContentBinding {
  bool Bind(KVContentFile& file) override {
    for (const XMLNode c : file.ContentDocument()->RootNode().ChildNodes()) {
      if (c.Name() != "c") continue;
      auto orphan = std::make_shared<KVOrphanedItem>();
      orphan->OldQualifiedName = c.Attributes().ValueOr("eid");
      if (!file.OrphanedItems->Exists(orphan->OldQualifiedName))
        file.OrphanedItems->Add(orphan, orphan->OldQualifiedName);
    }
    return true;
  }
};

TEST_F(ContentFileTest, OrphansOfALoadAreReportedOnce) {
  KVContentFile file;
  file.Binding = std::make_shared<OrphaningBinding>();
  ASSERT_TRUE(file.LoadFile(copySample("full-5.0.kvc")));
  ASSERT_EQ(titles(host), std::vector<std::string>{"Orphaned comments"});
  EXPECT_NE(host.messages()[0].text.find("3 item(s)"), std::string::npos) << host.messages()[0].text;
}

TEST_F(ContentFileTest, ASaveKilledOrFailingHalfWayLeavesThePreviousFile) {
  const std::string path = copySample("settings-4.0.kvc");
  const std::string previous = test::readFile(path);
  KVContentFile file;
  ASSERT_TRUE(file.LoadFile(path));
  Items items;
  for (int i = 0; i < 200; ++i) Items::add(*items.widget, "##REMARKS", "A long remark that makes the file grow.");
  file.RootItem(items.project);
  ASSERT_GT(file.SaveText().size(), previous.size() * 4);
  const rlim_t limit = rlim_t(previous.size() * 2);  // room for the backup, not for the new file

  const int killed = test::saveLimitedTo(limit, false, [&] { return file.SaveFile(); });
  ASSERT_TRUE(WIFSIGNALED(killed) && WTERMSIG(killed) == SIGXFSZ);  // died inside the write
  EXPECT_EQ(test::readFile(path), previous);

  const int failed = test::saveLimitedTo(limit, true, [&] { return file.SaveFile(); });
  ASSERT_TRUE(WIFEXITED(failed));
  EXPECT_EQ(WEXITSTATUS(failed), 1);  // SaveFile said so
  EXPECT_EQ(test::readFile(path), previous);
  EXPECT_EQ(test::readFile(path + ".bak"), previous);
}

TEST_F(ContentFileTest, AFailedSaveIsReportedAndReturnsFalse) {
  KVContentFile file;
  file.FileName = temp.path("no/such/folder/library.kvc");
  EXPECT_FALSE(file.SaveFile());
  ASSERT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.messages()[0].title, "Save Failed");
  EXPECT_NE(host.messages()[0].text.find("Path/File access error"), std::string::npos);
}

}  // namespace
}  // namespace kv
