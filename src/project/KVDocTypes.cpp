#include "project/KVDocTypes.h"

#include "contracts/XmlDocument.h"
#include "services/FailureHandler.h"

namespace kv {

void KVDocTypes::Populate(KVProject& /*project*/) {
  // Doc types come from the installation's configuration; without definitions there are none.
}

void KVDocTypes::Add(DocTypePtr docType) {
  docType->TOCSource->DocType = docType;
  mDocTypes.Add(docType, docType->Name());
}

std::vector<KVDocTypes::DocTypePtr> KVDocTypes::PopulatedDocTypes() const {
  std::vector<DocTypePtr> populated;
  for (const auto& docType : mDocTypes)
    if (docType->SomethingToDocument()) populated.push_back(docType);
  return populated;
}

KVDocTypes::DocTypePtr KVDocTypes::HelpTemplatesFrom() const {
  const auto populated = PopulatedDocTypes();
  for (const auto& docType : populated)
    if (docType->UseHelpTemplates) return docType;
  return populated.empty() ? nullptr : populated.front();
}

void KVDocTypes::HelpTemplatesFrom(const DocTypePtr& docType) {
  for (const auto& each : mDocTypes) each->UseHelpTemplates = each == docType;
}

KVDocTypes::DocTypePtr KVDocTypes::DocTypeFromTemplate(const std::shared_ptr<Template>& tmpl) const {
  if (!tmpl) return nullptr;
  for (const auto& docType : mDocTypes)
    for (const auto& each : docType->Templates())
      if (each == tmpl) return docType;
  return nullptr;
}

NamespaceDefs KVDocTypes::NamespaceDefsOf(const std::vector<DocTypePtr>& docTypes) {
  NamespaceDefs defs;
  for (const auto& docType : docTypes) {
    const auto tmpl = docType->Template();
    if (!tmpl) continue;
    for (const auto& def : tmpl->NamespaceDefs)
      if (!defs.Exists(def->Name)) defs.Add(def, def->Name);
  }
  return defs;
}

}  // namespace kv

namespace kv {

void KVDocTypes::LoadFromKVProjectXMLEx(XMLDocument& doc, bool LoadPlugIn) {
  // An element whose doc type is gone is read into the doc type found before it.
  DocTypePtr docType;
  for (const XMLNode child : doc.RootNode().ChildNodes()) {
    if (!text::equalsIgnoreCase(child.Name(), "DocType")) continue;
    ignoreFailure([&] { docType = Item(child.Attributes().Item("Name").Value()); });
    if (docType) docType->Load(child);
  }
  if (!LoadPlugIn) return;
  for (const auto& each : mDocTypes)
    if (const auto& plugIn = each->ProjectPlugIn()) plugIn->LoadXML(doc);
}

void KVDocTypes::SaveToKVProjectXML(XMLDocument& doc) const {
  for (const auto& docType : PopulatedDocTypes()) {
    XMLNode element = doc.RootNode().AddChild("DocType");
    docType->Save(element);
    docType->ProjectPlugIn()->SaveXML(doc);
  }
}

}  // namespace kv
