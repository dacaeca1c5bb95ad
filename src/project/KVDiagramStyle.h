// How relationship diagrams look: the current template's style, or the project's own.
#pragma once

#include <cstdint>
#include <memory>

#include "project/ProjectSettingsBase.h"

namespace kv {

class Template;
class XMLNode;

enum DiagramStyleSourceEnum : std::int32_t { dssTemplate = 0, dssCustom = 1 };

class KVDiagramStyle : public ProjectSettingsBase {
 public:
  // The project's own values: what is saved, and what the getters give with dssCustom or
  // without a current template.
  std::int32_t mobjFillColor = 0, mobjTextColor = 0, mobjBorderColor = 0;
  std::int32_t mcolFillColor = 0, mcolTextColor = 0, mcolBorderColor = 0;
  std::int32_t mBorderWidth = 0;
  bool mUseDropShadow = false, mCenterCaptions = false, mDiagramBold = false, mUseDiagramShapes = false;

  DiagramStyleSourceEnum DiagramStyleSource() const { return mDiagramStyleSource; }
  // Switching copies the current template's values into the project's own, so that a custom
  // style starts from the template's look.
  void DiagramStyleSource(DiagramStyleSourceEnum v);

  std::int32_t objFillColor() const;
  void objFillColor(std::int32_t v) { Set(mobjFillColor, v); }
  std::int32_t objTextColor() const;
  void objTextColor(std::int32_t v) { Set(mobjTextColor, v); }
  std::int32_t objBorderColor() const;
  void objBorderColor(std::int32_t v) { Set(mobjBorderColor, v); }
  std::int32_t colFillColor() const;
  void colFillColor(std::int32_t v) { Set(mcolFillColor, v); }
  std::int32_t colTextColor() const;
  void colTextColor(std::int32_t v) { Set(mcolTextColor, v); }
  std::int32_t colBorderColor() const;
  void colBorderColor(std::int32_t v) { Set(mcolBorderColor, v); }
  std::int32_t BorderWidth() const;
  void BorderWidth(std::int32_t v) { Set(mBorderWidth, v); }
  bool UseDropShadow() const;
  void UseDropShadow(bool v) { Set(mUseDropShadow, v); }
  bool CenterCaptions() const;
  void CenterCaptions(bool v) { Set(mCenterCaptions, v); }
  bool DiagramBold() const;
  void DiagramBold(bool v) { Set(mDiagramBold, v); }
  bool UseDiagramShapes() const;
  void UseDiagramShapes(bool v) { Set(mUseDiagramShapes, v); }

  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

 private:
  // The template of the project's current doc type, else of the doc type that supplies the help
  // templates; nothing when neither can be found.
  std::shared_ptr<kv::Template> CurrentTemplate() const;
  // The template's value with dssTemplate and a template, else the raw member.
  template <class T, class Get>
  T Pick(T raw, Get get) const;

  DiagramStyleSourceEnum mDiagramStyleSource = dssTemplate;
};

}  // namespace kv
