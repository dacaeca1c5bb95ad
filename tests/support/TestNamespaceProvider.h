// A namespace provider for tests: the items of each namespace definition come from a function
// of the parent item, and pages are rendered by a real CommonProvider. Register it under a class
// name with `registerAs` so that a project creates it for a definition's handler.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "definitions/Configuration.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/INamespaceProvider.h"
#include "project/KVProject.h"
#include "template/CommonProvider.h"

namespace kv::test {

class TestNamespaceProvider : public Object, public INamespaceProvider {
 public:
  using Items = std::function<std::vector<ObjectPtr>(const ObjectPtr& parent)>;

  // Items per namespace definition name; a definition without an entry has none.
  std::map<std::string, Items, text::LessIgnoreCase> items;
  // The parameters of every GetItems call, in order.
  std::vector<std::string> requests;
  std::shared_ptr<CommonProvider> provider = std::make_shared<CommonProvider>();

  // Makes the project create `instance` for handler `className`.
  static void registerAs(const std::string& className, const std::shared_ptr<TestNamespaceProvider>& instance) {
    ClassRegistry::instance().add(className, [instance] { return instance; });
  }

  std::string typeName() const override { return "TestNamespaceProvider"; }
  void KVProject(const std::weak_ptr<IKVProject>& project) override {
    if (auto p = project.lock()) provider->KVProject(std::dynamic_pointer_cast<kv::KVProject>(p));
  }
  ItemCollection GetItems(const std::shared_ptr<NamespaceDef>& def, const ObjectPtr& parent,
                          const std::string& parameters) override {
    requests.push_back(parameters);
    auto found = items.find(def->Name);
    auto list = std::make_shared<std::vector<ObjectPtr>>();
    if (found != items.end()) *list = found->second(parent);
    return list;
  }
  std::shared_ptr<kv::DataProvider> DataProvider() override { return provider; }
  ObjectPtr LoadRootItem(const std::string&) override { return nullptr; }
  ObjectPtr GetItemByQualifiedName(const std::string&) override { return nullptr; }
  std::vector<std::shared_ptr<NamespaceDef>> GetNamespaceDefsOfItem(const ObjectPtr&, const NamespaceDefs&) override {
    return {};
  }
  std::string GeneratorName() override { return "kv.test"; }
  bool ItemExists(const std::string&) override { return false; }
  std::string MonikerForItem(const ObjectPtr&) override { return {}; }
  std::string RelativeMoniker(const std::string& m, const std::string&) override { return m; }
  std::string AbsoluteMoniker(const std::string& m, const std::string&) override { return m; }
  std::string ContentFilterOfItem(const ObjectPtr&) override { return {}; }
};

}  // namespace kv::test
