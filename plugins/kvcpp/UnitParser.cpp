#include "UnitParser.h"

#include <clang-c/CXCompilationDatabase.h>
#include <clang-c/Index.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <optional>
#include <set>
#include <thread>
#include <unordered_set>

#include "ClangText.h"
#include "DeclarationWalker.h"
#include "PrecompiledHeaders.h"
#include "StandardLibrary.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

struct Unit {
  std::string MainFile;  // the file clang compiles (unsaved for the header unit)
  std::string Contents;  // its text, when it is not on disk
  std::unordered_set<std::string> Documented;
  std::unique_ptr<Declaration> Global = std::make_unique<Declaration>();
  bool ReadKnown = false;      // parsed, and every file it read is in Read
  std::set<std::string> Read;  // every file on disk that the compiler read
  std::vector<ParseDiagnostic> Diagnostics;
};

void collectDiagnostics(CXTranslationUnit tu, Unit& unit) {
  constexpr size_t kMostPerUnit = 100;
  const unsigned count = clang_getNumDiagnostics(tu);
  size_t more = 0;
  for (unsigned i = 0; i < count; ++i) {
    CXDiagnostic d = clang_getDiagnostic(tu, i);
    if (clang_getDiagnosticSeverity(d) >= CXDiagnostic_Error) {
      if (unit.Diagnostics.size() >= kMostPerUnit) {
        ++more;
      } else {
        CXFile file = nullptr;
        unsigned line = 0;
        clang_getExpansionLocation(clang_getDiagnosticLocation(d), &file, &line, nullptr, nullptr);
        ParseDiagnostic diagnostic;
        diagnostic.File = file ? take(clang_getFileName(file)) : std::string();
        if (diagnostic.File == unit.MainFile && !unit.Contents.empty()) diagnostic.File.clear();
        diagnostic.Line = line;
        diagnostic.Text = take(clang_getDiagnosticSpelling(d));
        unit.Diagnostics.push_back(std::move(diagnostic));
      }
    }
    clang_disposeDiagnostic(d);
  }
  if (more) unit.Diagnostics.push_back({{}, 0, std::to_string(more) + " more errors in " + unit.MainFile});
}

// Parses a unit and walks it. With `cache`, the unit loads a precompiled header, and makes the
// cached one when there is none yet.
void parseUnit(Unit& unit, const std::vector<std::string>& arguments, bool plainComments,
               const PrecompiledHeaders* cache) {
  // Precompiled headers hold no documented file: the walk need not load their declarations.
  CXIndex index = clang_createIndex(/*excludeDeclarationsFromPCH=*/1, 0);
  const std::string header = cache ? cache->Header() : std::string();
  std::vector<std::string> withCache = arguments;
  if (!header.empty()) withCache.insert(withCache.end(), {"-include-pch", header});
  CXUnsavedFile unsaved{unit.MainFile.c_str(), unit.Contents.c_str(), static_cast<unsigned long>(unit.Contents.size())};
  const unsigned options = CXTranslationUnit_SkipFunctionBodies | CXTranslationUnit_DetailedPreprocessingRecord |
                           CXTranslationUnit_KeepGoing | CXTranslationUnit_IgnoreNonErrorsFromIncludedFiles;
  CXTranslationUnit tu = nullptr;
  const auto parse = [&](const std::vector<std::string>& list) {
    std::vector<const char*> args;
    for (const auto& a : list) args.push_back(a.c_str());
    return clang_parseTranslationUnit2(index, unit.MainFile.c_str(), args.data(), static_cast<int>(args.size()),
                                       unit.Contents.empty() ? nullptr : &unsaved, unit.Contents.empty() ? 0 : 1,
                                       options, &tu);
  };
  CXErrorCode error = parse(withCache);
  const bool usedCache = !header.empty() && error == CXError_Success;
  // The compiler does not list what comes from a precompiled header: without those files, the
  // declarations could not tell when they change.
  std::optional<std::vector<std::string>> fromCache;
  if (usedCache) fromCache = FilesOf(header);
  if (!header.empty() && error != CXError_Success) {
    cache->Forget(header);  // made by another libclang, or its headers changed
    error = parse(arguments);
  }
  if (error != CXError_Success || !tu) {
    unit.Diagnostics.push_back(
        {unit.Contents.empty() ? unit.MainFile : std::string(), 0,
         "the compiler could not parse this unit (libclang error " + std::to_string(static_cast<int>(error)) + ")"});
  } else {
    unit.ReadKnown = !usedCache || fromCache;
    if (fromCache) unit.Read.insert(fromCache->begin(), fromCache->end());
    collectDiagnostics(tu, unit);
    clang_getInclusions(
        tu,
        [](CXFile file, CXSourceLocation*, unsigned, CXClientData data) {
          auto* u = static_cast<Unit*>(data);
          // Kept as the compiler names it: folding "a/../" away is wrong where "a" is a link.
          std::string path = take(clang_getFileName(file));
          if (u->Contents.empty() || fs::path(path).lexically_normal() != fs::path(u->MainFile))
            u->Read.insert(std::move(path));
        },
        &unit);
    const auto documented = [&](const std::string& file) { return unit.Documented.count(file) > 0; };
    DeclarationWalker walker(tu, documented, plainComments);
    walker.Walk(*unit.Global);
    const auto toMake = cache ? cache->ToMake(tu, documented, usedCache ? header : std::string()) : std::nullopt;
    // Gone before the cached header is made: the two parses are not held in memory at once.
    clang_disposeTranslationUnit(tu);
    if (toMake) cache->Make(*toMake, documented);
  }
  clang_disposeIndex(index);
}

// Moves what `from` declares into `into`: namespaces join, everything else comes once.
void merge(Declaration& into, Declaration& from, std::unordered_set<std::string>& seen) {
  for (auto& child : from.Children) {
    if (child->Kind == DeclKind::Namespace) {
      Declaration* ns = into.Find(DeclKind::Namespace, child->Name);
      if (!ns) {
        seen.insert(child->Usr);
        into.Children.push_back(std::move(child));
        continue;
      }
      if (ns->Comment.empty()) ns->Comment = std::move(child->Comment);
      merge(*ns, *child, seen);
    } else if (child->Usr.empty() || seen.insert(child->Usr).second) {
      into.Children.push_back(std::move(child));
    }
  }
}

// Parses the units on all processors; the first uses `first`, the others `others`.
void runUnits(std::vector<std::unique_ptr<Unit>>& units, const std::vector<std::string>& arguments, bool plainComments,
              const PrecompiledHeaders& first, const PrecompiledHeaders& others) {
  std::atomic<size_t> next{0};
  auto work = [&] {
    for (size_t i; (i = next++) < units.size();)
      parseUnit(*units[i], arguments, plainComments, i == 0 ? &first : &others);
  };
  const size_t threads = std::min<size_t>(units.size(), std::max(1u, std::thread::hardware_concurrency()));
  std::vector<std::thread> pool;
  for (size_t t = 1; t < threads; ++t) pool.emplace_back(work);
  work();
  for (auto& thread : pool) thread.join();
}

// Errors that tell of braces or conditionals left open or closed too often.
bool unbalanced(const std::string& text) {
  return text.find("'}'") != std::string::npos || text.find("unterminated") != std::string::npos ||
         text.find("#endif") != std::string::npos || text.find("#else") != std::string::npos;
}

// One unit that includes every header of `headers`.
std::unique_ptr<Unit> headerUnit(const std::vector<std::string>& headers, bool c) {
  auto unit = std::make_unique<Unit>();
  for (const auto& file : headers) {
    unit->Contents += "#include \"" + file + "\"\n";
    unit->Documented.insert(file);
  }
  unit->MainFile = (fs::path(headers.front()).parent_path() / (c ? "kavrel-headers.c" : "kavrel-headers.cpp")).string();
  return unit;
}

}  // namespace

std::vector<std::string> CompileCommandFlags(const std::string& where) {
  std::error_code ec;
  const std::string folder = fs::is_directory(where, ec) ? where : fs::path(where).parent_path().string();
  CXCompilationDatabase_Error error = CXCompilationDatabase_NoError;
  CXCompilationDatabase db = clang_CompilationDatabase_fromDirectory(folder.c_str(), &error);
  std::vector<std::string> flags;
  if (error != CXCompilationDatabase_NoError || !db) return flags;
  std::set<std::string> known;
  CXCompileCommands commands = clang_CompilationDatabase_getAllCompileCommands(db);
  const unsigned count = clang_CompileCommands_getSize(commands);
  for (unsigned i = 0; i < count; ++i) {
    CXCompileCommand command = clang_CompileCommands_getCommand(commands, i);
    const std::string directory = take(clang_CompileCommand_getDirectory(command));
    const unsigned n = clang_CompileCommand_getNumArgs(command);
    std::vector<std::string> args;
    for (unsigned a = 0; a < n; ++a) args.push_back(take(clang_CompileCommand_getArg(command, a)));
    for (size_t a = 0; a < args.size(); ++a) {
      std::string flag = args[a];
      for (const char* joined : {"-I", "-D", "-U", "-isystem", "-include", "-iquote"}) {
        const std::string prefix = joined;
        if (flag == prefix && a + 1 < args.size()) flag += args[++a];
        if (flag.rfind(prefix, 0) == 0) {
          std::string value = flag.substr(prefix.size());
          if (prefix != "-D" && prefix != "-U" && !value.empty() && fs::path(value).is_relative())
            value = (fs::path(directory) / value).lexically_normal().string();
          flag = prefix + value;
          if (prefix.size() > 2) {  // separate-argument forms
            if (known.insert(flag).second) {
              flags.push_back(prefix);
              flags.push_back(value);
            }
            flag.clear();
          }
          break;
        }
      }
      if (flag.rfind("-std=", 0) != 0 && flag.rfind("-I", 0) != 0 && flag.rfind("-D", 0) != 0 &&
          flag.rfind("-U", 0) != 0)
        continue;
      if (known.insert(flag).second) flags.push_back(flag);
    }
  }
  clang_CompileCommands_dispose(commands);
  clang_CompilationDatabase_dispose(db);
  return flags;
}

ParsedFiles ParseFiles(const ParseRequest& request) {
  const std::vector<std::string>& headers = request.Headers;
  const std::vector<std::string>& arguments = request.Arguments;
  // One unit includes every header; each source file is a unit of its own.
  std::vector<std::unique_ptr<Unit>> units;
  if (!headers.empty()) units.push_back(headerUnit(headers, request.C));
  for (const auto& file : request.Sources) {
    auto unit = std::make_unique<Unit>();
    unit->MainFile = file;
    unit->Documented.insert(file);
    units.push_back(std::move(unit));
  }
  std::vector<std::string> documented = headers;
  documented.insert(documented.end(), request.Sources.begin(), request.Sources.end());
  // Making the cached header costs about a parse. A first build only keeps its declarations; the
  // header pays once the files are being changed and parsed again.
  const std::string library = StandardLibraryFor(request.StandardLibraryFolder, arguments, documented);
  const PrecompiledHeaders cache(arguments, request.C, headers, request.ParsedBefore, library);
  const PrecompiledHeaders libraryOnly(arguments, request.C, {}, false, library);
  runUnits(units, arguments, request.PlainComments, headers.empty() ? libraryOnly : cache, libraryOnly);

  // A header whose braces do not match takes the headers after it down with it: each such header
  // is parsed on its own, and the others again without them. Other errors stay in their header.
  if (!headers.empty()) {
    std::set<std::string> broken;
    for (const auto& d : units.front()->Diagnostics)
      if (units.front()->Documented.count(d.File) && unbalanced(d.Text)) broken.insert(d.File);
    if (!broken.empty()) {
      std::vector<std::unique_ptr<Unit>> again;
      std::vector<std::string> good;
      for (const auto& file : headers) {
        if (!broken.count(file)) {
          good.push_back(file);
          continue;
        }
        auto unit = std::make_unique<Unit>();
        unit->MainFile = file;
        unit->Documented.insert(file);
        again.push_back(std::move(unit));
      }
      if (!good.empty()) again.insert(again.begin(), headerUnit(good, request.C));
      runUnits(again, arguments, request.PlainComments, libraryOnly, libraryOnly);
      units.erase(units.begin());
      for (auto& unit : again) units.push_back(std::move(unit));
    }
  }

  ParsedFiles parsed;
  std::unordered_set<std::string> seen;
  for (auto& unit : units) {
    merge(*parsed.Global, *unit->Global, seen);
    for (auto& d : unit->Diagnostics) parsed.Diagnostics.push_back(std::move(d));
    parsed.Read.insert(unit->Read.begin(), unit->Read.end());
    parsed.ReadKnown = parsed.ReadKnown && unit->ReadKnown;
  }
  return parsed;
}

}  // namespace kv::cpp

extern "C" __attribute__((visibility("default"))) const kv::cpp::ParserFunctions* kvcpp_parser() {
  static const kv::cpp::ParserFunctions functions{&kv::cpp::ParseFiles, &kv::cpp::CompileCommandFlags};
  return &functions;
}
