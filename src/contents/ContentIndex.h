// The index of a build and the other bulk content of the general files: the keyword stores
// written scrap by scrap, and named kinds of content ("Files", "MAP", "ALIAS", "Index", ...) that
// the project and its doc types stream into the file being generated.
#pragma once

#include <memory>
#include <string>

namespace kv {

class FileSystem;
class KVProject;

class ContentIndex {
 public:
  explicit ContentIndex(KVProject& project) : mProject(project) {}

  // Writes the keyword store the scrap name asks for ("_F_": F keywords, "_A_": A keywords,
  // otherwise K keywords), each keyword through the scrap, with the scrap's "_SEPARATOR" twin
  // between two. The store is sorted once per build.
  void BuildIndex(std::shared_ptr<FileSystem>& OutputFile, std::string ScrapName);
  // "Files" writes the additional files' names; then every populated doc type's provider writes
  // what it has of that kind.
  void StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType);

 private:
  KVProject& mProject;
};

}  // namespace kv
