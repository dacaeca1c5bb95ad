// What the readers of definition files share: attribute values with fallbacks, lenient adding,
// and the parsing of one definition file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kavrel/XmlDocument.h"

namespace kv::reading {

bool readBool(const XMLNode& e, std::string_view name, bool fallback);
long readLong(const XMLNode& e, std::string_view name, long fallback);
std::string readText(const XMLNode& e, std::string_view name, std::string_view fallback = {});
// "#RRGGBB" or a decimal number; the result has red in the lowest byte.
std::int32_t readColor(const XMLNode& e, std::string_view name, std::int32_t fallback);
const char* boolText(bool v);
bool isElement(const XMLNode& e, std::string_view name);
// Parses a definition file; a file that cannot be read or parsed adds a line to `errors`.
std::optional<XMLDocument> readDefinitionFile(const std::string& fileName, std::string_view rootName,
                                              std::vector<std::string>& errors);

// Adds under `key` unless the key is taken: definitions are read leniently.
template <class C, class T>
void ignoreDuplicate(C& collection, const T& item, std::string_view key) {
  if (!collection.Exists(key)) collection.Add(item, key);
}

}  // namespace kv::reading
