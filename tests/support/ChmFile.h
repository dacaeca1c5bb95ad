// A compiled help file read back with chmlib: the names of its files and the text of any of them.
#pragma once

#include <chm_lib.h>

#include <string>
#include <vector>

namespace kv::test {

class ChmFile {
 public:
  explicit ChmFile(const std::string& fileName) : mFile(chm_open(fileName.c_str())) {}
  ~ChmFile() {
    if (mFile) chm_close(mFile);
  }
  ChmFile(const ChmFile&) = delete;
  ChmFile& operator=(const ChmFile&) = delete;

  bool IsOpen() const { return mFile != nullptr; }

  // The files the help file holds ("/index.html", "/project.hhc", ...), not its own structures.
  std::vector<std::string> Files() const {
    std::vector<std::string> names;
    if (mFile) chm_enumerate(mFile, CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, &ChmFile::collect, &names);
    return names;
  }

  // The whole text of a file in it; empty when there is no such file.
  std::string Read(const std::string& path) const {
    chmUnitInfo unit{};
    if (!mFile || chm_resolve_object(mFile, path.c_str(), &unit) != CHM_RESOLVE_SUCCESS) return {};
    std::string text(size_t(unit.length), '\0');
    const LONGINT64 got =
        chm_retrieve_object(mFile, &unit, reinterpret_cast<unsigned char*>(text.data()), 0, LONGINT64(unit.length));
    text.resize(got > 0 ? size_t(got) : 0);
    return text;
  }

 private:
  static int collect(chmFile*, chmUnitInfo* unit, void* context) {
    static_cast<std::vector<std::string>*>(context)->push_back(unit->path);
    return CHM_ENUMERATOR_CONTINUE;
  }
  chmFile* mFile;
};

}  // namespace kv::test
