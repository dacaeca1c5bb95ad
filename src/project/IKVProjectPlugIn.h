// What a doc type's plug-in offers the project. Every operation has an empty default so that a
// plug-in implements only what it needs.
#pragma once

#include <string>

namespace kv {

class KVProject;

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
  virtual void BeforeBuild() {}
  virtual void BeforeCompile() {}
  virtual void AfterBuild() {}
  virtual bool SomethingToDocument() { return false; }
  virtual void Terminate() {}
  // Number of root items of a kind: "source", "vbsource" or "binary".
  virtual long RootItemTypeCount(const std::string& /*rootItemType*/) { return 0; }
  virtual std::string DefaultOutputFolder() { return {}; }
  virtual std::string DefaultOutputFileName() { return {}; }
  virtual void ProjectChanged() {}
  virtual void UpdateControlStates() {}
  virtual void Reset() {}
};

}  // namespace kv
