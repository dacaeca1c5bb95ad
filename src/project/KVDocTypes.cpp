#include "project/KVDocTypes.h"

#include "host/FailureHandler.h"
#include "kavrel/XmlDocument.h"
#include "project/KVProject.h"
#include "project/PlugInLoader.h"

namespace kv {
namespace {

constexpr const char* kModule = "KVDocTypes";

bool isLumidesk(const KVDocType& docType) {
  return text::containsIgnoreCase(docType.Name(), "lumidesk");
}

}  // namespace

void KVDocTypes::Add(DocTypePtr Item, std::string_view Key, std::optional<long> Before, std::optional<long> After) {
  const std::string key = Key.empty() ? Item->Name() : std::string(Key);
  Item->TOCSource->DocType = Item;
  mDocTypes.Add(std::move(Item), key, Before, After);
}

void KVDocTypes::Populate(KVProject& project) {
  guard(kModule, [&] {
    mDocTypes.Clear();
    LoadInstalledPlugIns();
    const auto self = std::static_pointer_cast<KVProject>(project.shared_from_this());
    std::vector<DocTypePtr> created;
    for (const auto& def : ConfigurationRoot::instance().DocTypeDefs()) {
      auto docType = std::make_shared<KVDocType>();
      docType->KVProject = self;
      docType->Initialise(def, def->Name);
      if (docType->ProjectPlugIn()) created.push_back(docType);
    }
    for (const auto& docType : created)
      if (!isLumidesk(*docType)) Add(docType);
    for (const auto& docType : created)
      if (isLumidesk(*docType)) Add(docType);
  });
}

KVDocTypes KVDocTypes::PopulatedDocTypes() const {
  KVDocTypes populated;
  for (const auto& docType : mDocTypes)
    if (docType->SomethingToDocument()) populated.Add(docType);
  return populated;
}

KVDocTypes::DocTypePtr KVDocTypes::HelpTemplatesFrom() const {
  const KVDocTypes populated = PopulatedDocTypes();
  for (const auto& docType : populated)
    if (docType->UseHelpTemplates) return docType;
  return populated.Item(1);
}

void KVDocTypes::HelpTemplatesFrom(const DocTypePtr& docType) {
  for (const auto& each : mDocTypes) each->UseHelpTemplates = each == docType;
}

KVDocTypes::DocTypePtr KVDocTypes::DocTypeFromTemplate(const std::shared_ptr<Template>& Template) const {
  for (const auto& docType : mDocTypes)
    for (const auto& each : docType->Templates())
      if (each == Template) return docType;
  return nullptr;
}

kv::NamespaceDefs KVDocTypes::NamespaceDefs() const {
  kv::NamespaceDefs defs;
  for (const auto& docType : mDocTypes) {
    // A doc type without a valid template contributes nothing.
    std::shared_ptr<Template> tmpl;
    if (!ignoreFailure([&] { tmpl = docType->Template(); })) continue;
    for (const auto& def : tmpl->NamespaceDefs)
      if (!defs.Exists(def->Name)) defs.Add(def, def->Name);
  }
  return defs;
}

kv::Templates KVDocTypes::Templates() const {
  kv::Templates templates;
  for (const auto& docType : mDocTypes) {
    if (!docType->SomethingToDocument()) continue;
    std::shared_ptr<Template> tmpl;
    if (!ignoreFailure([&] { tmpl = docType->Template(); })) continue;
    if (!templates.Exists(tmpl->Name)) templates.Add(tmpl, tmpl->Name);
  }
  return templates;
}

void KVDocTypes::BeforeBuild() const {
  for (const auto& docType : mDocTypes) docType->BeforeBuild();
}

void KVDocTypes::AfterBuild() const {
  for (const auto& docType : mDocTypes) docType->AfterBuild();
}

void KVDocTypes::ProjectLoaded() const {
  guard(kModule, [&] {
    for (const auto& docType : mDocTypes)
      if (const auto plugIn = docType->ProjectPlugIn()) plugIn->ProjectLoaded();
  });
}

void KVDocTypes::ResetPlugIns() const {
  guard(kModule, [&] {
    for (const auto& docType : mDocTypes)
      if (const auto plugIn = docType->ProjectPlugIn()) plugIn->Reset();
  });
}

void KVDocTypes::LoadFromKVProjectXMLEx(XMLDocument& doc, bool LoadPlugIn) {
  guard(kModule, [&] {
    // An element naming no installed doc type goes to the doc type of the element before it.
    DocTypePtr docType;
    for (const XMLNode& child : doc.RootNode().ChildNodes()) {
      if (!text::equalsIgnoreCase(child.Name(), "DocType")) continue;
      if (const auto* found = mDocTypes.Find(child.Attributes().ValueOr("Name"))) docType = *found;
      if (docType) docType->Load(child);
    }
    if (!LoadPlugIn) return;
    for (const auto& each : mDocTypes)
      if (const auto plugIn = each->ProjectPlugIn()) plugIn->LoadXML(doc);
  });
}

void KVDocTypes::SaveToKVProjectXML(XMLDocument& doc) const {
  guard(kModule, [&] {
    for (const auto& docType : PopulatedDocTypes()) {
      XMLNode e = doc.RootNode().AddChild("DocType");
      docType->Save(e);
      docType->ProjectPlugIn()->SaveXML(doc);
    }
  });
}

}  // namespace kv
