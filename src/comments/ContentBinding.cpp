#include "comments/ContentBinding.h"

#include "host/modMain.h"
#include "kavrel/FileSystem.h"
#include "kavrel/model/Item.h"

namespace kv {

namespace {

bool isAbsolutePath(const std::string& name) {
  return name.starts_with("/");
}

}  // namespace

std::string ContentBinding::RelativeMoniker(const std::string& moniker, const std::string& path) {
  if (!isAbsolutePath(moniker) || path.empty()) return moniker;
  FileSystem file(moniker), base(path);
  return ToRelativeFileName(file, base);
}

std::string ContentBinding::AbsoluteMoniker(const std::string& moniker, const std::string& path) {
  if (moniker.empty() || isAbsolutePath(moniker) || path.empty()) return moniker;
  FileSystem base(path);
  return FromRelativeFileNAme(moniker, base);
}

bool ContentBinding::Bind(KVContentFile&) {
  return true;
}

void ContentBinding::ForEachItem(const ObjectPtr& root, const ItemVisitor& visit) {
  if (!root) return;
  visit(root);
  if (const auto item = std::dynamic_pointer_cast<Item>(root))
    item->ForEachChild([&](const ItemPtr& child) {
      ForEachItem(child, visit);
      return true;
    });
}

}  // namespace kv
