// Whole-file reads and writes for tests, byte for byte.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace kv::test {

inline std::string readFile(const std::filesystem::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// Writes `text`, creating the folders on the way.
inline void writeFile(const std::filesystem::path& path, const std::string& text) {
  if (path.has_parent_path()) std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

}  // namespace kv::test
