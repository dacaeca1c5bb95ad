// Turns the declarations of one translation unit that lie in the documented files into a tree of
// declarations.
#pragma once

#include <clang-c/Index.h>

#include <functional>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "Declaration.h"

namespace kv::cpp {

// One token of the source as the compiler reads it.
struct Token {
  std::string Text;
  CXTokenKind Kind = CXToken_Punctuation;
};

class DeclarationWalker {
 public:
  // `documented` tells whether a file's declarations are documented.
  DeclarationWalker(CXTranslationUnit unit, std::function<bool(const std::string&)> documented, bool plainComments);

  // Adds what the unit declares to `global`.
  void Walk(Declaration& global);

 private:
  static CXChildVisitResult VisitChild(CXCursor cursor, CXCursor parent, CXClientData data);
  void Visit(CXCursor cursor, Declaration& scope);
  bool InDocumentedFile(CXCursor cursor, std::string* file = nullptr, unsigned* line = nullptr);
  void VisitChildren(CXCursor cursor, Declaration& scope);

  Declaration* Add(CXCursor cursor, Declaration& scope, DeclKind kind, std::string name = {});
  void Namespace(CXCursor cursor, Declaration& scope);
  void Record(CXCursor cursor, Declaration& scope, std::string name = {});
  void Function(CXCursor cursor, Declaration& scope, DeclKind kind);
  void Enum(CXCursor cursor, Declaration& scope, std::string name = {});
  void Alias(CXCursor cursor, Declaration& scope);
  void Macro(CXCursor cursor, Declaration& scope);
  void TemplateParameters(CXCursor cursor, Declaration& decl);

  std::vector<Token> Tokens(CXCursor cursor) const;
  std::string FileText(CXFile file);

  CXTranslationUnit mUnit;
  std::function<bool(const std::string&)> mDocumented;
  bool mPlainComments;
  std::unordered_map<CXFile, std::pair<bool, std::string>> mFiles;  // documented, name
  std::unordered_set<std::string> mSeen;                            // USRs walked
};

// The tokens joined as a reader writes them: "const char* name", "operator==(const T& other)",
// each coloured by its kind.
CodeText JoinTokens(const std::vector<Token>& tokens);

}  // namespace kv::cpp
