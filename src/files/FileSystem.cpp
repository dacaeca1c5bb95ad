#include "kavrel/FileSystem.h"

#include <fcntl.h>
#include <iconv.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "files/UnicodeHelpers.h"
#include "kavrel/Failure.h"
#include "kavrel/Text.h"

namespace fs = std::filesystem;

namespace kv {

// ---------------------------------------------------------------------------------------------
// Code page conversion

namespace codepage {
namespace {

constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";
constexpr std::string_view kBomUtf8 = "\xEF\xBB\xBF";
constexpr std::string_view kBomUtf16LE = "\xFF\xFE";
constexpr std::string_view kBomUtf16BE = "\xFE\xFF";

std::string converterFor(long codePage) {
  const CodePage known = UnicodeHelpers::CodePageFromID(codePage);
  return known.Valid ? known.ConverterName : "CP" + std::to_string(codePage);
}

bool isUtf8Name(std::string_view name) {
  const std::string upper = text::toUpper(name);
  return upper == "UTF-8" || upper == "UTF8";
}

// Bytes per code unit of an encoding, for skipping one undecodable unit.
size_t unitSize(std::string_view name) {
  const std::string upper = text::toUpper(name);
  if (upper.starts_with("UTF-16") || upper.starts_with("UCS-2")) return 2;
  if (upper.starts_with("UTF-32") || upper.starts_with("UCS-4")) return 4;
  return 1;
}

size_t utf8SequenceLength(unsigned char lead) {
  if (lead >= 0xF0 && lead <= 0xF4) return 4;
  if (lead >= 0xE0 && lead <= 0xEF) return 3;
  if (lead >= 0xC2 && lead <= 0xDF) return 2;
  return 1;
}

class Converter {
 public:
  Converter(const std::string& to, const std::string& from) : mCd(iconv_open(to.c_str(), from.c_str())) {
    if (mCd == reinterpret_cast<iconv_t>(-1)) {
      const std::string name = isUtf8Name(to) ? from : to;
      throw Failure(err::InvalidProcedureCall,
                    "Invalid procedure call or argument: code page '" + name + "' is not supported");
    }
  }
  ~Converter() { iconv_close(mCd); }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Converts all of `in`; at a unit that cannot be converted, `skip` tells how many input bytes
  // to drop and `replacement` is written instead.
  template <class Skip>
  std::string run(std::string_view in, Skip skip, std::string_view replacement) {
    std::string out;
    char buffer[4096];
    auto* inPtr = const_cast<char*>(in.data());
    size_t inLeft = in.size();
    while (true) {
      char* outPtr = buffer;
      size_t outLeft = sizeof buffer;
      const size_t rc =
          inLeft ? iconv(mCd, &inPtr, &inLeft, &outPtr, &outLeft) : iconv(mCd, nullptr, nullptr, &outPtr, &outLeft);
      const int error = errno;
      out.append(buffer, outPtr - buffer);
      if (rc != static_cast<size_t>(-1)) {
        if (inLeft == 0 && outPtr == buffer) break;  // input done and shift state flushed
        continue;
      }
      if (error == E2BIG) continue;
      // EILSEQ or EINVAL (a truncated sequence at the end).
      const size_t drop = std::min(inLeft, std::max<size_t>(1, skip(static_cast<unsigned char>(*inPtr))));
      inPtr += drop;
      inLeft -= drop;
      out.append(replacement);
    }
    return out;
  }

 private:
  iconv_t mCd;
};

}  // namespace

bool isUtf8(std::string_view bytes) {
  size_t i = 0;
  while (i < bytes.size()) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    if (b < 0x80) {
      ++i;
      continue;
    }
    const size_t n = utf8SequenceLength(b);
    if (n == 1 || i + n > bytes.size()) return false;
    const auto b1 = static_cast<unsigned char>(bytes[i + 1]);
    // Overlong forms, surrogates and code points above U+10FFFF.
    if ((b == 0xE0 && b1 < 0xA0) || (b == 0xED && b1 > 0x9F) || (b == 0xF0 && b1 < 0x90) || (b == 0xF4 && b1 > 0x8F))
      return false;
    for (size_t k = 1; k < n; ++k)
      if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80) return false;
    i += n;
  }
  return true;
}

std::string toUtf8(std::string_view bytes, std::string_view converterName) {
  const std::string name(converterName);
  const size_t unit = unitSize(name);
  Converter converter("UTF-8", name);
  return converter.run(
      bytes, [unit](unsigned char) { return unit; }, kReplacementUtf8);
}

std::string toUtf8(std::string_view bytes, long codePage) {
  return toUtf8(bytes, converterFor(codePage));
}

std::string fromUtf8(std::string_view text, std::string_view converterName) {
  const std::string name(converterName);
  const std::string question = Converter(name, "UTF-8").run("?", utf8SequenceLength, "");
  Converter converter(name, "UTF-8");
  return converter.run(text, utf8SequenceLength, question);
}

std::string fromUtf8(std::string_view text, long codePage) {
  return fromUtf8(text, converterFor(codePage));
}

}  // namespace codepage

// ---------------------------------------------------------------------------------------------
// Paths and failures

namespace {

bool isAutomatic(long codePage) {
  return codePage == codepage::Automatic || codePage == codepage::Default;
}

std::string forwardSlashes(std::string_view name) {
  std::string out(name);
  std::replace(out.begin(), out.end(), '\\', '/');
  return out;
}

// A full, normalised path: relative names are taken from `baseFolder`, or the current folder.
std::string resolve(std::string_view name, const std::string& baseFolder) {
  if (name.empty()) return {};
  fs::path path(forwardSlashes(name));
  if (path.is_relative()) path = (baseFolder.empty() ? fs::current_path() : fs::path(baseFolder)) / path;
  return path.lexically_normal().string();
}

[[noreturn]] void failFor(int error, const std::string& path, std::string_view action) {
  const std::string folder = fs::path(path).parent_path().string();
  std::error_code ec;
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      if (!folder.empty() && !fs::is_directory(folder, ec))
        throw Failure(err::PathNotFound, "Path not found: '" + path + "'");
      throw Failure(err::FileNotFound, "File not found: '" + path + "'");
    case EACCES:
    case EPERM:
    case EROFS: throw Failure(err::PermissionDenied, "Permission denied: '" + path + "'");
    case EISDIR: throw Failure(err::PathFileAccessError, "Path/File access error: '" + path + "' is a folder");
    default:
      throw Failure(err::PathFileAccessError, "Path/File access error: cannot " + std::string(action) + " '" + path +
                                                  "': " + std::strerror(error));
  }
}

std::string_view bomFor(long codePage) {
  return codePage == codepage::UTF16LE ? codepage::kBomUtf16LE : std::string_view();
}

// Text in the file's code page; Automatic writes UTF-8.
std::string encode(std::string text, long codePage) {
  if (isAutomatic(codePage) || codePage == codepage::UTF8) return text;
  return codepage::fromUtf8(text, codePage);
}

void writeBytes(int fd, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      failFor(errno, path, "write");
    }
    bytes.remove_prefix(static_cast<size_t>(n));
  }
}

// Cuts what an older, longer file left past the write position. A file being replaced is opened
// without O_TRUNC and overwritten in place: ext4 answers a truncate to zero by freeing and
// discarding every block, and by flushing the new data at close, which made rewriting a site of
// thousands of pages wait on the disk for each page.
void trimAtWritePosition(int fd, const std::string& path) {
  const off_t end = ::lseek(fd, 0, SEEK_CUR);
  struct stat st {};
  if (end < 0 || ::fstat(fd, &st) != 0) failFor(errno, path, "write");
  if (st.st_size > end && ::ftruncate(fd, end) != 0) failFor(errno, path, "write");
}

}  // namespace

std::string withTrailingSlash(std::string folder) {
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

// ---------------------------------------------------------------------------------------------
// FileSystem

struct FileSystem::Stream {
  int fd = -1;
  bool writable = false;
  bool atStart = false;    // nothing before the write position yet: a BOM goes first
  bool replacing = false;  // opened to replace the file: what is not overwritten goes at close
  // Written text waits here until there is enough of it, so that a page of many short lines
  // costs a few system calls, not one per line.
  std::string pending;
  static constexpr std::size_t kFlushAt = 64 * 1024;
};

FileSystem::FileSystem() = default;

FileSystem::FileSystem(std::string fileName) {
  FileName(fileName);
}

FileSystem::~FileSystem() {
  // An object dropped while open still writes what it holds; a failure then has nowhere to go.
  try {
    Close();
  } catch (...) {
  }
}

std::string FileSystem::FileName() const {
  return mFileName;
}

void FileSystem::FileName(std::string_view name) {
  mFileName = resolve(name, mBaseFolder);
}

std::string FileSystem::BaseName() const {
  return fs::path(mFileName).stem().string();
}

void FileSystem::BaseName(std::string_view name) {
  const std::string extension = fs::path(mFileName).extension().string();
  mFileName = Folder() + std::string(name) + extension;
}

std::string FileSystem::Extension() const {
  const std::string extension = fs::path(mFileName).extension().string();
  return extension.empty() ? extension : extension.substr(1);
}

void FileSystem::Extension(std::string_view extension) {
  std::string newName = Folder() + BaseName();
  if (!extension.empty()) newName += (extension.front() == '.' ? "" : ".") + std::string(extension);
  mFileName = newName;
}

std::string FileSystem::Name() const {
  return fs::path(mFileName).filename().string();
}

std::string FileSystem::Folder() const {
  if (mFileName.empty()) return {};
  return withTrailingSlash(fs::path(mFileName).parent_path().string());
}

void FileSystem::FolderPath(std::string_view folder) {
  const std::string name = Name();
  mFileName = withTrailingSlash(resolve(folder, mBaseFolder)) + name;
}

bool FileSystem::Exists() const {
  std::error_code ec;
  return !mFileName.empty() && fs::exists(mFileName, ec) && !fs::is_directory(mFileName, ec);
}

bool FileSystem::FolderExists() const {
  std::error_code ec;
  return !mFileName.empty() && fs::is_directory(Folder(), ec);
}

void FileSystem::CreateFolder() {
  const std::string folder = Folder();
  if (folder.empty()) throw Failure(err::BadFileNameOrNumber, "Bad file name or number: no file name is set");
  std::error_code ec;
  fs::create_directories(folder, ec);
  if (ec) {
    if (ec == std::errc::permission_denied || ec == std::errc::read_only_file_system)
      throw Failure(err::PermissionDenied, "Permission denied: cannot create the folder '" + folder + "'");
    throw Failure(err::PathNotFound, "Path not found: cannot create the folder '" + folder + "': " + ec.message());
  }
}

bool FileSystem::IsReadOnly() const {
  if (!Exists()) return false;
  std::error_code ec;
  const auto perms = fs::status(mFileName, ec).permissions();
  constexpr auto anyWrite = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
  // Without write bits the file is read-only even for the superuser, as the flag means.
  return (perms & anyWrite) == fs::perms::none || ::access(mFileName.c_str(), W_OK) != 0;
}

DateTime FileSystem::ModifiedTime() const {
  std::error_code ec;
  const auto time = fs::last_write_time(mFileName, ec);
  if (ec) return DateTime{};
  return std::chrono::time_point_cast<DateTime::duration>(std::chrono::file_clock::to_sys(time));
}

bool FileSystem::CopyTo(std::string_view destination) const {
  std::error_code ec;
  fs::copy_file(mFileName, resolve(destination, mBaseFolder), fs::copy_options::overwrite_existing, ec);
  return !ec;
}

void FileSystem::Open(int mode, int access, int /*share: Linux does not lock*/, long codePage) {
  if (mStream) throw Failure(err::FileAlreadyOpen, "File already open: '" + mFileName + "'");
  if (mFileName.empty()) throw Failure(err::BadFileNameOrNumber, "Bad file name or number: no file name is set");

  int flags = O_CLOEXEC;
  switch (access) {
    case AccessRead: flags |= O_RDONLY; break;
    case AccessWrite: flags |= O_WRONLY; break;
    case AccessReadWrite: flags |= O_RDWR; break;
    default:
      throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: access " + std::to_string(access));
  }
  switch (mode) {
    case OpenExisting: break;
    case OpenAppend: flags |= O_CREAT | O_APPEND; break;
    // Replaced in place when written (see trimAtWritePosition); only a reader needs it empty now.
    case CreateAlways: flags |= O_CREAT | (access == AccessWrite ? 0 : O_TRUNC); break;
    case OpenAlways: flags |= O_CREAT; break;
    default:
      throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument: mode " + std::to_string(mode));
  }
  // Only a plain read opens a folder without EISDIR; pages are written without the extra look.
  std::error_code ec;
  if ((flags & (O_ACCMODE | O_CREAT)) == O_RDONLY && fs::is_directory(mFileName, ec))
    failFor(EISDIR, mFileName, "open");
  const int fd = ::open(mFileName.c_str(), flags, 0666);
  if (fd < 0) failFor(errno, mFileName, "open");

  auto stream = std::make_unique<Stream>();
  stream->fd = fd;
  stream->writable = access != AccessRead;
  stream->replacing = mode == CreateAlways && access == AccessWrite;
  stream->atStart = mode != OpenAppend || ::lseek(fd, 0, SEEK_END) == 0;
  mStream = std::move(stream);
  mCodePage = codePage;
}

void FileSystem::Close() {
  if (!mStream) return;
  const std::unique_ptr<Stream> stream = std::move(mStream);
  const std::string pending = std::move(stream->pending);
  try {
    writeBytes(stream->fd, pending, mFileName);
    if (stream->replacing) trimAtWritePosition(stream->fd, mFileName);
  } catch (...) {
    ::close(stream->fd);
    throw;
  }
  if (::close(stream->fd) != 0) failFor(errno, mFileName, "close");
}

bool FileSystem::IsOpen() const {
  return mStream != nullptr;
}

void FileSystem::OutputLineFeeds(bool on) {
  mOutputLineFeeds = on;
}

void FileSystem::WriteLine(std::string_view text) {
  if (!mStream) throw Failure(err::BadFileNameOrNumber, "Bad file name or number: '" + mFileName + "' is not open");
  if (!mStream->writable)
    throw Failure(err::BadFileNameOrNumber, "Bad file name or number: '" + mFileName + "' is open for reading only");
  std::string bytes;
  if (mStream->atStart) bytes = bomFor(mCodePage);
  // Text and line feed are converted together: one conversion per line, not two.
  std::string line(text);
  if (mOutputLineFeeds) line += '\n';
  bytes += encode(std::move(line), mCodePage);
  if (!bytes.empty()) mStream->atStart = false;
  mStream->pending += bytes;
  if (mStream->pending.size() >= Stream::kFlushAt) {
    writeBytes(mStream->fd, mStream->pending, mFileName);
    mStream->pending.clear();
  }
}

void FileSystem::WriteAll(std::string_view text, long codePage) {
  if (mFileName.empty()) throw Failure(err::BadFileNameOrNumber, "Bad file name or number: no file name is set");
  const std::string bytes = std::string(bomFor(codePage)) + encode(std::string(text), codePage);
  const int fd = ::open(mFileName.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
  if (fd < 0) failFor(errno, mFileName, "write");
  try {
    writeBytes(fd, bytes, mFileName);
    trimAtWritePosition(fd, mFileName);
  } catch (...) {
    ::close(fd);
    throw;
  }
  if (::close(fd) != 0) failFor(errno, mFileName, "write");
}

std::string FileSystem::ReadAll(long codePage) const {
  if (mFileName.empty()) throw Failure(err::BadFileNameOrNumber, "Bad file name or number: no file name is set");
  // What this object has written so far is read back too.
  if (mStream && !mStream->pending.empty()) {
    writeBytes(mStream->fd, mStream->pending, mFileName);
    mStream->pending.clear();
  }
  if (mStream && mStream->replacing) trimAtWritePosition(mStream->fd, mFileName);
  std::error_code ec;
  if (fs::is_directory(mFileName, ec))
    throw Failure(err::PathFileAccessError, "Path/File access error: '" + mFileName + "' is a folder");
  const int fd = ::open(mFileName.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) failFor(errno, mFileName, "read");
  std::string bytes;
  char buffer[65536];
  while (true) {
    const ssize_t n = ::read(fd, buffer, sizeof buffer);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      const int error = errno;
      ::close(fd);
      failFor(error, mFileName, "read");
    }
    if (n == 0) break;
    bytes.append(buffer, static_cast<size_t>(n));
  }
  ::close(fd);

  const std::string_view view(bytes);
  auto strip = [&](std::string_view bom) { return view.starts_with(bom) ? view.substr(bom.size()) : view; };
  if (isAutomatic(codePage)) {
    if (view.starts_with(codepage::kBomUtf8)) return std::string(strip(codepage::kBomUtf8));
    if (view.starts_with(codepage::kBomUtf16LE))
      return codepage::toUtf8(strip(codepage::kBomUtf16LE), codepage::UTF16LE);
    if (view.starts_with(codepage::kBomUtf16BE)) return codepage::toUtf8(strip(codepage::kBomUtf16BE), 1201);
    return codepage::isUtf8(view) ? bytes : codepage::toUtf8(view, codepage::Windows1252);
  }
  if (codePage == codepage::UTF8) {
    const std::string_view body = strip(codepage::kBomUtf8);
    // Even as UTF-8, the result must be valid UTF-8: bad bytes become U+FFFD.
    return codepage::isUtf8(body) ? std::string(body) : codepage::toUtf8(body, codepage::UTF8);
  }
  if (codePage == codepage::UTF16LE) return codepage::toUtf8(strip(codepage::kBomUtf16LE), codePage);
  if (codePage == 1201) return codepage::toUtf8(strip(codepage::kBomUtf16BE), codePage);
  return codepage::toUtf8(view, codePage);
}

void FileSystem::CodePage(long codePage) {
  mCodePage = codePage;
}

long FileSystem::CodePage() const {
  return mCodePage;
}

void FileSystem::UTF8(bool on) {
  if (on)
    mCodePage = codepage::UTF8;
  else if (mCodePage == codepage::UTF8 || isAutomatic(mCodePage))
    mCodePage = codepage::Windows1252;
}

void FileSystem::MakeRelativeTo(const FileSystem* base) {
  mBaseFolder = base ? base->Folder() : std::string();
}

std::string FileSystem::RelativeName() const {
  if (mBaseFolder.empty() || mFileName.empty()) return mFileName;
  const fs::path base = fs::path(mBaseFolder).parent_path();  // without the trailing "/"
  const fs::path relative = fs::path(mFileName).lexically_relative(base);
  return relative.empty() ? mFileName : relative.string();
}

}  // namespace kv
