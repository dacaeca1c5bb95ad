// The comments of one item (or the source comments of one comment), keyed by the comment's key,
// usually its tag identifier. Switched to unkeyed, it keeps several comments of one kind side by
// side and finds them by tag identifier, as comment files need.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kavrel/Collection.h"
#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/model/MemberTable.h"
#include "kavrel/model/TaggedComment.h"

namespace kv {

class Item;

class KV_API TaggedComments : public Object {
 public:
  TaggedComments() = default;
  explicit TaggedComments(const std::shared_ptr<Item>& owner) : mOwner(owner) {}

  std::string typeName() const override { return "TaggedComments"; }
  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, const Arguments& args = {}) override;
  bool hasMember(std::string_view member) const override { return commentsTable().has(member); }
  static const MemberTable& commentsTable();

  long Count() const { return mItems.Count(); }
  // Adds `comment` under `key` (none when empty, or when the collection is not keyed) before or
  // after a 1-based position. A comment without a parent takes the collection's owner.
  void Add(TaggedCommentPtr comment, std::string_view key = {}, std::optional<long> before = {},
           std::optional<long> after = {});
  // By 1-based position. Fails with "Subscript out of range" when there is none.
  const TaggedCommentPtr& Item(long index) const { return mItems.Item(index); }
  // By key, or by tag identifier when the collection is not keyed. Fails when there is none.
  const TaggedCommentPtr& Item(std::string_view key) const;
  // The same, with nullptr instead of a failure.
  TaggedCommentPtr Find(std::string_view key) const;
  bool Exists(std::string_view key) const { return Find(key) != nullptr; }
  void Remove(long index) { mItems.Remove(index); }
  void Remove(std::string_view key);
  void Clear() { mItems.Clear(); }

  // The item whose comments these are, or nullptr.
  std::shared_ptr<kv::Item> Owner() const { return mOwner.lock(); }

  bool CollectionIsNotKeyed_SearchByTagID() const { return mNotKeyed; }
  void CollectionIsNotKeyed_SearchByTagID(bool v) { mNotKeyed = v; }

  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

 private:
  Collection<TaggedCommentPtr> mItems;
  std::weak_ptr<kv::Item> mOwner;
  bool mNotKeyed = false;
};

// Whether `item` carries a comment with the key `tag`: read directly from the model's own items,
// by member name from any other object. An object without comments has none.
KV_API bool HasTaggedComment(const ObjectPtr& item, std::string_view tag);

}  // namespace kv
