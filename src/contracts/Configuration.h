// The installation's definitions as the project reads them: templates with their TOC
// definitions, variables and diagram style, namespace definitions, model comment profiles and the
// code languages. This is the part of the configuration that projects need; the loader of the
// configuration folder fills `ConfigurationRoot`.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "contracts/Collection.h"

namespace kv {

class XMLNode;

// An element kept as read (name, attributes, text, children), for definitions whose content this
// program passes through without interpreting it.
struct StoredElement {
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

// One node of a table of contents definition.
class NodeDef {
 public:
  std::string Name;
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
  // Called once all nodes of a definition are in.
  void ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& nodeDefs);

 private:
  StoredElement mContent;
};

class Template;

class TOCDefinition {
 public:
  std::string Name;
  // Binds a custom definition to its template.
  std::weak_ptr<kv::Template> Template;
  Collection<std::shared_ptr<kv::NodeDef>> NodeDefs;

  // The definition's XML text, for comparing two definitions.
  std::string SaveToText() const;
};

class NamespaceDef;
class NamespaceDefs : public Collection<std::shared_ptr<NamespaceDef>> {
 public:
  // The definitions here and below that carry `name`.
  std::vector<std::shared_ptr<NamespaceDef>> FindByName(std::string_view name) const;
};

class NamespaceDef {
 public:
  std::string Name;
  bool Selectable = true;
  bool DefaultInclude = true;
  NamespaceDefs ChildNamespaceDefs;
};

struct DocTypeDef {
  std::string Name;
  std::string Description;
  std::string PlugInProgID;
};

struct VariableDef {
  std::string Name;
  std::string DefaultValue;
  // 4 is a colour: a number shown as "#RRGGBB".
  long Type = 0;
};

class Template {
 public:
  std::string Name;
  kv::NamespaceDefs NamespaceDefs;
  Collection<std::shared_ptr<TOCDefinition>> TOCDefinitions;
  std::string SingleItemTOCName, MultipleItemTOCName;
  std::vector<VariableDef> VariableDefs;
  // The doc types this template serves.
  std::vector<std::shared_ptr<DocTypeDef>> DocTypeDefs;
  // Diagram style.
  std::int32_t objFillColor = 0, objTextColor = 0, objBorderColor = 0;
  std::int32_t colFillColor = 0, colTextColor = 0, colBorderColor = 0;
  std::int32_t BorderWidth = 0;
  bool UseDropShadow = false, CenterCaptions = false, DiagramBold = false, UseDiagramShapes = false;
};

class ModelComment {
 public:
  std::string NamespaceName;
  StoredElement Content;
};

// A set of model comments: a named profile, or the comments specific to one doc type.
class ModelComments {
 public:
  std::string Name;
  Collection<std::shared_ptr<ModelComment>> Items;

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

struct CodeLanguage {
  std::string Name;
  bool SwitchedOn = true;
};

// The process-wide configuration.
class ConfigurationRoot {
 public:
  static ConfigurationRoot& instance();

  Collection<std::shared_ptr<kv::Template>> Templates;
  Collection<std::shared_ptr<kv::ModelComments>> ModelCommentProfiles;
  std::vector<CodeLanguage> CodeLanguages;
  std::string ApplicationPath;
};

}  // namespace kv
