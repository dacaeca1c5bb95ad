#include "kavrel/Object.h"

#include "kavrel/Failure.h"

namespace kv {

void Object::memberMissing(std::string_view member) {
  throw Failure(err::MemberNotSupported,
                "Object doesn't support this property or method '" + std::string(member) + "'");
}

Variant Object::get(std::string_view member) const {
  memberMissing(member);
}
void Object::set(std::string_view member, const Variant&) {
  memberMissing(member);
}
Variant Object::call(std::string_view member, const Arguments&) {
  memberMissing(member);
}

bool TypeMatch(const ObjectPtr& item, std::string_view typeName) {
  return item && text::equalsIgnoreCase(item->typeName(), typeName);
}

bool TypeMatch(const Variant& item, std::string_view typeName) {
  return item.isObject() && TypeMatch(item.toObject(), typeName);
}

bool Object::hasMember(std::string_view) const {
  return true;
}

Variant getOr(const ObjectPtr& object, std::string_view member, Variant fallback) {
  if (!object || !object->hasMember(member)) return fallback;
  try {
    return object->get(member);
  } catch (const Failure&) {
    return fallback;  // failure ignored: any member may be missing
  }
}

Variant DynamicObject::get(std::string_view member) const {
  if (auto f = mFields.find(member); f != mFields.end()) return f->second;
  if (auto p = mProperties.find(member); p != mProperties.end()) return p->second.getter();
  if (auto m = mMethods.find(member); m != mMethods.end()) return m->second({});
  memberMissing(member);
}

void DynamicObject::set(std::string_view member, const Variant& value) {
  if (auto f = mFields.find(member); f != mFields.end()) {
    f->second = value;
    return;
  }
  if (auto p = mProperties.find(member); p != mProperties.end() && p->second.setter) {
    p->second.setter(value);
    return;
  }
  memberMissing(member);
}

Variant DynamicObject::call(std::string_view member, const Arguments& args) {
  if (auto m = mMethods.find(member); m != mMethods.end()) return m->second(args);
  if (args.empty()) return get(member);
  memberMissing(member);
}

DynamicObject& DynamicObject::field(std::string name, Variant initial) {
  mFields.insert_or_assign(std::move(name), std::move(initial));
  return *this;
}

DynamicObject& DynamicObject::property(std::string name, Getter getter, Setter setter) {
  mProperties.insert_or_assign(std::move(name), Property{std::move(getter), std::move(setter)});
  return *this;
}

DynamicObject& DynamicObject::method(std::string name, Method method) {
  mMethods.insert_or_assign(std::move(name), std::move(method));
  return *this;
}

bool DynamicObject::hasMember(std::string_view name) const {
  return mFields.count(name) || mProperties.count(name) || mMethods.count(name);
}

}  // namespace kv
