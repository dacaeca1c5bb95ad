// The doc types of a project: one for each doc type the installation defines.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "contracts/Collection.h"
#include "project/KVDocType.h"

namespace kv {

class KVProject;
class XMLDocument;

class KVDocTypes {
 public:
  using DocTypePtr = std::shared_ptr<KVDocType>;

  // Creates the doc types of the installation with their plug-ins; a doc type whose plug-in
  // cannot be created is left out.
  void Populate(KVProject& project);
  void Add(DocTypePtr docType);
  long Count() const { return mDocTypes.Count(); }
  const DocTypePtr& Item(long index) const { return mDocTypes.Item(index); }
  const DocTypePtr& Item(std::string_view name) const { return mDocTypes.Item(name); }
  // The doc types whose plug-ins have something to document.
  std::vector<DocTypePtr> PopulatedDocTypes() const;
  void Clear() { mDocTypes.Clear(); }

  // The populated doc type that supplies the help templates, else the first populated one;
  // nothing when none is populated.
  DocTypePtr HelpTemplatesFrom() const;
  void HelpTemplatesFrom(const DocTypePtr& docType);
  // The first doc type that has this very template among its templates, or nothing.
  DocTypePtr DocTypeFromTemplate(const std::shared_ptr<Template>& tmpl) const;
  // The root namespace definitions of the given doc types' templates, first of each name.
  static NamespaceDefs NamespaceDefsOf(const std::vector<DocTypePtr>& docTypes);

  // The "DocType" elements of the project document, then every plug-in's own nodes.
  void LoadFromKVProjectXMLEx(XMLDocument& doc, bool LoadPlugIn = true);
  void SaveToKVProjectXML(XMLDocument& doc) const;

  auto begin() const { return mDocTypes.begin(); }
  auto end() const { return mDocTypes.end(); }

 private:
  Collection<DocTypePtr> mDocTypes;
};

}  // namespace kv
