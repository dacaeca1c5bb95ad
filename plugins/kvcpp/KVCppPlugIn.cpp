#include "KVCppPlugIn.h"

#include <filesystem>

#include "kavrel/IKVProject.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"

namespace kv::cpp {
namespace {

constexpr const char* kElement = "KVCpp";

std::shared_ptr<NamespaceDef> definition(const char* name, const char* displayName) {
  auto def = std::make_shared<NamespaceDef>();
  def->Name = name;
  def->DisplayName = displayName;
  def->Handler = "KVCpp.NamespaceProvider";
  return def;
}

}  // namespace

KVCppPlugIn::KVCppPlugIn() = default;

Variant KVCppPlugIn::call(std::string_view member, const Arguments& args) {
  CppInput& input = mModel->Input;
  const bool one = args.size() == 1;
  if (one && text::equalsIgnoreCase(member, "AddSource"))
    input.Sources.push_back(args[0].toString());
  else if (one && text::equalsIgnoreCase(member, "AddIncludeFolder"))
    input.IncludeFolders.push_back(args[0].toString());
  else if (one && text::equalsIgnoreCase(member, "AddDefine"))
    input.Defines.push_back(args[0].toString());
  else if (one && text::equalsIgnoreCase(member, "SetStandard"))
    input.Standard = args[0].toString();
  else
    return Object::call(member, args);
  mModel->Invalidate();
  if (const auto project = mProject.lock()) project->Changed();
  return {};
}

void KVCppPlugIn::Initialise(IKVProject& project) {
  mProject = project.WeakReference();
  mRegisteredWith = &project;
  CppModel::Register(&project, mModel);
}

std::string KVCppPlugIn::OwnDocType() const {
  const auto project = mProject.lock();
  const std::string name = project ? project->DocTypeOfPlugIn(*this) : std::string();
  return name.empty() ? "kv.cpp" : name;
}

void KVCppPlugIn::LoadXML(XMLDocument& doc) {
  const auto project = mProject.lock();
  const auto absolute = [&](const std::string& name) { return project ? project->FromRelativeFileNAme(name) : name; };
  const std::string own = OwnDocType();
  for (const XMLNode& e : doc.RootNode().ChildNodes()) {
    if (!text::equalsIgnoreCase(e.Name(), kElement)) continue;
    const std::string docType = e.Attributes().ValueOr("DocType");
    if (!docType.empty() && !text::equalsIgnoreCase(docType, own)) continue;
    CppInput input;
    const auto attributes = e.Attributes();
    if (!attributes.ValueOr("Standard").empty()) input.Standard = attributes.ValueOr("Standard");
    if (!attributes.ValueOr("CompileCommands").empty())
      input.CompileCommands = absolute(attributes.ValueOr("CompileCommands"));
    input.PlainComments = attributes.ValueOr("PlainComments") == "True";
    for (const XMLNode& child : e.ChildNodes()) {
      const std::string value = text::trim(child.Text());
      if (value.empty()) continue;
      if (text::equalsIgnoreCase(child.Name(), "Source")) input.Sources.push_back(absolute(value));
      if (text::equalsIgnoreCase(child.Name(), "IncludeFolder")) input.IncludeFolders.push_back(absolute(value));
      if (text::equalsIgnoreCase(child.Name(), "Define")) input.Defines.push_back(value);
    }
    mModel->Input = std::move(input);
    mModel->Invalidate();
  }
}

void KVCppPlugIn::SaveXML(XMLDocument& doc) {
  const auto project = mProject.lock();
  // Relative to the project file's folder, also when outside it ("../include").
  const std::string folder = project ? project->FromRelativeFileNAme(".") : std::string();
  const auto relative = [&](const std::string& name) {
    if (folder.empty() || !std::filesystem::path(name).is_absolute()) return name;
    const std::string r = std::filesystem::path(name).lexically_relative(folder).string();
    return r.empty() ? name : r;
  };
  const CppInput& input = mModel->Input;
  XMLNode e = doc.RootNode().AddChild(kElement);
  e.SetAttribute("DocType", OwnDocType());
  e.SetAttribute("Standard", input.Standard);
  e.SetAttribute("CompileCommands", input.CompileCommands.empty() ? "" : relative(input.CompileCommands));
  e.SetAttribute("PlainComments", input.PlainComments ? "True" : "False");
  for (const auto& source : input.Sources) e.AddChild("Source").Text(relative(source));
  for (const auto& folder : input.IncludeFolders) e.AddChild("IncludeFolder").Text(relative(folder));
  for (const auto& define : input.Defines) e.AddChild("Define").Text(define);
}

void KVCppPlugIn::BeforeBuild() {
  // The headers may have changed since the last build: parse them again.
  mModel->Invalidate();
  const auto project = mProject.lock();
  mModel->Parsed(project.get());
}

void KVCppPlugIn::Terminate() {
  if (mRegisteredWith) CppModel::Unregister(mRegisteredWith);
  mRegisteredWith = nullptr;
}

void KVCppPlugIn::Reset() {
  mModel->Input = CppInput();
  mModel->Invalidate();
}

ObjectPtr KVCppPlugIn::RootItems(const std::string&) {
  auto items = std::make_shared<DynamicObject>("RootItems");
  items->field("Count", long(mModel->Input.Sources.size()));
  return items;
}

long KVCppPlugIn::RootItemTypeCount(const std::string& type) {
  // Headers are source; telling them without parsing keeps loading a project cheap.
  return text::equalsIgnoreCase(type, "source") ? long(mModel->Input.Sources.size()) : 0;
}

ObjectPtr KVCppPlugIn::GetObjectFromQualifiedName(const std::string& name) {
  const auto project = mProject.lock();
  return mModel->Items(project.get()).Find(name);
}

std::shared_ptr<kv::NamespaceDefs> KVCppPlugIn::NamespaceDefs() {
  auto header = definition(defs::Header, "Header files");
  auto type = definition(defs::Class, "Classes");
  type->ChildNamespaceDefs.Add(definition(defs::Method, "Member functions"), defs::Method);
  type->ChildNamespaceDefs.Add(definition(defs::Field, "Data members"), defs::Field);
  type->ChildNamespaceDefs.Add(definition(defs::Private, "Private members"), defs::Private);
  header->ChildNamespaceDefs.Add(type, defs::Class);
  for (const auto& [name, display] :
       {std::pair{defs::Function, "Functions"}, std::pair{defs::Enumeration, "Enumerations"},
        std::pair{defs::Typedef, "Type aliases"}, std::pair{defs::Macro, "Macros"},
        std::pair{defs::Variable, "Variables"}})
    header->ChildNamespaceDefs.Add(definition(name, display), name);
  auto all = std::make_shared<kv::NamespaceDefs>();
  all->Add(header, defs::Header);
  return all;
}

}  // namespace kv::cpp
