#include "kavrel/Variant.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "kavrel/Failure.h"
#include "kavrel/Text.h"

namespace kv {

Variant Variant::null() {
  Variant v;
  v.mValue = NullValue{};
  return v;
}

Variant::Type Variant::type() const {
  return static_cast<Type>(mValue.index());
}

namespace {

[[noreturn]] void typeMismatch() {
  throw Failure(err::TypeMismatch, "Type mismatch");
}
[[noreturn]] void invalidNull() {
  throw Failure(err::InvalidUseOfNull, "Invalid use of Null");
}

bool parseDouble(std::string_view s, double& out) {
  const std::string t = text::trim(s);
  const char* b = t.data();
  const char* e = b + t.size();
  // One sign, then a digit or a point: from_chars would also take a sign after a "+" and the
  // words for infinity and not-a-number.
  const char* digits = b != e && (*b == '+' || *b == '-') ? b + 1 : b;
  if (digits == e || !(std::isdigit(static_cast<unsigned char>(*digits)) || *digits == '.')) return false;
  if (*b == '+') ++b;  // from_chars takes only a minus
  auto [p, ec] = std::from_chars(b, e, out);
  return ec == std::errc() && p == e;
}

std::string formatDouble(double d) {
  if (std::isfinite(d) && d == std::floor(d) && std::fabs(d) < 1e15) return std::to_string(static_cast<long long>(d));
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.15g", d);
  return buf;
}

}  // namespace

std::string Variant::toString() const {
  switch (type()) {
    case Type::Empty: return {};
    case Type::Null: invalidNull();
    case Type::String: return std::get<std::string>(mValue);
    case Type::Boolean: return std::get<bool>(mValue) ? "True" : "False";
    case Type::Integer: return std::to_string(std::get<std::int64_t>(mValue));
    case Type::Double: return formatDouble(std::get<double>(mValue));
    case Type::Date: {
      const std::time_t t = std::chrono::system_clock::to_time_t(std::get<DateTime>(mValue));
      std::tm tm{};
      localtime_r(&t, &tm);
      char buf[64];
      std::strftime(buf, sizeof buf, "%x %X", &tm);
      return buf;
    }
    case Type::Object: typeMismatch();
  }
  typeMismatch();
}

bool Variant::toBool() const {
  switch (type()) {
    case Type::Empty: return false;
    case Type::Null: invalidNull();
    case Type::Boolean: return std::get<bool>(mValue);
    case Type::Integer: return std::get<std::int64_t>(mValue) != 0;
    case Type::Double: return std::get<double>(mValue) != 0.0;
    case Type::String: {
      const std::string& s = std::get<std::string>(mValue);
      if (text::equalsIgnoreCase(text::trim(s), "True")) return true;
      if (text::equalsIgnoreCase(text::trim(s), "False")) return false;
      double d;
      if (parseDouble(s, d)) return d != 0.0;
      typeMismatch();
    }
    default: typeMismatch();
  }
}

double Variant::toDouble() const {
  switch (type()) {
    case Type::Empty: return 0;
    case Type::Null: invalidNull();
    case Type::Boolean: return std::get<bool>(mValue) ? -1 : 0;
    case Type::Integer: return double(std::get<std::int64_t>(mValue));
    case Type::Double: return std::get<double>(mValue);
    case Type::String: {
      double d;
      if (parseDouble(std::get<std::string>(mValue), d)) return d;
      typeMismatch();
    }
    default: typeMismatch();
  }
}

std::int64_t Variant::toInteger() const {
  if (type() == Type::Integer) return std::get<std::int64_t>(mValue);
  const double d = toDouble();
  if (!std::isfinite(d) || std::fabs(d) > 9.2e18) throw Failure(err::Overflow, "Overflow");
  return static_cast<std::int64_t>(std::nearbyint(d));  // banker's rounding like the classic conversion
}

DateTime Variant::toDate() const {
  if (type() == Type::Date) return std::get<DateTime>(mValue);
  if (type() == Type::Null) invalidNull();
  typeMismatch();
}

ObjectPtr Variant::toObject() const {
  if (type() != Type::Object) throw Failure(err::ObjectRequired, "Object required");
  return std::get<ObjectPtr>(mValue);
}

}  // namespace kv
