// What the plug-in and its parser module pass each other. The module links libclang, whose
// libraries cost about 70 MB of memory and tens of milliseconds of relocation when they are
// loaded; the plug-in loads the module only when declarations have to be parsed, not when they
// come from the cache. Both are built from the same sources by the same compiler, so C++ types
// cross between them.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "Declaration.h"
#include "ParseDiagnostic.h"

namespace kv::cpp {

struct ParseRequest {
  std::vector<std::string> Headers;  // parsed together, in one unit
  std::vector<std::string> Sources;  // each a unit of its own
  std::vector<std::string> Arguments;
  bool C = false;
  bool PlainComments = false;
  // The files were parsed before: making a cached header for their next parse is worth its cost.
  bool ParsedBefore = false;
  std::string StandardLibraryFolder;  // the precompiled libraries; empty for none
};

struct ParsedFiles {
  std::unique_ptr<Declaration> Global = std::make_unique<Declaration>();
  std::vector<ParseDiagnostic> Diagnostics;
  std::set<std::string> Read;  // every file on disk that the compiler read
  bool ReadKnown = true;       // false when some unit could not tell what it read
};

struct ParserFunctions {
  ParsedFiles (*ParseFiles)(const ParseRequest& request);
  // The flags of the compile_commands.json at or in `where` that matter for declarations.
  std::vector<std::string> (*CompileCommandFlags)(const std::string& where);
};

}  // namespace kv::cpp

// The module's one entry point.
#define KV_CPP_PARSER_ENTRY "kvcpp_parser"
extern "C" const kv::cpp::ParserFunctions* kvcpp_parser();
