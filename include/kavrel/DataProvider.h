// The callback interface through which a page layout gets its data: the template parser calls
// `ProvideData` for every tag, and text expansion calls `GetProperty` and `ProvideData` for
// %%name%% references. The common provider implements it, and plug-ins may.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "kavrel/Export.h"
#include "kavrel/Object.h"

namespace kv {

class FileSystem;
class NamespaceDef;
class ParserElement;
class ParserTemplate;

class KV_API DataProvider {
 public:
  virtual ~DataProvider() = default;

  // Answers one tag. `FileSystemObject` is the open output file (it may be null outside a page);
  // a tag may write to it or replace it, and then usually answers "{Discard}".
  virtual std::string ProvideData(ParserElement& Element, std::shared_ptr<FileSystem>& FileSystemObject) = 0;
  // Called before a page is rendered with `Template`.
  virtual void Initialise(const std::shared_ptr<ParserTemplate>& Template) = 0;
  virtual void Terminate() = 0;
  virtual void CurrentRootItem(ObjectPtr item) = 0;
  virtual ObjectPtr CurrentRootItem() const = 0;
  virtual void CurrentParentItem(ObjectPtr item) = 0;
  virtual ObjectPtr CurrentParentItem() const = 0;
  virtual void CurrentItemType(std::string_view itemType) = 0;
  virtual std::string CurrentItemType() const = 0;
  virtual void CurrentItem(ObjectPtr item) = 0;
  virtual ObjectPtr CurrentItem() const = 0;
  virtual void NamespaceDef(std::shared_ptr<kv::NamespaceDef> namespaceDef) = 0;
  virtual std::shared_ptr<kv::NamespaceDef> NamespaceDef() const = 0;
  // Sets namespace definition, item, item type and parent at once.
  virtual void SetCurrentItem(const std::shared_ptr<kv::NamespaceDef>& NamespaceDef, const ObjectPtr& Item,
                              std::string_view ItemType, const ObjectPtr& ParentItem) = 0;
  // Expands %%name%% references in `Text`.
  virtual std::string ParseForProperties(std::string_view Text) = 0;
  // Answers one property.
  virtual std::string GetProperty(std::string_view Name) = 0;
  // A provider with the same current item, root item and project.
  virtual std::shared_ptr<DataProvider> Clone() = 0;
};

}  // namespace kv
