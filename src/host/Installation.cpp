#include "host/Installation.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

#include "kavrel/FileSystem.h"

namespace kv {

std::string ConfigurationFolder() {
  const char* env = std::getenv("KAVREL_CONFIG_DIR");
  std::string folder = env && *env ? env : KV_DEFAULT_CONFIG_DIR;
  // A program run from its build tree, before it is installed, uses the build tree's configuration:
  // the sources' own, with the plug-ins built beside the program.
  std::error_code ec;
  if (!(env && *env) && !std::filesystem::is_directory(folder, ec)) folder = KV_BUILD_CONFIG_DIR;
  return withTrailingSlash(std::move(folder));
}

}  // namespace kv
