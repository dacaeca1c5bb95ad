// The item kinds of the model, as the kv.cpp plug-in makes them: each keeps where its declaration
// stands and how it reads, reachable by member name ("SourceFileName", "SourceLine",
// "DeclarationText", "DeclarationColours", "CppKind") beside the members of its kind, and its qualified name in C++
// terms ("geo~Point~scale"). The run-time type name stays the kind's own ("Block", "Component").
#pragma once

#include <string>

#include "kavrel/model/Component.h"
#include "kavrel/model/MemberTable.h"

namespace kv::cpp {

struct CppSource {
  virtual ~CppSource() = default;
  std::string File;
  long Line = 0;
  std::string Text;     // the declaration without its body
  std::string Colours;  // a letter of kavrel/CodeColours.h for each byte of Text
  std::string Kind;     // "header", "class", "method", "typedef", "macro", ...
  std::string CppName;  // the qualified name; empty: the kind's own rule
};

template <class Base>
class Cpp : public Base, public CppSource {
 public:
  using Base::Base;

  const MemberTable& memberTable() const override {
    using C = Cpp<Base>;
    static const MemberTable table = [this] {
      MemberTable t(Base::memberTable());
      t.template property<C>("SourceFileName", [](const C& c) -> Variant { return c.File; });
      t.template property<C>("SourceLine", [](const C& c) -> Variant { return c.Line; });
      t.template property<C>("DeclarationText", [](const C& c) -> Variant { return c.Text; });
      t.template property<C>("DeclarationColours", [](const C& c) -> Variant { return c.Colours; });
      t.template property<C>("CppKind", [](const C& c) -> Variant { return c.Kind; });
      return t;
    }();
    return table;
  }
  std::string QualifiedName() const override { return CppName.empty() ? Base::QualifiedName() : CppName; }
};

}  // namespace kv::cpp
