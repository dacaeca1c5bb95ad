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

std::string CommunityProperties::GetTargetURL() const {
  return mContent.Attribute("TargetURL");
}

std::string CommunityProperties::GetBaseURL() const {
  return mContent.Attribute("BaseURL");
}

std::string CommunityProperties::GetHostingKey() const {
  return mContent.Attribute("HostingKey");
}

std::string CommunityProperties::GetEncodedProjectKey(std::string_view ProjectKey) const {
  static constexpr char kHex[] = "0123456789abcdef";
  std::string out;
  for (const char c : ProjectKey) {
    out += kHex[static_cast<unsigned char>(c) >> 4];
    out += kHex[static_cast<unsigned char>(c) & 0x0F];
  }
  return out;
}

}  // namespace kv
