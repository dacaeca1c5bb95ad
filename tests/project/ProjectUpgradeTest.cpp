#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "project/ProjectUpgrade.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

using test::readFile;
using test::writeFile;

class ProjectUpgrade : public ::testing::Test {
 protected:
  std::string copyOf(const std::string& dataName) {
    const std::string path = temp.path(dataName);
    std::filesystem::copy_file(std::string(KV_TEST_DATA_DIR) + "/project/" + dataName, path);
    return path;
  }
  test::TempFolder temp;
  test::ScopedRecordingHost host;  // nothing may reach the host
  std::ostringstream messages;
};

TEST_F(ProjectUpgrade, InPlaceKeepsTheOldFileAsBackupAndReportsEveryMessage) {
  const std::string path = copyOf("settings-3.5.kvp");
  const std::string old = readFile(path);
  EXPECT_EQ(UpgradeProjectFile(path, "", messages), 0);
  EXPECT_EQ(readFile(path + ".bak"), old);
  EXPECT_NE(readFile(path).find("<KavrelProject Version=\"5.0\""), std::string::npos);
  EXPECT_EQ(messages.str(),
            "Could not read one or more properties from the Kavrel project file. If you are loading a project file "
            "created with Kavrel version 2.0, you should check save the project as soon as possible to restore "
            "missing properties\n");
  EXPECT_TRUE(host.messages().empty());
}

TEST_F(ProjectUpgrade, ToANewNameLeavesTheOldFileAsItWas) {
  const std::string path = copyOf("full-5.0.kvp");
  const std::string old = readFile(path);
  const std::string target = temp.path("new/upgraded.kvp");
  EXPECT_EQ(UpgradeProjectFile(path, target, messages), 0);
  EXPECT_EQ(readFile(path), old);
  EXPECT_FALSE(std::filesystem::exists(path + ".bak"));
  // Names are written for the new place.
  EXPECT_NE(readFile(target).find("<File>../extra/logo.png</File>"), std::string::npos);
  // The comment file it names is not there.
  EXPECT_NE(messages.str().find("could not be found. It has been removed from the project."), std::string::npos);
}

TEST_F(ProjectUpgrade, FilesThatCannotBeLoadedFailWithTheirMessage) {
  EXPECT_EQ(UpgradeProjectFile(temp.path("none.kvp"), "", messages), 1);
  EXPECT_EQ(messages.str(), "File '" + temp.path("none.kvp") + "' could not be found\n");
  std::ostringstream invalid;
  EXPECT_EQ(UpgradeProjectFile(copyOf("wrong-root.kvp"), "", invalid), 1);
  EXPECT_EQ(invalid.str(), "Cannot load KVProject - Kavrel KVProject file is corrupted or invalid\n");
  EXPECT_FALSE(std::filesystem::exists(temp.path("wrong-root.kvp.bak")));
}

}  // namespace
}  // namespace kv
