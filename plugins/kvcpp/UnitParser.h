// The parser module: parses C and C++ files with libclang into a tree of declarations.
//
// Every header goes into one translation unit that includes them all, so that each is parsed
// once; function bodies are skipped and only declarations located in the named files are walked.
// Source files (.c, .cpp) are units of their own, parsed in parallel. The parser keeps going
// after fatal errors: a header with a missing include is reported, and the declarations of the
// other headers are still delivered.
#pragma once

#include <string>
#include <vector>

#include "ParserInterface.h"

namespace kv::cpp {

ParsedFiles ParseFiles(const ParseRequest& request);

// The flags of a compile_commands.json that matter for declarations: include folders, defines,
// forced includes and the standard, from every command, each once.
std::vector<std::string> CompileCommandFlags(const std::string& where);

}  // namespace kv::cpp
