// Model comments: gathered before the walk, applied to each root item and everything below it
// whose definition takes them ("m" among its child kinds) and whose name matches.
#include "comments/TaggedCommentServices.h"
#include "definitions/Configuration.h"
#include "definitions/ModelComments.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Model.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "output/PageGeneration.h"
#include "project/KVProject.h"
#include "project/ModelCommentCollections.h"
#include "services/Like.h"

namespace kv {

namespace {

// The kind of comment that is an item's description itself rather than a comment beside it.
constexpr std::string_view kDescriptionTag = "##DESCRIPTION";

}  // namespace

void PageGeneration::SetModelComments(const std::vector<std::shared_ptr<ModelComment>>& Comments) {
  mProject.ModelCommentCollections = std::make_shared<ModelCommentCollections>();
  for (const auto& comment : Comments) mProject.ModelCommentCollections->Add(comment);
}

ObjectPtr PageGeneration::GetVBProjectFromRootItem(const ObjectPtr& RootItem) {
  if (!RootItem) return nullptr;
  if (TypeMatch(RootItem, "Assembly")) {
    ObjectPtr project;
    ignoreFailure([&] { project = RootItem->get("vbProject").toObject(); });
    return project;
  }
  return TypeMatch(RootItem, "vbProject") ? RootItem : nullptr;
}

void PageGeneration::ApplyAllModelComments(const std::shared_ptr<NamespaceDef>& Def, INamespaceProvider& Provider,
                                           const ObjectPtr& Item) {
  const auto ddp = mProject.DataProviderOf(Provider);
  std::string name;
  ignoreFailure([&] { name = Item->get("Name").toString(); });
  const auto& collections = *mProject.ModelCommentCollections;
  if (!name.empty() && collections.Count() > 0 && Def->ChildKinds.find('m') != std::string::npos) {
    const ObjectPtr project = ddp ? GetVBProjectFromRootItem(ddp->CurrentRootItem()) : nullptr;
    if (const auto* exact = collections.Exact(Def->Name, name))
      for (const auto& comment : *exact) AddModelComment(Item, project, *comment);
    if (const auto* wildcards = collections.Wildcards(Def->Name)) MatchModelComments(Item, project, *wildcards);
  }
  // A walk of its own over the children, apart from the page walk.
  for (const auto& child : Def->ChildNamespaceDefs) {
    std::shared_ptr<INamespaceProvider> childProvider;
    ignoreFailure([&] { childProvider = mProject.GetNamespaceProvider(child->Handler); });
    if (!childProvider) continue;
    if (const ItemCollection items = childProvider->GetItems(child, Item, ""))
      for (const auto& childItem : *items) ApplyAllModelComments(child, *childProvider, childItem);
  }
}

void PageGeneration::MatchModelComments(const ObjectPtr& Item, const ObjectPtr& Project,
                                        const std::vector<std::shared_ptr<ModelComment>>& Comments) {
  std::string name;
  ignoreFailure([&] { name = Item->get("Name").toString(); });
  for (const auto& comment : Comments)
    if (Like(name, comment->ItemName)) AddModelComment(Item, Project, *comment);
}

void PageGeneration::AddModelComment(const ObjectPtr& Item, const ObjectPtr& /*Project*/, const ModelComment& Comment) {
  const auto& defs = ConfigurationRoot::instance().TaggedCommentDefs();
  const auto* def = defs.Find(Comment.TagIdentifier);
  if (!def || !*def) return;
  const auto item = std::dynamic_pointer_cast<kv::Item>(Item);
  if (!item) return;

  if (text::equalsIgnoreCase((*def)->TagIdentifier, kDescriptionTag)) {
    std::string existing;
    ignoreFailure([&] { existing = Item->get("TaggedDescription").toString(); });
    std::string text = Comment.Text;
    if (!existing.empty() && Comment.OnlyIfBlank) return;
    if (!existing.empty()) text = comments::AppendDescription(text, existing);
    ignoreFailure([&] { Item->set("TaggedDescription", text); });
    return;
  }
  if (Comment.OnlyIfBlank && comments::ItemHasTaggedComments(Item))
    for (const auto& existing : item->TaggedComments())
      if (!text::trim(existing->Description()).empty() &&
          text::equalsIgnoreCase(existing->TagIdentifier(), Comment.TagIdentifier))
        return;
  comments::AddTaggedComment(item->TaggedComments(),
                             std::make_shared<TaggedComment>(Atom(Comment.TagIdentifier), Comment.Text));
}

}  // namespace kv
