#include "services/Installation.h"

#include <cstdlib>

namespace kv {

std::string ConfigurationFolder() {
  const char* env = std::getenv("KAVREL_CONFIG_DIR");
  std::string folder = env && *env ? env : KV_DEFAULT_CONFIG_DIR;
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

}  // namespace kv
