#include "CppItem.h"

#include "kavrel/Text.h"

namespace kv::cpp {

CppItem::CppItem(std::shared_ptr<const Declaration> decl, std::string qualifiedName)
    : mDecl(std::move(decl)), mName(mDecl->Name), mQualifiedName(std::move(qualifiedName)) {}

std::shared_ptr<CppItem> CppItem::Header(std::string file, std::string name) {
  auto item = std::make_shared<CppItem>(std::make_shared<Declaration>(), name);
  item->mFile = std::move(file);
  item->mName = std::move(name);
  return item;
}

std::string CppItem::typeName() const {
  if (!mFile.empty()) return "Component";
  switch (mDecl->Kind) {
    case DeclKind::Function:
    case DeclKind::Method:
    case DeclKind::Constructor:
    case DeclKind::Destructor:
    case DeclKind::Conversion:
    case DeclKind::Macro: return "Block";
    case DeclKind::Field:
    case DeclKind::Variable:
    case DeclKind::Enumerator:
    case DeclKind::TypeAlias: return "Variable";
    case DeclKind::Enum: return "Enumeration";
    default: return "Component";
  }
}

Variant CppItem::get(std::string_view member) const {
  using text::equalsIgnoreCase;
  if (equalsIgnoreCase(member, "Name")) return mName;
  if (equalsIgnoreCase(member, "QualifiedName")) return mQualifiedName;
  if (equalsIgnoreCase(member, "Kind")) return std::string(mFile.empty() ? KindName(mDecl->Kind) : "header");
  if (equalsIgnoreCase(member, "Text")) return mDecl->Text;
  if (equalsIgnoreCase(member, "SourceFileName")) return mFile.empty() ? mDecl->File : mFile;
  if (equalsIgnoreCase(member, "SourceLine")) return long(mDecl->Line);
  if (equalsIgnoreCase(member, "Access")) return std::string(AccessName(mDecl->AccessLevel));
  if (equalsIgnoreCase(member, "Description")) return mDecl->Comment.Brief;
  if (equalsIgnoreCase(member, "IncludeFlag")) return mIncluded;
  if (equalsIgnoreCase(member, "ExcludeFlag")) return !mIncluded;
  return Object::get(member);
}

void CppItem::set(std::string_view member, const Variant& value) {
  if (text::equalsIgnoreCase(member, "IncludeFlag")) {
    mIncluded = value.toBool();
  } else if (text::equalsIgnoreCase(member, "ExcludeFlag")) {
    mIncluded = !value.toBool();
  } else {
    Object::set(member, value);
  }
}

}  // namespace kv::cpp
