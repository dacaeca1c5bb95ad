#include "PrecompiledHeaders.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <set>

#include "ClangText.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

std::string cacheFolder() {
  const char* xdg = std::getenv("XDG_CACHE_HOME");
  if (xdg && *xdg) return std::string(xdg) + "/kavrel";
  const char* home = std::getenv("HOME");
  return home && *home ? std::string(home) + "/.cache/kavrel" : std::string();
}

// The include directive on line `line` of `text`, if it is one with a written name.
std::string directive(std::string_view text, unsigned line) {
  size_t start = 0;
  for (unsigned l = 1; l < line && start != std::string_view::npos; ++l) {
    start = text.find('\n', start);
    if (start != std::string_view::npos) ++start;
  }
  if (start == std::string_view::npos) return {};
  std::string_view s = text.substr(start, text.find('\n', start) - start);
  const size_t hash = s.find('#');
  const size_t open = s.find_first_of("<\"", hash);
  if (hash == std::string_view::npos || open == std::string_view::npos) return {};
  const size_t close = s.find(s[open] == '<' ? '>' : '"', open + 1);
  if (close == std::string_view::npos || s.substr(hash, open - hash).find("include") == std::string_view::npos)
    return {};
  return "#include " + std::string(s.substr(open, close - open + 1));
}

struct Collect {
  CXTranslationUnit Unit;
  const std::function<bool(const std::string&)>* Documented;
  std::vector<std::string> Lines;
  std::set<std::string> Seen;
};

void visitInclusion(CXFile included, CXSourceLocation* stack, unsigned depth, CXClientData data) {
  auto* c = static_cast<Collect*>(data);
  if (depth == 0) return;
  CXFile includer = nullptr;
  unsigned line = 0;
  clang_getExpansionLocation(stack[0], &includer, &line, nullptr, nullptr);
  if (!includer || !(*c->Documented)(fs::path(take(clang_getFileName(includer))).lexically_normal().string())) return;
  if (!clang_Location_isInSystemHeader(clang_getLocation(c->Unit, included, 1, 1))) return;
  size_t size = 0;
  const char* text = clang_getFileContents(c->Unit, includer, &size);
  const std::string line_ = text ? directive(std::string_view(text, size), line) : std::string();
  if (!line_.empty() && c->Seen.insert(line_).second) c->Lines.push_back(line_);
}

}  // namespace

PrecompiledHeaders::PrecompiledHeaders(const std::vector<std::string>& arguments, bool c)
    : mArguments(arguments), mC(c) {
  const std::string folder = cacheFolder();
  if (folder.empty()) return;
  std::string key;
  for (const auto& a : arguments) key += a + '\n';
  mFile = folder + "/pch-" + std::to_string(std::hash<std::string>()(key)) + (c ? ".c.pch" : ".pch");
}

std::vector<std::string> PrecompiledHeaders::Arguments() const {
  std::error_code ec;
  if (mFile.empty() || !fs::is_regular_file(mFile, ec)) return {};
  return {"-include-pch", mFile};
}

void PrecompiledHeaders::Forget() const {
  std::error_code ec;
  if (!mFile.empty()) fs::remove(mFile, ec);
}

void PrecompiledHeaders::Make(CXTranslationUnit unit, const std::function<bool(const std::string&)>& documented) const {
  if (mFile.empty()) return;
  Collect collect{unit, &documented, {}, {}};
  clang_getInclusions(unit, visitInclusion, &collect);
  if (collect.Lines.empty()) return;
  std::string prefix;
  for (const auto& line : collect.Lines) prefix += line + '\n';

  std::error_code ec;
  fs::create_directories(fs::path(mFile).parent_path(), ec);
  const std::string header = mFile + ".h";
  std::vector<std::string> arguments = mArguments;
  for (size_t i = 0; i + 1 < arguments.size(); ++i)
    if (arguments[i] == "-x") arguments[i + 1] = mC ? "c-header" : "c++-header";
  std::vector<const char*> args;
  for (const auto& a : arguments) args.push_back(a.c_str());
  CXUnsavedFile unsaved{header.c_str(), prefix.c_str(), static_cast<unsigned long>(prefix.size())};
  CXIndex index = clang_createIndex(0, 0);
  CXTranslationUnit tu = nullptr;
  // The options of the units that will load it, or libclang refuses it.
  const unsigned options = CXTranslationUnit_ForSerialization | CXTranslationUnit_SkipFunctionBodies |
                           CXTranslationUnit_DetailedPreprocessingRecord;
  if (clang_parseTranslationUnit2(index, header.c_str(), args.data(), static_cast<int>(args.size()), &unsaved, 1,
                                  options, &tu) == CXError_Success) {
    bool clean = true;
    for (unsigned i = 0; i < clang_getNumDiagnostics(tu); ++i) {
      CXDiagnostic d = clang_getDiagnostic(tu, i);
      clean = clean && clang_getDiagnosticSeverity(d) < CXDiagnostic_Error;
      clang_disposeDiagnostic(d);
    }
    // Written aside and renamed, so that another process never reads half a file.
    const std::string partial = mFile + "." + std::to_string(getpid());
    if (clean && clang_saveTranslationUnit(tu, partial.c_str(), 0) == CXSaveError_None) fs::rename(partial, mFile, ec);
    fs::remove(partial, ec);
    clang_disposeTranslationUnit(tu);
  }
  clang_disposeIndex(index);
}

}  // namespace kv::cpp
