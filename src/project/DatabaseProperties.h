// Settings for documenting databases.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class DatabaseProperties {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
