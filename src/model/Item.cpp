#include "kavrel/model/Item.h"

#include "kavrel/Failure.h"
#include "kavrel/model/Component.h"
#include "kavrel/model/Example.h"
#include "kavrel/model/TaggedComments.h"
#include "kavrel/model/vbProject.h"

namespace kv {

namespace {

// Whether `rest` begins with `part` (ignoring case) followed by "~" or its end; `at` moves past
// the part. Compares in place: lookups run once per comment of a comment file.
bool takePart(std::string_view rest, std::size_t& at, std::string_view part) {
  if (rest.size() - at < part.size() || !text::equalsIgnoreCase(rest.substr(at, part.size()), part)) return false;
  at += part.size();
  return at == rest.size() || rest[at] == '~';
}

ItemPtr findNamed(const Item& node, std::string_view name) {
  ItemPtr found;
  node.ForEachChild([&](const ItemPtr& child) {
    found = text::equalsIgnoreCase(child->Name(), name) ? child : findNamed(*child, name);
    return !found;
  });
  return found;
}

}  // namespace

Variant Item::get(std::string_view member) const {
  return memberTable().get(*this, member);
}
void Item::set(std::string_view member, const Variant& value) {
  memberTable().set(*this, member, value);
}
Variant Item::call(std::string_view member, const Arguments& args) {
  return memberTable().call(*this, member, args);
}

const MemberTable& Item::memberTable() const {
  return itemTable();
}

const MemberTable& Item::itemTable() {
  static const MemberTable table = [] {
    MemberTable t;
    t.property<Item>("Name", [](const Item& i) -> Variant { return i.Name(); });
    t.property<Item>("QualifiedName", [](const Item& i) -> Variant { return i.QualifiedName(); });
    t.property<Item>(
        "Description", [](const Item& i) -> Variant { return i.Description(); },
        [](Item& i, const Variant& v) { i.Description(v.toString()); });
    t.property<Item>("TaggedComments", [](const Item& i) -> Variant { return i.TaggedCommentsPtr(); });
    t.property<Item>("HasTaggedComments", [](const Item& i) -> Variant { return i.HasTaggedComments(); });
    t.property<Item>(
        "ExcludeFlag", [](const Item& i) -> Variant { return i.ExcludeFlag(); },
        [](Item& i, const Variant& v) { i.ExcludeFlag(v.toBool()); });
    t.property<Item>(
        "IncludeFlag", [](const Item& i) -> Variant { return i.IncludeFlag(); },
        [](Item& i, const Variant& v) { i.IncludeFlag(v.toBool()); });
    t.property<Item>("IsNew", [](const Item& i) -> Variant { return i.IsNew(); });
    t.property<Item>("Parent", [](const Item& i) -> Variant { return i.Parent(); });
    t.property<Item>("Assembly", [](const Item& i) -> Variant { return i.OwningProject(); });
    return t;
  }();
  return table;
}

std::string Item::QualifiedName() const {
  std::string name = Name();
  if (!mQualifier.empty()) name += "~" + Qualifier();
  if (const ItemPtr parent = Parent()) return parent->QualifiedName() + "~" + name;
  return name;
}

std::shared_ptr<Component> Item::OwningComponent() const {
  for (ItemPtr i = self(); i; i = i->Parent())
    if (auto c = std::dynamic_pointer_cast<Component>(i)) return c;
  return nullptr;
}

std::shared_ptr<vbProject> Item::OwningProject() const {
  for (ItemPtr i = self(); i; i = i->Parent())
    if (auto p = std::dynamic_pointer_cast<vbProject>(i)) return p;
  return nullptr;
}

kv::TaggedComments& Item::TaggedComments() const {
  return *TaggedCommentsPtr();
}

std::shared_ptr<kv::TaggedComments> Item::TaggedCommentsPtr() const {
  if (!mComments) mComments = std::make_shared<kv::TaggedComments>(self());
  return mComments;
}

bool Item::HasTaggedComments() const {
  return mComments && mComments->Count() > 0;
}

bool Item::ForEachChild(const Visitor&) const {
  return true;
}

ItemPtr Item::FindByQualifiedName(std::string_view name) const {
  const std::string own = QualifiedName();
  if (text::equalsIgnoreCase(own, name)) return self();
  std::size_t at = 0;
  if (!takePart(name, at, own) || at == name.size()) return nullptr;
  return FindByPath(name.substr(at + 1));
}

ItemPtr Item::FindByName(std::string_view name) const {
  if (text::equalsIgnoreCase(Name(), name)) return self();
  return findNamed(*this, name);
}

ItemPtr Item::FindByPath(std::string_view rest) const {
  ItemPtr found;
  ForEachChild([&](const ItemPtr& child) {
    found = FollowPath(child, rest);
    return !found;
  });
  return found;
}

ItemPtr Item::FollowPath(const ItemPtr& child, std::string_view rest) {
  std::size_t at = 0;
  if (!takePart(rest, at, child->Name())) return nullptr;
  if (!child->Qualifier().empty() && (at == rest.size() || !takePart(rest, ++at, child->Qualifier()))) return nullptr;
  return at == rest.size() ? child : child->FindByPath(rest.substr(at + 1));
}

void Item::Adopt(Item& child) {
  ItemPtr me = self();
  if (!me) throw Failure(err::InvalidProcedureCall, "An item takes children only once it is held by a shared pointer");
  child.mParent = me;
}

ItemPtr Item::self() const {
  return std::const_pointer_cast<Item>(std::static_pointer_cast<const Item>(weak_from_this().lock()));
}

const MemberTable& DocumentedItem::memberTable() const {
  return documentedItemTable();
}

const MemberTable& DocumentedItem::documentedItemTable() {
  static const MemberTable table = [] {
    MemberTable t(itemTable());
    t.property<DocumentedItem>(
        "TaggedDescription", [](const DocumentedItem& i) -> Variant { return i.TaggedDescription(); },
        [](DocumentedItem& i, const Variant& v) { i.TaggedDescription(v.toString()); });
    t.property<DocumentedItem>("Examples", [](const DocumentedItem& i) -> Variant { return i.ExamplesPtr(); });
    return t;
  }();
  return table;
}

kv::Examples& DocumentedItem::Examples() const {
  return *ExamplesPtr();
}

std::shared_ptr<kv::Examples> DocumentedItem::ExamplesPtr() const {
  if (!mExamples) mExamples = std::make_shared<kv::Examples>();
  return mExamples;
}

bool DocumentedItem::HasExamples() const {
  return mExamples && mExamples->Count() > 0;
}

}  // namespace kv
