// A project loads its comment files with itself and writes them when it is saved; a comment file
// it could not read is never overwritten.
#include <gtest/gtest.h>

#include <filesystem>

#include "comments/KVContentFiles.h"
#include "project/KVProject.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "support/TestConfiguration.h"

namespace kv {
namespace {

const std::filesystem::path kSamples = std::filesystem::path(KV_TEST_DATA_DIR) / "comments";

TEST(ProjectCommentFiles, LoadWithTheProjectAndSaveWithIt) {
  test::TestConfiguration config;
  test::TempFolder temp;
  test::ScopedRecordingHost host;
  test::writeFile(temp.path("good.kvc"), test::readFile(kSamples / "full-5.0.kvc"));
  const std::string damaged = test::readFile(kSamples / "truncated.kvc");
  test::writeFile(temp.path("damaged.kvc"), damaged);
  test::writeFile(temp.path("p.kvp"), R"(<KavrelProject Version="5.0"><CommentFiles>
      <CommentFile FileName="good.kvc" DocType="kv.cpp" ItemMoniker="bin/library.so"/>
      <CommentFile FileName="damaged.kvc" DocType="kv.cpp" ItemMoniker="library.so"/>
    </CommentFiles></KavrelProject>)");

  auto project = KVProject::New();
  project->Silent = true;
  project->LoadFromFile(temp.path("p.kvp"));
  ASSERT_EQ(project->CommentFiles->Count(), 2);
  const auto good = project->CommentFiles->Item(1);
  EXPECT_TRUE(good->Loaded());
  EXPECT_EQ(good->TreePath, "root|Widgets|Widget");
  // The file's own moniker, relative to the file, wins over the project's.
  EXPECT_EQ(good->ItemMoniker, (temp.root().parent_path() / "bin/library.so").string());
  EXPECT_FALSE(project->CommentFiles->Item(2)->Loaded());

  good->AddIgnoreWord("kavrelish");
  EXPECT_TRUE(project->SaveToDisk());
  EXPECT_NE(test::readFile(temp.path("good.kvc")).find("frobnicate|Kavrel|widgetry|kavrelish"), std::string::npos);
  EXPECT_EQ(test::readFile(temp.path("good.kvc.bak")), test::readFile(kSamples / "full-5.0.kvc"));
  EXPECT_EQ(test::readFile(temp.path("damaged.kvc")), damaged);
  EXPECT_FALSE(std::filesystem::exists(temp.path("damaged.kvc.bak")));
  project->Terminate();
}

}  // namespace
}  // namespace kv
