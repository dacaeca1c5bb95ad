// Parameters and generic arguments: named parts of a signature, each with its own comments.
#pragma once

#include "kavrel/Export.h"
#include "kavrel/model/Item.h"

namespace kv {

class KV_API Parameter : public Item {
 public:
  using Item::Item;
  Parameter(Atom name, Atom typeText) : Item(name), mTypeText(typeText) {}
  std::string typeName() const override { return "Parameter"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& parameterTable();

  // The declared type as the source spells it ("Integer", "const std::string&").
  const std::string& TypeText() const { return mTypeText.str(); }
  void TypeText(Atom v) { mTypeText = v; }
  const std::string& DefaultValue() const { return mDefaultValue.str(); }
  void DefaultValue(Atom v) { mDefaultValue = v; }
  bool IsOptional() const { return flag(kOptional); }
  void IsOptional(bool v) { flag(kOptional, v); }
  bool IsByRef() const { return flag(kByRef); }
  void IsByRef(bool v) { flag(kByRef, v); }
  bool IsParamArray() const { return flag(kParamArray); }
  void IsParamArray(bool v) { flag(kParamArray, v); }

 private:
  enum : std::uint32_t { kOptional = kFirstKindFlag, kByRef = kFirstKindFlag << 1, kParamArray = kFirstKindFlag << 2 };
  Atom mTypeText, mDefaultValue;
};

class KV_API GenericArgument : public Item {
 public:
  using Item::Item;
  std::string typeName() const override { return "GenericArgument"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& genericArgumentTable();

  // The constraints as the source spells them ("class, new()").
  const std::string& Constraints() const { return mConstraints.str(); }
  void Constraints(Atom v) { mConstraints = v; }

 private:
  Atom mConstraints;
};

}  // namespace kv
