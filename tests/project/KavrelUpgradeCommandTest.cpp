// kavrel upgrade, run as a program.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/Files.h"
#include "support/KavrelProgram.h"

namespace kv {
namespace {

using test::readFile;

namespace fs = std::filesystem;

class KavrelUpgradeCommand : public ::testing::Test, public test::KavrelProgram {
 protected:
};

TEST_F(KavrelUpgradeCommand, UpgradesInPlaceOrToANewNameAndPrintsTheMessages) {
  const std::string project = temp.path("old.kvp");
  fs::copy_file(std::string(KV_TEST_DATA_DIR) + "/project/settings-3.5.kvp", project);
  const ProcessResult inPlace = run({"upgrade", "old.kvp"});
  EXPECT_EQ(inPlace.ExitCode, 0) << inPlace.Output;
  EXPECT_EQ(inPlace.Output,
            "Could not read one or more properties from the Kavrel project file. If you are loading a project file "
            "created with Kavrel version 2.0, you should check save the project as soon as possible to restore "
            "missing properties\n");
  EXPECT_NE(readFile(project).find("<KavrelProject Version=\"5.0\""), std::string::npos);
  EXPECT_NE(readFile(project + ".bak").find("<KavrelSettings"), std::string::npos);

  const ProcessResult copy = run({"upgrade", project, "--to", "new/copy.kvp"});
  EXPECT_EQ(copy.ExitCode, 0) << copy.Output;
  EXPECT_EQ(copy.Output, "");
  // Names are written for the new place; two folders up is written in full.
  const std::string upgraded = readFile(temp.path("new/copy.kvp"));
  EXPECT_NE(upgraded.find("<File>../images/banner.gif</File>"), std::string::npos);
  EXPECT_NE(upgraded.find("OutputFolder=\"" + temp.root().parent_path().string() + "/Legacy Output/\""),
            std::string::npos);
}

TEST_F(KavrelUpgradeCommand, FileThatCannotBeLoadedExitsWithOne) {
  const ProcessResult missing = run({"upgrade", "missing.kvp"});
  EXPECT_EQ(missing.ExitCode, 1);
  EXPECT_EQ(missing.Output, "File '" + temp.path("missing.kvp") + "' could not be found\n");
}

}  // namespace
}  // namespace kv
