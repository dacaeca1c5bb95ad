// Strings with optional keys that ignore case: the parameters of a template tag, the result of a
// parameter list, the values of a text substitution.
#pragma once

#include <string>

#include "kavrel/Collection.h"

namespace kv {

using StringCollection = Collection<std::string>;

}  // namespace kv
