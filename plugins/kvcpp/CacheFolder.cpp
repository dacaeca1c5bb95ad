#include "CacheFolder.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace kv::cpp {
namespace fs = std::filesystem;

std::string CacheFolder() {
  const char* xdg = std::getenv("XDG_CACHE_HOME");
  if (xdg && *xdg) return std::string(xdg) + "/kavrel";
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.cache/kavrel" : std::string();
}

void PruneCacheFolder(const std::string& folder, std::chrono::system_clock::time_point now) {
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    if (name.rfind("declarations-", 0) != 0 && name.rfind("pch-", 0) != 0) continue;
    struct stat st {};
    if (::stat(it->path().c_str(), &st) != 0 || !S_ISREG(st.st_mode)) continue;
    // Access times are kept coarsely (a day, where the file system is mounted "relatime"), or
    // not at all ("noatime"): then the write time alone tells, and an entry in use is made again.
    const std::chrono::system_clock::time_point used{
        std::chrono::seconds(std::max(st.st_atim.tv_sec, st.st_mtim.tv_sec))};
    // Written aside under the writer's process number, and not yet renamed.
    const std::string extension = it->path().extension().string();
    const bool partial = extension.size() > 1 && extension.find_first_not_of("0123456789", 1) == std::string::npos;
    std::error_code ignored;
    if (now - used > (partial ? std::chrono::hours(24) : std::chrono::hours(24 * 30))) fs::remove(it->path(), ignored);
  }
}

}  // namespace kv::cpp
