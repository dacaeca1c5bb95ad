// What ties a comment file to the items it documents. The file itself knows only its format; the
// doc type behind it knows how its moniker is stored, how the root item is loaded and which items
// lie below it. The project gives each comment file of a known doc type a binding; a file without
// one keeps the comments it read and writes them back unchanged.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kavrel/Object.h"

namespace kv {

class INamespaceProvider;
class KVContentFile;
class NamespaceDef;

class ContentBinding {
 public:
  using ItemVisitor = std::function<void(const ObjectPtr& item)>;
  virtual ~ContentBinding() = default;

  // The moniker as a comment file at `path` stores it, and back. By default a moniker that is
  // an absolute file name is stored relative to the comment file's folder; others stay as they are.
  virtual std::string RelativeMoniker(const std::string& moniker, const std::string& path);
  virtual std::string AbsoluteMoniker(const std::string& moniker, const std::string& path);

  // Binds a file that has just been read to its items: loads the root item its moniker names and
  // sets the file's root item; the file then applies its comments to the items. False when the
  // item cannot be found; the file then stays unbound. By default nothing is bound.
  virtual bool Bind(KVContentFile& file);

  // Calls `visit` for `root` and each item below it whose comments the file keeps, depth first,
  // as pages list them. By default the children of the item model.
  virtual void ForEachItem(const ObjectPtr& root, const ItemVisitor& visit);

  // The provider of the doc type's items and the first of its template's namespace definitions;
  // nothing by default, and then comments are never applied to items.
  virtual std::shared_ptr<INamespaceProvider> NamespaceProvider() { return nullptr; }
  virtual std::shared_ptr<NamespaceDef> RootNamespaceDef() { return nullptr; }
  // The provider of the items of one definition below the root.
  virtual std::shared_ptr<INamespaceProvider> ProviderOf(const NamespaceDef&) { return NamespaceProvider(); }
};

}  // namespace kv
