#include "project/KVDiagramStyle.h"

#include "definitions/Configuration.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {

std::shared_ptr<Template> KVDiagramStyle::CurrentTemplate() const {
  auto project = KVProject.lock();
  if (!project) return nullptr;
  std::shared_ptr<Template> found;
  ignoreFailure([&] {
    auto docType = project->CurrentDocType();
    if (!docType && project->DocTypes) docType = project->DocTypes->HelpTemplatesFrom();
    if (docType) found = docType->Template();
  });
  return found;
}

template <class T, class Get>
T KVDiagramStyle::Pick(T raw, Get get) const {
  if (mDiagramStyleSource == dssCustom) return raw;
  const auto tmpl = CurrentTemplate();
  return tmpl ? get(*tmpl) : raw;
}

std::int32_t KVDiagramStyle::objFillColor() const {
  return Pick(mobjFillColor, [](const Template& t) { return t.objFillColor; });
}
std::int32_t KVDiagramStyle::objTextColor() const {
  return Pick(mobjTextColor, [](const Template& t) { return t.objTextColor; });
}
std::int32_t KVDiagramStyle::objBorderColor() const {
  return Pick(mobjBorderColor, [](const Template& t) { return t.objBorderColor; });
}
std::int32_t KVDiagramStyle::colFillColor() const {
  return Pick(mcolFillColor, [](const Template& t) { return t.colFillColor; });
}
std::int32_t KVDiagramStyle::colTextColor() const {
  return Pick(mcolTextColor, [](const Template& t) { return t.colTextColor; });
}
std::int32_t KVDiagramStyle::colBorderColor() const {
  return Pick(mcolBorderColor, [](const Template& t) { return t.colBorderColor; });
}
std::int32_t KVDiagramStyle::BorderWidth() const {
  return Pick(mBorderWidth, [](const Template& t) { return t.BorderWidth; });
}
bool KVDiagramStyle::UseDropShadow() const {
  return Pick(mUseDropShadow, [](const Template& t) { return t.UseDropShadow; });
}
bool KVDiagramStyle::CenterCaptions() const {
  return Pick(mCenterCaptions, [](const Template& t) { return t.CenterCaptions; });
}
bool KVDiagramStyle::DiagramBold() const {
  return Pick(mDiagramBold, [](const Template& t) { return t.DiagramBold; });
}
bool KVDiagramStyle::UseDiagramShapes() const {
  return Pick(mUseDiagramShapes, [](const Template& t) { return t.UseDiagramShapes; });
}

void KVDiagramStyle::DiagramStyleSource(DiagramStyleSourceEnum v) {
  if (v != mDiagramStyleSource) {
    mDiagramStyleSource = v;
    Changed();
  }
  const auto tmpl = CurrentTemplate();
  if (!tmpl) return;
  mobjFillColor = tmpl->objFillColor;
  mobjTextColor = tmpl->objTextColor;
  mobjBorderColor = tmpl->objBorderColor;
  mcolFillColor = tmpl->colFillColor;
  mcolTextColor = tmpl->colTextColor;
  mcolBorderColor = tmpl->colBorderColor;
  mBorderWidth = tmpl->BorderWidth;
  mUseDropShadow = tmpl->UseDropShadow;
  mCenterCaptions = tmpl->CenterCaptions;
  mDiagramBold = tmpl->DiagramBold;
  mUseDiagramShapes = tmpl->UseDiagramShapes;
}

void KVDiagramStyle::Load(const XMLNode& e) {
  using xmlvalue::Attr;
  using xmlvalue::Int32Attr;
  using xmlvalue::IsTrue;
  // Every value present is read; a missing or bad one fails to the caller once all are through.
  bool failed = false;
  auto read = [&](auto&& body) { failed |= !ignoreFailure(body); };
  read([&] { mDiagramStyleSource = DiagramStyleSourceEnum(Int32Attr(e, "DiagramStyleSource")); });
  read([&] { mobjFillColor = Int32Attr(e, "ObjFillColor"); });
  read([&] { mobjTextColor = Int32Attr(e, "ObjTextColor"); });
  read([&] { mobjBorderColor = Int32Attr(e, "ObjBordercolor"); });
  read([&] { mcolFillColor = Int32Attr(e, "ColFillColor"); });
  read([&] { mcolTextColor = Int32Attr(e, "ColTextColor"); });
  read([&] { mcolBorderColor = Int32Attr(e, "ColBorderColor"); });
  read([&] { mUseDropShadow = IsTrue(Attr(e, "UseDropShadow")); });
  read([&] { mCenterCaptions = IsTrue(Attr(e, "CenterCaptions")); });
  read([&] { mDiagramBold = IsTrue(Attr(e, "DiagramBold")); });
  read([&] { mBorderWidth = Int32Attr(e, "BorderWidth"); });
  read([&] { mUseDiagramShapes = IsTrue(Attr(e, "UseDiagramShapes")); });
  if (failed) throw Failure(err::InvalidProcedureCall, "The diagram style is incomplete");
}

void KVDiagramStyle::Save(XMLNode& e) const {
  using xmlvalue::Bool;
  e.SetAttribute("ObjFillColor", std::to_string(mobjFillColor));
  e.SetAttribute("ObjTextColor", std::to_string(mobjTextColor));
  e.SetAttribute("ObjBorderColor", std::to_string(mobjBorderColor));
  e.SetAttribute("ColFillColor", std::to_string(mcolFillColor));
  e.SetAttribute("ColTextColor", std::to_string(mcolTextColor));
  e.SetAttribute("ColBorderColor", std::to_string(mcolBorderColor));
  e.SetAttribute("UseDropShadow", Bool(mUseDropShadow));
  e.SetAttribute("CenterCaptions", Bool(mCenterCaptions));
  e.SetAttribute("DiagramBold", Bool(mDiagramBold));
  e.SetAttribute("BorderWidth", std::to_string(mBorderWidth));
  e.SetAttribute("UseDiagramShapes", Bool(mUseDiagramShapes));
}

}  // namespace kv
