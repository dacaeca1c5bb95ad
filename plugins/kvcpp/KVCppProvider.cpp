#include "KVCppProvider.h"

#include "CppModel.h"
#include "kavrel/IKVProject.h"
#include "kavrel/NamespaceDef.h"

namespace kv::cpp {

std::shared_ptr<CppModel> KVCppProvider::Model(std::shared_ptr<IKVProject>& project) const {
  project = mProject.lock();
  return project ? CppModel::Of(project.get()) : nullptr;
}

ItemCollection KVCppProvider::GetItems(const std::shared_ptr<NamespaceDef>& def, const ObjectPtr& parent,
                                       const std::string&) {
  auto items = std::make_shared<std::vector<ObjectPtr>>();
  std::shared_ptr<IKVProject> project;
  const auto model = Model(project);
  if (!model || !def) return items;
  const AccessFilter access{project->IncludeProtected(), project->IncludePrivate()};
  *items = model->Items(project.get()).Items(def->Name, parent, access);
  return items;
}

ObjectPtr KVCppProvider::LoadRootItem(const std::string& moniker) {
  std::shared_ptr<IKVProject> project;
  const auto model = Model(project);
  if (!model) return nullptr;
  for (const auto& header : model->Items(project.get()).Headers())
    if (header->QualifiedName() == moniker) return header;
  return nullptr;
}

ObjectPtr KVCppProvider::GetItemByQualifiedName(const std::string& name) {
  std::shared_ptr<IKVProject> project;
  const auto model = Model(project);
  return model ? model->Items(project.get()).Find(name) : nullptr;
}

std::vector<std::shared_ptr<NamespaceDef>> KVCppProvider::GetNamespaceDefsOfItem(const ObjectPtr& item,
                                                                                 const kv::NamespaceDefs& defs) {
  const auto* model = dynamic_cast<const Item*>(item.get());
  const std::string name = model ? CppItems::DefinitionOf(*model) : std::string();
  return name.empty() ? std::vector<std::shared_ptr<NamespaceDef>>() : defs.FindByName(name);
}

std::string KVCppProvider::MonikerForItem(const ObjectPtr& item) {
  const auto* model = dynamic_cast<const Item*>(item.get());
  return model ? model->QualifiedName() : std::string();
}

}  // namespace kv::cpp
