#include "project/KVDocType.h"

#include <filesystem>
#include <utility>
#include <vector>

#include "comments/KVContentFiles.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "host/modMain.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"
#include "project/CommunityProperties.h"
#include "project/KVProject.h"
#include "project/KVPropertyBag.h"
#include "project/VariableValues.h"

namespace kv {
namespace {

constexpr const char* kModule = "KVDocType";

long copyFailureNumber(const std::error_code& ec) {
  if (ec == std::errc::permission_denied || ec == std::errc::operation_not_permitted) return err::PermissionDenied;
  if (ec == std::errc::no_such_file_or_directory) return err::PathNotFound;
  return err::PathFileAccessError;
}

}  // namespace

// Forwards the model comments' change to the project.
class KVDocType::ModelCommentsListener : public ModelCommentsEvents {
 public:
  explicit ModelCommentsListener(KVDocType& owner) : mOwner(owner) {}
  void DirtyStateChanged() override {
    if (auto project = mOwner.KVProject.lock()) project->Dirty(true);
  }

 private:
  KVDocType& mOwner;
};

KVDocType::KVDocType()
    : ModelComments(std::make_shared<kv::ModelComments>()),
      mModelCommentsListener(std::make_shared<ModelCommentsListener>(*this)) {
  ModelComments->Subscribe(mModelCommentsListener);
}

KVDocType::KVDocType(std::string name, std::shared_ptr<IKVProjectPlugIn> plugIn) : KVDocType() {
  mDocTypeDef = std::make_shared<DocTypeDef>();
  mDocTypeDef->Name = std::move(name);
  mProjectPlugIn = std::move(plugIn);
}

KVDocType::~KVDocType() = default;

std::shared_ptr<IKVProjectPlugIn> KVDocType::ProjectPlugIn() {
  if (!mProjectPlugIn && mDocTypeDef && !mDocTypeDef->PlugInProgID.empty())
    mProjectPlugIn =
        std::dynamic_pointer_cast<IKVProjectPlugIn>(ClassRegistry::instance().tryCreate(mDocTypeDef->PlugInProgID));
  return mProjectPlugIn;
}

void KVDocType::Initialise(std::shared_ptr<DocTypeDef> TheKVDocTypeDef, std::string_view Name) {
  guard(kModule, [&] {
    mDocTypeDef = std::move(TheKVDocTypeDef);
    const auto plugIn = ProjectPlugIn();
    if (!plugIn) return;
    if (auto project = KVProject.lock()) plugIn->Initialise(*project);
    ModelComments->Name(Name);
  });
}

std::string KVDocType::Name() const {
  return mDocTypeDef ? mDocTypeDef->Name : std::string();
}

std::string KVDocType::Description() const {
  return mDocTypeDef ? mDocTypeDef->Description : std::string();
}

bool KVDocType::SomethingToDocument() {
  const auto plugIn = ProjectPlugIn();
  return plugIn && plugIn->SomethingToDocument();
}

long KVDocType::RootItemTypeCount(const std::string& type) {
  const auto plugIn = ProjectPlugIn();
  return plugIn ? plugIn->RootItemTypeCount(type) : 0;
}

long KVDocType::SourceItemCount() {
  return RootItemTypeCount("source");
}
long KVDocType::VBSourceItemCount() {
  return RootItemTypeCount("vbsource");
}
long KVDocType::BinaryItemCount() {
  return RootItemTypeCount("binary");
}

long KVDocType::ItemCount() {
  const auto plugIn = ProjectPlugIn();
  const ObjectPtr rootItems = plugIn ? plugIn->RootItems() : nullptr;
  if (!rootItems) throw ObjectNotSet();
  return long(rootItems->get("Count").toInteger());
}

kv::Templates KVDocType::Templates() const {
  kv::Templates serving;
  for (const auto& tmpl : ConfigurationRoot::instance().Templates())
    if (tmpl->ServesDocType(mDocTypeDef.get())) serving.Add(tmpl, tmpl->Name);
  return serving;
}

kv::Templates KVDocType::ValidTemplates() {
  const bool hasBinary = BinaryItemCount() > 0;
  const bool hasSource = SourceItemCount() > 0;
  kv::Templates valid;
  for (const auto& tmpl : Templates()) {
    if (hasBinary && !tmpl->SupportsItemType("binary")) continue;
    if (hasSource && !tmpl->SupportsItemType("source")) continue;
    valid.Add(tmpl, tmpl->Name);
  }
  return valid;
}

std::shared_ptr<Template> KVDocType::Template() {
  if (!mSelectedTemplate) mSelectedTemplate = ValidTemplates().Item(1);
  return mSelectedTemplate;
}

void KVDocType::Template(const std::shared_ptr<kv::Template>& v) {
  if (v != mSelectedTemplate)
    if (auto project = KVProject.lock()) project->Changed();
  if (v && v->ServesDocType(mDocTypeDef.get())) mSelectedTemplate = v;
}

std::shared_ptr<INamespaceProvider> KVDocType::NamespaceProvider() {
  const auto plugIn = ProjectPlugIn();
  const auto defs = plugIn ? plugIn->NamespaceDefs() : nullptr;
  auto project = KVProject.lock();
  if (!defs || defs->Count() == 0 || !project) return nullptr;
  return project->GetNamespaceProvider(defs->Item(1)->Handler);
}

std::shared_ptr<KVContentFile> KVDocType::CreateNewCommentFileForItem(const ObjectPtr& Item,
                                                                      const std::string& FileName) {
  return guard<std::shared_ptr<KVContentFile>>(kModule, [&] {
    auto project = KVProject.lock();
    const auto provider = NamespaceProvider();
    if (!project || !provider) throw ObjectNotSet();
    const std::string moniker = provider->MonikerForItem(Item);
    const auto doc = ProjectPlugIn()->CreateCommentFileForMoniker(FileName, moniker);
    if (!doc) throw ObjectNotSet();
    FileSystem file(FileName);
    // A project that has no file yet has no name to relate to.
    const bool hasFile = !project->KVProjectFileName->FileName().empty();
    doc->RootNode().SetAttribute("RelatedProject",
                                 hasFile ? kv::ToRelativeFileName(*project->KVProjectFileName, file) : "");
    file.WriteAll(doc->Xml(), codepage::UTF8);

    auto contentFile = std::make_shared<KVContentFile>();
    contentFile->KVProject = project;
    contentFile->Bindings = project->CommentFiles->Bindings;
    contentFile->FileName = file.FileName();
    contentFile->DocType = Name();
    contentFile->ItemMoniker = moniker;
    return contentFile;
  });
}

std::shared_ptr<KVContentFiles> KVDocType::ItemCommentFiles(const ObjectPtr& Item) {
  return guard<std::shared_ptr<KVContentFiles>>(kModule, [&] {
    auto project = KVProject.lock();
    const auto plugIn = ProjectPlugIn();
    if (!project || !plugIn) throw ObjectNotSet();
    auto files = std::make_shared<KVContentFiles>();
    for (const auto& file : *project->CommentFiles)
      if (plugIn->IsItemSameAsMoniker(Item, file->ItemMoniker).toBool()) files->Add(file);
    return files;
  });
}

void KVDocType::Save(XMLNode& e) {
  guard(kModule, [&] {
    e.SetAttribute("Name", Name());
    std::string templateName;
    ignoreFailure([&] { templateName = Template()->Name; });
    e.SetAttribute("Template", templateName);
    e.SetAttribute("UseHelpTemplates", xmlvalue::Bool(UseHelpTemplates));
    XMLNode tocSource = e.AddChild("TOCSource");
    TOCSource->Save(tocSource);
    XMLNode profile = e.AddChild("ModelCommentProfile");
    ModelComments->Save(profile);
  });
}

void KVDocType::Load(const XMLNode& e) {
  guard(kModule, [&] {
    if (const auto name = e.Attributes().Find("Template")) {
      const kv::Templates serving = Templates();
      if (const auto* found = serving.Find(name->Value())) Template(*found);
    }
    if (text::equalsIgnoreCase(e.Attributes().ValueOr("UseHelpTemplates"), "True")) UseHelpTemplates = true;
    for (const XMLNode& child : e.ChildNodes()) {
      const std::string name = text::toLower(child.Name());
      if (name == "tocsource") TOCSource->Load(child);
      if (name == "modelcommentprofile") ModelComments->Load(child);
    }
  });
}

void KVDocType::PrepNamespaceDefs(NamespaceDef& def) {
  auto project = KVProject.lock();
  if (def.Selectable) {
    def.IncludeFlag = project && xmlvalue::IsTrue(project->IncludedNamespaceNames->PropertyValue(
                                     def.Name, xmlvalue::Bool(def.DefaultInclude)));
  } else {
    def.IncludeFlag = true;
  }
  for (const auto& child : def.ChildNamespaceDefs) PrepNamespaceDefs(*child);
}

void KVDocType::BeforeBuild() {
  guard(kModule, [&] {
    if (!SomethingToDocument()) return;
    auto project = KVProject.lock();
    const auto tmpl = Template();
    for (const auto& def : tmpl->NamespaceDefs) {
      PrepNamespaceDefs(*def);
      def->Prepare();
    }
    if (project) tmpl->Language(project->Language());
    // A plug-in may make its items anew here: the comment files bound to them follow, taking
    // what the old items held, unsaved changes included.
    std::vector<std::pair<std::shared_ptr<KVContentFile>, std::string>> bound;
    if (project)
      for (const auto& file : *project->CommentFiles)
        if (file->RootItem() && text::equalsIgnoreCase(file->DocType, Name()))
          bound.emplace_back(file, file->RebindText());
    ProjectPlugIn()->BeforeBuild();
    for (const auto& [file, text] : bound) file->Rebind(text);
    CopySupportFiles(tmpl, false);
    if (project)
      for (const auto& variable : tmpl->VariableDefs) {
        if (project->VariableValues->Exists(variable.Name)) continue;
        // The record is added empty and only then flagged, as setting a value clears the flag.
        project->CreateVariableValue(variable.Name, "")->IsDefaultValue = true;
      }
  });
}

void KVDocType::AfterBuild() {
  guard(kModule, [&] {
    if (SomethingToDocument()) ProjectPlugIn()->AfterBuild();
  });
}

void KVDocType::CopySupportFiles(const std::shared_ptr<kv::Template>& Template, bool DesignTime) {
  namespace fs = std::filesystem;
  guard(kModule, [&] {
    auto project = KVProject.lock();
    if (!Template || !project) return;
    std::error_code ec;
    const fs::path folder(Template->Folder);
    if (fs::directory_iterator(folder, ec) == fs::directory_iterator()) return;
    project->FirePostBuildStatus("Copying template files");

    std::shared_ptr<INamespaceProvider> provider;
    ignoreFailure([&] { provider = NamespaceProvider(); });
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder, ec))
      if (entry.is_regular_file(ec)) files.push_back(entry.path());
    std::sort(files.begin(), files.end());

    const std::string scrapsFolder = Template->Folder + "HTMLScraps/";
    const std::string phrasesFolder = Template->Folder + "Phrases/";
    const bool alwaysCopy = project->AlwaysCopySupportFiles();
    for (const auto& file : files) {
      const std::string from = file.string();
      const std::string fileFolder = file.parent_path().string() + "/";
      if (text::equalsIgnoreCase(from, Template->DefinitionFileName)) continue;
      if (text::equalsIgnoreCase(fileFolder, scrapsFolder) || text::equalsIgnoreCase(fileFolder, phrasesFolder))
        continue;
      if (text::equalsIgnoreCase(file.filename().string(), "designtime.css")) continue;
      if (text::equalsIgnoreCase(file.extension().string(), ".scc")) continue;
      if (text::equalsIgnoreCase(file.parent_path().filename().string(), "community") && !DesignTime &&
          !project->CommunityProperties->IsEnabled())
        continue;
      if (text::endsWithIgnoreCase(fileFolder, "designtime/") && !DesignTime) continue;

      const std::string to = project->OutputFolder() + file.lexically_relative(folder).generic_string();
      if (project->CopiedSupportFiles().Exists(to) && !alwaysCopy) continue;
      try {
        FileSystem target(to);
        target.CreateFolder();
        const bool exists = target.Exists();
        if (exists && target.IsReadOnly()) {
          if (alwaysCopy)
            project->RaiseBuildError("Could not copy support file '" + from +
                                         "' as the file already exists in the output directory and is read-only.",
                                     KVWarning);
        } else if (!exists || alwaysCopy) {
          std::error_code copyError;
          fs::copy_file(file, to, fs::copy_options::overwrite_existing, copyError);
          if (copyError) throw Failure(copyFailureNumber(copyError), copyError.message());
          project->OtherContentCreated(to);
        }
      } catch (const Failure& failure) {
        project->RaiseBuildError("Could not copy support file '" + from + "' to '" + to + "'.  Error code " +
                                 std::to_string(failure.number()) + ".  Processing will continue.");
      }
      if (provider && !text::endsWithIgnoreCase(fileFolder, "/WebImages/"))
        provider->PageOutput(nullptr, nullptr, to, false, false);
      if (!project->CopiedSupportFiles().Exists(to)) project->CopiedSupportFiles().Add(to, to);
    }
  });
}

}  // namespace kv
