#include "kavrel/model/MemberTable.h"

#include "kavrel/Failure.h"

namespace kv {

namespace {
[[noreturn]] void missing(std::string_view name) {
  throw Failure(err::MemberNotSupported, "Object doesn't support this property or method '" + std::string(name) + "'");
}
}  // namespace

const Variant& MemberTable::arg(const Arguments& args, std::size_t index) {
  if (index >= args.size()) throw Failure(err::ArgumentNotOptional, "Argument not optional");
  return args[index];
}

Variant MemberTable::get(const Object& self, std::string_view name) const {
  const Entry* e = find(name);
  if (e && e->get) return e->get(self);
  // A method without arguments reads like a property.
  if (e && e->call) return e->call(const_cast<Object&>(self), {});
  missing(name);
}

void MemberTable::set(Object& self, std::string_view name, const Variant& value) const {
  const Entry* e = find(name);
  if (!e || !e->set) missing(name);
  e->set(self, value);
}

Variant MemberTable::call(Object& self, std::string_view name, const Arguments& args) const {
  const Entry* e = find(name);
  if (e && e->call) return e->call(self, args);
  if (!e || !e->get) missing(name);
  Variant value = e->get(self);
  if (args.empty()) return value;
  // `Parameters("x")`: the list the property returns, indexed.
  if (!value.isObject() || value.isNothing()) missing(name);
  return value.toObject()->call("Item", args);
}

}  // namespace kv
