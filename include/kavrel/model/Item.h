// The base of every item of a model: what each documentable thing has, whatever its kind. A
// plug-in fills items through the typed members below; templates and comment services reach the
// same items by member name through `get`, `set` and `call`, which look the name up in the
// kind's member table. A kind's run-time type name ("Block", "Component") tells kinds apart.
//
// Ownership runs down the tree: a parent holds its children with shared pointers, a child knows
// its parent through a weak pointer. Items are made with std::make_shared (the Add members of
// the kinds do that), since a parent hands out its own shared pointer to its children.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/model/Atom.h"
#include "kavrel/model/MemberTable.h"

namespace kv {

class TaggedComments;
class Examples;
class Component;
class vbProject;

class KV_API Item : public Object {
 public:
  using ItemPtr = std::shared_ptr<Item>;
  using Visitor = std::function<bool(const ItemPtr& child)>;  // return false to stop

  explicit Item(Atom name = {}) : mName(name) {}

  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, const Arguments& args = {}) override;
  bool hasMember(std::string_view member) const override { return memberTable().has(member); }
  // The named members of this kind; a kind that adds members overrides it.
  virtual const MemberTable& memberTable() const;
  static const MemberTable& itemTable();

  const std::string& Name() const { return mName.str(); }
  void Name(Atom name) { mName = name; }
  // Text that tells apart items of one name under one parent (an accessor's kind, an overload's
  // signature); it follows the name in the qualified name.
  const std::string& Qualifier() const { return mQualifier.str(); }
  void Qualifier(Atom qualifier) { mQualifier = qualifier; }
  // The parent's qualified name, "~", the name and, when set, "~" and the qualifier.
  virtual std::string QualifiedName() const;

  const std::string& Description() const { return mDescription; }
  void Description(std::string text) { mDescription = std::move(text); }

  ItemPtr Parent() const { return mParent.lock(); }
  // The nearest item upwards (this one included) that is a component, or a project.
  std::shared_ptr<kv::Component> OwningComponent() const;
  std::shared_ptr<kv::vbProject> OwningProject() const;

  // The item's comments, made on first use.
  kv::TaggedComments& TaggedComments() const;
  std::shared_ptr<kv::TaggedComments> TaggedCommentsPtr() const;
  bool HasTaggedComments() const;

  bool ExcludeFlag() const { return flag(kExclude); }
  void ExcludeFlag(bool v) { flag(kExclude, v); }
  bool IncludeFlag() const { return flag(kInclude); }
  void IncludeFlag(bool v) { flag(kInclude, v); }
  bool IsNew() const { return flag(kNew); }
  void IsNew(bool v) { flag(kNew, v); }

  // Calls `visit` for each child in the order pages list them; stops when it returns false.
  // Returns false when stopped.
  virtual bool ForEachChild(const Visitor& visit) const;
  // The descendant whose qualified name is `name` below this item (this one included), or
  // nullptr. Names are compared ignoring case.
  ItemPtr FindByQualifiedName(std::string_view name) const;
  // The first item, in depth-first order below this one, whose name is `name` (ignoring case).
  ItemPtr FindByName(std::string_view name) const;

  // Makes this item the parent of `child`. This item must be owned by a shared pointer.
  void Adopt(Item& child);

 protected:
  // Bits of the flag word; kinds use the bits from kFirstKindFlag up.
  enum : std::uint32_t {
    kExclude = 1u << 0,
    kInclude = 1u << 1,
    kNew = 1u << 2,
    kFirstKindFlag = 1u << 8,
  };
  bool flag(std::uint32_t bit) const { return (mFlags & bit) != 0; }
  void flag(std::uint32_t bit, bool on) { mFlags = on ? (mFlags | bit) : (mFlags & ~bit); }
  ItemPtr self() const;
  // The item that `rest`, a qualified name below this item, names among the descendants, or
  // nullptr. A kind with many children may override it to look them up faster.
  virtual ItemPtr FindByPath(std::string_view rest) const;
  // `rest` followed from `child` when the child's name (and qualifier) begin it.
  static ItemPtr FollowPath(const ItemPtr& child, std::string_view rest);

 private:
  Atom mName;
  Atom mQualifier;
  std::uint32_t mFlags = kInclude;
  std::weak_ptr<Item> mParent;
  std::string mDescription;
  mutable std::shared_ptr<kv::TaggedComments> mComments;
};

using ItemPtr = std::shared_ptr<Item>;

// An item that shows as a page: it has a description built from its comments and examples.
class KV_API DocumentedItem : public Item {
 public:
  using Item::Item;
  const MemberTable& memberTable() const override;
  static const MemberTable& documentedItemTable();

  const std::string& TaggedDescription() const { return mTaggedDescription; }
  void TaggedDescription(std::string text) { mTaggedDescription = std::move(text); }

  // The item's examples, made on first use.
  kv::Examples& Examples() const;
  std::shared_ptr<kv::Examples> ExamplesPtr() const;
  bool HasExamples() const;

 private:
  std::string mTaggedDescription;
  mutable std::shared_ptr<kv::Examples> mExamples;
};

}  // namespace kv
