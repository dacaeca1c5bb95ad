// Applying a comment file's comments to the items of its doc type. Comments are tied to items by
// qualified name only; the file's document keeps exactly the comments not yet applied, so each
// later pass over it touches only what is left.
#include "comments/ContentDates.h"
#include "comments/KVContentFile.h"
#include "comments/TaggedCommentServices.h"
#include "definitions/Configuration.h"
#include "host/FailureHandler.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"
#include "kavrel/model/Block.h"
#include "kavrel/model/Item.h"
#include "kavrel/model/TaggedComments.h"

namespace kv {

namespace {

constexpr std::string_view kModule = "KVContentFile";

// Definitions with "t" in their kinds are kept out of walks over comment-bearing items. The walk
// of a load on demand reads the letter as written, FindItems in either case.
bool walksComments(const NamespaceDef& def, bool ignoreCase) {
  const std::string kinds = ignoreCase ? text::toLower(def.ChildKinds) : def.ChildKinds;
  return kinds.find('t') == std::string::npos;
}

// Where a comment lands: an item of the model, or an orphan.
struct Target {
  std::shared_ptr<Item> item;
  std::shared_ptr<KVOrphanedItem> orphan;

  std::shared_ptr<TaggedComments> comments() const { return item ? item->TaggedCommentsPtr() : orphan->TaggedComments; }
  void appendToDescription(std::string text, long wrapType) const {
    if (orphan) {
      comments::AppendDescription(orphan->TaggedDescription, text, wrapType);
      return;
    }
    // Item kinds differ in what they offer: the tagged description, else the plain one.
    const bool tagged = ignoreFailure([&] {
      std::string description = item->get("TaggedDescription").toString(), added = text;
      comments::AppendDescription(description, added, wrapType);
      item->set("TaggedDescription", description);
    });
    if (!tagged)
      ignoreFailure([&] {
        std::string description = item->Description();
        comments::AppendDescription(description, text, wrapType);
        item->Description(description);
      });
  }
};

}  // namespace

bool KVContentFile::FilterMatch(std::string_view Filter, std::string_view Name) {
  if (Filter.empty()) return true;
  const std::string prefix = std::string(Filter) + "~";
  if (text::left(Name, text::length(prefix)) == prefix) return true;
  return text::equalsIgnoreCase(Name, Filter);
}

void KVContentFile::ApplyContent(const std::string& QualifiedName) {
  InternalApplyContent(QualifiedName, false);
}

void KVContentFile::InternalApplyContent(const std::string& QualifiedNameFilter, bool AddOrphanedItems) {
  guard(kModule, [&] {
    if (!mContentDoc) return;
    const auto provider = binding().NamespaceProvider();
    const bool isDotNet = text::equalsIgnoreCase(DocType, "kv.net");
    const auto defs = ConfiguredTaggedCommentDefs();
    const XMLNodes children = mContentDoc->RootNode().ChildNodes();
    for (auto it = children.begin(); it != children.end();) {
      XMLNode c = *it;
      ++it;  // before `c` may leave the document
      if (c.Name() != "c") continue;
      const XMLAttributes attributes = c.Attributes();
      const std::string qName = attributes.ValueOr("eid");
      if (!FilterMatch(QualifiedNameFilter, qName)) continue;

      Target target;
      if (provider)
        ignoreFailure([&] { target.item = std::dynamic_pointer_cast<Item>(provider->GetItemByQualifiedName(qName)); });
      if (!target.item && (!QualifiedNameFilter.empty() || AddOrphanedItems)) {
        if (OrphanedItems->Exists(qName)) {
          target.orphan = OrphanedItems->Item(qName);
        } else {
          target.orphan = std::make_shared<KVOrphanedItem>();
          target.orphan->OldQualifiedName = qName;
          OrphanedItems->Add(target.orphan, qName);
        }
      }
      std::string tid = attributes.ValueOr("tid");
      if (tid == "##XMLCOMMENT" || (!target.item && !target.orphan)) continue;

      const auto comments = target.comments();
      comments->CollectionIsNotKeyed_SearchByTagID(true);
      auto tc = std::make_shared<TaggedComment>();
      if (target.item) tc->Parent(target.item);
      tc->TaggedCommentDefs(defs);
      if (isDotNet && tid == "##RETURNS") {
        const auto block = std::dynamic_pointer_cast<Block>(target.item);
        if ((block && block->IsProperty()) || (target.item && TypeMatch(target.item, "Variable"))) tid = "##VALUE";
      }
      tc->TagIdentifier(tid);
      if (const auto def = tc->TaggedCommentDef(); def && !def->UpgradedTagIdentifier.empty())
        tc->TagIdentifier(def->UpgradedTagIdentifier);
      tc->Qualifier(attributes.ValueOr("q"));
      tc->Description(c.Text());
      ignoreFailure([&] { tc->CommentDate(contentdate::FromDayNumber(attributes.ValueOr("cd"))); });
      comments->Add(tc, tc->Key());
      if (const auto def = tc->TaggedCommentDef(); def && def->AppendToDescription)
        target.appendToDescription(tc->Description(), def->WrapType);
      ++LoadCount;
      c.Remove();
    }
  });
}

std::shared_ptr<std::vector<ObjectPtr>> KVContentFile::FindItems(const ObjectPtr& Item,
                                                                 const std::shared_ptr<NamespaceDef>& NamespaceDef,
                                                                 bool HasContent,
                                                                 std::shared_ptr<std::vector<ObjectPtr>> Collection) {
  if (!Collection) Collection = std::make_shared<std::vector<ObjectPtr>>();
  if (!Item) return Collection;
  if (comments::SupportsTaggedComments(Item)) {
    ApplyContent(Item->get("QualifiedName").toString());
    if (HasContent == comments::ItemHasTaggedComments(Item)) Collection->push_back(Item);
  }
  if (!NamespaceDef) return Collection;
  for (const auto& child : NamespaceDef->ChildNamespaceDefs) {
    if (!walksComments(*child, true)) continue;
    const auto provider = binding().ProviderOf(*child);
    if (!provider) continue;
    const ItemCollection items = provider->GetItems(child, Item, "forsave=true,includeall=true");
    if (items)
      for (const auto& below : *items) FindItems(below, child, HasContent, Collection);
  }
  return Collection;
}

void KVContentFile::ItemPopulatedEx(const ObjectPtr& Item, const std::string& RelevantContentFilter) {
  guard(kModule, [&] {
    if (!mSpellTempFile.empty() && binding().RootNamespaceDef()) AppendItemNames(Item);
    ApplyContent(RelevantContentFilter);
    mSubscribers.Raise([&](KVContentFileEvents& e) { e.ItemPopulated(Item, RelevantContentFilter); });
  });
}

void KVContentFile::FullyPopulate() {
  guard(kModule, [&] {
    if (!LoadOnDemand || mFullyPopulated) return;
    if (const auto def = binding().RootNamespaceDef()) InternalFullyPopulate(mRootItem, *def);
    mFullyPopulated = true;
  });
}

void KVContentFile::InternalFullyPopulate(const ObjectPtr& Item, const NamespaceDef& NamespaceDef) {
  if (!Item) return;
  if (const auto provider = binding().NamespaceProvider()) {
    const std::string filter = provider->ContentFilterOfItem(Item);
    if (!filter.empty()) ApplyContent(filter);
  }
  for (const auto& child : NamespaceDef.ChildNamespaceDefs) {
    if (!walksComments(*child, false)) continue;
    const auto provider = binding().ProviderOf(*child);
    if (!provider) continue;
    const ItemCollection items = provider->GetItems(child, Item, "forsave=true");
    if (items)
      for (const auto& below : *items) InternalFullyPopulate(below, *child);
  }
}

}  // namespace kv
