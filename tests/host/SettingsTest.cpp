#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "host/Settings.h"
#include "host/modMain.h"
#include "root/Root.h"
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

using test::readFile;
using test::writeFile;

class SettingsTest : public ::testing::Test {
 protected:
  test::TempFolder folder;
  test::ScopedEnvironment dir{"KAVREL_SETTINGS_DIR", folder.path("config")};
};

TEST_F(SettingsTest, FilesFollowTheSettingsFolder) {
  EXPECT_EQ(userSettings().path(), folder.root() / "config" / "settings.ini");
  EXPECT_EQ(machineSettings().path(), folder.root() / "config" / "machine" / "settings.ini");
}

TEST(SettingsLocation, UsesXdgConfigHomeThenHome) {
  test::ScopedEnvironment noOverride("KAVREL_SETTINGS_DIR", "");
  {
    test::ScopedEnvironment xdg("XDG_CONFIG_HOME", "/xdg/conf");
    EXPECT_EQ(userSettings().path(), "/xdg/conf/velmora/kavrel5/settings.ini");
  }
  test::ScopedEnvironment relativeXdg("XDG_CONFIG_HOME", "relative");
  test::ScopedEnvironment home("HOME", "/home/someone");
  EXPECT_EQ(userSettings().path(), "/home/someone/.config/velmora/kavrel5/settings.ini");
  EXPECT_EQ(machineSettings().path(), "/etc/velmora/kavrel5/settings.ini");
}

TEST_F(SettingsTest, AppValuesRoundTripUnderTheKeyPathAsSection) {
  EXPECT_EQ(GetAppValue("LastHelpFile", "none"), "none");  // no file yet

  SetAppValue("LastHelpFile", "/tmp/Größe.chm");
  SetAppValue("Width", "640", "Windows\\Main");
  EXPECT_EQ(GetAppValue("LastHelpFile", "none"), "/tmp/Größe.chm");
  EXPECT_EQ(GetAppValue("lasthelpfile"), "/tmp/Größe.chm");
  EXPECT_EQ(GetAppValue("Width", "0", "Windows\\Main"), "640");
  EXPECT_EQ(GetAppValue("Width", "0", "windows\\main"), "640");
  EXPECT_EQ(GetAppValue("Width", "0"), "0");  // not under the main key

  const std::string text = readFile(userSettings().path());
  EXPECT_NE(text.find("[Software\\Velmora\\Kavrel5]"), std::string::npos) << text;
  EXPECT_NE(text.find("[Software\\Velmora\\Kavrel5\\Windows\\Main]"), std::string::npos) << text;

  // Writing again under another case replaces the value instead of adding a second one.
  SetAppValue("WIDTH", "800", "WINDOWS\\MAIN");
  EXPECT_EQ(GetAppValue("Width", "0", "Windows\\Main"), "800");
  EXPECT_EQ(readFile(userSettings().path()).find("640"), std::string::npos);
}

TEST_F(SettingsTest, AStoredEmptyValueGivesTheDefault) {
  SetAppValue("HHCPath", "");
  EXPECT_EQ(userSettings().value(RegKeyPath(), "HHCPath"), std::optional<std::string>(""));
  EXPECT_EQ(GetAppValue("HHCPath", "chmcmd"), "chmcmd");
}

TEST_F(SettingsTest, ValuesKeepLineBreaksAndOuterBlanks) {
  SetAppValue("Text", "  two\nlines  ");
  SetAppValue("Other", "x");
  EXPECT_EQ(GetAppValue("Text"), "  two\nlines  ");
  EXPECT_EQ(GetAppValue("Other"), "x");
}

TEST_F(SettingsTest, MachineValuesComeFromTheMachineFile) {
  SetAppValue("EditableSpanPrefix", "user");  // the user file does not count
  EXPECT_EQ(GetMachineValue("EditableSpanPrefix", "-"), "-");
  machineSettings().setValue(RegKeyPath(), "EditableSpanPrefix", "<div>");
  machineSettings().setValue("Software\\Velmora\\Lumidesk2", "InstallDir", "/opt/lumidesk/");
  EXPECT_EQ(GetMachineValue("editablespanprefix"), "<div>");
  EXPECT_EQ(GetMachineValue("InstallDir", "", "Software\\Velmora\\Lumidesk2"), "/opt/lumidesk/");
  EXPECT_EQ(GetMachineValue("InstallDir", "none"), "none");
}

TEST_F(SettingsTest, WritingLeavesNoTemporaryFiles) {
  SetAppValue("A", "1");
  SetAppValue("B", "2");
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.root() / "config"))
    names.push_back(entry.path().filename().string());
  EXPECT_EQ(names, std::vector<std::string>{"settings.ini"});
}

TEST(SettingsStore, AFileThatCannotBeWrittenIsReported) {
  test::TempFolder folder;
  std::ofstream(folder.path("file")) << "x";
  test::ScopedEnvironment dir("KAVREL_SETTINGS_DIR", folder.path("file/config"));
  test::ScopedRecordingHost host;
  SetAppValue("A", "1");
  ASSERT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.messages()[0].title, "Application Error");
  EXPECT_NE(host.messages()[0].text.find("Module: modMain"), std::string::npos);
  EXPECT_EQ(GetAppValue("A", "default"), "default");
}

}  // namespace
}  // namespace kv
