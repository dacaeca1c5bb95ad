// The doc types of a project: one for each doc type the installation defines whose plug-in can
// be created. Doc types whose name contains "lumidesk" come after the others.
#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "definitions/Configuration.h"
#include "kavrel/Collection.h"
#include "project/KVDocType.h"

namespace kv {

class KVProject;
class XMLDocument;

class KVDocTypes {
 public:
  using DocTypePtr = std::shared_ptr<KVDocType>;

  const DocTypePtr& Item(long index) const { return mDocTypes.Item(index); }
  const DocTypePtr& Item(std::string_view name) const { return mDocTypes.Item(name); }
  void Remove(std::string_view name) { mDocTypes.Remove(name); }
  // Adds under `Key`, or under the doc type's name when no key is given; a taken key fails.
  void Add(DocTypePtr Item, std::string_view Key = {}, std::optional<long> Before = {}, std::optional<long> After = {});
  long Count() const { return mDocTypes.Count(); }
  auto begin() const { return mDocTypes.begin(); }
  auto end() const { return mDocTypes.end(); }

  void LoadFromKVProjectXML(XMLDocument& doc) { LoadFromKVProjectXMLEx(doc, true); }
  // One "DocType" element for each populated doc type, each followed by its plug-in's own nodes.
  void SaveToKVProjectXML(XMLDocument& doc) const;
  // The doc types whose plug-ins have something to document, in order; built anew on each call.
  KVDocTypes PopulatedDocTypes() const;
  // The populated doc type that supplies the help templates, else the first populated one
  // (fails when none is populated).
  DocTypePtr HelpTemplatesFrom() const;
  void HelpTemplatesFrom(const DocTypePtr& docType);
  // The first doc type with this very template among its templates, or nothing.
  DocTypePtr DocTypeFromTemplate(const std::shared_ptr<Template>& Template) const;
  // The root namespace definitions of the doc types' templates, the first of each name.
  kv::NamespaceDefs NamespaceDefs() const;
  void BeforeBuild() const;
  void AfterBuild() const;
  // The templates of the populated doc types, the first of each name.
  kv::Templates Templates() const;
  void ProjectLoaded() const;
  void ResetPlugIns() const;
  // Loads the "DocType" elements into their doc types, then, when `LoadPlugIn`, lets every
  // plug-in, populated or not, read the document.
  void LoadFromKVProjectXMLEx(XMLDocument& doc, bool LoadPlugIn = true);

  // Creates the doc types of the installation with their plug-ins; a doc type whose plug-in
  // cannot be created is left out without a word.
  void Populate(KVProject& project);

 private:
  Collection<DocTypePtr> mDocTypes;
};

}  // namespace kv
