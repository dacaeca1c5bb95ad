#include "kavrel/model/Block.h"

namespace kv {

const MemberTable& Signature::memberTable() const {
  return signatureTable();
}

const MemberTable& Signature::signatureTable() {
  using S = Signature;
  static const MemberTable table = [] {
    MemberTable t(componentMemberTable());
    t.property<S>("Parameters",
                  [](const S& s) -> Variant { return ItemListView::Of("Parameters", s, s.Parameters()); });
    t.property<S>("HasParameters", [](const S& s) -> Variant { return s.HasParameters(); });
    t.property<S>("GenericArguments",
                  [](const S& s) -> Variant { return ItemListView::Of("GenericArguments", s, s.GenericArguments()); });
    t.property<S>("HasGenericArguments", [](const S& s) -> Variant { return s.HasGenericArguments(); });
    t.property<S>("ReturnType", [](const S& s) -> Variant { return s.ReturnType(); });
    return t;
  }();
  return table;
}

std::shared_ptr<Parameter> Signature::AddParameter(Atom name, Atom typeText) {
  auto p = std::make_shared<Parameter>(name, typeText);
  Add(p);
  return p;
}

void Signature::Add(std::shared_ptr<Parameter> parameter) {
  Adopt(*parameter);
  mParameters.push_back(std::move(parameter));
}

std::shared_ptr<GenericArgument> Signature::AddGenericArgument(Atom name) {
  auto g = std::make_shared<GenericArgument>(name);
  Adopt(*g);
  mGenericArguments.push_back(g);
  return g;
}

bool Signature::ForEachChild(const Visitor& visit) const {
  for (const auto& p : mParameters)
    if (!visit(p)) return false;
  for (const auto& g : mGenericArguments)
    if (!visit(g)) return false;
  return true;
}

const MemberTable& Block::memberTable() const {
  return blockTable();
}

const MemberTable& Block::blockTable() {
  using B = Block;
  static const MemberTable table = [] {
    MemberTable t(signatureTable());
    t.property<B>("BlockType", [](const B& b) -> Variant { return long(b.BlockType()); });
    t.property<B>("IsProperty", [](const B& b) -> Variant { return b.IsProperty(); });
    t.property<B>("IsDelegate", [](const B& b) -> Variant { return b.IsDelegate(); });
    t.property<B>("HiddenFlag", [](const B& b) -> Variant { return b.HiddenFlag(); });
    t.property<B>("ExclusionText", [](const B& b) -> Variant { return b.ExclusionText(); });
    t.property<B>("SourceText", [](const B& b) -> Variant { return b.SourceText(); });
    return t;
  }();
  return table;
}

const MemberTable& DeclareDeclaration::memberTable() const {
  return declareDeclarationTable();
}

const MemberTable& DeclareDeclaration::declareDeclarationTable() {
  using D = DeclareDeclaration;
  static const MemberTable table = [] {
    MemberTable t(signatureTable());
    t.property<D>("LibraryName", [](const D& d) -> Variant { return d.LibraryName(); });
    t.property<D>("Alias", [](const D& d) -> Variant { return d.Alias(); });
    return t;
  }();
  return table;
}

}  // namespace kv
