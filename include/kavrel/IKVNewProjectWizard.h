// A plug-in that creates new projects.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/Object.h"

namespace kv {

class IKVProject;

class KV_API IKVNewProjectWizard {
 public:
  virtual ~IKVNewProjectWizard() = default;
  virtual std::shared_ptr<IKVProject> CreateNewProject(const ObjectPtr& /*Environment*/,
                                                       const std::string& /*TargetFileName*/) {
    return nullptr;
  }
};

}  // namespace kv
