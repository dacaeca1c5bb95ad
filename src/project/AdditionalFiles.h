// Files copied into the output.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class AdditionalFiles {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
