// Parses the headers of a kv.cpp doc type with libclang into a tree of declarations.
//
// Every header goes into one translation unit that includes them all, so that each is parsed
// once; function bodies are skipped and only declarations located in the named files are walked.
// Source files (.c, .cpp) are units of their own, parsed in parallel. The parser keeps going
// after fatal errors: a header with a missing include is reported, and the declarations of the
// other headers are still delivered.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "CppInput.h"
#include "Declaration.h"

namespace kv::cpp {

struct ParseDiagnostic {
  std::string File;  // empty when the problem has no place
  unsigned Line = 0;
  std::string Text;

  // "file:line: warning: text", the form that editors understand.
  std::string Format() const;
};

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
