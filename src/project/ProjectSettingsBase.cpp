#include "project/ProjectSettingsBase.h"

#include "project/KVProject.h"

namespace kv {

void ProjectSettingsBase::Changed() const {
  if (auto project = KVProject.lock()) project->Changed();
}

}  // namespace kv
