#include "project/XSDProperties.h"

#include "contracts/Configuration.h"
#include "project/XmlValues.h"
#include "services/FailureHandler.h"

namespace kv {

std::string XSDProperties::InstalledImage(std::string_view name) const {
  return ConfigurationRoot::instance().ApplicationPath() + "Templates/XMLSchema/xDiagramImages/" + std::string(name);
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

// Everything is optional: older files lack some or all of these settings.
void XSDProperties::Load(const XMLNode& e) {
  using xmlvalue::Attr;
  using xmlvalue::IsTrue;
  using xmlvalue::Strict;
  ignoreFailure([&] { mUseCustomSettings = IsTrue(Attr(e, "UseCustomSettings")); });
  ignoreFailure([&] { mPageNestingLevels = std::int32_t(Strict(Attr(e, "PageNestingLevels"))); });
  ignoreFailure([&] { mSuppressSingleObjectDiagrams = IsTrue(Attr(e, "SuppressSingleObjectDiagrams")); });
  ignoreFailure([&] { mElementFillColor = std::int32_t(Strict(Attr(e, "ElementFillColor"))); });
  ignoreFailure([&] { mElementTextColor = std::int32_t(Strict(Attr(e, "ElementTextColor"))); });
  ignoreFailure([&] { mElementBorderColor = std::int32_t(Strict(Attr(e, "ElementBorderColor"))); });
  ignoreFailure([&] { mElementBorders = IsTrue(Attr(e, "ElementBorders")); });
  ignoreFailure([&] { mElementRefFillColor = std::int32_t(Strict(Attr(e, "ElementRefFillColor"))); });
  ignoreFailure([&] { mElementRefTextColor = std::int32_t(Strict(Attr(e, "ElementRefTextColor"))); });
  ignoreFailure([&] { mElementRefBorderColor = std::int32_t(Strict(Attr(e, "ElementRefBorderColor"))); });
  ignoreFailure([&] { mElementRefBorders = IsTrue(Attr(e, "ElementRefBorders")); });
  ignoreFailure([&] { mComplexTypeFillColor = std::int32_t(Strict(Attr(e, "ComplexTypeFillColor"))); });
  ignoreFailure([&] { mComplexTypeTextColor = std::int32_t(Strict(Attr(e, "ComplexTypeTextColor"))); });
  ignoreFailure([&] { mComplexTypeBorderColor = std::int32_t(Strict(Attr(e, "ComplexTypeBorderColor"))); });
  ignoreFailure([&] { mComplexTypeBorders = IsTrue(Attr(e, "ComplexTypeBorders")); });
  ignoreFailure([&] { mAnyFillColor = std::int32_t(Strict(Attr(e, "AnyFillColor"))); });
  ignoreFailure([&] { mAnyTextColor = std::int32_t(Strict(Attr(e, "AnyTextColor"))); });
  ignoreFailure([&] { mAnyBorderColor = std::int32_t(Strict(Attr(e, "AnyBorderColor"))); });
  ignoreFailure([&] { mAnyBorders = IsTrue(Attr(e, "AnyBorders")); });
  ignoreFailure([&] { mNotationTextColor = std::int32_t(Strict(Attr(e, "NotationTextColor"))); });
  ignoreFailure([&] { mRootLinesColor = std::int32_t(Strict(Attr(e, "RootLinesColor"))); });
  ignoreFailure([&] { mDropShadows = IsTrue(Attr(e, "DropShadows")); });
  ignoreFailure([&] { mBoldCaptions = IsTrue(Attr(e, "BoldCaptions")); });
  ignoreFailure([&] { mGroupParticleSequenceImageFilename = Attr(e, "GroupParticleSequenceImageFilename"); });
  ignoreFailure([&] { mGroupParticleChoiceImageFilename = Attr(e, "GroupParticleChoiceImageFilename"); });
  ignoreFailure([&] { mGroupParticleAllImageFilename = Attr(e, "GroupParticleAllImageFilename"); });
}

void XSDProperties::Save(XMLNode& e) const {
  using xmlvalue::Bool;
  e.SetAttribute("UseCustomSettings", Bool(mUseCustomSettings));
  e.SetAttribute("PageNestingLevels", std::to_string(mPageNestingLevels));
  e.SetAttribute("SuppressSingleObjectDiagrams", Bool(mSuppressSingleObjectDiagrams));
  e.SetAttribute("ElementFillColor", std::to_string(mElementFillColor));
  e.SetAttribute("ElementTextColor", std::to_string(mElementTextColor));
  e.SetAttribute("ElementBorderColor", std::to_string(mElementBorderColor));
  e.SetAttribute("ElementBorders", Bool(mElementBorders));
  e.SetAttribute("ElementRefFillColor", std::to_string(mElementRefFillColor));
  e.SetAttribute("ElementRefTextColor", std::to_string(mElementRefTextColor));
  e.SetAttribute("ElementRefBorderColor", std::to_string(mElementRefBorderColor));
  e.SetAttribute("ElementRefBorders", Bool(mElementRefBorders));
  e.SetAttribute("ComplexTypeFillColor", std::to_string(mComplexTypeFillColor));
  e.SetAttribute("ComplexTypeTextColor", std::to_string(mComplexTypeTextColor));
  e.SetAttribute("ComplexTypeBorderColor", std::to_string(mComplexTypeBorderColor));
  e.SetAttribute("ComplexTypeBorders", Bool(mComplexTypeBorders));
  e.SetAttribute("AnyFillColor", std::to_string(mAnyFillColor));
  e.SetAttribute("AnyTextColor", std::to_string(mAnyTextColor));
  e.SetAttribute("AnyBorderColor", std::to_string(mAnyBorderColor));
  e.SetAttribute("AnyBorders", Bool(mAnyBorders));
  e.SetAttribute("NotationTextColor", std::to_string(mNotationTextColor));
  e.SetAttribute("RootLinesColor", std::to_string(mRootLinesColor));
  e.SetAttribute("DropShadows", Bool(mDropShadows));
  e.SetAttribute("BoldCaptions", Bool(mBoldCaptions));
  e.SetAttribute("GroupParticleSequenceImageFilename", mGroupParticleSequenceImageFilename);
  e.SetAttribute("GroupParticleChoiceImageFilename", mGroupParticleChoiceImageFilename);
  e.SetAttribute("GroupParticleAllImageFilename", mGroupParticleAllImageFilename);
}

}  // namespace kv
