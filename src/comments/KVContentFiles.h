// The comment files of a project.
#pragma once

#include <memory>

#include "comments/KVContentFile.h"
#include "contracts/RecordCollection.h"

namespace kv {

class XMLNode;

class KVContentFiles : public TrackedCollection<KVContentFile> {
 public:
  // Replaces the files by those the "CommentFile" children of `e` name.
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

}  // namespace kv
