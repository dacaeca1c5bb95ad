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
  const auto* cppItem = dynamic_cast<const CppItem*>(item.get());
  if (!cppItem) return {};
  return defs.FindByName(CppItems::DefinitionOf(*cppItem));
}

std::string KVCppProvider::MonikerForItem(const ObjectPtr& item) {
  const auto* cppItem = dynamic_cast<const CppItem*>(item.get());
  return cppItem ? cppItem->QualifiedName() : std::string();
}

}  // namespace kv::cpp
