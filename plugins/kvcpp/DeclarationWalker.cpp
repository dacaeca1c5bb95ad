#include "DeclarationWalker.h"

#include <cctype>
#include <filesystem>

#include "ClangText.h"
#include "kavrel/CodeColours.h"

namespace kv::cpp {
namespace {

std::string spelling(CXCursor c) {
  return take(clang_getCursorSpelling(c));
}
std::string typeText(CXType t) {
  return t.kind == CXType_Invalid ? std::string() : take(clang_getTypeSpelling(t));
}

bool wordish(const std::string& s) {
  return !s.empty() && (std::isalnum(static_cast<unsigned char>(s[0])) || s[0] == '_' || s[0] == '"' || s[0] == '\'');
}

bool oneOf(const std::string& s, std::initializer_list<const char*> list) {
  for (const char* item : list)
    if (s == item) return true;
  return false;
}

bool needsSpace(const std::string& a, const std::string& b) {
  if (a == "operator") return wordish(b);
  if (b == "(") return !wordish(a) && !oneOf(a, {")", "]", ">", "(", "[", "::", "~", "."});
  if (oneOf(b, {",", ";", ")", "]", "::", "[", ".", "->", "..."})) return false;
  if (oneOf(a, {"(", "[", "::", "~", ".", "->", "!", "<"})) return false;
  if (b == "<") return !wordish(a) && a != ">";
  if (b == ">" || b == ">>") return false;
  if (oneOf(b, {"*", "&", "&&"})) return !wordish(a) && a != ">" && a != ")" && a != "]";
  if (oneOf(a, {"*", "&", "&&"})) return wordish(b);
  return true;
}

bool anonymous(CXCursor c) {
  const std::string name = spelling(c);
  return clang_Cursor_isAnonymous(c) || name.empty() || name.find("(unnamed") != std::string::npos ||
         name.find("(anonymous") != std::string::npos;
}

Access accessOf(CXCursor c) {
  switch (clang_getCXXAccessSpecifier(c)) {
    case CX_CXXPublic: return Access::Public;
    case CX_CXXProtected: return Access::Protected;
    case CX_CXXPrivate: return Access::Private;
    default: return Access::None;
  }
}

// The text of a declaration up to its body: tokens before the first "{" outside parentheses, and
// for a constructor before its initialiser list.
std::vector<Token> headTokens(const std::vector<Token>& tokens, bool constructor) {
  std::vector<Token> head;
  int depth = 0;
  bool closedParameters = false;
  for (const auto& token : tokens) {
    const std::string& t = token.Text;
    if (depth == 0 && t == "{") break;
    if (depth == 0 && constructor && closedParameters && t == ":") break;
    if (t == "(" || t == "[") ++depth;
    if (t == ")" || t == "]") {
      --depth;
      if (depth == 0) closedParameters = true;
    }
    head.push_back(token);
  }
  return head;
}

// The tokens after the first "=" of a parameter: its default.
std::string defaultOf(const std::vector<Token>& tokens) {
  for (size_t i = 0; i < tokens.size(); ++i)
    if (tokens[i].Text == "=") return JoinTokens({tokens.begin() + static_cast<long>(i) + 1, tokens.end()}).Text;
  return {};
}

bool contains(const std::vector<Token>& tokens, const char* word) {
  for (const auto& t : tokens)
    if (t.Text == word) return true;
  return false;
}

bool endsWith(const std::vector<Token>& tokens, const char* a, const char* b) {
  const size_t n = tokens.size();
  return n >= 2 && tokens[n - 2].Text == a && tokens[n - 1].Text == b;
}

bool builtinType(const std::string& keyword) {
  return oneOf(keyword, {"void", "bool", "char", "wchar_t", "char8_t", "char16_t", "char32_t", "short", "int", "long",
                         "signed", "unsigned", "float", "double", "auto"});
}

// The colour of the token at `i`, from its kind and, for a name, whether a parameter list follows.
char colourOf(const std::vector<Token>& tokens, size_t i) {
  const Token& t = tokens[i];
  switch (t.Kind) {
    case CXToken_Keyword: return builtinType(t.Text) ? colour::Type : colour::Keyword;
    case CXToken_Identifier:
      return i + 1 < tokens.size() && tokens[i + 1].Text == "(" ? colour::Function : colour::Plain;
    case CXToken_Literal:  // "1'000" and ".5f" are numbers; u8"text" and L'c' are not
      return std::isdigit(static_cast<unsigned char>(t.Text[0])) || t.Text[0] == '.' ? colour::Number : colour::String;
    case CXToken_Comment: return colour::Comment;
    case CXToken_Punctuation: return t.Text == "{" || t.Text == "}" ? colour::Bracket : colour::Symbol;
  }
  return colour::Plain;
}

struct VisitContext {
  DeclarationWalker* Walker;
  Declaration* Scope;
};

}  // namespace

CodeText JoinTokens(const std::vector<Token>& tokens) {
  CodeText out;
  for (size_t i = 0; i < tokens.size(); ++i) {
    // "operator==(": the operator's name runs into its parameters.
    const bool operatorName = i >= 2 && tokens[i - 2].Text == "operator" && tokens[i].Text == "(";
    if (i && !operatorName && needsSpace(tokens[i - 1].Text, tokens[i].Text)) out.Append(" ", colour::Plain);
    out.Append(tokens[i].Text, colourOf(tokens, i));
  }
  return out;
}

DeclarationWalker::DeclarationWalker(CXTranslationUnit unit, std::function<bool(const std::string&)> documented,
                                     bool plainComments)
    : mUnit(unit), mDocumented(std::move(documented)), mPlainComments(plainComments) {}

void DeclarationWalker::Walk(Declaration& global) {
  VisitChildren(clang_getTranslationUnitCursor(mUnit), global);
}

void DeclarationWalker::VisitChildren(CXCursor cursor, Declaration& scope) {
  VisitContext visit{this, &scope};
  clang_visitChildren(cursor, &DeclarationWalker::VisitChild, &visit);
}

CXChildVisitResult DeclarationWalker::VisitChild(CXCursor cursor, CXCursor, CXClientData data) {
  auto* visit = static_cast<VisitContext*>(data);
  visit->Walker->Visit(cursor, *visit->Scope);
  return CXChildVisit_Continue;
}

bool DeclarationWalker::InDocumentedFile(CXCursor cursor, std::string* fileName, unsigned* line) {
  CXFile file = nullptr;
  unsigned l = 0;
  clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, &l, nullptr, nullptr);
  if (!file) return false;
  auto found = mFiles.find(file);
  if (found == mFiles.end()) {
    std::string name = std::filesystem::path(take(clang_getFileName(file))).lexically_normal().string();
    bool documented = mDocumented(name);
    if (!documented) {
      const std::string real = take(clang_File_tryGetRealPathName(file));
      if (!real.empty() && real != name && mDocumented(real)) {
        documented = true;
        name = real;
      }
    }
    found = mFiles.emplace(file, std::make_pair(documented, name)).first;
  }
  if (fileName) *fileName = found->second.second;
  if (line) *line = l;
  return found->second.first;
}

void DeclarationWalker::Visit(CXCursor cursor, Declaration& scope) {
  const CXCursorKind kind = clang_getCursorKind(cursor);
  switch (kind) {
    case CXCursor_Namespace:
    case CXCursor_LinkageSpec:
    case CXCursor_UnexposedDecl:
    case CXCursor_StructDecl:
    case CXCursor_UnionDecl:
    case CXCursor_ClassDecl:
    case CXCursor_ClassTemplate:
    case CXCursor_ClassTemplatePartialSpecialization:
    case CXCursor_FunctionDecl:
    case CXCursor_FunctionTemplate:
    case CXCursor_CXXMethod:
    case CXCursor_Constructor:
    case CXCursor_Destructor:
    case CXCursor_ConversionFunction:
    case CXCursor_FieldDecl:
    case CXCursor_VarDecl:
    case CXCursor_EnumDecl:
    case CXCursor_TypedefDecl:
    case CXCursor_TypeAliasDecl:
    case CXCursor_TypeAliasTemplateDecl:
    case CXCursor_MacroDefinition: break;
    default: return;
  }
  if (!InDocumentedFile(cursor)) return;
  switch (kind) {
    case CXCursor_Namespace: Namespace(cursor, scope); break;
    // extern "C" blocks (which some versions of libclang do not name) hold declarations of the scope.
    case CXCursor_LinkageSpec:
    case CXCursor_UnexposedDecl: VisitChildren(cursor, scope); break;
    case CXCursor_StructDecl:
    case CXCursor_UnionDecl:
    case CXCursor_ClassDecl:
    case CXCursor_ClassTemplate:
    case CXCursor_ClassTemplatePartialSpecialization: Record(cursor, scope); break;
    case CXCursor_FunctionDecl:
    case CXCursor_FunctionTemplate: {
      const CXCursorKind parentKind = clang_getCursorKind(clang_getCursorSemanticParent(cursor));
      const bool member = parentKind == CXCursor_StructDecl || parentKind == CXCursor_ClassDecl ||
                          parentKind == CXCursor_UnionDecl || parentKind == CXCursor_ClassTemplate ||
                          parentKind == CXCursor_ClassTemplatePartialSpecialization;
      DeclKind as = member ? DeclKind::Method : DeclKind::Function;
      if (kind == CXCursor_FunctionTemplate) {
        const CXCursorKind templated = clang_getTemplateCursorKind(cursor);
        if (templated == CXCursor_Constructor) as = DeclKind::Constructor;
        if (templated == CXCursor_ConversionFunction) as = DeclKind::Conversion;
      }
      Function(cursor, scope, as);
      break;
    }
    case CXCursor_CXXMethod: Function(cursor, scope, DeclKind::Method); break;
    case CXCursor_Constructor: Function(cursor, scope, DeclKind::Constructor); break;
    case CXCursor_Destructor: Function(cursor, scope, DeclKind::Destructor); break;
    case CXCursor_ConversionFunction: Function(cursor, scope, DeclKind::Conversion); break;
    case CXCursor_FieldDecl:
    case CXCursor_VarDecl: {
      const bool member =
          scope.Kind == DeclKind::Class || scope.Kind == DeclKind::Struct || scope.Kind == DeclKind::Union;
      // An out-of-line definition of a static member belongs to its declaration.
      if (!clang_equalCursors(clang_getCursorSemanticParent(cursor), clang_getCursorLexicalParent(cursor))) return;
      Declaration* decl = Add(cursor, scope, member ? DeclKind::Field : DeclKind::Variable);
      if (!decl) return;
      decl->Type = typeText(clang_getCursorType(cursor));
      if (kind == CXCursor_VarDecl && member) decl->Flags |= Static;
      break;
    }
    case CXCursor_EnumDecl: Enum(cursor, scope); break;
    case CXCursor_TypedefDecl:
    case CXCursor_TypeAliasDecl:
    case CXCursor_TypeAliasTemplateDecl: Alias(cursor, scope); break;
    case CXCursor_MacroDefinition: Macro(cursor, scope); break;
    default: break;
  }
}

std::vector<Token> DeclarationWalker::Tokens(CXCursor cursor) const {
  CXToken* tokens = nullptr;
  unsigned count = 0;
  clang_tokenize(mUnit, clang_getCursorExtent(cursor), &tokens, &count);
  std::vector<Token> out;
  out.reserve(count);
  for (unsigned i = 0; i < count; ++i) {
    const CXTokenKind kind = clang_getTokenKind(tokens[i]);
    if (kind == CXToken_Comment) continue;
    out.push_back({take(clang_getTokenSpelling(mUnit, tokens[i])), kind});
  }
  if (tokens) clang_disposeTokens(mUnit, tokens, count);
  return out;
}

std::string DeclarationWalker::FileText(CXFile file) {
  size_t size = 0;
  const char* text = clang_getFileContents(mUnit, file, &size);
  return text ? std::string(text, size) : std::string();
}

Declaration* DeclarationWalker::Add(CXCursor cursor, Declaration& scope, DeclKind kind, std::string name) {
  std::string usr = take(clang_getCursorUSR(cursor));
  if (!usr.empty() && !mSeen.insert(usr).second) return nullptr;
  auto decl = std::make_unique<Declaration>();
  decl->Kind = kind;
  decl->Usr = std::move(usr);
  decl->Name = name.empty() ? spelling(cursor) : std::move(name);
  decl->QualifiedName = scope.QualifiedName.empty() ? decl->Name : scope.QualifiedName + "::" + decl->Name;
  InDocumentedFile(cursor, &decl->File, &decl->Line);
  decl->AccessLevel = accessOf(cursor);
  decl->Code = JoinTokens(headTokens(Tokens(cursor), kind == DeclKind::Constructor));
  const std::string raw = take(clang_Cursor_getRawCommentText(cursor));
  if (!raw.empty()) decl->Comment = ParseDocComment(raw);
  scope.Children.push_back(std::move(decl));
  return scope.Children.back().get();
}

void DeclarationWalker::Namespace(CXCursor cursor, Declaration& scope) {
  if (anonymous(cursor)) return;  // internal to the file that declares it
  const std::string name = spelling(cursor);
  Declaration* ns = scope.Find(DeclKind::Namespace, name);
  if (!ns) {
    auto decl = std::make_unique<Declaration>();
    decl->Kind = DeclKind::Namespace;
    decl->Name = name;
    decl->QualifiedName = scope.QualifiedName.empty() ? name : scope.QualifiedName + "::" + name;
    decl->Usr = take(clang_getCursorUSR(cursor));
    decl->Code.Append("namespace", colour::Keyword);
    decl->Code.Append(" " + decl->QualifiedName, colour::Plain);
    InDocumentedFile(cursor, &decl->File, &decl->Line);
    scope.Children.push_back(std::move(decl));
    ns = scope.Children.back().get();
  }
  if (ns->Comment.empty()) {
    const std::string raw = take(clang_Cursor_getRawCommentText(cursor));
    if (!raw.empty()) ns->Comment = ParseDocComment(raw);
  }
  VisitChildren(cursor, *ns);
}

void DeclarationWalker::Record(CXCursor cursor, Declaration& scope, std::string name) {
  if (!clang_isCursorDefinition(cursor)) return;  // a forward declaration says nothing
  if (name.empty() && anonymous(cursor)) {
    // The members of an anonymous union or struct inside a class are the class's own; one that
    // a typedef names is documented under that name (see Alias).
    if (clang_Cursor_isAnonymousRecordDecl(cursor)) VisitChildren(cursor, scope);
    return;
  }
  const CXCursorKind kind = clang_getCursorKind(cursor);
  DeclKind as = DeclKind::Class;
  const CXCursorKind shape = kind == CXCursor_ClassTemplate || kind == CXCursor_ClassTemplatePartialSpecialization
                                 ? clang_getTemplateCursorKind(cursor)
                                 : kind;
  if (shape == CXCursor_StructDecl) as = DeclKind::Struct;
  if (shape == CXCursor_UnionDecl) as = DeclKind::Union;
  if (kind == CXCursor_ClassTemplatePartialSpecialization) name = take(clang_getCursorDisplayName(cursor));
  Declaration* decl = Add(cursor, scope, as, name);
  if (!decl) return;
  if (oneOf(decl->Code.Text, {"struct", "union", "class"})) decl->Code.Append(" " + decl->Name, colour::Plain);
  TemplateParameters(cursor, *decl);
  struct Bases {
    Declaration* Decl;
  } bases{decl};
  clang_visitChildren(
      cursor,
      [](CXCursor child, CXCursor, CXClientData data) {
        if (clang_getCursorKind(child) != CXCursor_CXXBaseSpecifier) return CXChildVisit_Continue;
        static_cast<Bases*>(data)->Decl->Bases.push_back(
            {typeText(clang_getCursorType(child)), accessOf(child), clang_isVirtualBase(child) != 0});
        return CXChildVisit_Continue;
      },
      &bases);
  VisitChildren(cursor, *decl);
}

void DeclarationWalker::TemplateParameters(CXCursor cursor, Declaration& decl) {
  struct Context {
    DeclarationWalker* Walker;
    Declaration* Decl;
  } context{this, &decl};
  clang_visitChildren(
      cursor,
      [](CXCursor child, CXCursor, CXClientData data) {
        auto* c = static_cast<Context*>(data);
        const CXCursorKind kind = clang_getCursorKind(child);
        if (kind != CXCursor_TemplateTypeParameter && kind != CXCursor_NonTypeTemplateParameter &&
            kind != CXCursor_TemplateTemplateParameter)
          return CXChildVisit_Continue;
        const std::vector<Token> tokens = c->Walker->Tokens(child);
        CppParameter p;
        p.Name = spelling(child);
        if (kind == CXCursor_TemplateTypeParameter) p.Type = tokens.empty() ? "typename" : tokens.front().Text;
        if (kind == CXCursor_NonTypeTemplateParameter) p.Type = typeText(clang_getCursorType(child));
        if (kind == CXCursor_TemplateTemplateParameter) p.Type = "template";
        p.Default = defaultOf(tokens);
        c->Decl->TemplateParameters.push_back(std::move(p));
        return CXChildVisit_Continue;
      },
      &context);
}

void DeclarationWalker::Function(CXCursor cursor, Declaration& scope, DeclKind kind) {
  // An out-of-line definition belongs to the declaration in its class or namespace.
  if (!clang_equalCursors(clang_getCursorSemanticParent(cursor), clang_getCursorLexicalParent(cursor))) return;
  Declaration* decl = Add(cursor, scope, kind);
  if (!decl) return;
  TemplateParameters(cursor, *decl);
  struct Context {
    DeclarationWalker* Walker;
    Declaration* Decl;
  } context{this, decl};
  clang_visitChildren(
      cursor,
      [](CXCursor child, CXCursor, CXClientData data) {
        if (clang_getCursorKind(child) != CXCursor_ParmDecl) return CXChildVisit_Continue;
        auto* c = static_cast<Context*>(data);
        c->Decl->Parameters.push_back(
            {spelling(child), typeText(clang_getCursorType(child)), defaultOf(c->Walker->Tokens(child))});
        return CXChildVisit_Continue;
      },
      &context);

  CXType result = clang_getCursorResultType(cursor);
  if (result.kind == CXType_Invalid) result = clang_getResultType(clang_getCursorType(cursor));
  if (kind != DeclKind::Constructor && kind != DeclKind::Destructor) decl->Type = typeText(result);

  const std::vector<Token> text = headTokens(Tokens(cursor), kind == DeclKind::Constructor);
  unsigned flags = 0;
  if (clang_CXXMethod_isConst(cursor)) flags |= Const;
  if (clang_CXXMethod_isStatic(cursor) || (kind == DeclKind::Function && contains(text, "static"))) flags |= Static;
  if (clang_CXXMethod_isVirtual(cursor)) flags |= Virtual;
  if (clang_CXXMethod_isPureVirtual(cursor)) flags |= PureVirtual;
  if (clang_CXXMethod_isDeleted(cursor) || endsWith(text, "=", "delete")) flags |= Deleted;
  if (clang_CXXMethod_isDefaulted(cursor) || endsWith(text, "=", "default")) flags |= Defaulted;
  if (contains(text, "explicit")) flags |= Explicit;
  if (contains(text, "inline") || clang_Cursor_isFunctionInlined(cursor)) flags |= Inline;
  if (contains(text, "constexpr") || contains(text, "consteval")) flags |= Constexpr;
  if (contains(text, "noexcept")) flags |= Noexcept;
  if (contains(text, "override")) flags |= Override;
  if (contains(text, "final")) flags |= Final;
  if (contains(text, "volatile") && clang_getCursorKind(cursor) == CXCursor_CXXMethod) flags |= Volatile;
  if (decl->Name.rfind("operator", 0) == 0 && decl->Name.size() > 8 &&
      !std::isalnum(static_cast<unsigned char>(decl->Name[8])) && decl->Name[8] != '_')
    flags |= Operator;
  if (kind == DeclKind::Conversion) flags |= Operator;
  decl->Flags = flags;

  std::string signature = "(";
  for (size_t i = 0; i < decl->Parameters.size(); ++i) signature += (i ? ", " : "") + decl->Parameters[i].Type;
  signature += ")";
  if (flags & Const) signature += " const";
  decl->Signature = signature;
}

void DeclarationWalker::Enum(CXCursor cursor, Declaration& scope, std::string name) {
  if (!clang_isCursorDefinition(cursor)) return;
  Declaration* target = &scope;
  const bool unnamed = name.empty() && anonymous(cursor);
  if (!unnamed) {
    Declaration* decl = Add(cursor, scope, DeclKind::Enum, name);
    if (!decl) return;
    if (decl->Code.Text == "enum") decl->Code.Append(" " + decl->Name, colour::Plain);
    decl->Type = typeText(clang_getEnumDeclIntegerType(cursor));
    if (clang_EnumDecl_isScoped(cursor)) decl->Flags |= ScopedEnum;
    target = decl;
  }
  struct Context {
    DeclarationWalker* Walker;
    Declaration* Scope;
    bool Unnamed;
  } context{this, target, unnamed};
  clang_visitChildren(
      cursor,
      [](CXCursor child, CXCursor, CXClientData data) {
        if (clang_getCursorKind(child) != CXCursor_EnumConstantDecl) return CXChildVisit_Continue;
        auto* c = static_cast<Context*>(data);
        // The enumerators of an unnamed enumeration are constants of the enclosing scope.
        Declaration* e = c->Walker->Add(child, *c->Scope, c->Unnamed ? DeclKind::Variable : DeclKind::Enumerator);
        if (!e) return CXChildVisit_Continue;
        e->Type = std::to_string(clang_getEnumConstantDeclValue(child));
        if (c->Unnamed) e->Flags |= Constexpr;
        return CXChildVisit_Continue;
      },
      &context);
}

void DeclarationWalker::Alias(CXCursor cursor, Declaration& scope) {
  const CXType underlying = clang_getTypedefDeclUnderlyingType(cursor);
  // "typedef struct { ... } Name;": the struct is documented under the typedef's name.
  const CXCursor named = clang_getTypeDeclaration(underlying);
  const CXCursorKind namedKind = clang_getCursorKind(named);
  const std::string namedUsr = clang_Cursor_isNull(named) ? std::string() : take(clang_getCursorUSR(named));
  // The compiler may already have named that struct after the typedef, and it was walked so.
  if (!namedUsr.empty() && mSeen.count(namedUsr) && spelling(named) == spelling(cursor)) {
    for (auto& child : scope.Children)
      if (child->Usr == namedUsr && child->Comment.empty()) {
        const std::string raw = take(clang_Cursor_getRawCommentText(cursor));
        if (!raw.empty()) child->Comment = ParseDocComment(raw);
      }
    return;
  }
  if (!clang_Cursor_isNull(named) && anonymous(named) && clang_isCursorDefinition(named) && InDocumentedFile(named)) {
    const std::string name = spelling(cursor);
    const std::string raw = take(clang_Cursor_getRawCommentText(cursor));
    const size_t before = scope.Children.size();
    if (namedKind == CXCursor_EnumDecl) Enum(named, scope, name);
    if (namedKind == CXCursor_StructDecl || namedKind == CXCursor_UnionDecl) Record(named, scope, name);
    if (scope.Children.size() > before) {
      Declaration& made = *scope.Children[before];
      if (made.Comment.empty() && !raw.empty()) made.Comment = ParseDocComment(raw);
      return;
    }
  }
  Declaration* decl = Add(cursor, scope, DeclKind::TypeAlias);
  if (!decl) return;
  decl->Type = typeText(underlying);
  if (clang_getCursorKind(cursor) == CXCursor_TypeAliasTemplateDecl) TemplateParameters(cursor, *decl);
}

void DeclarationWalker::Macro(CXCursor cursor, Declaration& scope) {
  if (clang_Cursor_isMacroBuiltin(cursor)) return;
  const std::vector<Token> tokens = Tokens(cursor);
  const std::string name = spelling(cursor);
  // An include guard documents nothing.
  if (tokens.size() <= 1) {
    for (const char* suffix : {"_H", "_H_", "_H__", "_HPP", "_HPP_", "_INCLUDED", "_INCLUDED_", "_HXX", "_HH"})
      if (name.size() > std::string(suffix).size() &&
          name.compare(name.size() - std::string(suffix).size(), std::string::npos, suffix) == 0)
        return;
  }
  Declaration* decl = Add(cursor, scope, DeclKind::Macro);
  if (!decl) return;
  // The name and its parameter list are one token run: "MAX(a, b)".
  CodeText text;
  text.Append("#define", colour::Preprocessor);
  text.Append(" " + name, colour::Plain);
  size_t i = 1;
  if (clang_Cursor_isMacroFunctionLike(cursor) && i < tokens.size() && tokens[i].Text == "(") {
    std::vector<Token> parameters;
    for (; i < tokens.size(); ++i) {
      parameters.push_back(tokens[i]);
      if (tokens[i].Text == ")") {
        ++i;
        break;
      }
      if (tokens[i].Text != "(" && tokens[i].Text != ",") decl->Parameters.push_back({tokens[i].Text, {}, {}});
    }
    text.Append(JoinTokens(parameters));
  }
  const CodeText body = JoinTokens({tokens.begin() + static_cast<long>(std::min(i, tokens.size())), tokens.end()});
  if (!body.Text.empty()) {
    text.Append(" ", colour::Plain);
    text.Append(body);
  }
  decl->Code = std::move(text);
  decl->Type = body.Text;
  CXFile file = nullptr;
  clang_getExpansionLocation(clang_getCursorLocation(cursor), &file, nullptr, nullptr, nullptr);
  const std::string raw = file ? FindCommentAbove(FileText(file), decl->Line, mPlainComments) : std::string();
  if (!raw.empty()) decl->Comment = ParseDocComment(raw);
}

}  // namespace kv::cpp
