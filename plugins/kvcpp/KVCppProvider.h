// The namespace provider of kv.cpp items ("KVCpp.NamespaceProvider"): answers the namespace
// definitions with the items of the project's parse.
#pragma once

#include "kavrel/INamespaceProvider.h"
#include "kavrel/Object.h"

namespace kv::cpp {

class CppModel;

class KVCppProvider : public Object, public INamespaceProvider {
 public:
  std::string typeName() const override { return "KVCppProvider"; }

  void KVProject(const std::weak_ptr<IKVProject>& project) override { mProject = project; }
  ItemCollection GetItems(const std::shared_ptr<NamespaceDef>& NamespaceDef, const ObjectPtr& ParentItem,
                          const std::string& Parameters) override;
  std::shared_ptr<kv::DataProvider> DataProvider() override { return nullptr; }
  ObjectPtr LoadRootItem(const std::string& Moniker) override;
  ObjectPtr GetItemByQualifiedName(const std::string& Name) override;
  std::vector<std::shared_ptr<NamespaceDef>> GetNamespaceDefsOfItem(const ObjectPtr& Item,
                                                                    const kv::NamespaceDefs& NamespaceDefs) override;
  std::string GeneratorName() override { return "kv.cpp"; }
  bool ItemExists(const std::string& Moniker) override { return LoadRootItem(Moniker) != nullptr; }
  // A header's moniker is its name relative to the sources' common folder.
  std::string MonikerForItem(const ObjectPtr& Item) override;
  std::string RelativeMoniker(const std::string& Moniker, const std::string&) override { return Moniker; }
  std::string AbsoluteMoniker(const std::string& Moniker, const std::string&) override { return Moniker; }
  std::string ContentFilterOfItem(const ObjectPtr&) override { return {}; }

 private:
  std::shared_ptr<CppModel> Model(std::shared_ptr<IKVProject>& project) const;
  std::weak_ptr<IKVProject> mProject;
};

}  // namespace kv::cpp
