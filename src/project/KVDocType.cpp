#include "project/KVDocType.h"

#include <algorithm>

#include "project/RecordCollection.h"
#include "project/XmlValues.h"
#include "services/Text.h"

namespace kv {

long KVDocType::ItemCount() const {
  if (!mPlugIn) return 0;
  const ObjectPtr rootItems = mPlugIn->RootItems();
  return rootItems ? long(rootItems->get("Count").toInteger()) : 0;
}

std::vector<std::shared_ptr<Template>> KVDocType::Templates() const {
  std::vector<std::shared_ptr<kv::Template>> serving;
  for (const auto& tmpl : ConfigurationRoot::instance().Templates)
    if (std::any_of(tmpl->DocTypeDefs.begin(), tmpl->DocTypeDefs.end(),
                    [&](const auto& def) { return def && text::equalsIgnoreCase(def->Name, mName); }))
      serving.push_back(tmpl);
  return serving;
}

std::shared_ptr<Template> KVDocType::Template() {
  if (!mSelectedTemplate) {
    const auto serving = Templates();
    if (!serving.empty()) mSelectedTemplate = serving.front();
  }
  return mSelectedTemplate;
}

void KVDocType::Template(const std::shared_ptr<kv::Template>& v) {
  if (v == mSelectedTemplate) return;
  MarkProjectChanged(KVProject);
  const auto serving = Templates();
  if (std::find(serving.begin(), serving.end(), v) != serving.end()) mSelectedTemplate = v;
}

}  // namespace kv

namespace kv {

void KVDocType::Save(XMLNode& e) const {
  e.SetAttribute("Name", mName);
  e.SetAttribute("Template", mSelectedTemplate ? mSelectedTemplate->Name : std::string());
  e.SetAttribute("UseHelpTemplates", xmlvalue::Bool(UseHelpTemplates));
  XMLNode tocSource = e.AddChild("TOCSource");
  TOCSource->Save(tocSource);
  XMLNode profile = e.AddChild("ModelCommentProfile");
  ModelComments->Save(profile);
}

void KVDocType::Load(const XMLNode& e) {
  const XMLAttributes attributes = e.Attributes();
  const std::string templateName = attributes.ValueOr("Template");
  for (const auto& tmpl : Templates())
    if (text::equalsIgnoreCase(tmpl->Name, templateName)) {
      Template(tmpl);
      break;
    }
  if (text::equalsIgnoreCase(attributes.ValueOr("UseHelpTemplates"), "True")) UseHelpTemplates = true;
  for (const XMLNode child : e.ChildNodes()) {
    const std::string name = text::toLower(child.Name());
    if (name == "tocsource")
      TOCSource->Load(child);
    else if (name == "modelcommentprofile")
      ModelComments->Load(child);
  }
}

}  // namespace kv
