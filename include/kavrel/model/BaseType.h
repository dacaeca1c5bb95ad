// A type a component derives from, as its declaration names it: what inheritance links and
// diagrams start from.
#pragma once

#include "kavrel/Export.h"
#include "kavrel/model/Item.h"

namespace kv {

class KV_API BaseType : public Item {
 public:
  using Item::Item;
  std::string typeName() const override { return "BaseType"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& baseTypeTable();

  // "public", "protected" or "private"; empty where the declaration names none and the language
  // has no default.
  const std::string& Access() const { return mAccess.str(); }
  void Access(Atom v) { mAccess = v; }
  // A virtual base: shared by every path of derivation that reaches it.
  bool IsVirtual() const { return flag(kVirtual); }
  void IsVirtual(bool v) { flag(kVirtual, v); }

 private:
  enum : std::uint32_t { kVirtual = kFirstKindFlag };
  Atom mAccess;
};

}  // namespace kv
