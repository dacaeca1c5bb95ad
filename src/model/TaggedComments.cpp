#include "kavrel/model/TaggedComments.h"

#include "files/UnicodeHelpers.h"
#include "kavrel/Failure.h"
#include "kavrel/model/Item.h"

namespace kv {

namespace {

bool isNumber(const Variant& v) {
  return v.type() == Variant::Type::Integer || v.type() == Variant::Type::Double;
}

}  // namespace

void TaggedComments::Add(TaggedCommentPtr comment, std::string_view key, std::optional<long> before,
                         std::optional<long> after) {
  if (!comment) throw ObjectNotSet();
  if (mNotKeyed) key = {};
  mItems.Add(comment, key, before, after);
  comment->Key(key);
  if (!comment->Parent()) comment->Parent(mOwner.lock());
}

TaggedCommentPtr TaggedComments::Find(std::string_view key) const {
  if (!mNotKeyed) {
    const TaggedCommentPtr* found = mItems.Find(key);
    return found ? *found : nullptr;
  }
  for (const auto& c : mItems)
    if (text::equalsIgnoreCase(c->TagIdentifier(), key)) return c;
  return nullptr;
}

const TaggedCommentPtr& TaggedComments::Item(std::string_view key) const {
  if (!mNotKeyed) return mItems.Item(key);
  for (long i = 1; i <= mItems.Count(); ++i)
    if (text::equalsIgnoreCase(mItems.Item(i)->TagIdentifier(), key)) return mItems.Item(i);
  throw Failure(err::InvalidProcedureCall, "No comment with the key '" + std::string(key) + "'");
}

void TaggedComments::Remove(std::string_view key) {
  if (!mNotKeyed) return mItems.Remove(key);
  for (long i = 1; i <= mItems.Count(); ++i)
    if (text::equalsIgnoreCase(mItems.Item(i)->TagIdentifier(), key)) return mItems.Remove(i);
  throw Failure(err::InvalidProcedureCall, "No comment with the key '" + std::string(key) + "'");
}

Variant TaggedComments::get(std::string_view member) const {
  return commentsTable().get(*this, member);
}
void TaggedComments::set(std::string_view member, const Variant& value) {
  commentsTable().set(*this, member, value);
}
Variant TaggedComments::call(std::string_view member, const Arguments& args) {
  return commentsTable().call(*this, member, args);
}

bool HasTaggedComment(const ObjectPtr& item, std::string_view tag) {
  if (const auto* own = dynamic_cast<const Item*>(item.get()))
    return own->HasTaggedComments() && own->TaggedComments().Find(tag) != nullptr;
  const Variant comments = getOr(item, "TaggedComments");
  if (!comments.isObject() || comments.isNothing()) return false;
  return UnicodeHelpers::CollectionHasKey(comments.toObject(), tag);
}

const MemberTable& TaggedComments::commentsTable() {
  using C = TaggedComments;
  static const MemberTable table = [] {
    MemberTable t;
    t.property<C>("Count", [](const C& c) -> Variant { return c.Count(); });
    t.method<C>("Item", [](C& c, const Arguments& a) -> Variant {
      const Variant& which = MemberTable::arg(a, 0);
      return isNumber(which) ? c.Item(long(which.toInteger())) : c.Item(which.toString());
    });
    t.method<C>("Add", [](C& c, const Arguments& a) -> Variant {
      auto comment = std::dynamic_pointer_cast<TaggedComment>(MemberTable::arg(a, 0).toObject());
      if (!comment) throw Failure(err::TypeMismatch, "Type mismatch");
      const std::string key = a.size() > 1 ? a[1].toString() : std::string();
      // Before and after name positions or keys; empty arguments are left out.
      auto position = [&](size_t i) -> std::optional<long> {
        if (a.size() <= i || a[i].isEmpty()) return std::nullopt;
        if (isNumber(a[i])) return long(a[i].toInteger());
        const auto& target = c.Item(a[i].toString());
        for (long p = 1; p <= c.Count(); ++p)
          if (c.Item(p) == target) return p;
        return std::nullopt;
      };
      c.Add(comment, key, position(2), position(3));
      return {};
    });
    t.method<C>("Remove", [](C& c, const Arguments& a) -> Variant {
      const Variant& which = MemberTable::arg(a, 0);
      if (isNumber(which))
        c.Remove(long(which.toInteger()));
      else
        c.Remove(which.toString());
      return {};
    });
    t.method<C>("Clear", [](C& c, const Arguments&) -> Variant {
      c.Clear();
      return {};
    });
    t.property<C>(
        "CollectionIsNotKeyed_SearchByTagID",
        [](const C& c) -> Variant { return c.CollectionIsNotKeyed_SearchByTagID(); },
        [](C& c, const Variant& v) { c.CollectionIsNotKeyed_SearchByTagID(v.toBool()); });
    return t;
  }();
  return table;
}

}  // namespace kv
