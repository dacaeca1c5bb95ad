#include "Declaration.h"

#include "kavrel/CodeColours.h"

namespace kv::cpp {

void CodeText::Append(std::string_view text, char colour) {
  Text += text;
  for (char c : text) Colours += (c == ' ' || c == '\t' || c == '\r' || c == '\n') ? c : colour;
}

void CodeText::Append(const CodeText& more) {
  Text += more.Text;
  Colours += more.Colours;
}

Declaration* Declaration::Find(DeclKind kind, const std::string& name, const std::string& signature) const {
  for (const auto& child : Children)
    if (child->Kind == kind && child->Name == name && child->Signature == signature) return child.get();
  return nullptr;
}

const char* KindName(DeclKind kind) {
  switch (kind) {
    case DeclKind::Namespace: return "namespace";
    case DeclKind::Class: return "class";
    case DeclKind::Struct: return "struct";
    case DeclKind::Union: return "union";
    case DeclKind::Function: return "function";
    case DeclKind::Method: return "method";
    case DeclKind::Constructor: return "constructor";
    case DeclKind::Destructor: return "destructor";
    case DeclKind::Conversion: return "conversion";
    case DeclKind::Field: return "field";
    case DeclKind::Variable: return "variable";
    case DeclKind::Enum: return "enum";
    case DeclKind::Enumerator: return "enumerator";
    case DeclKind::TypeAlias: return "typedef";
    case DeclKind::Macro: return "macro";
  }
  return "?";
}

const char* AccessName(Access access) {
  switch (access) {
    case Access::None: return "";
    case Access::Public: return "public";
    case Access::Protected: return "protected";
    case Access::Private: return "private";
  }
  return "";
}

}  // namespace kv::cpp
