#include "project/CommunityProperties.h"

#include "kavrel/XmlDocument.h"

namespace kv {

void CommunityProperties::Load(const XMLNode& e) {
  mContent.Read(e);
  // The project reads and writes its own key.
  std::erase_if(mContent.Attributes,
                [](const auto& attribute) { return text::equalsIgnoreCase(attribute.first, "CommunityProjectKey"); });
}

void CommunityProperties::Save(XMLNode& e) const {
  mContent.Write(e);
}

bool CommunityProperties::IsEnabled() const {
  return mContent.Attribute("Enabled") == "True";
}

}  // namespace kv
