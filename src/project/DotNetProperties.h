// Settings for documenting .NET assemblies.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class DotNetProperties {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
