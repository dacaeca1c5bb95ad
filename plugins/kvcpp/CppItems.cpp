#include "CppItems.h"

#include <set>

#include "kavrel/Text.h"
#include "kavrel/model/TaggedComments.h"

namespace kv::cpp {
namespace {

bool isType(DeclKind k) {
  return k == DeclKind::Class || k == DeclKind::Struct || k == DeclKind::Union;
}
bool isFunction(DeclKind k) {
  return k == DeclKind::Function || k == DeclKind::Method || k == DeclKind::Constructor || k == DeclKind::Destructor ||
         k == DeclKind::Conversion;
}

const CppSource* sourceOf(const Object* item) {
  return dynamic_cast<const CppSource*>(item);
}
std::string kindOf(const Object* item) {
  const CppSource* s = sourceOf(item);
  return s ? s->Kind : std::string();
}

std::string scopeOf(Access a) {
  return a == Access::Private ? "PRIVATE" : a == Access::Protected ? "PROTECTED" : "PUBLIC";
}

template <class T>
void place(T& item, const Declaration& d, bool overloaded = false) {
  item.File = d.File;
  item.Line = long(d.Line);
  item.Text = d.Code.Text;
  item.Colours = d.Code.Colours;
  item.Kind = KindName(d.Kind);
  // The qualified name names the item's page too: angle brackets of template arguments become
  // square ones, which file systems, links and the HTML Help compiler all take as they are.
  std::string name = text::replaceAll(d.QualifiedName, "::", "~") + (overloaded ? "~" + d.Signature : "");
  for (char& c : name)
    if (c == '<')
      c = '[';
    else if (c == '>')
      c = ']';
  item.CppName = std::move(name);
}

void files(const Declaration& scope, std::set<std::string>& out) {
  for (const auto& child : scope.Children) {
    if (child->Kind == DeclKind::Namespace)
      files(*child, out);
    else
      out.insert(child->File);
  }
}

std::string templateParameter(const CppParameter& p) {
  return p.Type + (p.Default.empty() ? "" : " = " + p.Default);
}

}  // namespace

CppItems::CppItems(const ParseResult& parsed, const std::string& projectName,
                   const std::function<std::string(const std::string&)>& relativeName,
                   std::shared_ptr<const TaggedCommentDefs> commentDefs)
    : mProject(std::make_shared<vbProject>(Atom(projectName))), mCommentDefs(std::move(commentDefs)) {
  std::set<std::string> declaring;
  files(*parsed.Global, declaring);
  // Headers in the order of their names; a file that declares nothing has no page.
  for (const auto& file : parsed.Files) {
    if (!declaring.count(file)) continue;
    auto header = std::make_shared<Cpp<Component>>(Atom(relativeName(file)));
    header->ComponentKind("Header");
    header->SourceFileName(file);
    header->File = file;
    header->Kind = "header";
    // A header in a subfolder keeps its page in the output folder itself: "model/Atom.h" is
    // known as "model~Atom.h", as a scope would be.
    header->CppName = text::replaceAll(header->Name(), "/", "~");
    mProject->Add(header);
    mHeaders.push_back(header);
    mHeaderByFile[file] = header;
  }
  AddScope(*parsed.Global);
}

Component* CppItems::HeaderOf(const std::string& file) const {
  const auto found = mHeaderByFile.find(file);
  return found == mHeaderByFile.end() ? nullptr : found->second.get();
}

void CppItems::AddScope(const Declaration& scope) {
  for (const auto& child : scope.Children) {
    if (child->Kind == DeclKind::Namespace) {
      AddScope(*child);
    } else if (isType(child->Kind)) {
      AddClass(*child);
    } else if (Component* header = HeaderOf(child->File)) {
      AddMember(*header, *child, scope);
    }
  }
}

void CppItems::AddClass(const Declaration& decl) {
  auto c = std::make_shared<Cpp<Component>>(Atom(decl.Name));
  c->ComponentKind(decl.Kind == DeclKind::Struct ? "Struct" : decl.Kind == DeclKind::Union ? "Union" : "Class");
  c->SourceFileName(decl.File);
  const size_t sep = decl.QualifiedName.rfind("::");
  if (sep != std::string::npos) c->QualifiedPrefix(decl.QualifiedName.substr(0, sep));
  place(*c, decl);
  mProject->Add(c);
  mClasses.push_back(c);
  for (const auto& p : decl.TemplateParameters) c->AddGenericArgument(p.Name)->Constraints(templateParameter(p));
  for (const auto& b : decl.Bases) {
    auto base = c->AddBaseType(Atom(b.Type));
    base->Access(AccessName(b.AccessLevel));
    base->IsVirtual(b.Virtual);
  }
  Comment(*c, decl.Comment);
  for (const auto& child : decl.Children) {
    if (isType(child->Kind))
      AddClass(*child);
    else
      AddMember(*c, *child, decl);
  }
}

void CppItems::AddMember(Component& owner, const Declaration& d, const Declaration& scope) {
  if (isFunction(d.Kind) || d.Kind == DeclKind::Macro) {
    size_t sameName = 0;
    for (const auto& sibling : scope.Children) sameName += sibling->Name == d.Name && isFunction(sibling->Kind);
    BlockType type = d.Type.empty() || d.Type == "void" ? BlockType::Sub : BlockType::Function;
    if (d.Kind == DeclKind::Constructor) type = BlockType::Constructor;
    if (d.Has(Operator)) type = BlockType::Operator;
    if (d.Kind == DeclKind::Macro) type = BlockType::Unknown;
    auto b = std::make_shared<Cpp<Block>>(Atom(d.Name), type);
    place(*b, d, sameName > 1);
    if (sameName > 1) b->Qualifier(d.Signature);
    b->ReturnType(d.Kind == DeclKind::Macro ? std::string() : d.Type);
    b->SourceText(d.Code.Text);
    b->Scope(scopeOf(d.AccessLevel));
    owner.Add(b);
    for (const auto& p : d.Parameters) {
      auto parameter = b->AddParameter(p.Name, p.Type);
      parameter->DefaultValue(p.Default);
      parameter->IsOptional(!p.Default.empty());
    }
    for (const auto& p : d.TemplateParameters) b->AddGenericArgument(p.Name)->Constraints(templateParameter(p));
    Comment(*b, d.Comment);
  } else if (d.Kind == DeclKind::Enum) {
    auto e = std::make_shared<Cpp<kv::Enumeration>>(Atom(d.Name));
    place(*e, d);
    e->Scope(scopeOf(d.AccessLevel));
    owner.Add(e);
    for (const auto& child : d.Children) {
      auto member = std::make_shared<Cpp<kv::Variable>>(Atom(child->Name), Atom(d.Type));
      place(*member, *child);
      member->Value(child->Type);
      member->IsConstant(true);
      e->Add(member);
      Comment(*member, child->Comment);
    }
    Comment(*e, d.Comment);
  } else {
    // Fields, variables, constants and type aliases.
    auto v = std::make_shared<Cpp<kv::Variable>>(Atom(d.Name), Atom(d.Type));
    place(*v, d);
    v->Scope(scopeOf(d.AccessLevel));
    if (d.Has(Constexpr)) {
      v->IsConstant(true);
      v->Value(d.Type);
    }
    owner.Add(v);
    Comment(*v, d.Comment);
  }
}

bool CppItems::Defined(const std::string& tag) const {
  if (!mCommentDefs) return false;
  for (const auto& def : *mCommentDefs)
    if (text::equalsIgnoreCase(def->TagIdentifier, tag)) return true;
  return false;
}

void CppItems::Add(Item& item, const std::string& tag, const std::string& text, const std::string& qualifier) {
  if (text.empty()) return;
  auto comment = std::make_shared<TaggedComment>(Atom(tag), text, Atom(qualifier));
  comment->TaggedCommentDefs(mCommentDefs);
  item.TaggedComments().Add(comment, tag);
}

void CppItems::Comment(Item& item, const DocComment& c) {
  if (c.empty()) return;
  std::string remarks = c.Details;
  // A section whose kind the configuration lacks is kept in the remarks.
  const auto section = [&](const char* tag, const std::string& text) {
    if (text.empty()) return;
    if (Defined(tag))
      Add(item, tag, text);
    else
      remarks += "<p>" + text + "</p>";
  };
  if (!c.Brief.empty()) {
    item.Description(c.Brief);
    section("##SUMMARY", c.Brief);
  }
  section("##RETURNS", c.Returns);
  section("##DEPRECATED", c.Deprecated);
  std::string notes, see;
  for (const auto& note : c.Notes) notes += "<p>" + note + "</p>";
  for (const auto& s : c.See) see += (see.empty() ? "" : "<crlf>") + s;
  section("##NOTE", notes);
  section("##SEEALSO", see);

  // Parameters and template parameters carry their own comments.
  const auto* signature = dynamic_cast<const Signature*>(&item);
  const auto* component = dynamic_cast<const kv::Component*>(&item);
  for (const auto& [name, text] : c.Params) {
    ItemPtr target;
    if (signature)
      for (const auto& p : signature->Parameters())
        if (p->Name() == name) target = p;
    if (target && Defined("##PARAM"))
      Add(*target, "##PARAM", text, name);
    else if (!text.empty())
      remarks += "<p><code>" + name + "</code>: " + text + "</p>";
  }
  for (const auto& [name, text] : c.TParams) {
    ItemPtr target;
    const auto& arguments = signature   ? signature->GenericArguments()
                            : component ? component->GenericArguments()
                                        : ItemVector<GenericArgument>();
    for (const auto& a : arguments)
      if (a->Name() == name) target = a;
    if (target && Defined("##TYPEPARAM"))
      Add(*target, "##TYPEPARAM", text, name);
    else if (!text.empty())
      remarks += "<p><code>" + name + "</code>: " + text + "</p>";
  }
  if (!remarks.empty()) Add(item, Defined("##REMARKS") ? "##REMARKS" : "##SUMMARY", remarks);
}

std::vector<ObjectPtr> CppItems::Items(const std::string& def, const ObjectPtr& parent,
                                       const AccessFilter& access) const {
  std::vector<ObjectPtr> out;
  if (!parent) {
    if (def == defs::Header) out.assign(mHeaders.begin(), mHeaders.end());
    return out;
  }
  const auto* owner = dynamic_cast<const Component*>(parent.get());
  if (!owner) return out;
  const std::string ownerKind = kindOf(owner);
  if (ownerKind == "header") {
    const std::string& file = sourceOf(owner)->File;
    if (def == defs::Class)
      for (const auto& c : mClasses)
        if (sourceOf(c.get())->File == file) out.push_back(c);
    if (def == defs::Function || def == defs::Macro)
      for (const auto& b : owner->Blocks())
        if ((kindOf(b.get()) == "macro") == (def == defs::Macro)) out.push_back(b);
    if (def == defs::Enumeration) out.assign(owner->Enumerations().begin(), owner->Enumerations().end());
    if (def == defs::Typedef || def == defs::Variable)
      for (const auto& v : owner->Variables())
        if ((kindOf(v.get()) == "typedef") == (def == defs::Typedef)) out.push_back(v);
    return out;
  }
  const auto shown = [&](const ComponentMember& m) {
    return m.Scope() == "PUBLIC" || (m.Scope() == "PROTECTED" && access.Protected);
  };
  const auto hidden = [&](const ComponentMember& m) { return m.Scope() == "PRIVATE" && access.Private; };
  for (const auto& b : owner->Blocks())
    if ((def == defs::Method && shown(*b)) || (def == defs::Private && hidden(*b))) out.push_back(b);
  for (const auto& v : owner->Variables()) {
    const bool field = kindOf(v.get()) == "field";
    if ((def == defs::Field && field && shown(*v)) || (def == defs::Private && hidden(*v))) out.push_back(v);
  }
  return out;
}

ItemPtr CppItems::Find(const std::string& qualifiedName) const {
  for (const auto& header : mHeaders)
    if (header->Name() == qualifiedName) return header;
  // Qualified names here follow C++ scopes, not the model's parents: every item is looked at.
  ItemPtr found;
  std::function<bool(const ItemPtr&)> visit = [&](const ItemPtr& item) {
    if (text::equalsIgnoreCase(item->QualifiedName(), qualifiedName)) {
      found = item;
      return false;
    }
    return item->ForEachChild(visit);
  };
  mProject->ForEachChild(visit);
  return found;
}

std::string CppItems::DefinitionOf(const Item& item) {
  const std::string kind = kindOf(&item);
  if (kind == "header") return defs::Header;
  if (kind == "class" || kind == "struct" || kind == "union") return defs::Class;
  const auto* member = dynamic_cast<const ComponentMember*>(&item);
  const auto owner = item.Parent();
  const bool inHeader = owner && kindOf(owner.get()) == "header";
  if (!inHeader && member) {
    if (member->Scope() == "PRIVATE") return defs::Private;
    if (kind == "field") return defs::Field;
    if (dynamic_cast<const Block*>(&item)) return defs::Method;
    return {};
  }
  if (kind == "function") return defs::Function;
  if (kind == "macro") return defs::Macro;
  if (kind == "enum") return defs::Enumeration;
  if (kind == "typedef") return defs::Typedef;
  if (kind == "variable") return defs::Variable;
  return {};
}

}  // namespace kv::cpp
