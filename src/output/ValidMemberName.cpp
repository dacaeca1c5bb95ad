// The project's exclude filters applied to a member name.
#include "host/FailureHandler.h"
#include "host/modMain.h"
#include "output/PageGeneration.h"
#include "project/ExcludeFilters.h"
#include "project/KVProject.h"
#include "services/Like.h"

namespace kv {

bool PageGeneration::ValidMemberName(const std::string& Name) {
  // Regular expressions are looked for once per build; without them filters are wildcards.
  if (mProject.ExcludeFiltersRegExp() && !mTriedRegExp) {
    mTriedRegExp = true;
    mUseRegExp = AreRegularExpressionsAvailable();
  }
  const bool regExp = mProject.ExcludeFiltersRegExp() && mUseRegExp;
  for (const auto& filter : *mProject.ExcludeFilters) {
    bool matches = false;
    if (regExp)
      // A pattern that does not compile matches nothing.
      ignoreFailure([&] { matches = RegExpTest(Name, filter->FilterWildCard, false); });
    else
      matches = Like(Name, filter->FilterWildCard);
    if (matches) return false;
  }
  return true;
}

}  // namespace kv
