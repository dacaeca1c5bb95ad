// Member wildcards that leave items out of the documentation.
#pragma once

#include <string>

#include "contracts/RecordCollection.h"

namespace kv {

class ExcludeFilter {
 public:
  // A Basic wildcard, or a regular expression when the project's ExcludeFiltersRegExp is on.
  std::string FilterWildCard;
};

class ExcludeFilters : public TrackedCollection<ExcludeFilter> {};

}  // namespace kv
