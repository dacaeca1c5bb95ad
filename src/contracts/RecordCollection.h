// The keyed collections a project is made of: an ordinary keyed collection of shared records,
// with `Item`, `Remove`, `Add`, `Count` and enumeration. A tracked collection also holds a weak
// reference to its project and marks it changed when entries come and go.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "kavrel/Collection.h"
#include "kavrel/ProjectContext.h"

namespace kv {

template <class T>
class KeyedCollection {
 public:
  using Ptr = std::shared_ptr<T>;
  virtual ~KeyedCollection() = default;

  const Ptr& Item(long index) const { return mCol.Item(index); }
  const Ptr& Item(std::string_view key) const { return mCol.Item(key); }
  long Count() const { return mCol.Count(); }
  bool Exists(std::string_view key) const { return mCol.Exists(key); }

  // An empty key adds the item without one; a duplicate key fails.
  void Add(Ptr item, std::string_view key = {}, std::optional<long> before = {}, std::optional<long> after = {}) {
    mCol.Add(item, key, before, after);
    Added(*item);
  }
  void Remove(long index) {
    Ptr gone = mCol.Item(index);
    mCol.Remove(index);
    Removed(*gone);
  }
  void Remove(std::string_view key) {
    Ptr gone = mCol.Item(key);
    mCol.Remove(key);
    Removed(*gone);
  }

  auto begin() const { return mCol.begin(); }
  auto end() const { return mCol.end(); }

 protected:
  virtual void Added(const T&) {}
  virtual void Removed(const T&) {}
  // The inner collection, for changes that must not mark the project.
  Collection<Ptr> mCol;
};

template <class T>
class TrackedCollection : public KeyedCollection<T> {
 public:
  std::weak_ptr<ProjectContext> KVProject;

 protected:
  void Added(const T& item) override {
    if (MarksChange(item)) MarkProjectChanged(KVProject);
  }
  void Removed(const T& item) override {
    if (MarksChange(item)) MarkProjectChanged(KVProject);
  }
  virtual bool MarksChange(const T&) const { return true; }
};

}  // namespace kv
