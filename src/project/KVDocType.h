// One kind of thing a project documents: it binds the installation's definition, the plug-in
// that knows the sources, and the template chosen for the output.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "definitions/Configuration.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "project/TOCSource.h"

namespace kv {

class KVProject;
class KVContentFile;
class KVContentFiles;
class XMLNode;
class INamespaceProvider;

class KVDocType : public std::enable_shared_from_this<KVDocType> {
 public:
  KVDocType();
  // A doc type of a definition named `name` whose plug-in is already made, for hosts that bind
  // a plug-in object themselves.
  KVDocType(std::string name, std::shared_ptr<IKVProjectPlugIn> plugIn);
  ~KVDocType();

  // The chosen template; nothing until first asked for.
  std::shared_ptr<kv::Template> mSelectedTemplate;
  // Where the table of contents comes from; bound to this doc type when it joins a KVDocTypes.
  std::shared_ptr<kv::TOCSource> TOCSource = std::make_shared<kv::TOCSource>();
  // This doc type supplies the help templates of the project.
  bool UseHelpTemplates = false;
  // The model comments specific to this doc type; a change marks the project dirty.
  std::shared_ptr<kv::ModelComments> ModelComments;
  std::weak_ptr<kv::KVProject> KVProject;

  // Created on first use by the definition's plug-in class name; nothing when that fails.
  std::shared_ptr<IKVProjectPlugIn> ProjectPlugIn();
  // The chosen template, else the first valid one (fails when there is none).
  std::shared_ptr<kv::Template> Template();
  // A template that differs marks the project changed; it is taken only if it serves this doc
  // type.
  void Template(const std::shared_ptr<kv::Template>& v);
  void Initialise(std::shared_ptr<DocTypeDef> TheKVDocTypeDef, std::string_view Name);
  // The installed templates that serve this doc type, keyed by name.
  kv::Templates Templates() const;
  std::string Name() const;
  long SourceItemCount();
  long VBSourceItemCount();
  long BinaryItemCount();
  long ItemCount();
  void Save(XMLNode& e);
  void Load(const XMLNode& e);
  void BeforeBuild();
  void AfterBuild();
  // Copies everything below the template's folder that is not part of the template's machinery
  // into the output folder.
  void CopySupportFiles(const std::shared_ptr<kv::Template>& Template, bool DesignTime = false);
  // The templates that can serve the current root items.
  kv::Templates ValidTemplates();
  std::shared_ptr<INamespaceProvider> NamespaceProvider();
  // Writes a new comment file for `Item` (the plug-in makes the document) and returns its entry,
  // which the caller adds to the project's comment files.
  std::shared_ptr<KVContentFile> CreateNewCommentFileForItem(const ObjectPtr& Item, const std::string& FileName);
  // The project's comment files that belong to `Item`, as the plug-in tells by their monikers.
  std::shared_ptr<KVContentFiles> ItemCommentFiles(const ObjectPtr& Item);
  std::string Description() const;

  bool SomethingToDocument();
  const std::shared_ptr<DocTypeDef>& Definition() const { return mDocTypeDef; }

 private:
  class ModelCommentsListener;
  void PrepNamespaceDefs(NamespaceDef& def);
  long RootItemTypeCount(const std::string& type);

  std::shared_ptr<DocTypeDef> mDocTypeDef;
  std::shared_ptr<IKVProjectPlugIn> mProjectPlugIn;
  std::shared_ptr<ModelCommentsListener> mModelCommentsListener;
};

}  // namespace kv
