// A plug-in that creates new projects.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Object.h"

namespace kv {

class KVProject;

class IKVNewProjectWizard {
 public:
  virtual ~IKVNewProjectWizard() = default;
  virtual std::shared_ptr<kv::KVProject> CreateNewProject(const ObjectPtr& /*Environment*/,
                                                          const std::string& /*TargetFileName*/) {
    return nullptr;
  }
};

}  // namespace kv
