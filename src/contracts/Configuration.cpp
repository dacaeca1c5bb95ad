#include "contracts/Configuration.h"

namespace kv {

ConfigurationRoot& ConfigurationRoot::instance() {
  static ConfigurationRoot root;
  return root;
}

std::vector<std::shared_ptr<NamespaceDef>> NamespaceDefs::FindByName(std::string_view name) const {
  std::vector<std::shared_ptr<NamespaceDef>> found;
  for (const auto& def : *this) {
    if (text::equalsIgnoreCase(def->Name, name)) found.push_back(def);
    for (auto& below : def->ChildNamespaceDefs.FindByName(name)) found.push_back(std::move(below));
  }
  return found;
}

void NodeDef::ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& /*nodeDefs*/) {
  // Node references are followed by the table of contents builder, which reads them by name.
}

}  // namespace kv
