// Member wildcards that leave items out of the documentation.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class ExcludeFilters {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
