// Model comments: comments applied to every item of a kind whose name matches, kept in named
// profiles of the installation or with a project's doc type.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kavrel/Collection.h"
#include "services/Subscribers.h"

namespace kv {

class XMLNode;

// One comment that is applied to every item of a kind whose name matches.
class ModelComment {
 public:
  std::string ItemKind;  // the namespace definition name it is for
  std::string ItemName;  // a name or a wildcard pattern
  std::string TagIdentifier;
  std::string Text;
  bool OnlyIfBlank = false;

  const std::string& NamespaceName() const { return ItemKind; }
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;
};

class ModelCommentsEvents {
 public:
  virtual ~ModelCommentsEvents() = default;
  virtual void DirtyStateChanged() {}
};

// A set of model comments: a named profile, or the comments specific to one doc type.
class ModelComments {
 public:
  std::string Name() const { return mName; }
  void Name(std::string_view name) { mName = name; }

  void Add(std::shared_ptr<ModelComment> Item, std::string_view Key = {}, std::optional<long> Before = {},
           std::optional<long> After = {});
  void Remove(long index);
  long Count() const { return mItems.Count(); }
  const std::shared_ptr<ModelComment>& Item(long index) const { return mItems.Item(index); }
  auto begin() const { return mItems.begin(); }
  auto end() const { return mItems.end(); }

  // Writes a "ModelComment" child for each comment below `e`, and the name as attribute "Name".
  void Save(XMLNode& e) const;
  // Replaces the comments by those of the "ModelComment" children of `e`, so that loading the
  // same element again (as a plug-in reset does) keeps one copy of each.
  void Load(const XMLNode& e);

  void Subscribe(std::weak_ptr<ModelCommentsEvents> subscriber);

 private:
  void RaiseDirtyStateChanged();
  std::string mName;
  Collection<std::shared_ptr<ModelComment>> mItems;
  Subscribers<ModelCommentsEvents> mSubscribers;
};

class ModelCommentProfiles : public Collection<std::shared_ptr<ModelComments>> {};

}  // namespace kv
