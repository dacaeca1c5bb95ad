// The spell checker's word list of a comment file: a temporary file with one word a line that
// holds the file's own ignored words, the names of its items and the entities of the comment form.
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>

#include "comments/KVContentFile.h"
#include "host/FailureHandler.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"

namespace kv {

namespace {

constexpr std::string_view kModule = "KVContentFile";

std::string newTempFileName() {
  std::string name = (std::filesystem::temp_directory_path() / "KVXXXXXX").string();
  const int fd = ::mkstemp(name.data());
  if (fd < 0) throw Failure(err::PathFileAccessError, "Path/File access error: no temporary file can be made");
  ::close(fd);
  return name;
}

void appendLines(const std::string& fileName, const std::string& lines) {
  FileSystem file(fileName);
  file.Open(FileSystem::OpenAppend, FileSystem::AccessWrite);
  file.OutputLineFeeds(false);
  file.WriteLine(lines);
  file.Close();
}

}  // namespace

void KVContentFile::WriteItemNames(std::string& lines) {
  if (!mRootItem) return;
  binding().ForEachItem(
      mRootItem, [&](const ObjectPtr& item) { ignoreFailure([&] { lines += item->get("Name").toString() + "\n"; }); });
}

// Names of items loaded on demand become known to the checker at once.
void KVContentFile::AppendItemNames(const ObjectPtr& item) {
  std::string lines;
  binding().ForEachItem(
      item, [&](const ObjectPtr& below) { ignoreFailure([&] { lines += below->get("Name").toString() + "\n"; }); });
  appendLines(mSpellTempFile, lines);
}

std::string KVContentFile::SaveSpellIgnoreWordListToFile() {
  return guard<std::string>(kModule, [&] {
    if (!mSpellTempFile.empty()) {
      const std::string name = mSpellTempFile;
      KillSpellTempFile();
      mSpellTempFile = name;
    } else {
      mSpellTempFile = newTempFileName();
    }
    std::string lines;
    for (const auto& word : *IgnoreWordList) lines += word + "\n";
    WriteItemNames(lines);
    lines += "&nbsp;\n&gt;\n&lt;\n";
    FileSystem(mSpellTempFile).WriteAll(lines);
    return mSpellTempFile;
  });
}

void KVContentFile::KillSpellTempFile() {
  if (mSpellTempFile.empty()) return;
  std::error_code ec;
  std::filesystem::remove(mSpellTempFile, ec);
}

void KVContentFile::AddIgnoreWord(const std::string& Word) {
  guard(kModule, [&] {
    if (!ignoreFailure([&] { IgnoreWordList->Add(Word, Word); })) return;
    if (!mSpellTempFile.empty()) appendLines(mSpellTempFile, Word + "\n");
  });
}

void KVContentFile::RemoveIgnoreWord(const std::string& Word) {
  guard(kModule, [&] {
    IgnoreWordList->Remove(Word);
    SaveSpellIgnoreWordListToFile();
  });
}

}  // namespace kv
