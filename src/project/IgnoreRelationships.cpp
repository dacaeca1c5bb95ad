#include "project/IgnoreRelationships.h"

#include "files/XmlValues.h"

namespace kv {

void IgnoreRelationship::Load(const XMLNode& e) {
  const XMLAttributes attributes = e.Attributes();
  // Older files named the project and the component instead of the qualified name.
  const std::string projectName = attributes.ValueOr("ProjectName");
  const std::string componentName = attributes.ValueOr("ComponentName");
  if (attributes.Exists("ProcedureName")) ProcedureName = attributes.ValueOr("ProcedureName");
  if (attributes.Exists("QualifiedName")) QualifiedName = attributes.ValueOr("QualifiedName");
  if (!projectName.empty()) QualifiedName = projectName + "~" + componentName;
}

void IgnoreRelationship::Save(XMLNode& e) const {
  e.Name("IgnoreRelationship");
  e.SetAttribute("QualifiedName", QualifiedName);
  e.SetAttribute("ProcedureName", ProcedureName);
}

}  // namespace kv
