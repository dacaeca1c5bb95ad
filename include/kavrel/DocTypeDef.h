// One kind of documentable source, as the configuration defines it.
#pragma once

#include <string>

#include "kavrel/Export.h"

namespace kv {

struct KV_API DocTypeDef {
  std::string Name;          // unique key, such as "kv.cpp"
  std::string Description;   // for display
  std::string PlugInProgID;  // class name of the project plug-in; may be empty
};

}  // namespace kv
