#include "kavrel/model/BaseType.h"

namespace kv {

const MemberTable& BaseType::memberTable() const {
  return baseTypeTable();
}

const MemberTable& BaseType::baseTypeTable() {
  static const MemberTable table = [] {
    MemberTable t(itemTable());
    t.property<BaseType>("Access", [](const BaseType& b) -> Variant { return b.Access(); });
    t.property<BaseType>("IsVirtual", [](const BaseType& b) -> Variant { return b.IsVirtual(); });
    return t;
  }();
  return table;
}

}  // namespace kv
