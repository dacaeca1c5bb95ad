// The contents a project writes while its general files are generated: the table of contents,
// the index and the named sections, installed on the project for the length of a build.
#pragma once

#include <memory>

#include "project/ProjectContents.h"

namespace kv {

class KVProject;

class ContentsWriter : public ProjectContents {
 public:
  explicit ContentsWriter(std::weak_ptr<KVProject> project) : mProject(std::move(project)) {}

  // Installs the contents writer on `project`.
  static void Install(const std::shared_ptr<KVProject>& project);

  void BuildTOC(std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<KVDocType>& SpecificDocType) override;
  void BuildIndex(std::shared_ptr<FileSystem>& OutputFile, const std::string& ScrapName) override;
  void StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType) override;

 private:
  std::weak_ptr<KVProject> mProject;
};

}  // namespace kv
