#include "project/TOCSource.h"

#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"

namespace kv {

void TOCSource::Source(TOCSourceEnum v) {
  if (v == mSource) return;
  mSource = v;
  Changed();
}

void TOCSource::SpecificTOCName(std::string_view v) {
  if (v == mSpecificTOCName) return;
  mSpecificTOCName = v;
  Changed();
}

void TOCSource::CustomTOCDefinition(std::shared_ptr<kv::TOCDefinition> v) {
  if (v == mCustomTOCDefinition) return;
  if (GetTOCDefXML(v.get()) == GetTOCDefXML(mCustomTOCDefinition.get())) return;
  Changed();
  mCustomTOCDefinition = std::move(v);
}

void TOCSource::Changed() {
  if (auto docType = DocType.lock()) MarkProjectChanged(docType->KVProject);
}

std::string TOCSource::GetTOCDefXML(const kv::TOCDefinition* definition) {
  return definition ? definition->SaveToText() : std::string();
}

std::shared_ptr<Template> TOCSource::DocTypeTemplate() const {
  std::shared_ptr<kv::Template> tmpl;
  if (auto docType = DocType.lock()) ignoreFailure([&] { tmpl = docType->Template(); });
  return tmpl;
}

std::shared_ptr<TOCDefinition> TOCSource::TOCDefinition() {
  const auto tmpl = DocTypeTemplate();
  if (mSource == tsTemplateSpecific) {
    if (tmpl && tmpl->TOCDefinitions.Exists(mSpecificTOCName)) return tmpl->TOCDefinitions.Item(mSpecificTOCName);
    const std::string message = "Table of Contents definition '" + mSpecificTOCName +
                                "' could not be found in this template.  Using default definition instead.";
    auto docType = DocType.lock();
    auto project = docType ? docType->KVProject.lock() : nullptr;
    if (project)
      project->RaiseBuildError(message, KVWarning);
    else
      showHostMessage(message, mb::OKOnly + mb::Exclamation, "Table of Contents definition");
    Source(tsTemplateDefault);
  }
  if (mSource == tsCustom) return mCustomTOCDefinition;
  if (!tmpl) return nullptr;
  auto docType = DocType.lock();
  const std::string& name = docType && docType->ItemCount() >= 2 ? tmpl->MultipleItemTOCName : tmpl->SingleItemTOCName;
  return tmpl->TOCDefinitions.Item(name);
}

void TOCSource::Load(const XMLNode& e) {
  Source(TOCSourceEnum(xmlvalue::Strict(xmlvalue::Attr(e, "TOCSource"))));
  SpecificTOCName(xmlvalue::Attr(e, "SpecificTOCName"));
  const auto tmpl = DocTypeTemplate();
  // A named definition the template has lost falls back quietly here; the build reports it.
  if (mSource == tsTemplateSpecific && !(tmpl && tmpl->TOCDefinitions.Exists(mSpecificTOCName)))
    Source(tsTemplateDefault);
  if (mSource != tsCustom) return;
  mCustomTOCDefinition = std::make_shared<kv::TOCDefinition>();
  mCustomTOCDefinition->Template = tmpl;
  for (const XMLNode child : e.ChildNodes()) {
    if (child.Name() != "NodeDef") continue;
    auto nodeDef = std::make_shared<NodeDef>();
    nodeDef->Load(child);
    mCustomTOCDefinition->NodeDefs.Add(nodeDef, nodeDef->Name);
  }
  for (const auto& nodeDef : mCustomTOCDefinition->NodeDefs) nodeDef->ResolveReferences(mCustomTOCDefinition->NodeDefs);
}

void TOCSource::Save(XMLNode& e) const {
  e.SetAttribute("TOCSource", std::to_string(int(mSource)));
  e.SetAttribute("SpecificTOCName", mSpecificTOCName);
  if (mSource != tsCustom || !mCustomTOCDefinition) return;
  for (const auto& nodeDef : mCustomTOCDefinition->NodeDefs) {
    XMLNode child = e.AddChild("NodeDef");
    nodeDef->Save(child);
  }
}

}  // namespace kv
