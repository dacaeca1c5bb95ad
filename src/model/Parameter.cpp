#include "kavrel/model/Parameter.h"

namespace kv {

const MemberTable& Parameter::memberTable() const {
  return parameterTable();
}

const MemberTable& Parameter::parameterTable() {
  using P = Parameter;
  static const MemberTable table = [] {
    MemberTable t(itemTable());
    t.property<P>("TypeText", [](const P& p) -> Variant { return p.TypeText(); });
    t.property<P>("DefaultValue", [](const P& p) -> Variant { return p.DefaultValue(); });
    t.property<P>("IsOptional", [](const P& p) -> Variant { return p.IsOptional(); });
    t.property<P>("IsByRef", [](const P& p) -> Variant { return p.IsByRef(); });
    t.property<P>("IsParamArray", [](const P& p) -> Variant { return p.IsParamArray(); });
    return t;
  }();
  return table;
}

const MemberTable& GenericArgument::memberTable() const {
  return genericArgumentTable();
}

const MemberTable& GenericArgument::genericArgumentTable() {
  static const MemberTable table = [] {
    MemberTable t(itemTable());
    t.property<GenericArgument>("Constraints", [](const GenericArgument& g) -> Variant { return g.Constraints(); });
    return t;
  }();
  return table;
}

}  // namespace kv
