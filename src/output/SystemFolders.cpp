#include "output/SystemFolders.h"

#include <cstdlib>
#include <filesystem>
#include <string>

namespace kv {

namespace fs = std::filesystem;

namespace {

// "/a/b/" and "/a/b/../b" are the same folder as "/a/b".
fs::path normalFolder(std::string_view folder) {
  fs::path path = fs::path(folder).lexically_normal();
  if (path.has_relative_path() && !path.has_filename()) path = path.parent_path();
  return path;
}

}  // namespace

bool IsProtectedFolder(std::string_view Folder) {
  std::error_code ec;
  const fs::path folder = normalFolder(fs::absolute(fs::path(Folder), ec).string());
  if (folder == folder.root_path()) return true;
  for (const char* top :
       {"/bin", "/boot", "/dev", "/etc", "/lib", "/lib64", "/proc", "/root", "/run", "/sbin", "/sys", "/usr", "/var"}) {
    const auto rel = folder.lexically_relative(top);
    if (!rel.empty() && *rel.begin() != "..") return true;
  }
  const char* home = std::getenv("HOME");
  return home && *home && folder == normalFolder(home);
}

}  // namespace kv
