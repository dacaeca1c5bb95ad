// The ordinary keyed collection that the object model's collections wrap: items in order, each
// with an optional unique key (keys ignore case), positions counted from 1.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Export.h"
#include "kavrel/Failure.h"
#include "kavrel/Text.h"

namespace kv {

template <class T>
class KV_API Collection {
 public:
  using value_type = T;

  long Count() const { return long(mEntries.size()); }

  // Adds `item`; an empty key adds it without one. `before`/`after` are 1-based positions.
  void Add(T item, std::string_view key = {}, std::optional<long> before = {}, std::optional<long> after = {}) {
    if (!key.empty() && Exists(key))
      throw Failure(err::KeyAlreadyExists, "This key is already associated with an element of this collection");
    size_t at = mEntries.size();
    if (before)
      at = checkedIndex(*before);
    else if (after)
      at = checkedIndex(*after) + 1;
    mEntries.insert(mEntries.begin() + long(at), Entry{std::string(key), std::move(item)});
  }
  // Adds `item` before the item with the key `beforeKey`, which must exist.
  void AddBeforeKey(T item, std::string_view key, std::string_view beforeKey) {
    Add(std::move(item), key, indexOf(beforeKey) + 1);
  }

  bool Exists(std::string_view key) const { return findKey(key) != mEntries.end(); }

  T& Item(long index) { return mEntries[checkedIndex(index)].item; }
  const T& Item(long index) const { return mEntries[checkedIndex(index)].item; }
  T& Item(std::string_view key) { return mEntries[indexOf(key)].item; }
  const T& Item(std::string_view key) const { return mEntries[indexOf(key)].item; }
  // The item under `key`, or nullptr.
  const T* Find(std::string_view key) const {
    auto it = findKey(key);
    return it == mEntries.end() ? nullptr : &it->item;
  }
  const std::string& Key(long index) const { return mEntries[checkedIndex(index)].key; }

  void Remove(long index) { mEntries.erase(mEntries.begin() + long(checkedIndex(index))); }
  void Remove(std::string_view key) { mEntries.erase(mEntries.begin() + long(indexOf(key))); }
  void Clear() { mEntries.clear(); }

  struct Entry {
    std::string key;
    T item;
  };
  class iterator {
   public:
    using It = typename std::vector<Entry>::const_iterator;
    explicit iterator(It it) : mIt(it) {}
    const T& operator*() const { return mIt->item; }
    iterator& operator++() {
      ++mIt;
      return *this;
    }
    bool operator!=(const iterator& o) const { return mIt != o.mIt; }
    bool operator==(const iterator& o) const { return mIt == o.mIt; }

   private:
    It mIt;
  };
  iterator begin() const { return iterator(mEntries.begin()); }
  iterator end() const { return iterator(mEntries.end()); }

 private:
  typename std::vector<Entry>::const_iterator findKey(std::string_view key) const {
    return std::find_if(mEntries.begin(), mEntries.end(),
                        [&](const Entry& e) { return !e.key.empty() && text::equalsIgnoreCase(e.key, key); });
  }
  size_t indexOf(std::string_view key) const {
    auto it = findKey(key);
    if (it == mEntries.end())
      throw Failure(err::InvalidProcedureCall, "No item with the key '" + std::string(key) + "'");
    return size_t(it - mEntries.begin());
  }
  size_t checkedIndex(long index) const {
    if (index < 1 || index > long(mEntries.size())) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
    return size_t(index - 1);
  }

  std::vector<Entry> mEntries;
};

}  // namespace kv
