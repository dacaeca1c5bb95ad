#include "comments/ProviderBinding.h"

#include "comments/KVContentFile.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "kavrel/INamespaceFilter.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"

namespace kv {

ProviderBinding::ProviderBinding(std::shared_ptr<INamespaceProvider> provider, std::shared_ptr<NamespaceDef> rootDef,
                                 ProviderLookup lookup)
    : mProvider(std::move(provider)), mRootDef(std::move(rootDef)), mLookup(std::move(lookup)) {}

std::string ProviderBinding::RelativeMoniker(const std::string& moniker, const std::string& path) {
  return mProvider->RelativeMoniker(moniker, path);
}

std::string ProviderBinding::AbsoluteMoniker(const std::string& moniker, const std::string& path) {
  return mProvider->AbsoluteMoniker(moniker, path);
}

std::shared_ptr<INamespaceProvider> ProviderBinding::ProviderOf(const NamespaceDef& def) {
  // A definition without a handler of its own lists items of the same provider.
  if (def.Handler.empty()) return mProvider;
  std::shared_ptr<INamespaceProvider> provider;
  if (mLookup) ignoreFailure([&] { provider = mLookup(def.Handler); });
  return provider;
}

bool ProviderBinding::Bind(KVContentFile& file) {
  if (!mProvider->ItemExists(file.ItemMoniker)) {
    std::string shown = file.ItemMoniker;
    shown = text::replaceAll(text::replaceAll(shown, "\r", ""), "\n", "");
    const int answer = file.ShowMessage(
        "The item referenced by this Content File could not be found. Please press OK to identify the new location "
        "of this item, or Cancel to abort loading the Content File.\r\n\r\n[" +
            shown + "]",
        mb::OKCancel | mb::Exclamation, "Item not found");
    const std::string moved = answer == mb::Cancel ? std::string() : mProvider->BrowseForItem(file.ItemMoniker);
    file.ItemMoniker = moved;
    if (moved.empty()) return false;
  }
  if (auto* filter = dynamic_cast<INamespaceFilter*>(mProvider.get())) {
    filter->LoadIncludeFilter(file.LoadIncludeFilter);
    filter->LoadExcludeFilter(file.LoadExcludeFilter);
    filter->LoadPrivateItems(file.LoadPrivate);
    filter->LoadOnDemand(file.LoadOnDemand);
  }
  const std::string key = text::toLower(mProvider->GeneratorName());
  const bool sourceComments = (key == "kv.net" || key == "kv.ajax") && file.LoadSourceComments;
  const ObjectPtr root = mProvider->LoadRootItem(file.ItemMoniker + (sourceComments ? ";loadsourcecomments" : ""));
  file.RootItem(root);
  mProvider->SetRootItem(root);
  return true;
}

void ProviderBinding::ForEachItem(const ObjectPtr& root, const ItemVisitor& visit) {
  if (!root) return;
  visit(root);
  if (mRootDef) visitBelow(root, *mRootDef, visit);
}

void ProviderBinding::visitBelow(const ObjectPtr& item, const NamespaceDef& def, const ItemVisitor& visit) {
  for (const auto& child : def.ChildNamespaceDefs) {
    if (text::toLower(child->ChildKinds).find('t') != std::string::npos) continue;
    const auto provider = ProviderOf(*child);
    if (!provider) continue;
    const ItemCollection items =
        provider->GetItems(child, item, "forsave=true,IgnoreNamespaceIncludeFlag=true,includeall=true");
    if (!items) continue;
    for (const auto& below : *items) {
      visit(below);
      visitBelow(below, *child, visit);
    }
  }
}

}  // namespace kv
