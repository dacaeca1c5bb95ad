#include "kavrel/NamespaceDef.h"

#include "kavrel/Text.h"

namespace kv {

std::vector<std::shared_ptr<NamespaceDef>> NamespaceDefs::FindByName(std::string_view name) const {
  std::vector<std::shared_ptr<NamespaceDef>> found;
  for (const auto& def : *this) {
    if (text::equalsIgnoreCase(def->Name, name)) found.push_back(def);
    for (auto& below : def->ChildNamespaceDefs.FindByName(name)) found.push_back(std::move(below));
  }
  return found;
}

void NamespaceDef::Prepare() {
  ItemCounter = 0;
  for (const auto& child : ChildNamespaceDefs) child->Prepare();
}

}  // namespace kv
