// The bulk content a project writes into a general file while it is generated: the table of
// contents, the keyword index and the doc types' own streams. The project declares it; the
// layer that builds tables of contents and indexes implements it, and a build installs it with
// KVProject::Contents.
#pragma once

#include <memory>
#include <string>

#include "kavrel/FileSystem.h"

namespace kv {

class KVDocType;

class ProjectContents {
 public:
  virtual ~ProjectContents() = default;
  // Writes the table of contents of every populated doc type, or of `SpecificDocType` alone.
  virtual void BuildTOC(std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<KVDocType>& SpecificDocType) = 0;
  // Writes a keyword store, each keyword through the scrap `ScrapName`.
  virtual void BuildIndex(std::shared_ptr<FileSystem>& OutputFile, const std::string& ScrapName) = 0;
  // Writes content of a named kind ("Files", "MAP", "ALIAS", "Index", ...).
  virtual void StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType) = 0;
};

}  // namespace kv
