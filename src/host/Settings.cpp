#include "host/Settings.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "files/ReplaceFile.h"
#include "kavrel/Failure.h"

// Plain UTF-8 throughout, so no conversion layer; the templates are instantiated here rather than
// taken from the packaged library, which is built for other character types.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

namespace kv {
namespace fs = std::filesystem;

namespace {

std::string environment(const char* name) {
  const char* v = std::getenv(name);
  return v ? v : "";
}

fs::path homeFolder() {
  if (auto home = environment("HOME"); !home.empty()) return home;
  if (const passwd* pw = getpwuid(getuid()); pw && pw->pw_dir) return pw->pw_dir;
  return {};
}

fs::path userSettingsFolder() {
  if (auto dir = environment("KAVREL_SETTINGS_DIR"); !dir.empty()) return dir;
  fs::path config = environment("XDG_CONFIG_HOME");
  // Relative values are invalid by the XDG rules and are ignored.
  if (config.empty() || config.is_relative()) config = homeFolder() / ".config";
  return config / "velmora" / "kavrel5";
}

fs::path machineSettingsFolder() {
  if (auto dir = environment("KAVREL_SETTINGS_DIR"); !dir.empty()) return fs::path(dir) / "machine";
  return "/etc/velmora/kavrel5";
}

// Multi-line values keep line breaks and outer blanks; names ignore case.
struct Ini : CSimpleIniA {
  Ini() : CSimpleIniA(/*utf8*/ true, /*multiKey*/ false, /*multiLine*/ true) {}
};

[[noreturn]] void cannotWrite(const fs::path& file, const std::string& why) {
  throw Failure(err::PathFileAccessError, "Could not write the settings file '" + file.string() + "': " + why);
}

}  // namespace

std::optional<std::string> SettingsFile::value(std::string_view keyPath, std::string_view name) const {
  Ini ini;
  if (ini.LoadFile(mFile.c_str()) < 0) return std::nullopt;
  const char* v = ini.GetValue(std::string(keyPath).c_str(), std::string(name).c_str(), nullptr);
  if (!v) return std::nullopt;
  return std::string(v);
}

void SettingsFile::setValue(std::string_view keyPath, std::string_view name, std::string_view value) const {
  Ini ini;
  std::error_code ec;
  if (fs::exists(mFile, ec) && ini.LoadFile(mFile.c_str()) < 0) cannotWrite(mFile, "the file cannot be read");
  if (ini.SetValue(std::string(keyPath).c_str(), std::string(name).c_str(), std::string(value).c_str()) < 0)
    cannotWrite(mFile, "the value cannot be stored");
  std::string data;
  if (ini.Save(data) < 0) cannotWrite(mFile, "the settings cannot be composed");
  if (mFile.has_parent_path()) {
    fs::create_directories(mFile.parent_path(), ec);
    if (ec) cannotWrite(mFile, ec.message());
  }
  replaceFileContents(mFile.string(), data);
}

SettingsFile userSettings() {
  return SettingsFile(userSettingsFolder() / "settings.ini");
}
SettingsFile machineSettings() {
  return SettingsFile(machineSettingsFolder() / "settings.ini");
}

}  // namespace kv
