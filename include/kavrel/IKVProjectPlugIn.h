// The contract of a doc type's plug-in: one object for each doc type of each project, created by
// class name from the definition's plug-in class. Every operation has an empty default, so that a
// plug-in implements only what it needs. A plug-in class derives from `Object` too, so that the
// class registry can create it (see docs/configuration.md).
//
// Order of calls: creation; Initialise; InitialiseHost in an interactive host; LoadXML;
// ProjectLoaded; change and page operations; for each build BeforeBuild, BeforeCompile,
// AfterBuild; SaveXML between BeforeSaveProject and AfterSaveProject; Reset and LoadXML again on
// request; Terminate.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/Object.h"

namespace kv {

class IKVProject;
class NamespaceDefs;
class XMLDocument;
class IKVProjectHost;

class KV_API IKVProjectPlugIn {
 public:
  virtual ~IKVProjectPlugIn();

  // The selection in the host's list changed.
  virtual void ModuleSelectionChanged() {}
  // Once, directly after creation.
  virtual void Initialise(IKVProject& /*project*/) {}
  // Only in an interactive host.
  virtual void InitialiseHost(const std::shared_ptr<IKVProjectHost>& /*ProjectHost*/) {}
  // By the host after a project was loaded.
  virtual void ProjectLoaded() {}
  virtual void ModuleListChanged() {}
  virtual void PageChanged() {}
  virtual void BeforeSaveProject() {}
  virtual void AfterSaveProject() {}
  // Adds what the plug-in stores to the project document, anywhere in it. Called only when the
  // plug-in has something to document, after its doc type's "DocType" element is in.
  virtual void SaveXML(XMLDocument& /*doc*/) {}
  // Finds the plug-in's own nodes in the project document; the root carries the attribute
  // "DirectLoad". Called for every plug-in, populated or not.
  virtual void LoadXML(XMLDocument& /*doc*/) {}
  // The host leaves a settings page; returns an error text, empty when the page is valid.
  virtual std::string ValidatePage(const std::string& /*PageName*/) { return {}; }
  virtual void BeforeBuild() {}
  virtual void BeforeCompile() {}
  virtual void AfterBuild() {}
  // Whether the doc type is populated: decides everywhere whether it takes part.
  virtual bool SomethingToDocument() { return false; }
  virtual void Terminate() {}
  // A collection-like object with a late-bound `Count`, or nothing.
  virtual ObjectPtr RootItems(const std::string& /*SupportedProperties*/ = {}) { return nullptr; }
  // Number of root items of a kind: "source", "vbsource" or "binary".
  virtual long RootItemTypeCount(const std::string& /*RootItemType*/) { return 0; }
  // The contents of a root item.
  virtual Variant ModuleItems(const ObjectPtr& /*RootItem*/) { return {}; }
  // The item of that name, accepting the late-bound IncludeFlag and ExcludeFlag, or nothing.
  virtual ObjectPtr GetObjectFromQualifiedName(const std::string& /*QualifiedName*/) { return nullptr; }
  virtual std::string DefaultOutputFolder() { return {}; }
  virtual std::string DefaultOutputFileName() { return {}; }
  virtual void AddRootItem(const std::string& /*Moniker*/, const ObjectPtr& /*RootItem*/) {}
  virtual std::string SupportsVBSourceProjects() { return {}; }
  // The namespace definitions the plug-in works with; the first names the namespace provider.
  virtual std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() { return nullptr; }
  // A new comment file document for the item that `Moniker` names.
  virtual std::shared_ptr<XMLDocument> CreateCommentFileForMoniker(const std::string& /*FileName*/,
                                                                   const std::string& /*Moniker*/) {
    return nullptr;
  }
  // After every change of the project, once its Change event is raised.
  virtual void ProjectChanged() {}
  virtual long RootItemCountForSelecter(const std::string& /*ProgID*/) { return 0; }
  virtual void UpdateControlStates() {}
  // A variant holding a boolean.
  virtual Variant IsItemSameAsMoniker(const ObjectPtr& /*RootItem*/, const std::string& /*Moniker*/) { return false; }
  // Forgets the plug-in's state; LoadXML follows.
  virtual void Reset() {}
};

}  // namespace kv
