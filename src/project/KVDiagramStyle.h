// How relationship diagrams look.
#pragma once

#include <memory>

namespace kv {

class KVProject;

class KVDiagramStyle {
 public:
  std::weak_ptr<kv::KVProject> KVProject;
};

}  // namespace kv
