// What a namespace provider is asked to load when a comment file loads a namespace: on demand,
// through include and exclude filters, with or without private items.
#pragma once

#include <string>

#include "kavrel/Export.h"

namespace kv {

class KV_API INamespaceFilter {
 public:
  virtual ~INamespaceFilter() = default;
  virtual bool LoadOnDemand() const { return false; }
  virtual void LoadOnDemand(bool) {}
  virtual std::string LoadIncludeFilter() const { return {}; }
  virtual void LoadIncludeFilter(const std::string&) {}
  virtual std::string LoadExcludeFilter() const { return {}; }
  virtual void LoadExcludeFilter(const std::string&) {}
  virtual bool LoadPrivateItems() const { return false; }
  virtual void LoadPrivateItems(bool) {}
};

}  // namespace kv
