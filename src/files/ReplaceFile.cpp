#include "files/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

#include "kavrel/Failure.h"

namespace kv {

namespace {

[[noreturn]] void cannotReplace(int error, const std::string& fileName) {
  const std::string why = "'" + fileName + "' could not be written: " + std::strerror(error);
  switch (error) {
    case ENOSPC:
    case EDQUOT: throw Failure(err::DiskFull, "Disk full: " + why);
    case EACCES:
    case EPERM:
    case EROFS:
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case ETXTBSY: throw Failure(err::PathFileAccessError, "Path/File access error: " + why);
    default: throw Failure(err::DeviceIOError, "Device I/O error: " + why);
  }
}

// The permissions the file has now, or those of a newly created file.
mode_t modeFor(const std::string& fileName) {
  struct stat st {};
  if (::stat(fileName.c_str(), &st) == 0) return st.st_mode & 07777;
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

// Makes the rename itself durable; a folder that cannot be synced is no reason to fail.
void syncFolder(const std::filesystem::path& folder) {
  const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

}  // namespace

void replaceFileContents(const std::string& fileName, std::string_view bytes, const BlockWriter& writer) {
  const std::filesystem::path target(fileName);
  // A read-only file stays unwritten, as opening it for writing would refuse.
  if (::access(fileName.c_str(), F_OK) == 0 && ::access(fileName.c_str(), W_OK) != 0) cannotReplace(errno, fileName);
  std::string temp = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
  const int fd = ::mkstemp(temp.data());
  if (fd < 0) cannotReplace(errno, fileName);

  int error = 0;
  while (!bytes.empty()) {
    const long n = writer ? writer(fd, bytes.data(), bytes.size()) : ::write(fd, bytes.data(), bytes.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) {
      error = n < 0 ? errno : EIO;
      break;
    }
    bytes.remove_prefix(std::size_t(n));
  }
  if (error == 0 && ::fchmod(fd, modeFor(fileName)) != 0) error = errno;
  if (error == 0 && ::fsync(fd) != 0) error = errno;
  if (::close(fd) != 0 && error == 0) error = errno;
  if (error == 0 && std::rename(temp.c_str(), fileName.c_str()) != 0) error = errno;
  if (error != 0) {
    ::unlink(temp.c_str());
    cannotReplace(error, fileName);
  }
  syncFolder(target.parent_path());
}

}  // namespace kv
