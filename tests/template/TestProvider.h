// A data provider for tests: properties from a map, tags described back as text, and a log of
// every call, so that tests see exactly what the parser and the expansion asked for.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kavrel/DataProvider.h"
#include "kavrel/ParserElement.h"
#include "template/TextExpansion.h"

namespace kv::testing {

class TestProvider : public DataProvider {
 public:
  std::map<std::string, std::string> properties;
  // Answers tags when set; otherwise a tag comes back as "[type|name=value|...]".
  std::function<std::string(ParserElement&, std::shared_ptr<FileSystem>&)> onData;
  std::vector<std::string> calls;

  static std::string describe(const ParserElement& element) {
    std::string s = "[";
    const auto& parameters = element.Parameters();
    for (long i = 1; i <= parameters.Count(); ++i)
      s += (s.size() > 1 ? "|" : "") + parameters.Key(i) + "=" + parameters.Item(i);
    return s + "]";
  }

  std::string ProvideData(ParserElement& Element, std::shared_ptr<FileSystem>& file) override {
    calls.push_back("data" + describe(Element));
    return onData ? onData(Element, file) : describe(Element);
  }
  std::string GetProperty(std::string_view Name) override {
    calls.push_back("property:" + std::string(Name));
    auto it = properties.find(std::string(Name));
    return it != properties.end() ? it->second : "!UNRECOGNISED ELEMENT TYPE '" + std::string(Name) + "'!";
  }
  std::string ParseForProperties(std::string_view Text) override { return ParseForProviderProperties(Text, *this); }

  void Initialise(const std::shared_ptr<ParserTemplate>&) override {}
  void Terminate() override {}
  void CurrentRootItem(ObjectPtr item) override { mRoot = std::move(item); }
  ObjectPtr CurrentRootItem() const override { return mRoot; }
  void CurrentParentItem(ObjectPtr item) override { mParent = std::move(item); }
  ObjectPtr CurrentParentItem() const override { return mParent; }
  void CurrentItemType(std::string_view itemType) override { mItemType = itemType; }
  std::string CurrentItemType() const override { return mItemType; }
  void CurrentItem(ObjectPtr item) override { mItem = std::move(item); }
  ObjectPtr CurrentItem() const override { return mItem; }
  void NamespaceDef(std::shared_ptr<kv::NamespaceDef> def) override { mNamespaceDef = std::move(def); }
  std::shared_ptr<kv::NamespaceDef> NamespaceDef() const override { return mNamespaceDef; }
  void SetCurrentItem(const std::shared_ptr<kv::NamespaceDef>& def, const ObjectPtr& item, std::string_view itemType,
                      const ObjectPtr& parent) override {
    mNamespaceDef = def;
    mItem = item;
    mItemType = itemType;
    mParent = parent;
  }
  std::shared_ptr<DataProvider> Clone() override { return std::make_shared<TestProvider>(*this); }

 private:
  ObjectPtr mRoot, mParent, mItem;
  std::string mItemType;
  std::shared_ptr<kv::NamespaceDef> mNamespaceDef;
};

}  // namespace kv::testing
