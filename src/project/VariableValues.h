// Project and template variables.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class VariableValues {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
