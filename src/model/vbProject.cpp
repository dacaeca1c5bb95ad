#include "kavrel/model/vbProject.h"

#include <algorithm>
#include <vector>

#include "kavrel/Failure.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/model/VBProjectGroup.h"

namespace kv {

namespace {

vbProject::DotNetReader& dotNetReader() {
  static vbProject::DotNetReader reader;
  return reader;
}

void clearTree(Item& item) {
  item.TaggedComments().Clear();
  item.Description({});
  if (auto* d = dynamic_cast<DocumentedItem*>(&item)) d->TaggedDescription({});
  item.ForEachChild([](const ItemPtr& child) {
    clearTree(*child);
    return true;
  });
}

std::string paragraph(const std::string& text) {
  return text::startsWithIgnoreCase(text, "<p>") ? text : "<p>" + text + "</p>";
}

}  // namespace

const MemberTable& vbProject::memberTable() const {
  return projectTable();
}

const MemberTable& vbProject::projectTable() {
  using P = vbProject;
  static const MemberTable table = [] {
    MemberTable t(documentedItemTable());
    t.property<P>("Components",
                  [](const P& p) -> Variant { return ItemListView::Of("Components", p, p.Components()); });
    t.property<P>("IsDotNet", [](const P& p) -> Variant { return p.IsDotNet(); });
    t.property<P>("FileName", [](const P& p) -> Variant { return p.FileName(); });
    t.property<P>("Assemblies", [](const P& p) -> Variant { return p.Assemblies(); });
    t.method<P>("GetObjectFromCRef", [](P& p, const Arguments& a) -> Variant {
      return p.GetObjectFromCRef(MemberTable::arg(a, 0).toString());
    });
    t.method<P>("GetObjectByName", [](P& p, const Arguments& a) -> Variant {
      return p.GetObjectByName(MemberTable::arg(a, 0).toString());
    });
    t.method<P>("GetComponent",
                [](P& p, const Arguments& a) -> Variant { return p.FindComponent(MemberTable::arg(a, 0).toString()); });
    t.method<P>("ClearComments", [](P& p, const Arguments&) -> Variant {
      p.ClearComments();
      return {};
    });
    t.method<P>("AppendDescription", [](P&, const Arguments& a) -> Variant {
      std::string description = MemberTable::arg(a, 0).toString(), text = MemberTable::arg(a, 1).toString();
      return AppendDescription(description, text, a.size() > 2 ? long(a[2].toInteger()) : 0);
    });
    t.method<P>("AddTaggedComment", [](P&, const Arguments& a) -> Variant {
      auto comments = std::dynamic_pointer_cast<kv::TaggedComments>(MemberTable::arg(a, 0).toObject());
      auto comment = std::dynamic_pointer_cast<TaggedComment>(MemberTable::arg(a, 1).toObject());
      if (!comments || !comment) throw Failure(err::TypeMismatch, "Type mismatch");
      AddTaggedComment(*comments, comment, a.size() > 2 && a[2].toBool(), a.size() > 3 && a[3].toBool());
      return {};
    });
    return t;
  }();
  return table;
}

std::shared_ptr<Component> vbProject::AddComponent(Atom name, Atom kind) {
  auto c = std::make_shared<Component>(name);
  c->ComponentKind(kind);
  Add(c);
  return c;
}

void vbProject::Add(std::shared_ptr<Component> component) {
  Adopt(*component);
  mComponentIndex.clear();
  mComponents.push_back(std::move(component));
}

std::shared_ptr<Component> vbProject::FindComponent(std::string_view name) const {
  return FindNamed(mComponents, name);
}

ItemPtr vbProject::GetObjectFromCRef(std::string_view cref) const {
  char kind = 0;
  if (cref.size() > 2 && cref[1] == ':') {
    kind = cref[0];
    cref.remove_prefix(2);
  }
  if (const auto open = cref.find('('); open != std::string_view::npos) cref = cref.substr(0, open);
  for (const auto& c : mComponents) {
    const std::string full = c->DotNetName();
    const std::string_view name = std::string_view(full).substr(full.find(':') + 1);
    if (text::equalsIgnoreCase(cref, name)) return c;
    if (cref.size() <= name.size() || cref[name.size()] != '.' || !text::startsWithIgnoreCase(cref, name)) continue;
    const std::string_view member = cref.substr(name.size() + 1);
    if (member == "#ctor") {
      for (const auto& b : c->Blocks())
        if (b->BlockType() == BlockType::Constructor) return b;
    } else if (kind == 'P') {
      // A property is its group rather than one of its accessors.
      if (auto group = FindNamed(c->PropertyGroups(), member)) return group;
    }
    if (ItemPtr m = c->FindMember(member)) return m;
  }
  return nullptr;
}

ItemPtr vbProject::GetObjectByName(std::string_view name) const {
  if (auto c = FindComponent(name)) return c;
  if (const auto dot = name.find('.'); dot != std::string_view::npos)
    if (auto c = FindComponent(name.substr(0, dot)))
      if (ItemPtr m = c->FindMember(name.substr(dot + 1))) return m;
  return FindByName(name);
}

std::shared_ptr<kv::Assemblies> vbProject::Assemblies() const {
  auto group = std::dynamic_pointer_cast<VBProjectGroup>(Parent());
  return group ? group->Assemblies() : nullptr;
}

void vbProject::ClearComments() {
  clearTree(*this);
}

std::string vbProject::AppendDescription(std::string& description, std::string& text, long wrap) {
  if (description.empty() && text.empty()) return {};
  // An empty addition still separates what is joined to it later.
  if (text.empty()) text = " ";
  if (description.empty())
    description = wrap == 3 ? paragraph(text) : text;
  else if (wrap == 2)
    description += "<crlf>" + text;
  else if (wrap == 3)
    description += paragraph(text);
  else
    description += " " + text;
  return description;
}

void vbProject::AddTaggedComment(kv::TaggedComments& comments, const TaggedCommentPtr& comment, bool isBuffer,
                                 bool preserveOriginalTaggedComments) {
  if (!comment) throw ObjectNotSet();
  if (!isBuffer) comment->BufferComment(false);
  const auto def = comment->TaggedCommentDef();
  bool preserve = preserveOriginalTaggedComments;
  if (def && ((def->MergeInBuffer && isBuffer) || def->CommentFlags.find('h') == std::string::npos)) preserve = true;
  std::string key = comment->TagIdentifier();
  if (def && isBuffer && !comment->Qualifier().empty()) key += ":" + comment->Qualifier();
  if (def && text::equalsIgnoreCase(def->TagIdentifier, "##EXCLUDE"))
    // A comment that does not know its item yet belongs to the collection's.
    if (const ItemPtr owner = comment->Parent() ? comment->Parent() : comments.Owner()) {
      owner->ExcludeFlag(true);
      owner->IncludeFlag(false);
    }
  if (const TaggedCommentPtr existing = comments.Find(key); existing && !preserve) {
    std::string description = existing->Description(), text = comment->Description();
    existing->Description(AppendDescription(description, text, def ? def->WrapType : 0));
    return;
  }
  comments.Add(comment, preserve ? std::string_view() : std::string_view(key));
}

ItemPtr vbProject::FindByPath(std::string_view rest) const {
  if (mComponentIndex.empty())
    for (std::size_t i = 0; i < mComponents.size(); ++i)
      mComponentIndex.emplace(text::toLower(mComponents[i]->Name()), i);
  const auto [from, to] = mComponentIndex.equal_range(text::toLower(rest.substr(0, rest.find('~'))));
  std::vector<std::size_t> namesakes;
  for (auto it = from; it != to; ++it) namesakes.push_back(it->second);
  std::sort(namesakes.begin(), namesakes.end());  // the first in the project wins, as in a walk
  for (const std::size_t i : namesakes)
    if (ItemPtr found = FollowPath(mComponents[i], rest)) return found;
  return nullptr;
}

bool vbProject::ForEachChild(const Visitor& visit) const {
  for (const auto& c : mComponents)
    if (!visit(c)) return false;
  return true;
}

void vbProject::SetDotNetReader(DotNetReader reader) {
  dotNetReader() = std::move(reader);
}

std::shared_ptr<vbProject> vbProject::LoadDotNet(const std::string& fileName) {
  auto project = std::make_shared<vbProject>();
  project->IsDotNet(true);
  project->FileName(fileName);
  if (dotNetReader()) dotNetReader()(*project, fileName);
  return project;
}

}  // namespace kv
