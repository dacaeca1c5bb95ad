#include "services/Installation.h"

#include <cstdlib>

namespace kv {

std::string ConfigurationFolder() {
  std::string folder;
  if (const char* fromEnvironment = std::getenv("KAVREL_CONFIG_DIR"); fromEnvironment && *fromEnvironment)
    folder = fromEnvironment;
  else
    folder = KV_DEFAULT_CONFIG_DIR;
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

}  // namespace kv
