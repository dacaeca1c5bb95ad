// The named members of one kind of model object, for late binding. Each kind has one table for
// the process, built once from its base kind's table and its own entries; a name that no entry
// has fails with "Object doesn't support this property or method" like any missing member.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/Text.h"

namespace kv {

class KV_API MemberTable {
 public:
  using Getter = std::function<Variant(const Object& self)>;
  using Setter = std::function<void(Object& self, const Variant& value)>;
  using Method = std::function<Variant(Object& self, const Arguments& args)>;
  struct Entry {
    Getter get;
    Setter set;
    Method call;
  };

  MemberTable() = default;
  // A table that starts with every member of `base`; entries added later replace the base's.
  MemberTable(const MemberTable& base) = default;

  // Registration, typed on the kind `T` whose table this is; lambdas without captures fit.
  template <class T>
  MemberTable& property(std::string name, Variant (*get)(const T&), void (*set)(T&, const Variant&) = nullptr) {
    Entry& e = mEntries[std::move(name)];
    e.get = [get](const Object& self) { return get(static_cast<const T&>(self)); };
    if (set) e.set = [set](Object& self, const Variant& v) { set(static_cast<T&>(self), v); };
    return *this;
  }
  // A property that can be written but not read.
  template <class T>
  MemberTable& writeOnly(std::string name, void (*set)(T&, const Variant&)) {
    mEntries[std::move(name)].set = [set](Object& self, const Variant& v) { set(static_cast<T&>(self), v); };
    return *this;
  }
  template <class T>
  MemberTable& method(std::string name, Variant (*call)(T&, const Arguments&)) {
    mEntries[std::move(name)].call = [call](Object& self, const Arguments& a) {
      return call(static_cast<T&>(self), a);
    };
    return *this;
  }

  // Argument `index` (from 0) of a call; fails with "Argument not optional" when it is missing.
  static const Variant& arg(const Arguments& args, std::size_t index);

  const Entry* find(std::string_view name) const {
    auto it = mEntries.find(name);
    return it == mEntries.end() ? nullptr : &it->second;
  }
  bool has(std::string_view name) const { return find(name) != nullptr; }

  // Late binding over the table for `self`. A property called with arguments is read first and
  // then indexed by its `Item` member, so that `Parameters("x")` finds one parameter.
  Variant get(const Object& self, std::string_view name) const;
  void set(Object& self, std::string_view name, const Variant& value) const;
  Variant call(Object& self, std::string_view name, const Arguments& args) const;

 private:
  std::map<std::string, Entry, text::LessIgnoreCase> mEntries;
};

}  // namespace kv
