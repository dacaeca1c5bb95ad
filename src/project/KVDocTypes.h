// The doc types of a project: one for each doc type the installation defines.
#pragma once

#include <memory>
#include <vector>

#include "contracts/Collection.h"
#include "project/KVDocType.h"

namespace kv {

class KVProject;

class KVDocTypes {
 public:
  using DocTypePtr = std::shared_ptr<KVDocType>;

  // Creates the doc types of the installation with their plug-ins; a doc type whose plug-in
  // cannot be created is left out.
  void Populate(KVProject& project);
  void Add(DocTypePtr docType) { mDocTypes.Add(docType, docType->Name()); }
  long Count() const { return mDocTypes.Count(); }
  const DocTypePtr& Item(long index) const { return mDocTypes.Item(index); }
  const DocTypePtr& Item(std::string_view name) const { return mDocTypes.Item(name); }
  // The doc types whose plug-ins have something to document.
  std::vector<DocTypePtr> PopulatedDocTypes() const;
  void Clear() { mDocTypes.Clear(); }

  auto begin() const { return mDocTypes.begin(); }
  auto end() const { return mDocTypes.end(); }

 private:
  Collection<DocTypePtr> mDocTypes;
};

}  // namespace kv
