// What an interactive host offers a plug-in: its settings pages, page groups and item selectors.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/Object.h"

namespace kv {

class IKVProject;

class KV_API IKVProjectHost {
 public:
  virtual ~IKVProjectHost() = default;

  virtual void ControlEnabled(const std::string& /*ControlName*/, bool /*Value*/) {}
  virtual void ControlVisible(const std::string& /*ControlName*/, bool /*Value*/) {}
  virtual void AddCustomPageGroup(const std::string& /*Key*/, const std::string& /*Caption*/,
                                  const std::string& /*ToolTipText*/, const std::string& /*BeforePageGroupName*/ = {},
                                  const ObjectPtr& /*Picture*/ = nullptr) {}
  virtual ObjectPtr AddCustomPage(const std::string& /*PageGroup*/, const std::string& /*Key*/,
                                  const std::string& /*Caption*/, const std::string& /*ToolTipText*/,
                                  const std::string& /*Description*/, const std::string& /*AfterPageName*/,
                                  const std::string& /*ProgID*/) {
    return nullptr;
  }
  virtual ObjectPtr AddCustomPageEx(const std::string& /*PageGroup*/, const std::string& /*Key*/,
                                    const std::string& /*Caption*/, const std::string& /*ToolTipText*/,
                                    const std::string& /*Description*/, const std::string& /*AfterPageName*/,
                                    const std::string& /*ProgID*/, const ObjectPtr& /*Picture*/ = nullptr) {
    return nullptr;
  }
  virtual ObjectPtr AddItemSelector(const std::string& /*Caption*/, const std::string& /*Description*/,
                                    const std::string& /*ProgID*/, const ObjectPtr& /*Picture*/ = nullptr) {
    return nullptr;
  }
  virtual void ModuleListChanged() {}
  virtual std::shared_ptr<IKVProject> KVProject() { return nullptr; }
  virtual bool PageGroupEnabled(const std::string& /*Key*/) { return false; }
  virtual void PageGroupEnabled(const std::string& /*Key*/, bool /*Value*/) {}
  virtual bool CustomPageEnabled(const std::string& /*PageGroup*/, const std::string& /*Key*/) { return false; }
  virtual void CustomPageEnabled(const std::string& /*PageGroup*/, const std::string& /*Key*/, bool /*Value*/) {}
};

}  // namespace kv
