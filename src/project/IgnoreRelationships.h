// Relationships left out of diagrams.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class IgnoreRelationships {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
