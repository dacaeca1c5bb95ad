// The settings of the community extension. Its content belongs to the community service; the
// project only loads it from its element and saves it back unchanged.
#pragma once

#include "definitions/Configuration.h"

namespace kv {

class XMLNode;

class CommunityProperties {
 public:
  void Load(const XMLNode& e);
  // Writes what was loaded; the caller sets the project's own attributes on `e`.
  void Save(XMLNode& e) const;
  // Whether the community extensions are switched on: the element's "Enabled" is "True".
  bool IsEnabled() const;
  // The address of the community service's proxy page and the base address of its pages.
  std::string GetTargetURL() const;
  std::string GetBaseURL() const;
  // The key under which the service hosts this project's pages.
  std::string GetHostingKey() const;
  // The project key in the form the pages hand to the service: its bytes as hexadecimal.
  std::string GetEncodedProjectKey(std::string_view ProjectKey) const;

 private:
  StoredElement mContent;
};

}  // namespace kv
