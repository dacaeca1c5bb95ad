#include "host/CompilerFileName.h"

#include <filesystem>

#include "host/Process.h"
#include "host/modMain.h"

namespace kv {
namespace {

bool isFile(const std::string& name) {
  std::error_code ec;
  return !name.empty() && std::filesystem::is_regular_file(name, ec);
}

std::string trimmed(std::string_view s) {
  const size_t first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return std::string(s.substr(first, s.find_last_not_of(" \t") - first + 1));
}

}  // namespace

std::string GetCompilerFileName(std::string_view RegKeyString, bool IsHHC) {
  const std::string own = GetAppValue(IsHHC ? "HHCPath" : "HCRTFPath");
  if (isFile(own)) return own;

  if (!RegKeyString.empty()) {
    std::string command = GetMachineValue("", "", RegKeyString);
    command = command.substr(0, command.find('%'));
    std::string unquoted;
    for (const char c : command)
      if (c != '"') unquoted += c;
    unquoted = trimmed(unquoted);
    if (isFile(unquoted)) return unquoted;
  }
  return IsHHC ? FindOnPath("chmcmd") : std::string();
}

}  // namespace kv

namespace kv {

std::string Help2CompilerFileName() {
  const std::string named = GetAppValue("HXCompPath");
  return isFile(named) ? named : std::string();
}

}  // namespace kv
