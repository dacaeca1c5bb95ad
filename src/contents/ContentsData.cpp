#include "contents/ContentsData.h"

#include "definitions/Template.h"
#include "kavrel/INamespaceProvider.h"
#include "project/KVDocType.h"
#include "project/KVProject.h"
#include "template/CommonProvider.h"
#include "template/TextExpansion.h"

namespace kv {

std::shared_ptr<DataProvider> ContentsDataProvider(INamespaceProvider* Provider, KVProject& Project) {
  if (Provider)
    if (const auto own = Provider->DataProvider()) return own->Clone();
  auto common = std::make_shared<CommonProvider>();
  common->KVProject(std::static_pointer_cast<KVProject>(Project.shared_from_this()));
  return common;
}

std::shared_ptr<NamespaceDef> FindNamespaceDef(const Template& Template, std::string_view Name) {
  const auto found = Template.NamespaceDefs.FindByName(Name);
  return found.empty() ? nullptr : found.front();
}

std::string ProjectPhrases(KVProject& Project, std::string_view Text) {
  const auto docType = Project.CurrentDocType();
  if (!docType) return std::string(Text);
  const auto tmpl = docType->Template();
  return ParseForPhrases(Text, [&](std::string_view key) -> std::optional<std::string> {
    const auto& phrases = tmpl->Phrases();
    const auto found = phrases.find(std::string(key));
    if (found == phrases.end()) return std::nullopt;
    return found->second;
  });
}

}  // namespace kv
