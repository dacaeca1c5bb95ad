// The common ground of the kind-specific settings: a weak reference to the project and the
// setter rule (compare, store, and mark the project changed on a real change).
#pragma once

#include <memory>

namespace kv {

class KVProject;

class ProjectSettingsBase {
 public:
  std::weak_ptr<kv::KVProject> KVProject;

 protected:
  template <class T, class V>
  void Set(T& member, const V& value) {
    if (member == value) return;
    member = value;
    Changed();
  }
  // Marks the project changed, if it is still there.
  void Changed() const;
};

}  // namespace kv
