// The comment files of a project.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "comments/KVContentFile.h"
#include "contracts/RecordCollection.h"

namespace kv {

class XMLNode;

class KVContentFiles : public TrackedCollection<KVContentFile> {
 public:
  // Handed to every file the collection reads, so that each binds to the items of its doc type.
  std::function<std::shared_ptr<ContentBinding>(const std::string& DocType)> Bindings;

  // Replaces the files by those the "CommentFile" children of `e` name.
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

  // Reads each file from disk; a file that cannot be read is reported and left unread.
  void LoadFiles();
  // Writes each file that was read; false when one of them could not be written.
  bool SaveFiles();
};

}  // namespace kv
