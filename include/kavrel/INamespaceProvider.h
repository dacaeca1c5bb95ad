// The provider of items for a namespace definition: created by the definition's `Handler` class
// name, one object per handler name and project, shared by all doc types with that handler. A
// provider class derives from `Object` too, so that the class registry can create it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kavrel/Export.h"
#include "kavrel/Object.h"

namespace kv {

class IKVProject;
class NamespaceDef;
class NamespaceDefs;
class DataProvider;
class FileSystem;

// A list of items; nullptr stands for "nothing".
using ItemCollection = std::shared_ptr<std::vector<ObjectPtr>>;

class KV_API INamespaceProvider {
 public:
  virtual ~INamespaceProvider();

  virtual void KVProject(const std::weak_ptr<IKVProject>& project) = 0;
  // The items of a definition below `ParentItem` (nothing for root items). `Parameters` is a
  // comma list such as "forpagegeneration=true" or "forsave=true,includeall=true".
  virtual ItemCollection GetItems(const std::shared_ptr<NamespaceDef>& NamespaceDef, const ObjectPtr& ParentItem,
                                  const std::string& Parameters) = 0;
  // The provider's data object for pages, the table of contents and the index.
  virtual std::shared_ptr<kv::DataProvider> DataProvider() = 0;
  virtual ObjectPtr LoadRootItem(const std::string& Moniker) = 0;
  virtual void SetRootItem(const ObjectPtr& /*Root*/) {}
  virtual ObjectPtr GetItemByQualifiedName(const std::string& Name) = 0;
  // The definitions among `NamespaceDefs` that apply to `Item`.
  virtual std::vector<std::shared_ptr<NamespaceDef>> GetNamespaceDefsOfItem(const ObjectPtr& Item,
                                                                            const kv::NamespaceDefs& NamespaceDefs) = 0;
  // Writes bulk content of the provider's own into the output file, which it may replace. The
  // notifications below do nothing unless a provider has a use for them.
  virtual void StreamContent(std::shared_ptr<FileSystem>& /*OutputFile*/, const std::string& /*ContentType*/) {}
  // The doc type key, such as "kv.cpp".
  virtual std::string GeneratorName() = 0;
  // Told of each output file; support files come with no definition and no item.
  virtual void PageOutput(const std::shared_ptr<NamespaceDef>& /*NamespaceDef*/, const ObjectPtr& /*Item*/,
                          const std::string& /*FileName*/, bool /*Core*/, bool /*Flag*/) {}
  virtual void BeginRootItem(const ObjectPtr& /*Item*/) {}
  virtual void EndRootItem(const ObjectPtr& /*Item*/) {}
  virtual void BeginChildItem(const ObjectPtr& /*RootItem*/, const ObjectPtr& /*Item*/) {}
  virtual void EndChildItem(const ObjectPtr& /*RootItem*/, const ObjectPtr& /*Item*/) {}
  // Asks the user for the new place of an item; empty when there is none.
  virtual std::string BrowseForItem(const std::string& /*Moniker*/) { return {}; }
  virtual bool ItemExists(const std::string& Moniker) = 0;
  // A stable text identifying an item.
  virtual std::string MonikerForItem(const ObjectPtr& Item) = 0;
  // The moniker as stored in a comment file at `Path`, and back.
  virtual std::string RelativeMoniker(const std::string& Moniker, const std::string& Path) = 0;
  virtual std::string AbsoluteMoniker(const std::string& Moniker, const std::string& Path) = 0;
  // The filter for loading an item's content on demand.
  virtual std::string ContentFilterOfItem(const ObjectPtr& Item) = 0;
};

}  // namespace kv
