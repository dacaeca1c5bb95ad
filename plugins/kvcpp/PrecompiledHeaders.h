// A precompiled header of the headers that the documented headers include but that are not
// documented themselves: system headers, and the project's other headers (a library's public
// headers when only its sources are documented, LLVM's ADT beside its Support). It is kept between
// runs in the user's cache folder ($XDG_CACHE_HOME/kavrel, else ~/.cache/kavrel): reading those
// headers, and the templates they make the compiler instantiate, is most of the work of a parse.
// One cache entry stands for one set of compiler arguments and documented files; libclang checks
// on loading that the headers it holds are unchanged, and an entry that cannot be used is removed
// and made again.
#pragma once

#include <clang-c/Index.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kv::cpp {

class PrecompiledHeaders {
 public:
  // With `worthMaking` false, a cached header is used when there is one but none is made.
  PrecompiledHeaders(const std::vector<std::string>& arguments, bool c, const std::vector<std::string>& documented,
                     bool worthMaking);

  // The arguments that load the cached header; empty when there is none.
  std::vector<std::string> Arguments() const;
  // The files the cached header holds; nothing when that is not known.
  std::optional<std::vector<std::string>> Files() const;
  // Drops the cached header, which could not be used.
  void Forget() const;
  // Makes the cached header from a unit parsed without it: the headers that the files `documented`
  // tells include, in their order, system headers as they spell them and others by their path. A
  // header through which a documented file is reached stays out, or that file's declarations
  // would be hidden in the cache. When those headers do not compile on their own, the cache holds
  // the system headers only.
  void Make(CXTranslationUnit unit, const std::function<bool(const std::string&)>& documented) const;

 private:
  // Compiles the include directives into the cache; false when they do not compile cleanly.
  bool Save(std::vector<std::string> directives, const std::function<bool(const std::string&)>& documented) const;

  std::vector<std::string> mArguments;
  bool mC;
  bool mWorthMaking;
  std::string mFile;  // empty: no cache folder
};

}  // namespace kv::cpp
