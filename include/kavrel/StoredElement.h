// An element of a definition kept as it was read (name, attributes, text, children), for content
// that is passed through or interpreted by later readers, plug-ins among them.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kavrel/Export.h"

namespace kv {

class XMLNode;

struct KV_API StoredElement {
  std::string Name;
  std::vector<std::pair<std::string, std::string>> Attributes;
  std::string Text;
  std::vector<StoredElement> Children;

  void Read(const XMLNode& e);
  // Writes attributes, text and children into `e` (its name is the caller's).
  void Write(XMLNode& e) const;
  // The value of an attribute, ignoring case; empty when absent.
  std::string Attribute(std::string_view name) const;
};

}  // namespace kv
