#include "kavrel/model/ComponentMember.h"

#include "kavrel/model/Component.h"

namespace kv {

const MemberTable& ComponentMember::memberTable() const {
  return componentMemberTable();
}

const MemberTable& ComponentMember::componentMemberTable() {
  using M = ComponentMember;
  static const MemberTable table = [] {
    MemberTable t(documentedItemTable());
    t.property<M>("Component", [](const M& m) -> Variant { return m.OwningComponent(); });
    t.property<M>("Scope", [](const M& m) -> Variant { return m.Scope(); });
    return t;
  }();
  return table;
}

const MemberTable& Variable::memberTable() const {
  return variableTable();
}

const MemberTable& Variable::variableTable() {
  using V = Variable;
  static const MemberTable table = [] {
    MemberTable t(componentMemberTable());
    t.property<V>("TypeText", [](const V& v) -> Variant { return v.TypeText(); });
    t.property<V>("Value", [](const V& v) -> Variant { return v.Value(); });
    t.property<V>("IsConstant", [](const V& v) -> Variant { return v.IsConstant(); });
    return t;
  }();
  return table;
}

}  // namespace kv
