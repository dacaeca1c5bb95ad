// The binding of a comment file to the items of a doc type: its namespace provider loads the root
// item and finds items by qualified name, and the namespace definitions of its template say which
// items lie below the root.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "comments/ContentBinding.h"

namespace kv {

class ProviderBinding : public ContentBinding {
 public:
  // Finds the provider of a definition's handler, as the project shares them.
  using ProviderLookup = std::function<std::shared_ptr<INamespaceProvider>(const std::string& Handler)>;

  ProviderBinding(std::shared_ptr<INamespaceProvider> provider, std::shared_ptr<NamespaceDef> rootDef,
                  ProviderLookup lookup);

  std::string RelativeMoniker(const std::string& moniker, const std::string& path) override;
  std::string AbsoluteMoniker(const std::string& moniker, const std::string& path) override;
  // Finds the moniker's item (asking the user for its new place when it has gone), hands the
  // file's load filters to the provider and loads the root item.
  bool Bind(KVContentFile& file) override;
  // The root and the items its definitions deliver for saving, depth first; definitions marked
  // "t" are passed over.
  void ForEachItem(const ObjectPtr& root, const ItemVisitor& visit) override;

  std::shared_ptr<INamespaceProvider> NamespaceProvider() override { return mProvider; }
  std::shared_ptr<NamespaceDef> RootNamespaceDef() override { return mRootDef; }
  std::shared_ptr<INamespaceProvider> ProviderOf(const NamespaceDef& def) override;

 private:
  void visitBelow(const ObjectPtr& item, const NamespaceDef& def, const ItemVisitor& visit);

  std::shared_ptr<INamespaceProvider> mProvider;
  std::shared_ptr<NamespaceDef> mRootDef;
  ProviderLookup mLookup;
};

}  // namespace kv
