// One object for one path and, while open, one text stream. Folders are written with a trailing
// "/". Names written with "\" are read with "/".
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/Variant.h"

namespace kv {

namespace codepage {
inline constexpr long Automatic = 32767;  // reading: detect BOM / UTF-8 / Windows-1252; writing: UTF-8
inline constexpr long Default = 0;        // the same as Automatic
inline constexpr long UTF8 = 65001;
inline constexpr long UTF16LE = 1200;
inline constexpr long Windows1252 = 1252;

// Conversions through iconv. A code page is a Windows number (see UnicodeHelpers::CodePageFromID;
// numbers outside the table are tried as "CP<n>") or an iconv name ("CP1252", "WINDOWS-1252").
// Undecodable input becomes U+FFFD; characters the target cannot hold become "?". A code page
// that iconv does not know fails with "Invalid procedure call or argument" (5).
KV_API std::string toUtf8(std::string_view bytes, long codePage);
KV_API std::string toUtf8(std::string_view bytes, std::string_view converterName);
KV_API std::string fromUtf8(std::string_view text, long codePage);
KV_API std::string fromUtf8(std::string_view text, std::string_view converterName);
KV_API bool isUtf8(std::string_view bytes);
}  // namespace codepage

// `folder` ending in "/", as folder names are written; an empty name stays empty.
KV_API std::string withTrailingSlash(std::string folder);

class KV_API FileSystem {
 public:
  // Open modes.
  static constexpr int OpenExisting = 1, OpenAppend = 2, CreateAlways = 3, OpenAlways = 4;
  // Access.
  static constexpr int AccessRead = 1, AccessWrite = 2, AccessReadWrite = 3;
  // Sharing (kept for callers; Linux does not lock).
  static constexpr int ShareNone = 0, ShareRead = 1, ShareWrite = 2, ShareDelete = 4;

  FileSystem();
  explicit FileSystem(std::string fileName);
  ~FileSystem();
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  // Full path. With a base set (`MakeRelativeTo`), a relative name is resolved against the
  // base's folder; `RelativeName` gives the path relative to that folder.
  std::string FileName() const;
  void FileName(std::string_view name);
  std::string BaseName() const;
  void BaseName(std::string_view name);
  std::string Extension() const;  // without the dot
  void Extension(std::string_view extension);
  std::string Name() const;    // name with extension, without folder
  std::string Folder() const;  // folder with trailing "/"
  void FolderPath(std::string_view folder);

  bool Exists() const;
  bool FolderExists() const;
  void CreateFolder();  // creates the folder of the file, parents included
  bool IsReadOnly() const;
  // Modification time; a missing file reads as the epoch (time zero).
  DateTime ModifiedTime() const;
  bool CopyTo(std::string_view destination) const;  // overwrites; false on failure

  void Open(int mode, int access, int share = ShareNone, long codePage = codepage::Automatic);
  void Close();
  bool IsOpen() const;
  void OutputLineFeeds(bool on);
  void WriteLine(std::string_view text);  // adds "\n" when OutputLineFeeds is on
  // Writes the whole file in the given code page (the stream need not be open).
  void WriteAll(std::string_view text, long codePage = codepage::UTF8);
  // Reads the whole file as UTF-8 text, converting from the given code page (0 or 32767: detect).
  std::string ReadAll(long codePage = codepage::Default) const;
  void CodePage(long codePage);
  long CodePage() const;
  void UTF8(bool on);

  // Sets (or with nullptr clears) the base for relative names.
  void MakeRelativeTo(const FileSystem* base);
  // The path relative to the base's folder ("../x/y.kvp"), or the full path without a base.
  std::string RelativeName() const;

 private:
  struct Stream;
  std::string mFileName;
  std::string mBaseFolder;
  long mCodePage = codepage::Automatic;
  bool mOutputLineFeeds = true;
  std::unique_ptr<Stream> mStream;
};

}  // namespace kv
