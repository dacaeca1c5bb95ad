#include "project/RecordCollection.h"

#include "project/KVProject.h"

namespace kv {

void MarkProjectChanged(const std::weak_ptr<kv::KVProject>& project) {
  if (auto locked = project.lock()) locked->Changed();
}

}  // namespace kv
