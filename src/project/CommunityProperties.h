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

 private:
  StoredElement mContent;
};

}  // namespace kv
