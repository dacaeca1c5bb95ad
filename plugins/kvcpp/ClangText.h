// libclang hands out its texts as CXString, which the caller must dispose of.
#pragma once

#include <clang-c/Index.h>

#include <string>

namespace kv::cpp {

// The text of `s` as UTF-8, disposing of `s`.
inline std::string take(CXString s) {
  const char* c = clang_getCString(s);
  std::string out = c ? c : "";
  clang_disposeString(s);
  return out;
}

}  // namespace kv::cpp
