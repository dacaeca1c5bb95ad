// What the parser finds in the headers: a tree of declarations by scope. Namespaces that several
// headers reopen are one declaration; every other declaration keeps the file and line where it
// is declared.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DocComment.h"

namespace kv::cpp {

// Declaration text with its colours, one letter of kavrel/CodeColours.h for each byte.
struct CodeText {
  std::string Text;
  std::string Colours;
  // Adds `text` in one colour; blanks keep their own letter.
  void Append(std::string_view text, char colour);
  void Append(const CodeText& more);
};

enum class DeclKind {
  Namespace,
  Class,
  Struct,
  Union,
  Function,  // a free function
  Method,
  Constructor,
  Destructor,
  Conversion,  // a conversion operator
  Field,
  Variable,
  Enum,
  Enumerator,
  TypeAlias,  // typedef or using
  Macro,
};

enum class Access { None, Public, Protected, Private };

// Qualifiers of functions and variables, as bits.
enum DeclFlag : unsigned {
  Const = 1,
  Static = 2,
  Virtual = 4,
  PureVirtual = 8,
  Deleted = 16,
  Defaulted = 32,
  Explicit = 64,
  Inline = 128,
  Constexpr = 256,
  Noexcept = 512,
  Override = 1024,
  Final = 2048,
  Operator = 4096,
  ScopedEnum = 8192,
  Volatile = 16384,
};

struct CppParameter {
  std::string Name;
  std::string Type;     // for a template parameter: "typename", "class", or the type of a value
  std::string Default;  // the default argument's text, if any
};

struct CppBase {
  std::string Type;  // as the declaration writes it: "Base<T>", an alias by its own name
  Access AccessLevel = Access::None;
  bool Virtual = false;
};

struct Declaration {
  DeclKind Kind = DeclKind::Namespace;
  std::string Name;           // "vector", "operator==", "~Widget"
  std::string QualifiedName;  // "std::vector"; functions stay ambiguous, see Signature
  std::string Usr;            // the compiler's unique name: one entity, however often declared
  std::string Signature;      // the parameter types for functions: "(int, const char *)"
  CodeText Code;              // the declaration as a reader sees it, without body or comment
  std::string Type;           // result, field, alias target, enum base or enumerator value
  std::string File;           // absolute
  unsigned Line = 0;
  Access AccessLevel = Access::None;
  unsigned Flags = 0;
  std::vector<CppParameter> Parameters;
  std::vector<CppParameter> TemplateParameters;
  std::vector<CppBase> Bases;
  DocComment Comment;
  std::vector<std::unique_ptr<Declaration>> Children;

  bool Has(DeclFlag flag) const { return (Flags & flag) != 0; }
  bool IsTemplate() const { return !TemplateParameters.empty(); }
  // The child of that kind and name (and signature, for functions), if any.
  Declaration* Find(DeclKind kind, const std::string& name, const std::string& signature = {}) const;
};

const char* KindName(DeclKind kind);
const char* AccessName(Access access);

}  // namespace kv::cpp
