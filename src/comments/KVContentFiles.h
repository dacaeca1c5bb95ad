// The comment files of a project.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class KVContentFiles {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
