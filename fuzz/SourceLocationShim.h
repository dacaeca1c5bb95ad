// clang 14 with the GNU C++ library has no std::source_location (the library needs a compiler
// builtin that arrived in clang 15). The fuzz build force-includes this header so that the same
// sources compile there; elsewhere it is never used.
#pragma once

#include <version>

#if defined(__clang__) && !__has_builtin(__builtin_source_location)
namespace std {
struct source_location {
  static constexpr source_location current(const char* file = __builtin_FILE(),
                                           const char* function = __builtin_FUNCTION(),
                                           unsigned line = __builtin_LINE(),
                                           unsigned column = __builtin_COLUMN()) noexcept {
    source_location where;
    where.mFile = file;
    where.mFunction = function;
    where.mLine = line;
    where.mColumn = column;
    return where;
  }
  constexpr const char* file_name() const noexcept { return mFile; }
  constexpr const char* function_name() const noexcept { return mFunction; }
  constexpr unsigned line() const noexcept { return mLine; }
  constexpr unsigned column() const noexcept { return mColumn; }

 private:
  const char* mFile = "";
  const char* mFunction = "";
  unsigned mLine = 0;
  unsigned mColumn = 0;
};
}  // namespace std
#endif
