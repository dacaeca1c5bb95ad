// A plug-in library for the tests, built as a shared library and loaded from a configuration
// folder's "plugins/" exactly as an installed plug-in is. Its project plug-in keeps root items
// ("Root" children of its "TestPlugIn" element in the project file, which names its doc type) and
// writes every call it gets to a log that tests read through the late-bound member "CallLog".
// Its namespace provider loads synthetic models of any size ("synthetic:<name>:<items>") and
// delivers their items as a doc-type plug-in delivers its model.
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "kavrel/ClassRegistry.h"
#include "kavrel/IKVProject.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/XmlDocument.h"
#include "plugins/SyntheticModel.h"

namespace {

using namespace kv;

class TestProjectPlugIn : public Object, public IKVProjectPlugIn {
 public:
  std::string typeName() const override { return "TestProjectPlugIn"; }

  Variant get(std::string_view member) const override {
    if (text::equalsIgnoreCase(member, "CallLog")) return text::join(mLog, ",");
    return Object::get(member);
  }
  Variant call(std::string_view member, const Arguments& args) override {
    if (text::equalsIgnoreCase(member, "AddRoot")) {
      mRoots.push_back({args.at(0).toString(), args.at(1).toString()});
      return {};
    }
    return Object::call(member, args);
  }

  void Initialise(IKVProject& project) override {
    mProject = project.WeakReference();
    mLog.push_back("Initialise");
  }
  void ProjectLoaded() override { mLog.push_back("ProjectLoaded"); }
  void ProjectChanged() override { mLog.push_back("ProjectChanged"); }
  void BeforeBuild() override { mLog.push_back("BeforeBuild"); }
  void AfterBuild() override { mLog.push_back("AfterBuild"); }
  void Terminate() override { mLog.push_back("Terminate"); }
  void Reset() override {
    mLog.push_back("Reset");
    mRoots.clear();
  }

  void SaveXML(XMLDocument& doc) override {
    mLog.push_back("SaveXML");
    // The doc type's own element is the last one in: it names whose roots these are.
    const XMLNodes children = doc.RootNode().ChildNodes();
    const std::string docType = children.Item(children.Count()).Attributes().ValueOr("Name");
    XMLNode own = doc.RootNode().AddChild("TestPlugIn");
    own.SetAttribute("DocType", docType);
    for (const auto& root : mRoots) {
      XMLNode e = own.AddChild("Root");
      e.SetAttribute("Name", root.name);
      e.SetAttribute("Kind", root.kind);
    }
  }
  void LoadXML(XMLDocument& doc) override {
    // The document as this plug-in finds it: does its doc type's element come first?
    const XMLNode root = doc.RootNode();
    mLog.push_back("LoadXML(DirectLoad=" + root.Attributes().ValueOr("DirectLoad") + ")");
    const std::string docType = OwnDocTypeName();
    for (const XMLNode& own : root.ChildNodes()) {
      if (!text::equalsIgnoreCase(own.Name(), "TestPlugIn")) continue;
      // An element without a doc type (written by hand) serves every test plug-in.
      const std::string owner = own.Attributes().ValueOr("DocType");
      if (!owner.empty() && owner != docType) continue;
      for (const XMLNode& e : own.ChildNodes())
        mRoots.push_back({e.Attributes().ValueOr("Name"), e.Attributes().ValueOr("Kind")});
    }
  }

  bool SomethingToDocument() override { return !mRoots.empty(); }
  long RootItemTypeCount(const std::string& type) override {
    long count = 0;
    for (const auto& root : mRoots) count += text::equalsIgnoreCase(root.kind, type) ? 1 : 0;
    return count;
  }
  ObjectPtr RootItems(const std::string&) override {
    auto items = std::make_shared<DynamicObject>("RootItems");
    items->field("Count", long(mRoots.size()));
    return items;
  }
  ObjectPtr GetObjectFromQualifiedName(const std::string& name) override {
    for (const auto& root : mRoots)
      if (root.name == name) {
        auto item = std::make_shared<DynamicObject>("TestRoot");
        item->field("IncludeFlag", true).field("ExcludeFlag", false);
        return item;
      }
    return nullptr;
  }
  std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() override {
    auto defs = std::make_shared<kv::NamespaceDefs>();
    auto def = std::make_shared<NamespaceDef>();
    def->Name = "KV:TestRoot";
    def->Handler = "KVTest.Provider";
    defs->Add(def, def->Name);
    return defs;
  }
  std::shared_ptr<XMLDocument> CreateCommentFileForMoniker(const std::string&, const std::string& moniker) override {
    auto doc = std::make_shared<XMLDocument>();
    doc->RootNode().Name("KavrelComments");
    doc->RootNode().SetAttribute("Moniker", moniker);
    return doc;
  }
  Variant IsItemSameAsMoniker(const ObjectPtr& item, const std::string& moniker) override {
    return item && "test:" + item->get("Name").toString() == moniker;  // as the provider names it
  }

 private:
  std::string OwnDocTypeName() const {
    const auto project = mProject.lock();
    return project ? project->DocTypeOfPlugIn(*this) : std::string();
  }

  struct Root {
    std::string name, kind;
  };
  std::weak_ptr<IKVProject> mProject;
  std::vector<Root> mRoots;
  std::vector<std::string> mLog;
};

// Records the output files it is told of, readable through the late-bound member "PageOutputs".
// Root items are synthetic models: "synthetic:Acme:500" is a project named Acme of at least 500
// items. Below a parent, a definition named "KV:<type name>" gets the parent's children of that
// type.
class TestProvider : public Object, public INamespaceProvider {
 public:
  std::string typeName() const override { return "TestProvider"; }
  Variant get(std::string_view member) const override {
    if (text::equalsIgnoreCase(member, "PageOutputs")) return text::join(mOutputs, "|");
    if (text::equalsIgnoreCase(member, "HasProject")) return !mProject.expired();
    return Object::get(member);
  }

  void KVProject(const std::weak_ptr<IKVProject>& project) override { mProject = project; }
  ItemCollection GetItems(const std::shared_ptr<NamespaceDef>& def, const ObjectPtr& parent,
                          const std::string&) override {
    auto items = std::make_shared<std::vector<ObjectPtr>>();
    if (!parent) {
      for (const auto& root : mRoots) items->push_back(root.item);
      return items;
    }
    const auto item = std::dynamic_pointer_cast<Item>(parent);
    const std::string kind = def && text::startsWithIgnoreCase(def->Name, "KV:") ? def->Name.substr(3) : "";
    if (item)
      item->ForEachChild([&](const ItemPtr& child) {
        if (kind.empty() || TypeMatch(child, kind)) items->push_back(child);
        return true;
      });
    return items;
  }
  std::shared_ptr<kv::DataProvider> DataProvider() override { return nullptr; }
  ObjectPtr LoadRootItem(const std::string& moniker) override {
    for (const auto& root : mRoots)
      if (root.moniker == moniker) return root.item;
    const std::vector<std::string> parts = text::split(moniker, ":");
    if (parts.size() != 3 || parts[0] != "synthetic") return nullptr;
    auto model = test::BuildSyntheticModel(std::stol(parts[2]), parts[1]);
    mRoots.push_back({moniker, model.project});
    return model.project;
  }
  ObjectPtr GetItemByQualifiedName(const std::string& name) override {
    for (const auto& root : mRoots)
      if (ItemPtr found = root.item->FindByQualifiedName(name)) return found;
    return nullptr;
  }
  std::vector<std::shared_ptr<NamespaceDef>> GetNamespaceDefsOfItem(const ObjectPtr&,
                                                                    const kv::NamespaceDefs&) override {
    return {};
  }
  std::string GeneratorName() override { return "kv.test"; }
  void PageOutput(const std::shared_ptr<NamespaceDef>&, const ObjectPtr&, const std::string& fileName, bool,
                  bool) override {
    mOutputs.push_back(fileName);
  }
  bool ItemExists(const std::string&) override { return true; }
  std::string MonikerForItem(const ObjectPtr& item) override {
    for (const auto& root : mRoots)
      if (root.item == item) return root.moniker;
    return "test:" + item->get("Name").toString();
  }
  std::string RelativeMoniker(const std::string& moniker, const std::string&) override { return moniker; }
  std::string AbsoluteMoniker(const std::string& moniker, const std::string&) override { return moniker; }
  std::string ContentFilterOfItem(const ObjectPtr&) override { return {}; }

 private:
  struct LoadedRoot {
    std::string moniker;
    std::shared_ptr<vbProject> item;
  };
  std::weak_ptr<IKVProject> mProject;
  std::vector<std::string> mOutputs;
  std::vector<LoadedRoot> mRoots;
};

}  // namespace

extern "C" void kavrel_register_plugin(kv::ClassRegistry& registry) {
  registry.add("KVTest.ProjectPlugIn", [] { return std::make_shared<TestProjectPlugIn>(); });
  registry.add("KVTest.LumideskPlugIn", [] { return std::make_shared<TestProjectPlugIn>(); });
  // Creatable, but not a project plug-in.
  registry.add("KVTest.NotAPlugIn", [] { return std::make_shared<DynamicObject>("NotAPlugIn"); });
  registry.add("KVTest.Broken", []() -> ObjectPtr { throw std::runtime_error("cannot be made"); });
  // Fails while KAVREL_TEST_PROVIDER_FAILS is set, so that tests can see creation tried again.
  registry.add("KVTest.Provider", []() -> ObjectPtr {
    if (std::getenv("KAVREL_TEST_PROVIDER_FAILS")) return nullptr;
    return std::make_shared<TestProvider>();
  });
}
