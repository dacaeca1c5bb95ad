// A template's table of contents definitions and their nodes.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Collection.h"

namespace kv {

class XMLNode;
class XMLDocument;

// One node of a table of contents definition.
class NodeDef {
 public:
  enum Type { StaticNode = 0, ItemsNode = 1, EmbeddedTable = 3, MergedTable = 4 };

  std::string Name;
  long NodeType = StaticNode;
  std::string Caption;
  std::string ParentName;             // the parent node's name; empty for a top node
  std::weak_ptr<NodeDef> ParentNode;  // set by ResolveReferences
  bool HasIcon = false;
  long IconNumber = 0;
  bool MarkAsNew = false;
  std::string EmbeddedName;
  std::string DependsOnNamespaceName;
  std::string DependsOnParameters;
  long DependsOnMinimum = 0;
  bool GenerateWhenBelowMinimum = false;
  std::string FileName;
  std::string NamespaceName;
  std::string Parameters;
  bool HasPage = false;
  bool IsDefaultTopic = false;
  std::string PageLayout;  // name of a page layout of the template, or empty

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
  // Called once all nodes of a definition are in: finds the parent node by name.
  void ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& nodeDefs);
};

class Template;

class TOCDefinition {
 public:
  std::string Name;
  // The template the definition belongs to; set on a custom definition to bind it.
  std::weak_ptr<kv::Template> Template;
  Collection<std::shared_ptr<kv::NodeDef>> NodeDefs;

  // Reads the "NodeDef" children of `e` and resolves their references.
  void Load(const XMLNode& e);
  // Writes the definition as the root of `doc`, for comparison by text.
  void Save(XMLDocument& doc) const;
  std::string SaveToText() const;
};

}  // namespace kv
