// String properties that differ from their defaults.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class KVPropertyBag {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
