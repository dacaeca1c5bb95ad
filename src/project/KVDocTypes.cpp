#include "project/KVDocTypes.h"

namespace kv {

void KVDocTypes::Populate(KVProject& /*project*/) {
  // Doc types come from the installation's configuration; without definitions there are none.
}

std::vector<KVDocTypes::DocTypePtr> KVDocTypes::PopulatedDocTypes() const {
  std::vector<DocTypePtr> populated;
  for (const auto& docType : mDocTypes)
    if (docType->SomethingToDocument()) populated.push_back(docType);
  return populated;
}

}  // namespace kv
