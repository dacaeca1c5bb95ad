// What lives inside a component: procedures, properties, events, declarations, enumerations,
// user-defined types and fields, and the members of enumerations and types.
#pragma once

#include "kavrel/Export.h"
#include "kavrel/model/Item.h"

namespace kv {

class KV_API ComponentMember : public DocumentedItem {
 public:
  using DocumentedItem::DocumentedItem;
  const MemberTable& memberTable() const override;
  static const MemberTable& componentMemberTable();

  // The declared scope in capitals as the source language names it ("PUBLIC", "PRIVATE").
  const std::string& Scope() const { return mScope.str(); }
  void Scope(Atom v) { mScope = v; }

 private:
  Atom mScope;
};

// A field of a component, a member of an enumeration or of a user-defined type.
class KV_API Variable : public ComponentMember {
 public:
  using ComponentMember::ComponentMember;
  Variable(Atom name, Atom typeText) : ComponentMember(name), mTypeText(typeText) {}
  std::string typeName() const override { return "Variable"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& variableTable();

  const std::string& TypeText() const { return mTypeText.str(); }
  void TypeText(Atom v) { mTypeText = v; }
  // The initial or constant value as the source spells it; an enumeration member's value.
  const std::string& Value() const { return mValue.str(); }
  void Value(Atom v) { mValue = v; }
  bool IsConstant() const { return flag(kConstant); }
  void IsConstant(bool v) { flag(kConstant, v); }

 private:
  enum : std::uint32_t { kConstant = kFirstKindFlag };
  Atom mTypeText, mValue;
};

}  // namespace kv
