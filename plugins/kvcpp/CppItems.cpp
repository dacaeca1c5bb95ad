#include "CppItems.h"

#include <set>

#include "kavrel/Text.h"

namespace kv::cpp {
namespace {

bool isType(DeclKind k) {
  return k == DeclKind::Class || k == DeclKind::Struct || k == DeclKind::Union;
}
bool isMemberFunction(DeclKind k) {
  return k == DeclKind::Method || k == DeclKind::Constructor || k == DeclKind::Destructor || k == DeclKind::Conversion;
}

// Whether a declaration below a header goes to definition `def`.
bool belongsTo(const Declaration& d, const std::string& def) {
  if (def == defs::Class) return isType(d.Kind);
  if (def == defs::Function) return d.Kind == DeclKind::Function;
  if (def == defs::Enumeration) return d.Kind == DeclKind::Enum;
  if (def == defs::Typedef) return d.Kind == DeclKind::TypeAlias;
  if (def == defs::Macro) return d.Kind == DeclKind::Macro;
  if (def == defs::Variable) return d.Kind == DeclKind::Variable;
  return false;
}

void files(const Declaration& scope, std::set<std::string>& out) {
  for (const auto& child : scope.Children) {
    if (child->Kind == DeclKind::Namespace)
      files(*child, out);
    else
      out.insert(child->File);
  }
}

}  // namespace

CppItems::CppItems(std::shared_ptr<const ParseResult> parsed,
                   const std::function<std::string(const std::string&)>& relativeName)
    : mParsed(std::move(parsed)) {
  std::set<std::string> declaring;
  files(*mParsed->Global, declaring);
  // Headers in the order of their names; a file that declares nothing has no page.
  for (const auto& file : mParsed->Files)
    if (declaring.count(file)) mHeaders.push_back(CppItem::Header(file, relativeName(file)));
}

std::shared_ptr<CppItem> CppItems::ItemOf(const Declaration& decl) {
  auto& item = mItems[&decl];
  if (!item)
    item = std::make_shared<CppItem>(std::shared_ptr<const Declaration>(mParsed, &decl),
                                     text::replaceAll(decl.QualifiedName, "::", "~"));
  return item;
}

void CppItems::Collect(const Declaration& scope, const std::string& file, const std::string& def,
                       std::vector<ObjectPtr>& out) {
  for (const auto& child : scope.Children) {
    if (child->Kind == DeclKind::Namespace) {
      Collect(*child, file, def, out);
      continue;
    }
    if (child->File != file) continue;
    if (belongsTo(*child, def)) out.push_back(ItemOf(*child));
    // Nested types and enumerations are listed with the header, under their qualified names.
    if (isType(child->Kind)) Collect(*child, file, def == defs::Class || def == defs::Enumeration ? def : "", out);
  }
}

std::vector<ObjectPtr> CppItems::Items(const std::string& def, const ObjectPtr& parent, const AccessFilter& access) {
  std::vector<ObjectPtr> out;
  if (!parent) {
    if (def == defs::Header) out.assign(mHeaders.begin(), mHeaders.end());
    return out;
  }
  const auto* owner = dynamic_cast<const CppItem*>(parent.get());
  if (!owner) return out;
  if (!owner->File().empty()) {
    Collect(*mParsed->Global, owner->File(), def, out);
    return out;
  }
  const Declaration& scope = *owner->Decl();
  if (!isType(scope.Kind)) return out;
  for (const auto& child : scope.Children) {
    const bool function = isMemberFunction(child->Kind);
    const bool field = child->Kind == DeclKind::Field;
    if (!function && !field) continue;
    const Access a = child->AccessLevel;
    const bool shown = a == Access::Public || a == Access::None || (a == Access::Protected && access.Protected);
    if (def == defs::Method  ? function && shown
        : def == defs::Field ? field && shown
                             : def == defs::Private && a == Access::Private && access.Private)
      out.push_back(ItemOf(*child));
  }
  return out;
}

std::shared_ptr<CppItem> CppItems::Find(const std::string& qualifiedName) {
  for (const auto& header : mHeaders)
    if (header->QualifiedName() == qualifiedName) return header;
  const std::string wanted = text::replaceAll(qualifiedName, "~", "::");
  // Walks the scopes along the name; the first of overloads answers.
  const Declaration* scope = mParsed->Global.get();
  std::string rest = wanted;
  while (scope) {
    const size_t sep = rest.find("::");
    const std::string head = rest.substr(0, sep);
    const Declaration* next = nullptr;
    for (const auto& child : scope->Children)
      if (child->Name == head) {
        next = child.get();
        break;
      }
    if (!next || sep == std::string::npos) return next && next->Kind != DeclKind::Namespace ? ItemOf(*next) : nullptr;
    scope = next;
    rest = rest.substr(sep + 2);
  }
  return nullptr;
}

std::string CppItems::DefinitionOf(const CppItem& item) {
  if (!item.File().empty()) return defs::Header;
  const Declaration& d = *item.Decl();
  if (isMemberFunction(d.Kind)) return d.AccessLevel == Access::Private ? defs::Private : defs::Method;
  if (d.Kind == DeclKind::Field) return d.AccessLevel == Access::Private ? defs::Private : defs::Field;
  for (const char* def : {defs::Class, defs::Function, defs::Enumeration, defs::Typedef, defs::Macro, defs::Variable})
    if (belongsTo(d, def)) return def;
  return {};
}

}  // namespace kv::cpp
