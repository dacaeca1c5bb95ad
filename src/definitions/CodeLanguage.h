// The code languages the installation knows, each switched on or off.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Collection.h"

namespace kv {

struct CodeLanguage {
  std::string Name;
  std::string Caption;  // for display, such as the heading of an example; the name by default
  bool SwitchedOn = true;
};

class CodeLanguages : public Collection<std::shared_ptr<CodeLanguage>> {};

}  // namespace kv
