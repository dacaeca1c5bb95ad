// What a kv.cpp doc type documents and how its headers are compiled: kept in the project file
// through the doc type's own settings.
#pragma once

#include <string>
#include <vector>

namespace kv::cpp {

struct CppInput {
  // Header or source files, folders (searched for headers, recursively) and wildcard patterns
  // ("include/*.hpp", "src/**/*.h"). Absolute.
  std::vector<std::string> Sources;
  std::vector<std::string> IncludeFolders;  // absolute
  std::vector<std::string> Defines;         // "NAME" or "NAME=VALUE"
  std::string Standard = "c++20";           // "c++17", "c11", "gnu99", ...
  std::string CompileCommands;              // a compile_commands.json or its folder; may be empty
  // Plain "//" comments right above a declaration document it, as "///" comments do.
  bool PlainComments = false;

  bool IsC() const;  // the standard names a C dialect: headers are parsed as C
};

// The files that the sources name, absolute, sorted and without repeats. A source that names
// nothing is reported in `problems`.
std::vector<std::string> ExpandSources(const CppInput& input, std::vector<std::string>& problems);

bool IsHeaderFile(const std::string& path);
bool IsSourceFile(const std::string& path);

}  // namespace kv::cpp
