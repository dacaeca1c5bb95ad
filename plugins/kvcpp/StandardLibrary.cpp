#include "StandardLibrary.h"

#include <filesystem>
#include <fstream>
#include <set>

#include "PrecompiledHeaders.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

// The headers that interfaces commonly include; about half the size of the whole library.
const std::set<std::string>& coreHeaders() {
  static const std::set<std::string> names{"algorithm", "array",       "cstddef",   "cstdint",       "cstdio",
                                           "cstdlib",   "cstring",     "exception", "functional",    "initializer_list",
                                           "iterator",  "limits",      "map",       "memory",        "new",
                                           "optional",  "set",         "stdexcept", "string",        "string_view",
                                           "tuple",     "type_traits", "typeinfo",  "unordered_map", "utility",
                                           "variant",   "vector"};
  return names;
}

// libstdc++ names every header of the library in one; other libraries get the core.
std::string partText(LibraryPart part) {
  std::string text;
  if (part == LibraryPart::Whole) text += "#if __has_include(<bits/stdc++.h>)\n#include <bits/stdc++.h>\n#else\n";
  for (const auto& name : coreHeaders()) text += "#include <" + name + ">\n";
  if (part == LibraryPart::Whole) text += "#endif\n";
  return text;
}

std::string fileFor(const std::string& folder, const std::string& standard, LibraryPart part) {
  return (fs::path(folder) / ("std-" + standard + (part == LibraryPart::Core ? "-core" : "") + ".pch")).string();
}

// Whether a file includes a library header outside the core: one named without a folder or an
// extension, as the standard's are.
bool beyondCore(const std::string& file) {
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    const size_t hash = line.find_first_not_of(" \t");
    if (hash == std::string::npos || line[hash] != '#') continue;
    const size_t word = line.find_first_not_of(" \t", hash + 1);
    if (word == std::string::npos || line.compare(word, 7, "include") != 0) continue;
    const size_t open = line.find('<', word);
    const size_t close = line.find('>', open);
    if (open == std::string::npos || close == std::string::npos) continue;
    const std::string name = line.substr(open + 1, close - open - 1);
    if (name.find_first_of("./") == std::string::npos && !coreHeaders().count(name)) return true;
  }
  return false;
}

}  // namespace

std::string StandardLibraryFor(const std::string& folder, const std::vector<std::string>& arguments,
                               const std::vector<std::string>& documented) {
  if (folder.empty()) return {};
  std::string standard;
  bool cpp = false;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string& a = arguments[i];
    if (a == "-x" && i + 1 < arguments.size()) cpp = arguments[i + 1] == "c++";
    if (a.rfind("-std=", 0) == 0) standard = a.substr(5);
    if (a == "-include" || a.rfind("-D_", 0) == 0 || a.rfind("-U_", 0) == 0) return {};
  }
  if (!cpp || standard.empty()) return {};
  bool whole = false;
  for (const auto& file : documented) whole = whole || beyondCore(file);
  // Either part is better than none.
  const std::string core = fileFor(folder, standard, LibraryPart::Core);
  const std::string all = fileFor(folder, standard, LibraryPart::Whole);
  if (whole) return IsCurrent(all) ? all : IsCurrent(core) ? core : std::string();
  return IsCurrent(core) ? core : IsCurrent(all) ? all : std::string();
}

std::string PrecompileStandardLibrary(const std::string& folder, const std::string& standard, LibraryPart part,
                                      const std::string& text) {
  // Compiled with the arguments of a unit that change what the library declares.
  const std::vector<std::string> arguments{"-x", "c++", "-std=" + standard, "-ferror-limit=0",
                                           "-Wno-pragma-once-outside-header"};
  const CompiledPrefix compiled =
      CompilePrefix(fileFor(folder, standard, part), arguments, false, text.empty() ? partText(part) : text,
                    [](const std::string&) { return false; });
  if (compiled.Saved) return {};
  return compiled.Error.empty() ? "it could not be written to " + folder : compiled.Error;
}

}  // namespace kv::cpp
