// The events a project raises, one virtual per event in the order hosts know them. Subscribers
// override what they need; in/out arguments are references.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Enums.h"
#include "kavrel/Object.h"

namespace kv {

class PageLayout;
class NamespaceDef;

class KVProjectEvents {
 public:
  virtual ~KVProjectEvents() = default;

  virtual void ProgressPreBuildStatus(std::string& /*Status*/) {}
  virtual void ProgressPostBuildStatus(std::string& /*Status*/) {}
  virtual void CancelAvailabilityChanged(bool /*Available*/) {}
  virtual void BuildError(const std::string& /*Text*/, KVErrorLevel /*Level*/) {}
  virtual void LoadError(const std::string& /*Text*/, KVErrorLevel /*Level*/) {}
  virtual void CompileError(const std::string& /*CompilerLog*/) {}
  virtual void StatusAnimChange(const std::string& /*StatusAnimFileName*/) {}
  virtual void InitialiseStatus(long /*Index*/, long /*MaxValue*/) {}
  virtual void UpdateStatusByIndex(long /*Index*/, const std::string& /*Caption*/, long /*Progress*/) {}
  virtual void BeforeOutputNamespacePage(const std::shared_ptr<PageLayout>& /*PageLayout*/,
                                         const std::shared_ptr<NamespaceDef>& /*NamespaceDef*/,
                                         const ObjectPtr& /*Item*/, bool& /*DontGenerate*/) {}
  virtual void ContentCreated(const std::string& /*FileName*/) {}
  virtual void NamespaceExclusionsChanged() {}
  virtual void Change() {}
  virtual void DirtyStateChanged() {}
  virtual void MessageBox(const std::string& /*Message*/, int /*Buttons*/, const std::string& /*Title*/,
                          int& /*Result*/, bool& /*CancelDefault*/) {}
};

}  // namespace kv
