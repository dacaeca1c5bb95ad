// The value type of late binding: what members of items and plug-in objects take and return.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <variant>

#include "kavrel/Export.h"

namespace kv {

class Object;
using ObjectPtr = std::shared_ptr<Object>;
using DateTime = std::chrono::system_clock::time_point;

class KV_API Variant {
 public:
  enum class Type { Empty, Null, String, Boolean, Integer, Double, Date, Object };

  Variant() = default;  // Empty
  Variant(std::string v) : mValue(std::move(v)) {}
  Variant(const char* v) : mValue(std::string(v)) {}
  Variant(std::string_view v) : mValue(std::string(v)) {}
  Variant(bool v) : mValue(v) {}
  Variant(int v) : mValue(std::int64_t(v)) {}
  Variant(long v) : mValue(std::int64_t(v)) {}
  Variant(long long v) : mValue(std::int64_t(v)) {}
  Variant(double v) : mValue(v) {}
  Variant(DateTime v) : mValue(v) {}
  Variant(ObjectPtr v) : mValue(std::move(v)) {}
  template <class T, class = std::enable_if_t<std::is_base_of_v<Object, T>>>
  Variant(std::shared_ptr<T> v) : mValue(ObjectPtr(std::move(v))) {}

  static Variant null();

  Type type() const;
  bool isEmpty() const { return type() == Type::Empty; }
  bool isNull() const { return type() == Type::Null; }
  bool isObject() const { return type() == Type::Object; }
  // An object value that holds no object ("Nothing").
  bool isNothing() const { return isObject() && !std::get<ObjectPtr>(mValue); }

  // Conversions as the object model converts: Empty reads as "" or 0 or False, Null fails with
  // "Invalid use of Null", booleans read as "True"/"False", "True"/"False" and numbers read as booleans.
  std::string toString() const;
  bool toBool() const;
  std::int64_t toInteger() const;
  double toDouble() const;
  DateTime toDate() const;
  // Fails with "Object required" unless the value is an object (Nothing gives nullptr).
  ObjectPtr toObject() const;

  friend bool operator==(const Variant& a, const Variant& b) { return a.mValue == b.mValue; }

 private:
  struct NullValue {
    friend bool operator==(NullValue, NullValue) { return true; }
  };
  std::variant<std::monostate, NullValue, std::string, bool, std::int64_t, double, DateTime, ObjectPtr> mValue;
};

}  // namespace kv
