// Comments whose item is no longer found, kept under the name the item had so that nothing
// authored is lost: they are written to the comment file again until the user places them.
#pragma once

#include <memory>
#include <string>

#include "contracts/RecordCollection.h"
#include "kavrel/model/TaggedComments.h"

namespace kv {

class KVOrphanedItem {
 public:
  std::string OldQualifiedName;
  std::string NewQualifiedName;
  std::string TaggedDescription;
  std::shared_ptr<kv::TaggedComments> TaggedComments = std::make_shared<kv::TaggedComments>();
};

// Keyed by OldQualifiedName.
class KVOrphanedItems : public KeyedCollection<KVOrphanedItem> {};

}  // namespace kv
