#include "project/XSDProperties.h"

#include "definitions/Configuration.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"

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
  using xmlvalue::Int32Attr;
  using xmlvalue::IsTrue;
  ignoreFailure([&] { mUseCustomSettings = IsTrue(Attr(e, "UseCustomSettings")); });
  ignoreFailure([&] { mPageNestingLevels = Int32Attr(e, "PageNestingLevels"); });
  ignoreFailure([&] { mSuppressSingleObjectDiagrams = IsTrue(Attr(e, "SuppressSingleObjectDiagrams")); });
  ignoreFailure([&] { mElementFillColor = Int32Attr(e, "ElementFillColor"); });
  ignoreFailure([&] { mElementTextColor = Int32Attr(e, "ElementTextColor"); });
  ignoreFailure([&] { mElementBorderColor = Int32Attr(e, "ElementBorderColor"); });
  ignoreFailure([&] { mElementBorders = IsTrue(Attr(e, "ElementBorders")); });
  ignoreFailure([&] { mElementRefFillColor = Int32Attr(e, "ElementRefFillColor"); });
  ignoreFailure([&] { mElementRefTextColor = Int32Attr(e, "ElementRefTextColor"); });
  ignoreFailure([&] { mElementRefBorderColor = Int32Attr(e, "ElementRefBorderColor"); });
  ignoreFailure([&] { mElementRefBorders = IsTrue(Attr(e, "ElementRefBorders")); });
  ignoreFailure([&] { mComplexTypeFillColor = Int32Attr(e, "ComplexTypeFillColor"); });
  ignoreFailure([&] { mComplexTypeTextColor = Int32Attr(e, "ComplexTypeTextColor"); });
  ignoreFailure([&] { mComplexTypeBorderColor = Int32Attr(e, "ComplexTypeBorderColor"); });
  ignoreFailure([&] { mComplexTypeBorders = IsTrue(Attr(e, "ComplexTypeBorders")); });
  ignoreFailure([&] { mAnyFillColor = Int32Attr(e, "AnyFillColor"); });
  ignoreFailure([&] { mAnyTextColor = Int32Attr(e, "AnyTextColor"); });
  ignoreFailure([&] { mAnyBorderColor = Int32Attr(e, "AnyBorderColor"); });
  ignoreFailure([&] { mAnyBorders = IsTrue(Attr(e, "AnyBorders")); });
  ignoreFailure([&] { mNotationTextColor = Int32Attr(e, "NotationTextColor"); });
  ignoreFailure([&] { mRootLinesColor = Int32Attr(e, "RootLinesColor"); });
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
