// An example doc-type plug-in: it reads an outline file, one declaration a line, into a Kavrel
// item model and hands the items out through its namespace provider.
//
//   component Widget Class -- Draws a widget.
//   function Run Boolean -- Runs the widget.
//   param times Integer -- How many times.
//   get Size Long
//   enum Colour
//   member Red 1
//
// It builds against the public headers alone (include/kavrel) and links nothing: the program
// that loads it provides the library.
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "kavrel/ClassRegistry.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Model.h"

namespace {

using namespace kv;

// A kind of the plug-in's own: a component that knows its line in the outline. Late binding
// finds the new member beside every member a component has.
class OutlineComponent : public Component {
 public:
  using Component::Component;
  long Line = 0;

  const MemberTable& memberTable() const override {
    static const MemberTable table = [] {
      MemberTable t(componentTable());
      t.property<OutlineComponent>("Line", [](const OutlineComponent& c) -> Variant { return c.Line; });
      return t;
    }();
    return table;
  }
};

// The comment every documented item gets from the text after "--".
void Summarise(DocumentedItem& item, const std::string& text) {
  if (text.empty()) return;
  item.TaggedComments().Add(std::make_shared<TaggedComment>("##SUMMARY", text), "##SUMMARY");
  item.TaggedDescription(text);
}

std::shared_ptr<vbProject> ReadOutline(const std::string& fileName) {
  auto project = std::make_shared<vbProject>(fileName);
  project->FileName(fileName);
  std::ifstream in(fileName);
  std::shared_ptr<Component> component;
  std::shared_ptr<Signature> signature;  // where "param" lines go
  std::shared_ptr<MemberList> list;      // where "member" lines go
  std::string line;
  for (long number = 1; std::getline(in, line); ++number) {
    std::string summary;
    if (const auto dashes = line.find(" -- "); dashes != std::string::npos) {
      summary = line.substr(dashes + 4);
      line.resize(dashes);
    }
    std::istringstream words(line);
    std::string kind, name, type;
    words >> kind >> name >> type;
    if (kind == "component") {
      auto c = std::make_shared<OutlineComponent>(name);
      c->ComponentKind(type);
      c->Line = number;
      project->Add(c);
      Summarise(*c, summary);
      component = c;
      continue;
    }
    if (!component) continue;  // declarations before the first component are not documented
    if (kind == "sub" || kind == "function" || kind == "get" || kind == "let" || kind == "set") {
      const BlockType blockType = kind == "sub"        ? BlockType::Sub
                                  : kind == "function" ? BlockType::Function
                                  : kind == "get"      ? BlockType::PropertyGet
                                  : kind == "let"      ? BlockType::PropertyLet
                                                       : BlockType::PropertySet;
      auto block = component->AddBlock(name, blockType);
      block->ReturnType(type);
      if (block->IsProperty()) block->Qualifier(kind);  // Size~get and Size~let are two items
      Summarise(*block, summary);
      signature = block;
    } else if (kind == "event") {
      auto event = component->AddEvent(name);
      Summarise(*event, summary);
      signature = event;
    } else if (kind == "param" && signature) {
      auto parameter = signature->AddParameter(name, type);
      if (!summary.empty())
        parameter->TaggedComments().Add(std::make_shared<TaggedComment>("##PARAM", summary, name), "##PARAM");
    } else if (kind == "enum") {
      auto enumeration = component->AddEnumeration(name);
      Summarise(*enumeration, summary);
      list = enumeration;
    } else if (kind == "member" && list) {
      list->AddMember(name)->Value(type);
    } else if (kind == "field") {
      Summarise(*component->AddVariable(name, type), summary);
    }
  }
  return project;
}

// Root items are outline files named by their path; below a root, every child of an item.
class OutlineProvider : public Object, public INamespaceProvider {
 public:
  std::string typeName() const override { return "OutlineProvider"; }

  void KVProject(const std::weak_ptr<IKVProject>&) override {}
  ItemCollection GetItems(const std::shared_ptr<NamespaceDef>&, const ObjectPtr& parent, const std::string&) override {
    auto items = std::make_shared<std::vector<ObjectPtr>>();
    if (!parent) {
      items->assign(mRoots.begin(), mRoots.end());
    } else if (auto item = std::dynamic_pointer_cast<Item>(parent)) {
      item->ForEachChild([&](const ItemPtr& child) {
        items->push_back(child);
        return true;
      });
    }
    return items;
  }
  ObjectPtr LoadRootItem(const std::string& moniker) override {
    for (const auto& root : mRoots)
      if (root->FileName() == moniker) return root;
    mRoots.push_back(ReadOutline(moniker));
    return mRoots.back();
  }
  ObjectPtr GetItemByQualifiedName(const std::string& name) override {
    for (const auto& root : mRoots)
      if (ItemPtr item = root->FindByQualifiedName(name)) return item;
    return nullptr;
  }
  std::string MonikerForItem(const ObjectPtr& item) override {
    auto i = std::dynamic_pointer_cast<Item>(item);
    auto project = i ? i->OwningProject() : nullptr;
    return project ? project->FileName() : std::string();
  }
  std::string GeneratorName() override { return "kv.outline"; }

  // What this example leaves alone.
  std::shared_ptr<kv::DataProvider> DataProvider() override { return nullptr; }
  std::vector<std::shared_ptr<NamespaceDef>> GetNamespaceDefsOfItem(const ObjectPtr&, const NamespaceDefs&) override {
    return {};
  }
  bool ItemExists(const std::string& moniker) override { return std::ifstream(moniker).good(); }
  std::string RelativeMoniker(const std::string& moniker, const std::string&) override { return moniker; }
  std::string AbsoluteMoniker(const std::string& moniker, const std::string&) override { return moniker; }
  std::string ContentFilterOfItem(const ObjectPtr&) override { return {}; }

 private:
  std::vector<std::shared_ptr<vbProject>> mRoots;
};

}  // namespace

// Called by Kavrel when it loads the library from the configuration's "plugins/" folder; the
// only symbol the library shows, since everything else is built hidden.
extern "C" KV_API void kavrel_register_plugin(kv::ClassRegistry& registry) {
  registry.add("Outline.Provider", [] { return std::make_shared<OutlineProvider>(); });
}
