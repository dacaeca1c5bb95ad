// What a doc type's plug-in offers the project. Every operation has an empty default so that a
// plug-in implements only what it needs.
#pragma once

#include <memory>
#include <string>

#include "contracts/Object.h"

namespace kv {

class KVProject;
class NamespaceDefs;
class XMLDocument;

class IKVProjectPlugIn {
 public:
  virtual ~IKVProjectPlugIn() = default;

  virtual void ModuleSelectionChanged() {}
  virtual void Initialise(KVProject& /*project*/) {}
  virtual void ProjectLoaded() {}
  virtual void ModuleListChanged() {}
  virtual void PageChanged() {}
  virtual void BeforeSaveProject() {}
  virtual void AfterSaveProject() {}
  // Adds what the plug-in stores to the project document, anywhere in it.
  virtual void SaveXML(XMLDocument& /*doc*/) {}
  // Finds the plug-in's own nodes in the project document; the root carries "DirectLoad".
  virtual void LoadXML(XMLDocument& /*doc*/) {}
  virtual void BeforeBuild() {}
  virtual void BeforeCompile() {}
  virtual void AfterBuild() {}
  virtual bool SomethingToDocument() { return false; }
  virtual void Terminate() {}
  // A collection-like object with a `Count`, or nothing.
  virtual ObjectPtr RootItems(const std::string& /*supportedProperties*/ = {}) { return nullptr; }
  // Number of root items of a kind: "source", "vbsource" or "binary".
  virtual long RootItemTypeCount(const std::string& /*rootItemType*/) { return 0; }
  // The item of that name, accepting the late-bound IncludeFlag and ExcludeFlag, or nothing.
  virtual ObjectPtr GetObjectFromQualifiedName(const std::string& /*qualifiedName*/) { return nullptr; }
  virtual std::string DefaultOutputFolder() { return {}; }
  virtual std::string DefaultOutputFileName() { return {}; }
  virtual std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() { return nullptr; }
  virtual void ProjectChanged() {}
  virtual void UpdateControlStates() {}
  virtual void Reset() {}
};

}  // namespace kv
