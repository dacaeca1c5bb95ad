// Where a doc type's table of contents comes from: the template's default definition, a named
// definition of the template, or a custom definition stored in the project.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "contracts/RecordCollection.h"
#include "definitions/Configuration.h"

namespace kv {

class KVDocType;
class XMLNode;

enum TOCSourceEnum : std::int32_t { tsTemplateDefault = 0, tsCustom = 1, tsTemplateSpecific = 2 };

class TOCSource {
 public:
  std::weak_ptr<KVDocType> DocType;

  // The kind of source; written to the project file as the attribute "TOCSource".
  TOCSourceEnum Source() const { return mSource; }
  void Source(TOCSourceEnum v);
  const std::string& SpecificTOCName() const { return mSpecificTOCName; }
  void SpecificTOCName(std::string_view v);
  const std::shared_ptr<kv::TOCDefinition>& CustomTOCDefinition() const { return mCustomTOCDefinition; }
  // Marks the project changed only when the new definition's text differs.
  void CustomTOCDefinition(std::shared_ptr<kv::TOCDefinition> v);

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
  // The definition a build uses. A named definition the template no longer has is reported and
  // replaced by the default.
  std::shared_ptr<kv::TOCDefinition> TOCDefinition();

  void Changed();
  static std::string GetTOCDefXML(const kv::TOCDefinition* definition);

 private:
  std::shared_ptr<kv::Template> DocTypeTemplate() const;

  TOCSourceEnum mSource = tsTemplateDefault;
  std::string mSpecificTOCName;
  std::shared_ptr<kv::TOCDefinition> mCustomTOCDefinition = std::make_shared<kv::TOCDefinition>();
};

class TOCSources : public KeyedCollection<TOCSource> {};

}  // namespace kv
