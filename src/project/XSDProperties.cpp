#include "project/XSDProperties.h"

#include "contracts/Configuration.h"

namespace kv {

std::string XSDProperties::InstalledImage(std::string_view name) const {
  return ConfigurationRoot::instance().ApplicationPath + "/Templates/XMLSchema/xDiagramImages/" + std::string(name);
}

std::string XSDProperties::GroupParticleSequenceImageFilename() const {
  return mUseCustomSettings ? mGroupParticleSequenceImageFilename : InstalledImage("sequence.gif");
}
std::string XSDProperties::GroupParticleChoiceImageFilename() const {
  return mUseCustomSettings ? mGroupParticleChoiceImageFilename : InstalledImage("choice.gif");
}
std::string XSDProperties::GroupParticleAllImageFilename() const {
  return mUseCustomSettings ? mGroupParticleAllImageFilename : InstalledImage("all.gif");
}

}  // namespace kv
