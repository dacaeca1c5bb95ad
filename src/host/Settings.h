// The settings store: INI files. Sections are key paths such as
// "Software\Velmora\Kavrel5" or "Software\Velmora\Kavrel5\Some\Extra"; section and value names
// are found ignoring case.
//
// Files:
//   user:    $XDG_CONFIG_HOME/velmora/kavrel5/settings.ini (default ~/.config/velmora/kavrel5/settings.ini)
//   machine: /etc/velmora/kavrel5/settings.ini
// When KAVREL_SETTINGS_DIR is set it replaces both folders: the user file is
// $KAVREL_SETTINGS_DIR/settings.ini and the machine file $KAVREL_SETTINGS_DIR/machine/settings.ini.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

class SettingsFile {
 public:
  explicit SettingsFile(std::filesystem::path file) : mFile(std::move(file)) {}

  const std::filesystem::path& path() const { return mFile; }

  // The stored value, or nothing when the file, the section or the name is absent. A file that
  // cannot be read counts as absent.
  std::optional<std::string> value(std::string_view keyPath, std::string_view name) const;

  // Stores a value, creating folders, file and section as needed. The file is replaced
  // atomically (written beside it, then renamed). Fails with a Failure when it cannot be written.
  void setValue(std::string_view keyPath, std::string_view name, std::string_view value) const;

 private:
  std::filesystem::path mFile;
};

// The settings of the current user and of the machine, per the rules above.
SettingsFile userSettings();
SettingsFile machineSettings();

}  // namespace kv
