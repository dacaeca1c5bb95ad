// Writing a whole file so that it holds either its old content or the new one, never a part: the
// bytes go to a temporary file in the same folder, reach the disk, and are renamed over the file.
// A crash, a killed process or a full disk in the middle leaves the old file as it was.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace kv {

// Writes up to `size` bytes to `fd` and returns how many, or -1 with errno set, as ::write does.
using BlockWriter = std::function<long(int fd, const char* data, std::size_t size)>;

// Replaces the content of `fileName` by `bytes`. A new file takes the permissions a created file
// gets; an existing one keeps its own. Fails with PathFileAccessError (75) when the folder or
// the file cannot be written, DiskFull (61) when the disk is full, DeviceIOError (57) otherwise;
// the temporary file is gone then. `writer` stands in for ::write (tests make it fail).
void replaceFileContents(const std::string& fileName, std::string_view bytes, const BlockWriter& writer = {});

}  // namespace kv
