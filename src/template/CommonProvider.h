// The data provider behind every page layout. It knows what is being rendered now (the item,
// its parent, the root item of its source and the namespace definition) and answers the
// properties that layouts and texts write as %%name%%, and the tags of a layout.
//
// Items are reached by member name, so that any model a plug-in delivers can be rendered; a
// member an item lacks turns into failure text in the page, never into a stopped build.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kavrel/DataProvider.h"
#include "kavrel/Object.h"

namespace kv {

class KVProject;

class CommonProvider : public DataProvider {
 public:
  // Rendering for the live design view rather than for output.
  bool ForEdit = false;
  // The text of the design view's banner.
  std::string DesignBanner;
  // The column at which the lines of example code wrap; the application sets its own.
  long ExampleWrapLength = 80;

  std::shared_ptr<kv::KVProject> KVProject() const { return mKVProject.lock(); }
  void KVProject(const std::shared_ptr<kv::KVProject>& project) { mKVProject = project; }

  // Forgets item, namespace definition, parent and root item; the item type, ForEdit and the
  // banner stay.
  void Reset();

  std::string ProvideData(ParserElement& Element, std::shared_ptr<FileSystem>& FileSystemObject) override;
  void Initialise(const std::shared_ptr<ParserTemplate>&) override {}
  void Terminate() override {}
  void CurrentRootItem(ObjectPtr item) override { mCurrentRootItem = std::move(item); }
  ObjectPtr CurrentRootItem() const override { return mCurrentRootItem; }
  void CurrentParentItem(ObjectPtr item) override { mCurrentParentItem = std::move(item); }
  ObjectPtr CurrentParentItem() const override { return mCurrentParentItem; }
  void CurrentItemType(std::string_view itemType) override { mCurrentItemType = itemType; }
  std::string CurrentItemType() const override { return mCurrentItemType; }
  void CurrentItem(ObjectPtr item) override { mCurrentItem = std::move(item); }
  ObjectPtr CurrentItem() const override { return mCurrentItem; }
  void NamespaceDef(std::shared_ptr<kv::NamespaceDef> def) override { mNamespaceDef = std::move(def); }
  std::shared_ptr<kv::NamespaceDef> NamespaceDef() const override { return mNamespaceDef; }
  // Sets definition, item, item type and parent; the root item stays.
  void SetCurrentItem(const std::shared_ptr<kv::NamespaceDef>& NamespaceDef, const ObjectPtr& Item,
                      std::string_view ItemType, const ObjectPtr& ParentItem) override;
  // Up to three passes of %%name%% expansion; a name is looked up whole, parameters and all.
  std::string ParseForProperties(std::string_view Text) override;
  // One property; failures come back as "!ERROR <number>.<step> FETCHING PROPERTY!".
  std::string GetProperty(std::string_view Name) override;
  // A provider for a nested rendering: same definition, items and project, rendering for output.
  std::shared_ptr<DataProvider> Clone() override;

 private:
  struct Row;
  std::string InternalParseForProperties(std::string_view Text);
  std::string VariableLookup(std::string_view Name);
  // The "xml" tag: the document the tag names in its wrapper scrap.
  std::string xmlTag(const ParserElement& Element);
  // The tags that show the current item (CommonProviderItemTags.cpp); nothing for another type.
  std::optional<std::string> itemTag(const std::string& type, const ParserElement& Element);
  std::string itemsTag(const ParserElement& Element);
  // A comma list of names in `text` with each name that an item of the page's provider answers,
  // in the item's scope or one around it, made a link to that item's page.
  std::string linkItemNames(const std::string& text);
  // `text` in the tag's scrap, where "%%Caption%%" is the tag's phrase and "%%Text%%" the text;
  // nothing when the text is empty.
  std::string section(const ParserElement& Element, const std::string& text);
  // A scrap's text as the "scrap" tag gives it: properties, then phrases, expanded.
  std::string expandScrap(std::string_view text);
  std::string expandPhrases(std::string_view text);

  // The rows of the property table, see CommonProvider.cpp.
  std::string itemQualifiedName();
  std::string parentQualifiedName();
  std::string itemName();
  std::string parentItemName();
  std::string projectGroupTitle();
  std::string projectFileName();
  std::string helpFileName();
  std::string shortHelpFileName();
  std::string relativeHelpFileName();
  std::string hhNamespace();
  std::string hhIdentifier();
  std::string fileName();
  std::string defaultTopic();
  std::string itemType();
  std::string keywordTarget();
  std::string keyword();
  std::string metaCharset();
  std::string localeString();
  std::string charset();
  std::string year();
  std::string longDate();
  std::string shortDate();
  std::string longTime();
  std::string shortTime();
  std::string generalDate();
  std::string designItem();
  std::string tcid();
  std::string linkCategoryName();
  std::string exampleLanguageCaption();
  std::string communityProxyTargetURL();
  std::string communityBaseURL();
  std::string communityProjectKey();
  std::string communityItemID();
  std::string phraseLanguage();

  const Object& item() const;
  std::shared_ptr<kv::KVProject> project() const;
  // Whether the page belongs to a designer-built project's namespace, where design markup is off.
  bool designSkipped() const;

  ObjectPtr mCurrentItem, mCurrentParentItem, mCurrentRootItem;
  std::shared_ptr<kv::NamespaceDef> mNamespaceDef;
  std::string mCurrentItemType;
  std::weak_ptr<kv::KVProject> mKVProject;
};

}  // namespace kv
