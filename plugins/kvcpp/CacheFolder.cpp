#include "CacheFolder.h"

#include <cstdlib>

namespace kv::cpp {

std::string CacheFolder() {
  const char* xdg = std::getenv("XDG_CACHE_HOME");
  if (xdg && *xdg) return std::string(xdg) + "/kavrel";
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.cache/kavrel" : std::string();
}

}  // namespace kv::cpp
