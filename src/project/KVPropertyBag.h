// String properties that are stored only where they differ from the default that each caller
// gives.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "contracts/RecordCollection.h"

namespace kv {

class ProjectContext;
class XMLNode;

class PropertyValue {
 public:
  std::string Name;
  std::string Value;
};

class PropertyValues : public KeyedCollection<PropertyValue> {};

class KVPropertyBag {
 public:
  // Without a project (as for the included namespace names) changes mark nothing.
  std::weak_ptr<ProjectContext> KVProject;

  // The stored value, or `DefaultValue` when there is none.
  std::string PropertyValue(std::string_view Name, std::string_view DefaultValue) const;
  // Stores `Value` only when it differs from `DefaultValue`; a value equal to the default
  // removes the entry.
  void PropertyValue(std::string_view Name, std::string_view DefaultValue, std::string_view Value);
  const kv::PropertyValues& PropertyValues() const { return *mValues; }

  // Replaces the values by the "Property" children of `e`.
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
  void Clear();
  std::shared_ptr<kv::PropertyValue> NewPropertyValue(std::string_view Name, std::string_view Value);

 private:
  std::shared_ptr<kv::PropertyValues> mValues = std::make_shared<kv::PropertyValues>();
};

}  // namespace kv
