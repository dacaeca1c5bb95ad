// Loads the plug-in libraries of the configuration folder. Each shared library in
// "<configuration folder>/plugins/" exports
//
//   extern "C" void kavrel_register_plugin(kv::ClassRegistry& registry);
//
// which registers the library's classes (project plug-ins, namespace providers) by class name.
// A library is loaded once per process and never unloaded, since objects of its classes may
// live as long as the process.
#pragma once

#include <string>
#include <vector>

namespace kv {

inline constexpr const char* PlugInRegistrationFunction = "kavrel_register_plugin";

struct PlugInLibrary {
  std::string FileName;
  bool Loaded = false;
  std::string Error;  // why the library could not be loaded, empty when it was
};

// Loads every "*.so" in `folder` (in name order) that is not loaded yet. A library that cannot be
// opened or lacks the registration function is recorded with its error and skipped.
void LoadPlugInLibraries(const std::string& folder);
// Loads the libraries of "<configuration folder>/plugins/".
void LoadInstalledPlugIns();
// Every library tried so far, in the order tried.
const std::vector<PlugInLibrary>& PlugInLibraries();

}  // namespace kv
