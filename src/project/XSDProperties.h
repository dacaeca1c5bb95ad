// Settings for documenting XML schemas. Colours are 32-bit values with blue in the high byte.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "project/ProjectSettingsBase.h"

namespace kv {

class XMLNode;

class XSDProperties : public ProjectSettingsBase {
 public:
  bool UseCustomSettings() const { return mUseCustomSettings; }
  void UseCustomSettings(bool v) { Set(mUseCustomSettings, v); }
  std::int32_t PageNestingLevels() const { return mPageNestingLevels; }
  void PageNestingLevels(std::int32_t v) { Set(mPageNestingLevels, v); }
  bool SuppressSingleObjectDiagrams() const { return mSuppressSingleObjectDiagrams; }
  void SuppressSingleObjectDiagrams(bool v) { Set(mSuppressSingleObjectDiagrams, v); }
  std::int32_t ElementFillColor() const { return mElementFillColor; }
  void ElementFillColor(std::int32_t v) { Set(mElementFillColor, v); }
  std::int32_t ElementTextColor() const { return mElementTextColor; }
  void ElementTextColor(std::int32_t v) { Set(mElementTextColor, v); }
  std::int32_t ElementBorderColor() const { return mElementBorderColor; }
  void ElementBorderColor(std::int32_t v) { Set(mElementBorderColor, v); }
  bool ElementBorders() const { return mElementBorders; }
  void ElementBorders(bool v) { Set(mElementBorders, v); }
  std::int32_t ElementRefFillColor() const { return mElementRefFillColor; }
  void ElementRefFillColor(std::int32_t v) { Set(mElementRefFillColor, v); }
  std::int32_t ElementRefTextColor() const { return mElementRefTextColor; }
  void ElementRefTextColor(std::int32_t v) { Set(mElementRefTextColor, v); }
  std::int32_t ElementRefBorderColor() const { return mElementRefBorderColor; }
  void ElementRefBorderColor(std::int32_t v) { Set(mElementRefBorderColor, v); }
  bool ElementRefBorders() const { return mElementRefBorders; }
  void ElementRefBorders(bool v) { Set(mElementRefBorders, v); }
  std::int32_t ComplexTypeFillColor() const { return mComplexTypeFillColor; }
  void ComplexTypeFillColor(std::int32_t v) { Set(mComplexTypeFillColor, v); }
  std::int32_t ComplexTypeTextColor() const { return mComplexTypeTextColor; }
  void ComplexTypeTextColor(std::int32_t v) { Set(mComplexTypeTextColor, v); }
  std::int32_t ComplexTypeBorderColor() const { return mComplexTypeBorderColor; }
  void ComplexTypeBorderColor(std::int32_t v) { Set(mComplexTypeBorderColor, v); }
  bool ComplexTypeBorders() const { return mComplexTypeBorders; }
  void ComplexTypeBorders(bool v) { Set(mComplexTypeBorders, v); }
  std::int32_t AnyFillColor() const { return mAnyFillColor; }
  void AnyFillColor(std::int32_t v) { Set(mAnyFillColor, v); }
  std::int32_t AnyTextColor() const { return mAnyTextColor; }
  void AnyTextColor(std::int32_t v) { Set(mAnyTextColor, v); }
  std::int32_t AnyBorderColor() const { return mAnyBorderColor; }
  void AnyBorderColor(std::int32_t v) { Set(mAnyBorderColor, v); }
  bool AnyBorders() const { return mAnyBorders; }
  void AnyBorders(bool v) { Set(mAnyBorders, v); }
  std::int32_t NotationTextColor() const { return mNotationTextColor; }
  void NotationTextColor(std::int32_t v) { Set(mNotationTextColor, v); }
  std::int32_t RootLinesColor() const { return mRootLinesColor; }
  void RootLinesColor(std::int32_t v) { Set(mRootLinesColor, v); }
  bool DropShadows() const { return mDropShadows; }
  void DropShadows(bool v) { Set(mDropShadows, v); }
  bool BoldCaptions() const { return mBoldCaptions; }
  void BoldCaptions(bool v) { Set(mBoldCaptions, v); }
  // The stored names count only with UseCustomSettings on.
  std::string GroupParticleSequenceImageFilename() const;
  void GroupParticleSequenceImageFilename(std::string_view v) { Set(mGroupParticleSequenceImageFilename, v); }
  std::string GroupParticleChoiceImageFilename() const;
  void GroupParticleChoiceImageFilename(std::string_view v) { Set(mGroupParticleChoiceImageFilename, v); }
  std::string GroupParticleAllImageFilename() const;
  void GroupParticleAllImageFilename(std::string_view v) { Set(mGroupParticleAllImageFilename, v); }

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

 private:
  // Without custom settings the particle images are the installation's.
  std::string InstalledImage(std::string_view name) const;

  bool mUseCustomSettings = false;
  std::int32_t mPageNestingLevels = 2;
  bool mSuppressSingleObjectDiagrams = true;
  std::int32_t mElementFillColor = 0xF0CAA6;
  std::int32_t mElementTextColor = 0;
  std::int32_t mElementBorderColor = 0xA4A0A0;
  bool mElementBorders = true;
  std::int32_t mElementRefFillColor = 0xC0FFFF;
  std::int32_t mElementRefTextColor = 0;
  std::int32_t mElementRefBorderColor = 0xA4A0A0;
  bool mElementRefBorders = true;
  std::int32_t mComplexTypeFillColor = 0xF0CAA6;
  std::int32_t mComplexTypeTextColor = 0;
  std::int32_t mComplexTypeBorderColor = 0xA4A0A0;
  bool mComplexTypeBorders = true;
  std::int32_t mAnyFillColor = 0xCCCCCC;
  std::int32_t mAnyTextColor = 0;
  std::int32_t mAnyBorderColor = 0xA4A0A0;
  bool mAnyBorders = true;
  std::int32_t mNotationTextColor = 0x808080;
  std::int32_t mRootLinesColor = 0xA4A0A0;
  bool mDropShadows = false;
  bool mBoldCaptions = true;
  std::string mGroupParticleSequenceImageFilename;
  std::string mGroupParticleChoiceImageFilename;
  std::string mGroupParticleAllImageFilename;
};

}  // namespace kv
