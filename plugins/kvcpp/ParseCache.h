// The declarations of the last parse of a set of files, kept in the user's cache folder
// ($XDG_CACHE_HOME/kavrel, else ~/.cache/kavrel) with every file the compiler read for them. A
// build whose headers, and the headers they include, are unchanged since takes the declarations
// from there and does not parse at all; a change to any of those files, to the compiler arguments
// or to the set of documented files makes the parser run again.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "CppParser.h"

namespace kv::cpp {

class ParseCache {
 public:
  ParseCache(const std::vector<std::string>& arguments, bool plainComments, const std::vector<std::string>& files);

  // The cached result, when every file it was read from is as it was then.
  std::optional<ParseResult> Load() const;
  // Whether these files were parsed before, changed since or not.
  bool Kept() const;
  // Keeps `result`, read from the files `read`; a failure to write only costs the next build.
  void Save(const ParseResult& result, const std::set<std::string>& read) const;

 private:
  std::string mFile;          // empty: no cache folder
  std::int64_t mStarted = 0;  // when the parse began, in nanoseconds of the system clock
};

}  // namespace kv::cpp
