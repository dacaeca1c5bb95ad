#include "project/PlugInLoader.h"

#include <dlfcn.h>

#include <algorithm>
#include <filesystem>

#include "host/Installation.h"
#include "kavrel/ClassRegistry.h"

namespace kv {
namespace {

std::vector<PlugInLibrary>& libraries() {
  static std::vector<PlugInLibrary> tried;
  return tried;
}

PlugInLibrary load(const std::string& fileName) {
  PlugInLibrary library{fileName, false, {}};
  void* handle = dlopen(fileName.c_str(), RTLD_NOW | RTLD_GLOBAL);
  if (!handle) {
    const char* error = dlerror();
    library.Error = error ? error : "the library could not be opened";
    return library;
  }
  using Register = void (*)(ClassRegistry&);
  auto registerClasses = reinterpret_cast<Register>(dlsym(handle, PlugInRegistrationFunction));
  if (!registerClasses) {
    library.Error = std::string("the library does not export ") + PlugInRegistrationFunction;
    return library;
  }
  try {
    registerClasses(ClassRegistry::instance());
    library.Loaded = true;
  } catch (const std::exception& e) {
    library.Error = std::string("registering its classes failed: ") + e.what();
  }
  return library;
}

}  // namespace

void LoadPlugInLibraries(const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code ec;
  std::vector<std::string> found;
  for (const auto& entry : fs::directory_iterator(folder, ec))
    if (entry.path().extension() == ".so" && entry.is_regular_file(ec)) found.push_back(entry.path().string());
  std::sort(found.begin(), found.end());
  auto& tried = libraries();
  for (const auto& fileName : found) {
    const bool known = std::any_of(tried.begin(), tried.end(), [&](const auto& l) { return l.FileName == fileName; });
    if (!known) tried.push_back(load(fileName));
  }
}

void LoadInstalledPlugIns() {
  LoadPlugInLibraries(ConfigurationFolder() + "plugins");
}

const std::vector<PlugInLibrary>& PlugInLibraries() {
  return libraries();
}

}  // namespace kv
