#include <gtest/gtest.h>

#include <filesystem>

#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "support/Failures.h"
#include "support/Files.h"
#include "support/OrdinaryUser.h"
#include "support/TempFolder.h"

namespace fs = std::filesystem;
using kv::FileSystem;
using kv::test::failureNumber;
using kv::test::readFile;
using kv::test::writeFile;

namespace {

class FileSystemTest : public ::testing::Test {
 protected:
  std::string path(const std::string& relative) const { return temp.path(relative); }
  kv::test::TempFolder temp;
  const fs::path& root = temp.root();
};

const std::string kText = "Grüße, café — 日本";

TEST_F(FileSystemTest, NamePartsUseForwardSlashes) {
  FileSystem file(root.string() + "\\docs\\guide.kvp");
  EXPECT_EQ(file.FileName(), path("docs/guide.kvp"));
  EXPECT_EQ(file.Folder(), path("docs") + "/");
  EXPECT_EQ(file.Name(), "guide.kvp");
  EXPECT_EQ(file.BaseName(), "guide");
  EXPECT_EQ(file.Extension(), "kvp");

  file.Extension("chm");
  EXPECT_EQ(file.FileName(), path("docs/guide.chm"));
  file.BaseName("manual");
  EXPECT_EQ(file.FileName(), path("docs/manual.chm"));
  file.FolderPath(root.string() + "\\out\\");
  EXPECT_EQ(file.FileName(), path("out/manual.chm"));
  file.Extension("");
  EXPECT_EQ(file.Name(), "manual");
}

TEST_F(FileSystemTest, RelativeNamesAcrossSiblingFolders) {
  FileSystem project(path("proj/site.kvp"));
  FileSystem other(path("sibling/x.kvp"));
  other.MakeRelativeTo(&project);
  EXPECT_EQ(other.RelativeName(), "../sibling/x.kvp");

  FileSystem inside(path("proj/sub/y.xml"));
  inside.MakeRelativeTo(&project);
  EXPECT_EQ(inside.RelativeName(), "sub/y.xml");

  // With a base, a relative name (even one written with "\") is taken from the base's folder.
  FileSystem read;
  read.MakeRelativeTo(&project);
  read.FileName("..\\sibling\\x.kvp");
  EXPECT_EQ(read.FileName(), path("sibling/x.kvp"));
  EXPECT_EQ(read.RelativeName(), "../sibling/x.kvp");

  read.MakeRelativeTo(nullptr);
  EXPECT_EQ(read.RelativeName(), path("sibling/x.kvp"));
}

TEST_F(FileSystemTest, WritesEachCodePageAsItsBytes) {
  FileSystem file(path("t.txt"));

  file.WriteAll("café", kv::codepage::UTF8);
  EXPECT_EQ(readFile(file.FileName()), "caf\xC3\xA9");  // no BOM

  file.WriteAll("café", kv::codepage::UTF16LE);
  EXPECT_EQ(readFile(file.FileName()), std::string("\xFF\xFE"
                                                   "c\0a\0f\0\xE9\0",
                                                   10));

  file.WriteAll("café", kv::codepage::Windows1252);
  EXPECT_EQ(readFile(file.FileName()), "caf\xE9");

  file.WriteAll("€ 日", kv::codepage::Windows1252);  // the euro sign is 0x80; 日 has no byte
  EXPECT_EQ(readFile(file.FileName()), "\x80 ?");
}

TEST_F(FileSystemTest, ReadAllDetectsTheEncoding) {
  FileSystem file(path("t.txt"));
  for (long codePage : {kv::codepage::UTF8, kv::codepage::UTF16LE}) {
    file.WriteAll(kText, codePage);
    EXPECT_EQ(file.ReadAll(), kText) << codePage;
    EXPECT_EQ(file.ReadAll(kv::codepage::Automatic), kText) << codePage;
    EXPECT_EQ(file.ReadAll(codePage), kText) << codePage;
  }

  writeFile(file.FileName(),
            "\xEF\xBB\xBF"
            "caf\xC3\xA9");
  EXPECT_EQ(file.ReadAll(), "café");
  writeFile(file.FileName(), std::string("\xFE\xFF\0c\0\xE9", 6));
  EXPECT_EQ(file.ReadAll(), "cé");
  // Not UTF-8: taken as Windows-1252.
  writeFile(file.FileName(), "caf\xE9 \x93q\x94");
  EXPECT_EQ(file.ReadAll(), "café “q”");
  EXPECT_EQ(file.ReadAll(kv::codepage::Windows1252), "café “q”");
  // Read explicitly as UTF-8, bad bytes become replacement characters rather than passing through.
  EXPECT_EQ(file.ReadAll(kv::codepage::UTF8), "caf\xEF\xBF\xBD \xEF\xBF\xBDq\xEF\xBF\xBD");
}

TEST_F(FileSystemTest, ConvertsByConverterName) {
  EXPECT_EQ(kv::codepage::fromUtf8("é", "CP1252"), "\xE9");
  EXPECT_EQ(kv::codepage::toUtf8("\xE9", "WINDOWS-1252"), "é");
  EXPECT_EQ(kv::codepage::toUtf8("\x82\xA0", 932), "あ");
  EXPECT_EQ(kv::codepage::toUtf8("\xC3\xA9", 28591), "Ã©");
  EXPECT_EQ(failureNumber([] { kv::codepage::toUtf8("x", "NO-SUCH-CHARSET"); }), kv::err::InvalidProcedureCall);
}

TEST_F(FileSystemTest, StreamWritesLinesInItsCodePage) {
  FileSystem file(path("out/log.txt"));
  file.CreateFolder();
  file.Open(FileSystem::CreateAlways, FileSystem::AccessWrite, FileSystem::ShareNone, kv::codepage::UTF16LE);
  EXPECT_TRUE(file.IsOpen());
  file.WriteLine("é1");
  file.OutputLineFeeds(false);
  file.WriteLine("2");
  file.Close();
  EXPECT_FALSE(file.IsOpen());
  EXPECT_EQ(readFile(file.FileName()), std::string("\xFF\xFE\xE9\0"
                                                   "1\0\n\0"
                                                   "2\0",
                                                   10));

  // Appending to a file that has content adds no second BOM.
  file.Open(FileSystem::OpenAppend, FileSystem::AccessWrite, FileSystem::ShareNone, kv::codepage::UTF16LE);
  file.WriteLine("3");
  file.Close();
  EXPECT_EQ(file.ReadAll(), "é1\n23");

  file.Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
  file.OutputLineFeeds(true);
  file.UTF8(true);
  file.WriteLine("ü");
  EXPECT_EQ(failureNumber([&] { file.Open(FileSystem::OpenAlways, FileSystem::AccessWrite); }),
            kv::err::FileAlreadyOpen);
  file.Close();
  EXPECT_EQ(readFile(file.FileName()), "\xC3\xBC\n");

  EXPECT_EQ(failureNumber([&] { file.WriteLine("closed"); }), kv::err::BadFileNameOrNumber);
  file.Open(FileSystem::OpenExisting, FileSystem::AccessRead);
  EXPECT_EQ(failureNumber([&] { file.WriteLine("read only"); }), kv::err::BadFileNameOrNumber);
}

TEST_F(FileSystemTest, WrittenLinesAreHeldUntilCloseOrARead) {
  FileSystem file(path("page.html"));
  // An older, longer page is replaced: none of its bytes show through, not even mid-write.
  writeFile(file.FileName(), std::string(500000, 'x'));
  file.Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
  std::string expected;
  for (int i = 0; i < 5000; ++i) {
    file.WriteLine("<tr><td>" + std::to_string(i) + "</td></tr>");
    expected += "<tr><td>" + std::to_string(i) + "</td></tr>\n";
  }
  // Reading through the same object sees everything written so far.
  EXPECT_EQ(file.ReadAll(), expected);
  file.WriteLine("end");
  file.Close();
  EXPECT_EQ(readFile(file.FileName()), expected + "end\n");

  // A write that fails when the held lines go out fails the close.
  FileSystem full("/dev/full");
  full.Open(FileSystem::OpenExisting, FileSystem::AccessWrite);
  full.WriteLine("held back");
  EXPECT_NE(failureNumber([&] { full.Close(); }), 0);
  EXPECT_FALSE(full.IsOpen());
}

TEST_F(FileSystemTest, FailuresNameNumberAndPath) {
  std::string message;
  FileSystem missing(path("none.txt"));
  EXPECT_EQ(failureNumber([&] { missing.ReadAll(); }, &message), kv::err::FileNotFound);
  EXPECT_NE(message.find(path("none.txt")), std::string::npos) << message;
  EXPECT_EQ(failureNumber([&] { missing.Open(FileSystem::OpenExisting, FileSystem::AccessRead); }),
            kv::err::FileNotFound);
  EXPECT_FALSE(missing.IsOpen());

  FileSystem noFolder(path("no/such/folder/x.txt"));
  EXPECT_EQ(failureNumber([&] { noFolder.WriteAll("x"); }, &message), kv::err::PathNotFound);
  EXPECT_NE(message.find(path("no/such/folder/x.txt")), std::string::npos) << message;

  // The superuser is never refused, so the write is tried as an ordinary user.
  fs::create_directories(root / "locked");
  fs::permissions(root / "locked", fs::perms::owner_read | fs::perms::owner_exec);
  const long refused = kv::test::asOrdinaryUser([&] {
    FileSystem locked(path("locked/x.txt"));
    return failureNumber([&] { locked.WriteAll("x"); });
  });
  EXPECT_EQ(refused, kv::err::PermissionDenied);
  EXPECT_FALSE(fs::exists(root / "locked/x.txt"));

  // A folder is never opened as a file, however it is asked for.
  fs::create_directories(root / "folder");
  FileSystem folder(path("folder"));
  for (const int mode :
       {FileSystem::OpenExisting, FileSystem::OpenAppend, FileSystem::CreateAlways, FileSystem::OpenAlways})
    for (const int access : {FileSystem::AccessRead, FileSystem::AccessWrite, FileSystem::AccessReadWrite}) {
      EXPECT_EQ(failureNumber([&] { folder.Open(mode, access); }, &message), kv::err::PathFileAccessError)
          << mode << " " << access;
      EXPECT_NE(message.find("is a folder"), std::string::npos) << message;
    }
  EXPECT_FALSE(folder.IsOpen());
}

TEST_F(FileSystemTest, ExistenceFoldersAndTimes) {
  FileSystem file(path("a/b/c/file.txt"));
  EXPECT_FALSE(file.Exists());
  EXPECT_FALSE(file.FolderExists());
  EXPECT_EQ(file.ModifiedTime(), kv::DateTime{});

  file.CreateFolder();
  EXPECT_TRUE(file.FolderExists());
  EXPECT_FALSE(file.Exists());
  file.WriteAll("x");
  EXPECT_TRUE(file.Exists());
  EXPECT_GT(file.ModifiedTime(), kv::DateTime{});
  EXPECT_FALSE(file.IsReadOnly());

  fs::permissions(file.FileName(), fs::perms::owner_read | fs::perms::group_read);
  EXPECT_TRUE(file.IsReadOnly());

  EXPECT_TRUE(file.CopyTo(root.string() + "\\a\\copy.txt"));
  EXPECT_EQ(readFile(path("a/copy.txt")), "x");
  EXPECT_FALSE(file.CopyTo(path("missing/folder/copy.txt")));

  FileSystem folderItself(path("a/b/c"));
  EXPECT_FALSE(folderItself.Exists());  // a folder is not a file
}

}  // namespace
