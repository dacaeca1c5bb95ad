// Comments whose items are no longer found, kept until the user places them again.
#pragma once

#include <string>

#include "contracts/RecordCollection.h"
#include "kavrel/Object.h"

namespace kv {

class KVOrphanedItem {
 public:
  std::string OldQualifiedName;
  std::string NewQualifiedName;
  std::string TaggedDescription;
  ObjectPtr TaggedComments;
};

class KVOrphanedItems : public KeyedCollection<KVOrphanedItem> {};

}  // namespace kv
