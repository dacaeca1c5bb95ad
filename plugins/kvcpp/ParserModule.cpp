#include "ParserModule.h"

#include <dlfcn.h>

namespace kv::cpp {

std::string ParserModuleFile() {
  Dl_info self{};
  if (!dladdr(reinterpret_cast<void*>(&ParserModuleFile), &self) || !self.dli_fname) return {};
  return self.dli_fname;
}

}  // namespace kv::cpp
