#include "CppInput.h"

#include <fnmatch.h>

#include <algorithm>
#include <filesystem>

#include "kavrel/Text.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

bool hasExtension(const std::string& path, std::initializer_list<const char*> extensions) {
  std::string ext = fs::path(path).extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  return std::any_of(extensions.begin(), extensions.end(), [&](const char* e) { return ext == e; });
}

bool isPattern(const std::string& s) {
  return s.find_first_of("*?[") != std::string::npos;
}

// The files below `folder` whose path relative to it matches `pattern` ("**" crosses folders).
void addMatches(const fs::path& folder, const std::string& pattern, bool headersOnly, std::vector<std::string>& out) {
  std::error_code ec;
  const bool deep = pattern.find("**") != std::string::npos || pattern.find('/') == std::string::npos;
  // "**/" stands for any number of folders, none included.
  const std::string glob = text::replaceAll(pattern, "**", "*");
  const std::string shallow = text::replaceAll(pattern, "**/", "");
  for (auto it = fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied, ec);
       it != fs::recursive_directory_iterator(); it.increment(ec)) {
    if (ec) break;
    if (!it->is_regular_file(ec)) continue;
    const std::string relative = it->path().lexically_relative(folder).string();
    const std::string subject =
        deep && pattern.find('/') == std::string::npos ? it->path().filename().string() : relative;
    if (fnmatch(glob.c_str(), subject.c_str(), 0) != 0 && fnmatch(shallow.c_str(), subject.c_str(), 0) != 0) continue;
    if (headersOnly && !IsHeaderFile(it->path().string())) continue;
    out.push_back(it->path().lexically_normal().string());
  }
}

}  // namespace

bool CppInput::IsC() const {
  return !Standard.empty() && Standard.find("++") == std::string::npos &&
         (Standard[0] == 'c' || Standard.rfind("gnu", 0) == 0 || Standard.rfind("iso9899", 0) == 0);
}

bool IsHeaderFile(const std::string& path) {
  return hasExtension(path, {".h", ".hh", ".hpp", ".hxx", ".h++", ".ipp", ".tcc", ".inl"});
}

bool IsSourceFile(const std::string& path) {
  return hasExtension(path, {".c", ".cc", ".cpp", ".cxx", ".c++", ".m"});
}

std::vector<std::string> ExpandSources(const CppInput& input, std::vector<std::string>& problems) {
  std::vector<std::string> files;
  for (const auto& source : input.Sources) {
    const size_t before = files.size();
    std::error_code ec;
    if (isPattern(source)) {
      // The folder part up to the first wildcard, the rest a pattern relative to it.
      const size_t wild = source.find_first_of("*?[");
      const size_t slash = source.rfind('/', wild);
      const fs::path folder = slash == std::string::npos ? fs::path(".") : fs::path(source.substr(0, slash));
      addMatches(folder, source.substr(slash == std::string::npos ? 0 : slash + 1), false, files);
    } else if (fs::is_directory(source, ec)) {
      addMatches(source, "*", true, files);
    } else if (fs::is_regular_file(source, ec)) {
      files.push_back(fs::path(source).lexically_normal().string());
    }
    if (files.size() == before) problems.push_back(source + ": no such file, or no header file matches");
  }
  std::sort(files.begin(), files.end());
  files.erase(std::unique(files.begin(), files.end()), files.end());
  return files;
}

}  // namespace kv::cpp
