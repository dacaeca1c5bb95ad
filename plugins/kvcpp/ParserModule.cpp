#include "ParserModule.h"

#include <dlfcn.h>

#include <filesystem>

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

using Entry = const ParserFunctions* (*)();

// The parser linked into the program, or loaded before.
Entry present() {
  return reinterpret_cast<Entry>(dlsym(RTLD_DEFAULT, KV_CPP_PARSER_ENTRY));
}

std::string moduleOf(const void* address) {
  Dl_info info{};
  if (!dladdr(address, &info) || !info.dli_fname) return {};
  return info.dli_fname;
}

std::string moduleInFolder() {
  const std::string folder = ParserFolder();
  return folder.empty() ? std::string() : folder + "/kvcpp-parser.so";
}

}  // namespace

std::string PlugInFile() {
  return moduleOf(reinterpret_cast<const void*>(&PlugInFile));
}

std::string ParserFolder() {
  const fs::path plugIn = PlugInFile();
  if (plugIn.extension() != ".so") return {};
  return (plugIn.parent_path() / "kvcpp").string();
}

std::string ParserModuleFile() {
  if (const Entry entry = present()) return moduleOf(reinterpret_cast<const void*>(entry));
  return moduleInFolder();
}

ParserModule LoadParser() {
  static const ParserModule loaded = [] {
    ParserModule module;
    Entry entry = present();
    if (!entry) {
      const std::string file = moduleInFolder();
      if (file.empty()) return ParserModule{nullptr, "the plug-in does not run from a shared library"};
      // Never unloaded: its functions are kept.
      void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
      if (!handle) return ParserModule{nullptr, dlerror()};
      entry = reinterpret_cast<Entry>(dlsym(handle, KV_CPP_PARSER_ENTRY));
      if (!entry) return ParserModule{nullptr, file + " has no entry point " KV_CPP_PARSER_ENTRY};
    }
    module.Functions = entry();
    return module;
  }();
  return loaded;
}

}  // namespace kv::cpp
