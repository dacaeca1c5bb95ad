#include "comments/TaggedCommentServices.h"

#include <algorithm>
#include <vector>

#include "host/FailureHandler.h"
#include "kavrel/Text.h"
#include "kavrel/model/Component.h"
#include "kavrel/model/vbProject.h"

namespace kv::comments {

namespace {

// Replaces each `what` (ASCII) by `with`, matching ASCII letters ignoring case. Byte positions
// stay those of `s`, which lower-casing a whole UTF-8 text would not keep.
std::string replaceIgnoreCase(std::string_view s, std::string_view what, std::string_view with) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
  const auto matchesAt = [&](std::size_t at) {
    for (std::size_t i = 0; i < what.size(); ++i)
      if (lower(s[at + i]) != lower(what[i])) return false;
    return true;
  };
  std::string out;
  std::size_t i = 0;
  while (i < s.size()) {
    if (s.size() - i >= what.size() && matchesAt(i)) {
      out += with;
      i += what.size();
    } else {
      out += s[i++];
    }
  }
  return out;
}

// The item's comment collection, or nullptr for a kind without one.
std::shared_ptr<TaggedComments> commentsOf(const ObjectPtr& obj) {
  if (!obj) return nullptr;
  ObjectPtr col;
  ignoreFailure([&] { col = obj->get("TaggedComments").toObject(); });
  return std::dynamic_pointer_cast<TaggedComments>(col);
}

// Appends `text` to the description member `member` of `item`; false when the kind lacks it.
bool appendTo(Object& item, std::string_view member, std::string text, long wrap) {
  return ignoreFailure([&] {
    std::string description = item.get(member).toString();
    item.set(member, vbProject::AppendDescription(description, text, wrap));
  });
}

// Calls `visit` for each item of the list that the member `member` of `item` reads.
template <class F>
void forEachListed(Object& item, std::string_view member, F&& visit) {
  ObjectPtr list;
  ignoreFailure([&] { list = item.get(member).toObject(); });
  if (const auto items = std::dynamic_pointer_cast<ItemListView>(list))
    for (long i = 1; i <= items->Count(); ++i) visit(items->Item(Variant(i)));
}

template <class T, class F>
void forEach(const ItemVector<T>& items, F&& visit) {
  for (const auto& item : items) visit(item);
}

}  // namespace

void AddTaggedComment(TaggedComments& col, const TaggedCommentPtr& tc, bool IsBuffer,
                      bool PreserveOriginalTaggedComments) {
  vbProject::AddTaggedComment(col, tc, IsBuffer, PreserveOriginalTaggedComments);
}

std::string AppendDescription(std::string& Description, std::string& NewText, long WrapType) {
  return vbProject::AppendDescription(Description, NewText, WrapType);
}

TaggedCommentPtr FindTaggedComment(const TaggedComments* col, std::string_view TagIdentifier) {
  if (!col) return nullptr;
  for (const auto& c : *col)
    if (text::equalsIgnoreCase(c->TagIdentifier(), TagIdentifier)) return c;
  return nullptr;
}

std::shared_ptr<Parameter> GetParameter(const ItemVector<Parameter>* colP, std::string_view Name) {
  return colP ? FindNamed(*colP, Name) : nullptr;
}

std::shared_ptr<TaggedCommentDef> UpgradeTaggedComment(std::string_view TagIdentifier, const TaggedCommentDefs* Defs) {
  if (!Defs) return nullptr;
  std::shared_ptr<TaggedCommentDef> def;
  std::vector<const TaggedCommentDef*> visited;  // a chain that runs in a circle ends where it closes
  for (std::string current(TagIdentifier);;) {
    const auto* found = Defs->Find(current);
    if (!found || !*found || std::find(visited.begin(), visited.end(), found->get()) != visited.end()) break;
    def = *found;
    visited.push_back(def.get());
    current = def->UpgradedTagIdentifier;
    if (current.empty() || def->UpgradeStop) break;
  }
  return def;
}

std::string GetTaggedCommentEx(const ObjectPtr& obj, std::string_view IDs, const TaggedCommentDefs* Defs,
                               const ImageTagCheck& VerifyIMGTags) {
  const auto col = commentsOf(obj);
  if (!col) return {};
  std::string result;
  std::vector<std::string> processed;  // kinds already read: two retired names of one kind read it once
  for (const std::string& id : text::split(IDs, ",")) {
    const auto def = UpgradeTaggedComment(text::trim(id), Defs);
    if (!def) continue;
    const bool seen = std::any_of(processed.begin(), processed.end(),
                                  [&](const std::string& p) { return text::equalsIgnoreCase(p, def->TagIdentifier); });
    if (seen) continue;
    if (const auto c = FindTaggedComment(col.get(), def->TagIdentifier)) result += c->Description();
    processed.push_back(def->TagIdentifier);
  }
  result = replaceIgnoreCase(result, "<crlf>", "<br>");
  if (VerifyIMGTags && text::containsIgnoreCase(result, "<img ")) result = VerifyIMGTags(result);
  return result;
}

void UpdateObjectDescription(const ObjectPtr& item, bool Recurse) {
  if (!item) return;
  ignoreFailure([&] { item->set("TaggedDescription", ""); });
  ignoreFailure([&] { item->set("Description", ""); });
  if (ItemHasTaggedComments(item))
    if (const auto col = commentsOf(item))
      for (const auto& c : *col) {
        const auto def = c->TaggedCommentDef();
        if (!def || !def->AppendToDescription) continue;
        if (!appendTo(*item, "TaggedDescription", c->Description(), def->WrapType))
          appendTo(*item, "Description", c->Description(), def->WrapType);
      }
  if (!Recurse) return;

  const auto visit = [](const ItemPtr& child) { UpdateObjectDescription(child, true); };
  const std::string type = text::toLower(item->typeName());
  if (type == "block" || type == "event" || type == "eventdeclaration" || type == "declaredeclaration") {
    forEachListed(*item, "Parameters", visit);
  } else if (type == "enumeration" || type == "udt" || type == "structure") {
    forEachListed(*item, "Members", visit);
  } else if (type == "component") {
    if (const auto c = std::dynamic_pointer_cast<Component>(item)) {
      forEach(c->Blocks(), visit);
      forEach(c->Enumerations(), visit);
      forEach(c->UDTs(), visit);
      forEach(c->Events(), visit);
      forEach(c->Declarations(), visit);
      forEach(c->Variables(), visit);
      if (c->Block()) forEach(c->Block()->Parameters(), visit);
    }
  } else if (type == "vbproject") {
    forEachListed(*item, "Components", visit);
  }
}

XMLDocument CreateStandardCommentFile(std::string_view ItemType, std::string_view Moniker) {
  XMLDocument doc;
  XMLNode root = doc.RootNode();
  root.Name("KavrelComments");
  // Comment files that the project saves write "5.0"; this one marks a file made from scratch.
  root.SetAttribute("Version", "5.00");
  root.SetAttribute("DocType", ItemType);
  root.SetAttribute("Moniker", Moniker);
  root.SetAttribute("ShowInherited", "False");
  root.SetAttribute("Template", "");
  return doc;
}

bool ItemHasTaggedComments(const ObjectPtr& item) {
  if (!item) return false;
  bool has = false;
  if (ignoreFailure([&] { has = item->get("HasTaggedComments").toBool(); })) return has;
  const auto col = commentsOf(item);
  return col && col->Count() > 0;
}

bool SupportsTaggedComments(const ObjectPtr& obj) {
  return commentsOf(obj) != nullptr;
}

bool IsItemCollection(const ObjectPtr& item) {
  if (TypeMatch(item, "DiagramItem")) {
    bool collection = false;
    ignoreFailure([&] { collection = item->get("IsCollection").toBool(); });
    return collection;
  }
  if (!TypeMatch(item, "Component")) return false;
  if (const auto c = std::dynamic_pointer_cast<Component>(item); c && c->ModuleIsCollection()) return true;
  return FindTaggedComment(commentsOf(item).get(), "##MODULE_IS_COLLECTION") != nullptr;
}

}  // namespace kv::comments
