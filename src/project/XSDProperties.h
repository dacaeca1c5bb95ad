// Settings for documenting XML schemas.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class XSDProperties {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
