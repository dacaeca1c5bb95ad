// Children of one kind in the order they were added, and the object through which late binding
// sees them: `Count`, `Item(index or name)` with positions from 1, names ignoring case.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Export.h"
#include "kavrel/Failure.h"
#include "kavrel/model/Item.h"

namespace kv {

template <class T>
using ItemVector = std::vector<std::shared_ptr<T>>;

// The first item of `items` named `name` (ignoring case), or nullptr.
template <class T>
std::shared_ptr<T> FindNamed(const ItemVector<T>& items, std::string_view name) {
  for (const auto& item : items)
    if (item && text::equalsIgnoreCase(item->Name(), name)) return item;
  return nullptr;
}

// The late-bound face of a list that an item owns. It keeps the owner alive while a caller holds
// it and is made on each read, so that lists cost nothing until someone asks for them.
class KV_API ItemListView : public Object {
 public:
  explicit ItemListView(std::string typeName) : mTypeName(std::move(typeName)) {}

  template <class T>
  static std::shared_ptr<ItemListView> Of(std::string typeName, const Item& owner, const ItemVector<T>& items);

  std::string typeName() const override { return mTypeName; }
  Variant get(std::string_view member) const override;
  Variant call(std::string_view member, const Arguments& args = {}) override;

  virtual long Count() const = 0;
  // By 1-based position or by name; fails with "Subscript out of range" or "Invalid procedure
  // call" when there is no such item.
  ItemPtr Item(const Variant& indexOrName) const;

 protected:
  virtual ItemPtr At(long index) const = 0;  // from 0

 private:
  std::string mTypeName;
};

template <class T>
class ItemListViewOf final : public ItemListView {
 public:
  ItemListViewOf(std::string typeName, std::shared_ptr<const kv::Item> owner, const ItemVector<T>& items)
      : ItemListView(std::move(typeName)), mOwner(std::move(owner)), mItems(&items) {}
  long Count() const override { return long(mItems->size()); }

 protected:
  ItemPtr At(long index) const override { return (*mItems)[size_t(index)]; }

 private:
  std::shared_ptr<const kv::Item> mOwner;
  const ItemVector<T>* mItems;
};

template <class T>
std::shared_ptr<ItemListView> ItemListView::Of(std::string typeName, const kv::Item& owner,
                                               const ItemVector<T>& items) {
  // An owner that no shared pointer holds yet is not kept alive, but still seen.
  auto self = std::static_pointer_cast<const kv::Item>(owner.weak_from_this().lock());
  return std::make_shared<ItemListViewOf<T>>(std::move(typeName), std::move(self), items);
}

}  // namespace kv
