// The spell checker's temporary word list: the file's ignored words, the names of its items and
// the entities of the comment form, kept up to date as words come and go.
#include <gtest/gtest.h>

#include <filesystem>

#include "comments/KVContentFile.h"
#include "kavrel/Model.h"
#include "support/Files.h"

namespace kv {
namespace {

TEST(SpellWordList, HoldsWordsItemNamesAndEntitiesAndFollowsChanges) {
  auto project = std::make_shared<vbProject>("library");
  project->AddComponent("Widget")->AddBlock("Resize");
  std::string listFile;
  {
    KVContentFile file;
    file.RootItem(project);
    for (const char* word : {"frobnicate", "widgetry"}) file.IgnoreWordList->Add(word, word);

    listFile = file.SaveSpellIgnoreWordListToFile();
    EXPECT_EQ(test::readFile(listFile), "frobnicate\nwidgetry\nlibrary\nWidget\nResize\n&nbsp;\n&gt;\n&lt;\n");

    file.AddIgnoreWord("kavrel");
    file.AddIgnoreWord("KAVREL");  // already there: the list does not grow
    EXPECT_EQ(test::readFile(listFile), "frobnicate\nwidgetry\nlibrary\nWidget\nResize\n&nbsp;\n&gt;\n&lt;\nkavrel\n");

    file.RemoveIgnoreWord("frobnicate");
    EXPECT_EQ(file.SpellTempFile(), listFile);  // rewritten in place
    EXPECT_EQ(test::readFile(listFile), "widgetry\nkavrel\nlibrary\nWidget\nResize\n&nbsp;\n&gt;\n&lt;\n");
  }
  EXPECT_FALSE(std::filesystem::exists(listFile));  // gone with its comment file
}

}  // namespace
}  // namespace kv
