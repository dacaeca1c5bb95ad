// The project as its plug-ins, providers and wizards see it. The library's project object
// implements it; everything else about a project is reachable by member name through the
// object that `AsObject` gives (see docs/plugin-guide.md).
#pragma once

#include <memory>
#include <string>

#include "kavrel/Enums.h"
#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/ProjectContext.h"

namespace kv {

class IKVProjectPlugIn;

class KV_API IKVProject : public ProjectContext {
 public:
  // A weak reference, for plug-ins and providers that keep the project: they never keep it alive.
  virtual std::weak_ptr<IKVProject> WeakReference() = 0;
  // The project object, whose settings are reachable by member name.
  virtual ObjectPtr AsObject() = 0;

  // The folder the output goes to; a non-empty folder ends in "/".
  virtual std::string OutputFolder() const = 0;
  // Which members of the documented code the user wants in the output.
  virtual bool IncludePrivate() const = 0;
  virtual bool IncludeProtected() const = 0;
  virtual bool IncludeFriend() const = 0;

  // The key of the doc type that `PlugIn` serves, such as "kv.cpp"; empty when it serves none.
  virtual std::string DocTypeOfPlugIn(const IKVProjectPlugIn& PlugIn) const = 0;

  // Problems of the input: while loading, and while building (they reach the build log).
  virtual void RaiseLoadError(const std::string& Text, KVErrorLevel Level = KVWarning) = 0;
  virtual void RaiseBuildError(const std::string& Text, KVErrorLevel Level = KVWarning) = 0;
  // Lets the host handle input, then tells whether the user asked the work to stop.
  virtual bool Cancelled() = 0;
  // Asks the user through the host (or answers with the default in a silent host).
  virtual int ShowMessageBox(const std::string& Message, int Buttons, const std::string& Title) = 0;
};

// A new, empty project, for wizards that create one.
KV_API std::shared_ptr<IKVProject> NewKVProject();

}  // namespace kv
