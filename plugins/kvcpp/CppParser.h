// The declarations of the files of a kv.cpp doc type: from the cache when the files are as they
// were at the last parse, else from the parser module (UnitParser.h), which is loaded then.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CppInput.h"
#include "Declaration.h"
#include "ParseDiagnostic.h"

namespace kv::cpp {

struct ParseResult {
  std::unique_ptr<Declaration> Global;  // the global namespace
  std::vector<std::string> Files;       // the files parsed
  std::vector<ParseDiagnostic> Diagnostics;
};

// `standardLibraryFolder` holds the precompiled standard libraries to load (StandardLibrary.h);
// empty for none.
ParseResult Parse(const CppInput& input, const std::string& standardLibraryFolder = {});

// The compiler arguments for the input: language, standard, include folders, defines and those
// of a compile_commands.json.
std::vector<std::string> CompilerArguments(const CppInput& input, const std::vector<std::string>& files);

}  // namespace kv::cpp
