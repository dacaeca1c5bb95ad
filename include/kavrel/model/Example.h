// Examples of an item: code with its language and title, from the model or from comments.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/model/MemberTable.h"

namespace kv {

class KV_API Example : public Object {
 public:
  std::string typeName() const override { return "Example"; }
  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;
  static const MemberTable& exampleTable();

  std::string FileName;  // the file the code comes from, if any
  std::string Code;
  std::string Language;
  std::string Title;
  std::string Caption;
  std::string Item;  // the qualified name of the item the example belongs to
  // Which comment the example was taken from: the item's qualified name, "|", the comment's kind.
  std::string TaggedCommentID;
  std::string BaseFolder;    // the folder a relative `FileName` is read from
  bool FromComment = false;  // made from an example comment rather than delivered by the model
  bool Highlight = true;     // colour the code by its language
};

class KV_API Examples : public Object {
 public:
  std::string typeName() const override { return "Examples"; }
  Variant get(std::string_view member) const override;
  Variant call(std::string_view member, const Arguments& args = {}) override;
  static const MemberTable& examplesTable();

  long Count() const { return long(mItems.size()); }
  void Add(std::shared_ptr<kv::Example> example) { mItems.push_back(std::move(example)); }
  // By 1-based position; fails with "Subscript out of range".
  const std::shared_ptr<kv::Example>& Item(long index) const;
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

 private:
  std::vector<std::shared_ptr<kv::Example>> mItems;
};

}  // namespace kv
