// Objects reached by member name: items of the model and plug-in objects. A member that an
// object does not have fails with "Object doesn't support this property or method" (438), which
// callers that expect it catch and drop.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Export.h"
#include "kavrel/Text.h"
#include "kavrel/Variant.h"

namespace kv {

using Arguments = std::vector<Variant>;

class KV_API Object : public std::enable_shared_from_this<Object> {
 public:
  virtual ~Object() = default;

  // The run-time class name, compared ignoring case by `TypeMatch`.
  virtual std::string typeName() const = 0;

  virtual Variant get(std::string_view member) const;
  virtual void set(std::string_view member, const Variant& value);
  virtual Variant call(std::string_view member, const Arguments& args = {});
  // False when the object is known to lack the member, so that a caller probing for an optional
  // member need not pay for a failure. Objects that cannot tell answer true.
  virtual bool hasMember(std::string_view member) const;

 protected:
  [[noreturn]] static void memberMissing(std::string_view member);
};

// True when the run-time class name of `item` equals `typeName`, ignoring case.
KV_API bool TypeMatch(const ObjectPtr& item, std::string_view typeName);
KV_API bool TypeMatch(const Variant& item, std::string_view typeName);
template <class T, class = std::enable_if_t<std::is_base_of_v<Object, T>>>
bool TypeMatch(const std::shared_ptr<T>& item, std::string_view typeName) {
  return TypeMatch(ObjectPtr(item), typeName);
}

// Reads a member and returns `fallback` when the object is absent or lacks the member.
KV_API Variant getOr(const ObjectPtr& object, std::string_view member, Variant fallback = {});

// An object whose members are registered at run time: properties with a getter and an optional
// setter, and methods. Member names ignore case. Plug-ins and tests build their items from it.
class KV_API DynamicObject : public Object {
 public:
  using Getter = std::function<Variant()>;
  using Setter = std::function<void(const Variant&)>;
  using Method = std::function<Variant(const Arguments&)>;

  explicit DynamicObject(std::string typeName) : mTypeName(std::move(typeName)) {}

  std::string typeName() const override { return mTypeName; }
  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, const Arguments& args = {}) override;

  // A stored property: readable and writable, starting with `initial`.
  DynamicObject& field(std::string name, Variant initial = {});
  DynamicObject& property(std::string name, Getter getter, Setter setter = nullptr);
  DynamicObject& method(std::string name, Method method);
  bool hasMember(std::string_view name) const override;

 private:
  struct Property {
    Getter getter;
    Setter setter;
  };
  std::string mTypeName;
  std::map<std::string, Variant, text::LessIgnoreCase> mFields;
  std::map<std::string, Property, text::LessIgnoreCase> mProperties;
  std::map<std::string, Method, text::LessIgnoreCase> mMethods;
};

}  // namespace kv
