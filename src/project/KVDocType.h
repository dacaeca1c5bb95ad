// One kind of thing a project documents, bound to its plug-in and to the template chosen for it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "contracts/Configuration.h"
#include "project/IKVProjectPlugIn.h"
#include "project/TOCSource.h"

namespace kv {

class KVProject;
class XMLNode;

class KVDocType {
 public:
  KVDocType(std::string name, std::shared_ptr<IKVProjectPlugIn> plugIn)
      : mName(std::move(name)), mPlugIn(std::move(plugIn)) {}

  // Bound to this doc type when the doc type joins a KVDocTypes.
  std::shared_ptr<kv::TOCSource> TOCSource = std::make_shared<kv::TOCSource>();
  // This doc type supplies the help templates of the project.
  bool UseHelpTemplates = false;
  std::shared_ptr<kv::ModelComments> ModelComments = std::make_shared<kv::ModelComments>();
  std::weak_ptr<kv::KVProject> KVProject;

  const std::string& Name() const { return mName; }
  const std::shared_ptr<IKVProjectPlugIn>& ProjectPlugIn() const { return mPlugIn; }
  void ReleasePlugIn() { mPlugIn.reset(); }

  bool SomethingToDocument() const { return mPlugIn && mPlugIn->SomethingToDocument(); }
  long SourceItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("source") : 0; }
  long BinaryItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("binary") : 0; }
  long VBSourceItemCount() const { return mPlugIn ? mPlugIn->RootItemTypeCount("vbsource") : 0; }
  // The number of the plug-in's root items.
  long ItemCount() const;

  // The installed templates that serve this doc type.
  std::vector<std::shared_ptr<kv::Template>> Templates() const;
  // The chosen template; the first that serves this doc type until one is chosen, nothing if
  // none does.
  std::shared_ptr<kv::Template> Template();
  // A template that does not serve this doc type marks the project changed and is not taken.
  void Template(const std::shared_ptr<kv::Template>& v);

  void Save(XMLNode& e) const;
  void Load(const XMLNode& e);

 private:
  std::string mName;
  std::shared_ptr<IKVProjectPlugIn> mPlugIn;
  std::shared_ptr<kv::Template> mSelectedTemplate;
};

}  // namespace kv
