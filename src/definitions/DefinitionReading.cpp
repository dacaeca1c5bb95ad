#include "definitions/DefinitionReading.h"

#include <charconv>

#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"

namespace kv::reading {

bool readBool(const XMLNode& e, std::string_view name, bool fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::toLower(text::trim(attr->Value()));
  return v == "true" || v == "yes" || v == "1";
}

long readLong(const XMLNode& e, std::string_view name, long fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::trim(attr->Value());
  long value = fallback;
  std::from_chars(v.data(), v.data() + v.size(), value);
  return value;
}

std::string readText(const XMLNode& e, std::string_view name, std::string_view fallback) {
  return e.Attributes().ValueOr(name, fallback);
}

std::int32_t readColor(const XMLNode& e, std::string_view name, std::int32_t fallback) {
  const auto attr = e.Attributes().Find(name);
  if (!attr) return fallback;
  const std::string v = text::trim(attr->Value());
  if (v.size() == 7 && v[0] == '#') {
    unsigned rgb = 0;
    if (std::from_chars(v.data() + 1, v.data() + 7, rgb, 16).ec != std::errc()) return fallback;
    return std::int32_t(((rgb >> 16) & 0xFF) | (rgb & 0xFF00) | ((rgb & 0xFF) << 16));
  }
  std::int32_t value = fallback;
  std::from_chars(v.data(), v.data() + v.size(), value);
  return value;
}

const char* boolText(bool v) {
  return v ? "True" : "False";
}

bool isElement(const XMLNode& e, std::string_view name) {
  return text::equalsIgnoreCase(e.Name(), name);
}

std::optional<XMLDocument> readDefinitionFile(const std::string& fileName, std::string_view rootName,
                                              std::vector<std::string>& errors) {
  FileSystem file(fileName);
  if (!file.Exists()) {
    errors.push_back(fileName + ": the file does not exist");
    return std::nullopt;
  }
  XMLDocument doc;
  if (!doc.LoadXML(file.ReadAll())) {
    errors.push_back(fileName + ": " + doc.ParseError());
    return std::nullopt;
  }
  if (!isElement(doc.RootNode(), rootName)) {
    errors.push_back(fileName + ": the root element is not \"" + std::string(rootName) + "\"");
    return std::nullopt;
  }
  return doc;
}

}  // namespace kv::reading
