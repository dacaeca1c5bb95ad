// The parser's cache folder is pruned of what it has not used for a month.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <fstream>

#include "CacheFolder.h"
#include "support/TempFolder.h"

namespace kv::cpp {
namespace {

namespace fs = std::filesystem;
using std::chrono::hours;

TEST(CacheFolder, PrunesWhatItHasNotUsedForAMonth) {
  test::TempFolder folder;
  const auto now = std::chrono::system_clock::now();
  struct Case {
    std::string Name;
    hours ReadAgo, WrittenAgo;
    bool Kept;
  };
  const Case cases[] = {
      {"declarations-1.bin", hours(24 * 40), hours(24 * 40), false},
      {"declarations-2.bin", hours(24 * 20), hours(24 * 20), true},
      // Written long ago but read lately: in use.
      {"pch-3.pch", hours(1), hours(24 * 40), true},
      {"pch-3.pch.files", hours(24 * 31), hours(24 * 31), false},
      // Left half written by a build that was stopped.
      {"pch-4.pch.4242", hours(30), hours(30), false},
      {"declarations-5.bin.77", hours(2), hours(2), true},
      // Not the parser's.
      {"notes.txt", hours(24 * 400), hours(24 * 400), true},
  };
  for (const auto& c : cases) {
    const std::string path = folder.path(c.Name);
    std::ofstream(path) << "x";
    const auto secondsAgo = [&](hours ago) { return timespec{std::chrono::system_clock::to_time_t(now - ago), 0}; };
    const timespec times[2] = {secondsAgo(c.ReadAgo), secondsAgo(c.WrittenAgo)};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }
  PruneCacheFolder(folder.path(), now);
  for (const auto& c : cases) EXPECT_EQ(fs::exists(folder.path(c.Name)), c.Kept) << c.Name;
}

}  // namespace
}  // namespace kv::cpp
