// How values are written in the project file: booleans as "True"/"False" (read back by an exact
// comparison with "True"), numbers as decimal text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "kavrel/XmlDocument.h"

namespace kv::xmlvalue {

inline std::string Bool(bool v) {
  return v ? "True" : "False";
}
inline bool IsTrue(std::string_view s) {
  return s == "True";
}
// A strict conversion: surrounding blanks allowed, anything else that is not a number fails with
// "Type mismatch"; fractions round to the nearest integer, halves to even.
long Strict(std::string_view s);
// The leading numeric value; text that does not start with a number gives 0.
long Leading(std::string_view s);
// The attribute's value; fails when the element has no such attribute (case ignored).
inline std::string Attr(const XMLNode& e, std::string_view name) {
  return e.Attributes().Item(name).Value();
}
// The attribute's value as a strictly read 32-bit number (colours, levels, enumerations).
inline std::int32_t Int32Attr(const XMLNode& e, std::string_view name) {
  return std::int32_t(Strict(Attr(e, name)));
}

}  // namespace kv::xmlvalue
