// One comment file of a project, as the project file names it: the file, its doc type and the
// moniker of the item it documents. Loading the file's comments is a separate step.
#pragma once

#include <memory>
#include <string>

namespace kv {

class ProjectContext;
class XMLNode;

class KVContentFile {
 public:
  std::weak_ptr<ProjectContext> KVProject;
  std::string FileName;  // absolute
  std::string DocType;
  std::string ItemMoniker;

  // Reads the "CommentFile" element of the project file.
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

}  // namespace kv
