#include "definitions/TOCDefinition.h"

#include "definitions/DefinitionReading.h"
#include "kavrel/XmlDocument.h"

namespace kv {

using namespace reading;

void NodeDef::Load(const XMLNode& e) {
  Name = readText(e, "Name");
  NodeType = readLong(e, "NodeType", StaticNode);
  Caption = readText(e, "Caption");
  ParentName = readText(e, "Parent");
  HasIcon = readBool(e, "HasIcon", false);
  IconNumber = readLong(e, "IconNumber", 0);
  MarkAsNew = readBool(e, "MarkAsNew", false);
  EmbeddedName = readText(e, "EmbeddedName");
  DependsOnNamespaceName = readText(e, "DependsOnNamespaceName");
  DependsOnParameters = readText(e, "DependsOnParameters");
  DependsOnMinimum = readLong(e, "DependsOnMinimum", 0);
  GenerateWhenBelowMinimum = readBool(e, "GenerateWhenBelowMinimum", false);
  FileName = readText(e, "FileName");
  NamespaceName = readText(e, "NamespaceName");
  Parameters = readText(e, "Parameters");
  HasPage = readBool(e, "HasPage", false);
  IsDefaultTopic = readBool(e, "IsDefaultTopic", false);
  PageLayout = readText(e, "PageLayout");
}

void NodeDef::Save(XMLNode& e) const {
  e.SetAttribute("Name", Name);
  e.SetAttribute("NodeType", std::to_string(NodeType));
  e.SetAttribute("Caption", Caption);
  e.SetAttribute("Parent", ParentName);
  e.SetAttribute("HasIcon", boolText(HasIcon));
  e.SetAttribute("IconNumber", std::to_string(IconNumber));
  e.SetAttribute("MarkAsNew", boolText(MarkAsNew));
  e.SetAttribute("EmbeddedName", EmbeddedName);
  e.SetAttribute("DependsOnNamespaceName", DependsOnNamespaceName);
  e.SetAttribute("DependsOnParameters", DependsOnParameters);
  e.SetAttribute("DependsOnMinimum", std::to_string(DependsOnMinimum));
  e.SetAttribute("GenerateWhenBelowMinimum", boolText(GenerateWhenBelowMinimum));
  e.SetAttribute("FileName", FileName);
  e.SetAttribute("NamespaceName", NamespaceName);
  e.SetAttribute("Parameters", Parameters);
  e.SetAttribute("HasPage", boolText(HasPage));
  e.SetAttribute("IsDefaultTopic", boolText(IsDefaultTopic));
  e.SetAttribute("PageLayout", PageLayout);
}

void NodeDef::ResolveReferences(const Collection<std::shared_ptr<NodeDef>>& nodeDefs) {
  ParentNode.reset();
  if (ParentName.empty()) return;
  if (const auto* parent = nodeDefs.Find(ParentName)) ParentNode = *parent;
}

void TOCDefinition::Load(const XMLNode& e) {
  for (const XMLNode& child : e.ChildNodes()) {
    if (!isElement(child, "NodeDef")) continue;
    auto node = std::make_shared<NodeDef>();
    node->Load(child);
    ignoreDuplicate(NodeDefs, node, node->Name);
  }
  for (const auto& node : NodeDefs) node->ResolveReferences(NodeDefs);
}

void TOCDefinition::Save(XMLDocument& doc) const {
  XMLNode root = doc.RootNode();
  root.Name("TOC");
  root.SetAttribute("Name", Name);
  for (const auto& node : NodeDefs) {
    XMLNode e = root.AddChild("NodeDef");
    node->Save(e);
  }
}

std::string TOCDefinition::SaveToText() const {
  XMLDocument doc;
  Save(doc);
  return doc.Xml();
}

}  // namespace kv
