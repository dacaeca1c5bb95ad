// What the parts of a project that sit below it (its tracked collections and its comment files)
// need of the project: the change mark and file names relative to the project file. The project
// implements it; those parts hold it by a weak reference, so they never keep a project alive.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Export.h"

namespace kv {

class KV_API ProjectContext {
 public:
  virtual ~ProjectContext() = default;
  // Marks the project changed (see the dirty-state rule of the project object).
  virtual void Changed() = 0;
  virtual std::string ToRelativeFileName(std::string_view FileName) const = 0;
  virtual std::string FromRelativeFileNAme(std::string_view FileName) const = 0;
};

// Calls `Changed` on the project if it is still there.
inline void MarkProjectChanged(const std::weak_ptr<ProjectContext>& project) {
  if (auto locked = project.lock()) locked->Changed();
}

}  // namespace kv
