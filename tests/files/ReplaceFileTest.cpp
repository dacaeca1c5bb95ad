// A file replaced whole: a write that fails or a process that dies in the middle leaves the old
// content, and no temporary file, behind.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "files/ReplaceFile.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/OrdinaryUser.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

const std::string kOld = "<old>previous content</old>\n";
const std::string kNew = std::string(100000, 'n');  // written in more than one block by the failing writers

// Writes a part, then fails as ::write does with `error`.
BlockWriter failingAfterAPart(int error) {
  return [error, written = std::size_t(0)](int fd, const char* data, std::size_t size) mutable -> long {
    if (written > 0) {
      errno = error;
      return -1;
    }
    written = size / 2;
    return ::write(fd, data, written);
  };
}

std::size_t entriesIn(const fs::path& folder) {
  return std::size_t(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

struct FailingWrite {
  const char* name;
  int error;
  long number;
};

class ReplaceFileFailure : public ::testing::TestWithParam<FailingWrite> {};

TEST_P(ReplaceFileFailure, LeavesThePreviousContentAndNoTemporaryFile) {
  test::TempFolder temp;
  const std::string file = temp.path("comments.kvc");
  test::writeFile(file, kOld);
  EXPECT_EQ(test::failureNumber([&] { replaceFileContents(file, kNew, failingAfterAPart(GetParam().error)); }),
            GetParam().number);
  EXPECT_EQ(test::readFile(file), kOld);
  EXPECT_EQ(entriesIn(temp.root()), 1u);
}

INSTANTIATE_TEST_SUITE_P(Errors, ReplaceFileFailure,
                         ::testing::Values(FailingWrite{"DiskFull", ENOSPC, err::DiskFull},
                                           FailingWrite{"QuotaExceeded", EDQUOT, err::DiskFull},
                                           FailingWrite{"DeviceError", EIO, err::DeviceIOError}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ReplaceFile, AProcessKilledInTheMiddleLeavesThePreviousContent) {
  test::TempFolder temp;
  const std::string file = temp.path("comments.kvc");
  test::writeFile(file, kOld);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    // Dies after the first half is on its way, as a crash or a kill would end the save.
    replaceFileContents(file, kNew, [](int fd, const char* data, std::size_t size) -> long {
      if (::write(fd, data, size / 2) > 0) ::_exit(9);
      return -1;
    });
    ::_exit(0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 9);  // it died mid-write, not after
  EXPECT_EQ(test::readFile(file), kOld);
}

TEST(ReplaceFile, ReplacesTheContentAndKeepsThePermissions) {
  test::TempFolder temp;
  const std::string file = temp.path("comments.kvc");
  test::writeFile(file, kOld);
  fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  replaceFileContents(file, kNew);
  EXPECT_EQ(test::readFile(file), kNew);
  EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
  EXPECT_EQ(entriesIn(temp.root()), 1u);

  replaceFileContents(temp.path("new.kvc"), kOld);
  EXPECT_EQ(test::readFile(temp.path("new.kvc")), kOld);
}

TEST(ReplaceFile, AReadOnlyFileOrFolderIsAPathAccessErrorAndStaysAsItWas) {
  test::TempFolder temp;
  fs::permissions(temp.root(), fs::perms::all);  // the ordinary user reaches the folder
  const std::string readOnly = temp.path("readonly.kvc");
  test::writeFile(readOnly, kOld);
  fs::permissions(readOnly, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
  fs::create_directories(temp.root() / "locked");
  fs::permissions(temp.root() / "locked",
                  fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_read | fs::perms::others_exec);
  // The superuser is never refused, so the writes are tried as an ordinary user.
  EXPECT_EQ(test::asOrdinaryUser([&] { return test::failureNumber([&] { replaceFileContents(readOnly, kNew); }); }),
            err::PathFileAccessError);
  EXPECT_EQ(test::asOrdinaryUser(
                [&] { return test::failureNumber([&] { replaceFileContents(temp.path("locked/x.kvc"), kNew); }); }),
            err::PathFileAccessError);
  EXPECT_EQ(test::readFile(readOnly), kOld);
  EXPECT_FALSE(fs::exists(temp.root() / "locked/x.kvc"));
}

}  // namespace
}  // namespace kv
