#include "files/XmlValues.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "kavrel/Failure.h"

namespace kv::xmlvalue {
namespace {

long toLong(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= double(std::numeric_limits<std::int32_t>::min()) &&
        rounded <= double(std::numeric_limits<std::int32_t>::max())))
    throw Failure(err::Overflow, "Overflow");
  return long(rounded);
}

std::string_view trimBlanks(std::string_view s) {
  const size_t first = s.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(" \t") - first + 1);
}

}  // namespace

long Strict(std::string_view s) {
  s = trimBlanks(s);
  if (!s.empty() && s.front() == '+') s.remove_prefix(1);
  double value = 0;
  const auto [end, ec] = std::from_chars(s.data(), s.data() + s.size(), value, std::chars_format::fixed);
  if (s.empty() || ec != std::errc() || end != s.data() + s.size()) throw Failure(err::TypeMismatch, "Type mismatch");
  return toLong(value);
}

long Leading(std::string_view s) {
  s = s.substr(std::min(s.find_first_not_of(" \t"), s.size()));
  if (!s.empty() && s.front() == '+') s.remove_prefix(1);
  double value = 0;
  std::from_chars(s.data(), s.data() + s.size(), value, std::chars_format::fixed);
  if (!std::isfinite(value)) return 0;
  return toLong(value);
}

}  // namespace kv::xmlvalue
