// The project's side of the plug-in contract: namespace providers, plug-in resets and the files
// that plug-ins and templates add to the output.
#include "comments/ProviderBinding.h"
#include "host/FailureHandler.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/XmlDocument.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {
namespace {
constexpr const char* kModule = "KVProject";
}

std::shared_ptr<IKVProject> NewKVProject() {
  return KVProject::New();
}

std::weak_ptr<IKVProject> KVProject::WeakReference() {
  return std::static_pointer_cast<KVProject>(shared_from_this());
}

std::string KVProject::DocTypeOfPlugIn(const IKVProjectPlugIn& PlugIn) const {
  for (const auto& docType : *DocTypes)
    if (docType->ProjectPlugIn().get() == &PlugIn) return docType->Name();
  return {};
}

std::shared_ptr<INamespaceProvider> KVProject::GetNamespaceProvider(const std::string& Handler) {
  return guard<std::shared_ptr<INamespaceProvider>>(kModule, [&]() -> std::shared_ptr<INamespaceProvider> {
    if (!mNamespaceProviders) mNamespaceProviders = std::make_shared<Collection<std::shared_ptr<INamespaceProvider>>>();
    const auto self = std::static_pointer_cast<KVProject>(shared_from_this());
    if (const auto* cached = mNamespaceProviders->Find(Handler)) {
      (*cached)->KVProject(self);
      return *cached;
    }
    auto provider = std::dynamic_pointer_cast<INamespaceProvider>(ClassRegistry::instance().tryCreate(Handler));
    if (!provider) return nullptr;
    provider->KVProject(self);
    mNamespaceProviders->Add(provider, Handler);
    return provider;
  });
}

std::shared_ptr<kv::DataProvider> KVProject::DataProviderOf(INamespaceProvider& Provider) {
  if (auto own = Provider.DataProvider()) return own;
  auto& made = mDataProviders[&Provider];
  if (!made && DataProviderFactory) made = DataProviderFactory(*this);
  return made;
}

void KVProject::ResetPlugIns() {
  guard(kModule, [&] {
    XMLDocument doc;
    if (!doc.LoadXML(Save())) throw Failure(err::InvalidProcedureCall, doc.ParseError());
    DocTypes->ResetPlugIns();
    LoadDocTypes(doc, true);
    // The reloaded plug-ins hold new items, which must learn their exclusions again.
    ApplyNamespaceExclusions();
  });
}

void KVProject::OtherContentCreated(const std::string& FileName) {
  guard(kModule, [&] {
    std::shared_ptr<Template> tmpl;
    if (mCurrentDocType) ignoreFailure([&] { tmpl = mCurrentDocType->Template(); });
    if (tmpl && tmpl->NamespaceDefs.Count() > 0)
      if (const auto provider = GetNamespaceProvider(tmpl->NamespaceDefs.Item(1)->Handler))
        provider->PageOutput(nullptr, nullptr, FileName, false, false);
    FireContentCreated(FileName);
  });
}

}  // namespace kv

namespace kv {

std::shared_ptr<ContentBinding> KVProject::CommentFileBinding(const std::string& DocType) {
  std::shared_ptr<KVDocType> docType;
  std::shared_ptr<NamespaceDef> rootDef;
  ignoreFailure([&] { docType = DocTypes->Item(DocType); });
  if (!docType) return nullptr;
  ignoreFailure([&] { rootDef = docType->Template()->NamespaceDefs.Item(1); });
  const auto provider = docType->NamespaceProvider();
  if (!provider) return nullptr;
  std::weak_ptr<KVProject> self = std::static_pointer_cast<KVProject>(shared_from_this());
  return std::make_shared<ProviderBinding>(provider, rootDef, [self](const std::string& handler) {
    const auto project = self.lock();
    return project ? project->GetNamespaceProvider(handler) : nullptr;
  });
}

}  // namespace kv
