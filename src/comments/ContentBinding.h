// What ties a comment file to the items it documents. The file itself knows only its format; the
// doc type behind it knows how its moniker is stored, how the root item is loaded and which items
// lie below it. The project gives each comment file of a known doc type a binding; a file without
// one keeps the comments it read and writes them back unchanged.
#pragma once

#include <functional>
#include <string>

#include "kavrel/Object.h"

namespace kv {

class KVContentFile;

class ContentBinding {
 public:
  using ItemVisitor = std::function<void(const ObjectPtr& item)>;
  virtual ~ContentBinding() = default;

  // The moniker as a comment file at `path` stores it, and back. By default a moniker that is
  // an absolute file name is stored relative to the comment file's folder; others stay as they are.
  virtual std::string RelativeMoniker(const std::string& moniker, const std::string& path);
  virtual std::string AbsoluteMoniker(const std::string& moniker, const std::string& path);

  // Binds a file that has just been read to its items: loads the root item its moniker names,
  // sets the file's root item, and applies what the file's comment document holds. False when
  // the item cannot be found; the file then stays unbound. By default nothing is bound.
  virtual bool Bind(KVContentFile& file);

  // Calls `visit` for `root` and each item below it whose comments the file keeps, depth first,
  // as pages list them. By default the children of the item model.
  virtual void ForEachItem(const ObjectPtr& root, const ItemVisitor& visit);
};

}  // namespace kv
