// A fresh folder under the system's temporary folder, removed with everything in it at the end.
#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace kv::test {

class TempFolder {
 public:
  TempFolder() {
    std::random_device rd;
    mRoot = std::filesystem::temp_directory_path() / ("kavrel-test-" + std::to_string(rd()) + std::to_string(rd()));
    std::filesystem::create_directories(mRoot);
  }
  ~TempFolder() {
    std::error_code ec;
    std::filesystem::permissions(mRoot, std::filesystem::perms::owner_all, ec);
    std::filesystem::remove_all(mRoot, ec);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& root() const { return mRoot; }
  // The absolute path of a name inside the folder, with "/" separators.
  std::string path(const std::string& relative = {}) const { return (mRoot / relative).string(); }

 private:
  std::filesystem::path mRoot;
};

}  // namespace kv::test
