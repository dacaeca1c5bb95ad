#include "PrecompiledHeaders.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>

#include "CacheFolder.h"
#include "ClangText.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

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

// One include directive of a documented file that reaches a header not documented.
struct Inclusion {
  std::string Directive;
  bool System;
};

struct Collect {
  CXTranslationUnit Unit;
  const std::function<bool(const std::string&)>* Documented;
  std::vector<Inclusion> Found;
};

std::string pathOf(CXFile file) {
  return fs::path(take(clang_getFileName(file))).lexically_normal().string();
}

void visitInclusion(CXFile included, CXSourceLocation* stack, unsigned depth, CXClientData data) {
  auto* c = static_cast<Collect*>(data);
  if (depth == 0) return;
  const std::string includedPath = pathOf(included);
  CXFile includer = nullptr;
  unsigned line = 0;
  clang_getExpansionLocation(stack[0], &includer, &line, nullptr, nullptr);
  if ((*c->Documented)(includedPath) || !includer || !(*c->Documented)(pathOf(includer))) return;
  const bool system = clang_Location_isInSystemHeader(clang_getLocation(c->Unit, included, 1, 1));
  std::string spelled;
  if (system) {
    size_t size = 0;
    const char* text = clang_getFileContents(c->Unit, includer, &size);
    spelled = text ? directive(std::string_view(text, size), line) : std::string();
  } else {
    // Written with its path: the cached header does not stand in the includer's folder.
    spelled = "#include \"" + includedPath + "\"";
  }
  if (!spelled.empty()) c->Found.push_back({spelled, system});
}

// The lines of the cached header's text through which a documented file is reached, and the
// files it holds, as the compiler names them.
struct Reaching {
  const std::function<bool(const std::string&)>* Documented;
  std::set<unsigned> Lines;
  std::string Files;
};

void visitReaching(CXFile included, CXSourceLocation* stack, unsigned depth, CXClientData data) {
  auto* r = static_cast<Reaching*>(data);
  if (depth == 0) return;
  r->Files += take(clang_getFileName(included)) + '\n';
  if (!(*r->Documented)(pathOf(included))) return;
  unsigned line = 0;
  clang_getExpansionLocation(stack[depth - 1], nullptr, &line, nullptr, nullptr);
  r->Lines.insert(line);
}

}  // namespace

CompiledPrefix CompilePrefix(const std::string& file, std::vector<std::string> arguments, bool c,
                             const std::string& text, const std::function<bool(const std::string&)>& documented,
                             const std::string& chainedTo) {
  CompiledPrefix result;
  std::string held;
  if (!chainedTo.empty()) {
    const auto files = FilesOf(chainedTo);
    if (!files) return {false, {}, "no list of the files that " + chainedTo + " holds"};
    for (const auto& f : *files) held += f + '\n';
    arguments.insert(arguments.end(), {"-include-pch", chainedTo});
  }
  std::error_code ec;
  fs::create_directories(fs::path(file).parent_path(), ec);
  const std::string header = file + ".h";
  for (size_t i = 0; i + 1 < arguments.size(); ++i)
    if (arguments[i] == "-x") arguments[i + 1] = c ? "c-header" : "c++-header";
  std::vector<const char*> args;
  for (const auto& a : arguments) args.push_back(a.c_str());
  // The options of the units that will load it, or libclang refuses it.
  const unsigned options = CXTranslationUnit_ForSerialization | CXTranslationUnit_SkipFunctionBodies |
                           CXTranslationUnit_DetailedPreprocessingRecord;
  CXUnsavedFile unsaved{header.c_str(), text.c_str(), static_cast<unsigned long>(text.size())};
  CXIndex index = clang_createIndex(0, 0);
  CXTranslationUnit tu = nullptr;
  const CXErrorCode error = clang_parseTranslationUnit2(index, header.c_str(), args.data(),
                                                        static_cast<int>(args.size()), &unsaved, 1, options, &tu);
  if (error != CXError_Success) {
    result.Error = "libclang refused the arguments or the text (error " + std::to_string(static_cast<int>(error)) + ")";
  } else {
    for (unsigned i = 0; i < clang_getNumDiagnostics(tu) && result.Error.empty(); ++i) {
      CXDiagnostic d = clang_getDiagnostic(tu, i);
      if (clang_getDiagnosticSeverity(d) >= CXDiagnostic_Error)
        result.Error = take(clang_formatDiagnostic(d, clang_defaultDiagnosticDisplayOptions()));
      clang_disposeDiagnostic(d);
    }
    Reaching reaching{&documented, {}, {}};
    clang_getInclusions(tu, visitReaching, &reaching);
    result.Reaching = std::move(reaching.Lines);
    // Written aside and renamed, so that another process never reads half a file. The list of
    // the files it holds goes first: the declarations read with it depend on them too.
    const std::string partial = file + "." + std::to_string(getpid());
    if (result.Error.empty() && result.Reaching.empty() &&
        clang_saveTranslationUnit(tu, partial.c_str(), 0) == CXSaveError_None &&
        std::ofstream(file + ".files", std::ios::trunc) << held << reaching.Files) {
      fs::rename(partial, file, ec);
      result.Saved = !ec;
    }
    fs::remove(partial, ec);
    clang_disposeTranslationUnit(tu);
  }
  clang_disposeIndex(index);
  return result;
}

std::optional<std::vector<std::string>> FilesOf(const std::string& header) {
  std::ifstream in(header + ".files");
  if (!in) return std::nullopt;
  std::vector<std::string> files;
  for (std::string line; std::getline(in, line);)
    if (!line.empty()) files.push_back(line);
  return files;
}

bool IsCurrent(const std::string& header) {
  std::error_code ec;
  const auto made = fs::last_write_time(header, ec);
  const auto files = FilesOf(header);
  if (ec || !files) return false;
  for (const auto& file : *files) {
    const auto changed = fs::last_write_time(file, ec);
    if (ec || changed > made) return false;
  }
  return true;
}

PrecompiledHeaders::PrecompiledHeaders(const std::vector<std::string>& arguments, bool c,
                                       const std::vector<std::string>& documented, bool worthMaking,
                                       std::string standardLibrary)
    : mArguments(arguments), mC(c), mWorthMaking(worthMaking), mStandardLibrary(std::move(standardLibrary)) {
  const std::string folder = CacheFolder();
  if (folder.empty() || documented.empty()) return;
  std::string key;
  for (const auto& a : arguments) key += a + '\n';
  for (const auto& file : documented) key += file + '\n';
  key += mStandardLibrary;  // the header is made on top of it
  mFile = folder + "/pch-" + std::to_string(std::hash<std::string>()(key)) + (c ? ".c.pch" : ".pch");
}

std::string PrecompiledHeaders::Header() const {
  // Without the list of the files it holds, the declarations read with it could not be kept.
  if (!mFile.empty() && IsCurrent(mFile)) return mFile;
  return mStandardLibrary;
}

void PrecompiledHeaders::Forget(const std::string& header) const {
  std::error_code ec;
  if (mFile.empty() || header != mFile) return;
  fs::remove(mFile, ec);
  fs::remove(mFile + ".files", ec);
}

std::optional<PrecompiledHeaders::Inclusions> PrecompiledHeaders::ToMake(
    CXTranslationUnit unit, const std::function<bool(const std::string&)>& documented,
    const std::string& loaded) const {
  if (mFile.empty() || !mWorthMaking || loaded == mFile) return std::nullopt;
  Collect collect{unit, &documented, {}};
  clang_getInclusions(unit, visitInclusion, &collect);
  Inclusions inclusions;
  std::set<std::string> seen;
  for (const auto& inclusion : collect.Found) {
    if (!seen.insert(inclusion.Directive).second) continue;
    inclusions.All.push_back(inclusion.Directive);
    if (inclusion.System) inclusions.System.push_back(inclusion.Directive);
  }
  // What the unit read past the standard library goes on top of it, and loads it in turn.
  if (loaded == mStandardLibrary) inclusions.ChainedTo = loaded;
  return inclusions;
}

void PrecompiledHeaders::Make(const Inclusions& inclusions,
                              const std::function<bool(const std::string&)>& documented) const {
  if (!Save(inclusions.All, documented, inclusions.ChainedTo) && inclusions.System != inclusions.All)
    Save(inclusions.System, documented, inclusions.ChainedTo);
}

bool PrecompiledHeaders::Save(std::vector<std::string> directives,
                              const std::function<bool(const std::string&)>& documented,
                              const std::string& chainedTo) const {
  // Further tries leave out the headers through which a documented file is reached: held in the
  // cache, that file's declarations would be hidden from the walk, and it would not be read again.
  for (int attempt = 0; attempt < 4 && !directives.empty(); ++attempt) {
    std::string prefix;
    for (const auto& line : directives) prefix += line + '\n';
    const CompiledPrefix compiled = CompilePrefix(mFile, mArguments, mC, prefix, documented, chainedTo);
    if (compiled.Saved || compiled.Reaching.empty()) return compiled.Saved;
    std::vector<std::string> kept;
    for (size_t i = 0; i < directives.size(); ++i)
      if (!compiled.Reaching.count(unsigned(i + 1))) kept.push_back(std::move(directives[i]));
    directives = std::move(kept);
  }
  return false;
}

}  // namespace kv::cpp
