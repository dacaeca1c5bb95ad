// A precompiled header of the system headers that the documented headers include, kept between
// runs in the user's cache folder ($XDG_CACHE_HOME/kavrel, else ~/.cache/kavrel): for a small tree
// of C++ headers, parsing the standard library is most of the work. One cache entry stands for one
// set of compiler arguments; libclang checks on loading that the headers it holds are unchanged,
// and an entry that cannot be used is removed and made again.
#pragma once

#include <clang-c/Index.h>

#include <functional>
#include <string>
#include <vector>

namespace kv::cpp {

class PrecompiledHeaders {
 public:
  PrecompiledHeaders(const std::vector<std::string>& arguments, bool c);

  // The arguments that load the cached header; empty when there is none.
  std::vector<std::string> Arguments() const;
  // Drops the cached header, which could not be used.
  void Forget() const;
  // Makes the cached header from a unit parsed without it: the system headers that the files
  // `documented` tells include, in their order, as they spell them.
  void Make(CXTranslationUnit unit, const std::function<bool(const std::string&)>& documented) const;

 private:
  std::vector<std::string> mArguments;
  bool mC;
  std::string mFile;  // empty: no cache folder
};

}  // namespace kv::cpp
