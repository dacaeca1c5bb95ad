// A precompiled header of the headers that the documented headers include but that are not
// documented themselves: system headers, and the project's other headers (a library's public
// headers when only its sources are documented, LLVM's ADT beside its Support). It is kept between
// runs in the user's cache folder ($XDG_CACHE_HOME/kavrel, else ~/.cache/kavrel): reading those
// headers, and the templates they make the compiler instantiate, is most of the work of a parse.
// One cache entry stands for one set of compiler arguments and documented files; an entry whose
// headers changed is made again, and one that libclang cannot load is removed and made again.
// Until there is one, units load the installation's precompiled standard library when it suits
// them.
#pragma once

#include <clang-c/Index.h>

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace kv::cpp {

// What compiling a text of include directives into a precompiled header came to.
struct CompiledPrefix {
  bool Saved = false;
  std::set<unsigned> Reaching;  // the lines of the text through which a documented file is reached
  std::string Error;            // the first error, when the text does not compile cleanly
};

// Compiles `text` into the precompiled header `file` for units compiled with `arguments`, with the
// list of the files it holds in `file`.files (libclang does not report them to the units that
// load it). With `chainedTo`, the header builds on that precompiled header, and holds its files
// too. Nothing is saved when the text has errors or reaches a documented file.
CompiledPrefix CompilePrefix(const std::string& file, std::vector<std::string> arguments, bool c,
                             const std::string& text, const std::function<bool(const std::string&)>& documented,
                             const std::string& chainedTo = {});

// The files a precompiled header holds, as `CompilePrefix` listed them; nothing when not known.
std::optional<std::vector<std::string>> FilesOf(const std::string& header);

// Whether a precompiled header can be loaded: it lists the files it holds, and none of them is
// newer than itself. libclang does not check system headers on loading, and would read them as
// they were.
bool IsCurrent(const std::string& header);

class PrecompiledHeaders {
 public:
  // With `worthMaking` false, a cached header is used when there is one but none is made.
  // `standardLibrary` is the installation's precompiled standard library for these arguments, or
  // empty. Without documented headers nothing is cached, and only the library can be loaded.
  PrecompiledHeaders(const std::vector<std::string>& arguments, bool c, const std::vector<std::string>& documented,
                     bool worthMaking, std::string standardLibrary);

  // The precompiled header a unit should load: the cached one, else the standard library; empty
  // for none.
  std::string Header() const;
  // Drops a header that could not be used, when it is the cached one: the standard library
  // belongs to the installation and stays.
  void Forget(const std::string& header) const;
  // The headers that the files `documented` tells include, in their order, system headers as they
  // spell them and others by their path, and the precompiled header to build on.
  struct Inclusions {
    std::vector<std::string> All;
    std::vector<std::string> System;
    std::string ChainedTo;
  };
  // What the cached header would hold, from a unit that loaded `loaded` (a header from `Header`, or
  // none); nothing when none is to be made, or when the unit loaded the cached one.
  std::optional<Inclusions> ToMake(CXTranslationUnit unit, const std::function<bool(const std::string&)>& documented,
                                   const std::string& loaded) const;
  // Makes the cached header. A header through which a documented file is reached stays out, or
  // that file's declarations would be hidden in the cache. When the headers do not compile on
  // their own, the cache holds the system headers only.
  void Make(const Inclusions& inclusions, const std::function<bool(const std::string&)>& documented) const;

 private:
  // Compiles the include directives into the cache, on top of `chainedTo` when it is given; false
  // when they do not compile cleanly.
  bool Save(std::vector<std::string> directives, const std::function<bool(const std::string&)>& documented,
            const std::string& chainedTo) const;

  std::vector<std::string> mArguments;
  bool mC;
  bool mWorthMaking;
  std::string mFile;  // empty: no cache folder, or nothing to cache
  std::string mStandardLibrary;
};

}  // namespace kv::cpp
