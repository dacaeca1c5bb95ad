#include "project/KVProject.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <limits>

#include "comments/KVContentFiles.h"
#include "definitions/Configuration.h"
#include "files/ReplaceFile.h"
#include "files/UnicodeHelpers.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "host/modMain.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/Text.h"
#include "project/AdditionalFiles.h"
#include "project/CommunityProperties.h"
#include "project/DatabaseProperties.h"
#include "project/DotNetProperties.h"
#include "project/ExcludeFilters.h"
#include "project/IgnoreRelationships.h"
#include "project/KVDiagramStyle.h"
#include "project/KVDocTypes.h"
#include "project/KVPropertyBag.h"
#include "project/ModelCommentCollections.h"
#include "project/VariableValues.h"
#include "project/XSDProperties.h"

namespace kv {
namespace {

constexpr const char* kModule = "KVProject";
std::atomic<long> gInstances{0};

// Leading numeric value of a text, as the classic Val does: "4.0 beta" gives 4.
double leadingNumber(std::string_view s) {
  s = s.substr(std::min(s.find_first_not_of(' '), s.size()));
  double value = 0;
  std::from_chars(s.data(), s.data() + s.size(), value);
  return value;
}

std::string baseNameOf(const std::string& path) {
  FileSystem file(path);
  return file.BaseName();
}

}  // namespace

KVProject::KVProject(Token) {
  ++gInstances;
}

KVProject::~KVProject() {
  --gInstances;
}

long KVProject::InstanceCount() {
  return gInstances;
}

std::shared_ptr<KVProject> KVProject::New() {
  auto project = std::make_shared<KVProject>(Token{});
  std::weak_ptr<KVProject> self = project;
  project->DocTypes = std::make_shared<KVDocTypes>();
  project->ExcludeFilters = std::make_shared<kv::ExcludeFilters>();
  project->ExcludeFilters->KVProject = self;
  project->VariableValues = std::make_shared<kv::VariableValues>();
  project->VariableValues->KVProject = self;
  project->AdditionalFiles = std::make_shared<kv::AdditionalFiles>();
  project->AdditionalFiles->KVProject = self;
  project->IncludedNamespaceNames = std::make_shared<KVPropertyBag>();
  project->CommentFiles = std::make_shared<KVContentFiles>();
  project->CommentFiles->KVProject = self;
  project->CommentFiles->Bindings = [self](const std::string& docType) -> std::shared_ptr<ContentBinding> {
    const auto locked = self.lock();
    return locked ? locked->CommentFileBinding(docType) : nullptr;
  };
  project->IgnoreRelationships = std::make_shared<kv::IgnoreRelationships>();
  project->IgnoreRelationships->KVProject = self;
  project->DiagramStyle = std::make_shared<KVDiagramStyle>();
  project->DiagramStyle->KVProject = self;
  project->PropertyBag = std::make_shared<KVPropertyBag>();
  project->PropertyBag->KVProject = self;
  project->DotNetProperties = std::make_shared<kv::DotNetProperties>();
  project->DotNetProperties->KVProject = self;
  project->DatabaseProperties = std::make_shared<kv::DatabaseProperties>();
  project->DatabaseProperties->KVProject = self;
  project->XSDProperties = std::make_shared<kv::XSDProperties>();
  project->XSDProperties->KVProject = self;
  project->KVProjectFileName = std::make_shared<FileSystem>();
  project->ModelCommentCollections = std::make_shared<kv::ModelCommentCollections>();
  project->ModelCommentProfiles = std::make_shared<Collection<std::shared_ptr<ModelComments>>>();
  project->CommunityProperties = std::make_shared<kv::CommunityProperties>();
  project->NamespaceExclusions = std::make_shared<Collection<std::string>>();
  project->PlugInData = std::make_shared<Collection<ObjectPtr>>();
  project->DocTypes->Populate(*project);
  return project;
}

// --- Events ---------------------------------------------------------------------------------

void KVProject::Subscribe(std::weak_ptr<KVProjectEvents> subscriber) {
  mSubscribers.Add(std::move(subscriber));
}

void KVProject::Unsubscribe(const KVProjectEvents* subscriber) {
  mSubscribers.Remove(subscriber);
}

void KVProject::FirePreBuildStatus(std::string Status) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.ProgressPreBuildStatus(Status); });
}
void KVProject::FirePostBuildStatus(std::string Status) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.ProgressPostBuildStatus(Status); });
}
void KVProject::FireCancelAvailabilityChanged(bool Available) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.CancelAvailabilityChanged(Available); });
}
void KVProject::FireCompileError(const std::string& CompilerLog) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.CompileError(CompilerLog); });
}
void KVProject::FireUpdateStatusAnim(const std::string& StatusAnimFileName) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.StatusAnimChange(StatusAnimFileName); });
}
void KVProject::FireInitialiseStatus(long Index, long MaxValue) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.InitialiseStatus(Index, MaxValue); });
}
void KVProject::FireUpdateStatusByIndex(long Index, const std::string& Caption, long Progress) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.UpdateStatusByIndex(Index, Caption, Progress); });
}
void KVProject::FireContentCreated(const std::string& FileName) {
  if (GeneratedFiles && !GeneratedFiles->Exists(FileName) &&
      (mRemoveOutputFilesAfterCompile || text::containsIgnoreCase(FileName, "registerhelp2.bat") ||
       text::containsIgnoreCase(FileName, "col_")))
    GeneratedFiles->Add(FileName, FileName);
  mSubscribers.Raise([&](KVProjectEvents& e) { e.ContentCreated(FileName); });
}
void KVProject::FireBeforeOutputNamespacePage(const std::shared_ptr<kv::PageLayout>& Layout,
                                              const std::shared_ptr<kv::NamespaceDef>& Def, const ObjectPtr& Item,
                                              bool& DontGenerate) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.BeforeOutputNamespacePage(Layout, Def, Item, DontGenerate); });
}
void KVProject::FireNamespaceExclusionsChanged() {
  mSubscribers.Raise([](KVProjectEvents& e) { e.NamespaceExclusionsChanged(); });
}

// --- Change tracking ------------------------------------------------------------------------

void KVProject::Changed() {
  if (PauseEvents) return;
  Dirty(true);
  mSubscribers.Raise([](KVProjectEvents& e) { e.Change(); });
  if (!DocTypes) return;
  for (const auto& docType : *DocTypes)
    if (const auto& plugIn = docType->ProjectPlugIn()) plugIn->ProjectChanged();
}

void KVProject::Dirty(bool v) {
  if (mDirty == v) return;
  mDirty = v;
  mSubscribers.Raise([](KVProjectEvents& e) { e.DirtyStateChanged(); });
}

void KVProject::Cancel(bool v) {
  mCancel = v;
  if (v) FirePostBuildStatus("Cancelling, please wait ..");
}

bool KVProject::Cancelled() {
  if (DoEvents) DoEvents();
  return mCancel;
}

// --- Settings with logic ----------------------------------------------------------------------

std::string KVProject::ProjectGroupName() const {
  if (!mProjectGroupName.empty()) return mProjectGroupName;
  return KVProjectFileName ? KVProjectFileName->BaseName() : std::string();
}

std::string KVProject::HTMLHelpVersion() {
  if (mHTMLHelpVersion == 0) {
    mHTMLHelpVersion = 1;
    Changed();
  }
  return std::to_string(mHTMLHelpVersion);
}

void KVProject::HTMLHelpVersion(const std::string& v) {
  const long value = long(leadingNumber(v));
  if (value == mHTMLHelpVersion) return;
  mHTMLHelpVersion = value == 0 ? 1 : value;
  Changed();
}

std::string KVProject::OutputFolder() const {
  if (mOutputFolder.empty() || mOutputFolder.back() == '/') return mOutputFolder;
  return mOutputFolder + "/";
}

std::string KVProject::DefaultTopic() const {
  if (!mUseFileNameAliases) return mDefaultTopic;
  const std::string alias = GetFileNameAlias(mDefaultTopic);
  return alias.empty() ? mDefaultTopic : alias;
}

void KVProject::DefaultTopic(const std::string& v) {
  if (mDefaultTopic != v) mDefaultTopic = v;
}

std::string KVProject::ProjectFileName() {
  if (!mProjectFileName.empty()) return mProjectFileName;
  const bool help2 = leadingNumber(HTMLHelpVersion()) >= 2;
  return OutputFolder() + ProjectFileNameNoPathOrExtension() + (help2 ? ".hxc" : ".hhp");
}

std::string KVProject::ProjectFileNameNoPathOrExtension() {
  std::string name;
  if (!mProjectFileName.empty()) {
    name = baseNameOf(mProjectFileName);
  } else if (KVProjectFileName && !KVProjectFileName->FileName().empty()) {
    name = KVProjectFileName->BaseName();
  } else {
    name = ProjectGroupName();
  }
  return ConfigurationRoot::instance().ValidFileName(text::replaceAll(name, " ", ""));
}

std::optional<kv::Locale> KVProject::Locale() const {
  if (mLocaleID == 0) return std::nullopt;
  return UnicodeHelpers::LocaleFromID(mLocaleID);
}

float KVProject::FileVersionNumeric() const {
  return float(leadingNumber(FileVersion));
}

// --- Doc types ------------------------------------------------------------------------------

bool KVProject::SomethingToDocument() const {
  return DocTypes && DocTypes->PopulatedDocTypes().Count() >= 1;
}

namespace {
template <class Count>
long sumChecked(const KVDocTypes& docTypes, Count count) {
  long total = 0;
  for (const auto& docType : docTypes)
    if (__builtin_add_overflow(total, count(*docType), &total)) throw Failure(err::Overflow, "Overflow");
  return total;
}
}  // namespace

long KVProject::SourceItemCount() const {
  return sumChecked(*DocTypes, [](KVDocType& d) { return d.SourceItemCount(); });
}
long KVProject::BinaryItemCount() const {
  return sumChecked(*DocTypes, [](KVDocType& d) { return d.BinaryItemCount(); });
}
long KVProject::VBSourceItemCount() const {
  return sumChecked(*DocTypes, [](KVDocType& d) { return d.VBSourceItemCount(); });
}

bool KVProject::IsLumidesk() const {
  for (const auto& docType : DocTypes->PopulatedDocTypes())
    if (text::equalsIgnoreCase(docType->Name(), "kv.lumidesk")) return true;
  return false;
}

bool KVProject::IsLumideskLite() const {
  for (const auto& docType : DocTypes->PopulatedDocTypes())
    if (text::equalsIgnoreCase(docType->Name(), "kv.lumidesklite")) return true;
  return false;
}

bool KVProject::IsLumideskDocType(const KVDocType& docType) const {
  return text::containsIgnoreCase(docType.Name(), "lumiquest") || text::containsIgnoreCase(docType.Name(), "lumidesk");
}

ObjectPtr KVProject::PlugInDataObject(const std::string& key, const std::string& className) {
  if (const ObjectPtr* found = PlugInData->Find(key)) return *found;
  ObjectPtr made = ClassRegistry::instance().create(className);
  made->set("KVProject", Variant(std::static_pointer_cast<Object>(shared_from_this())));
  PlugInData->Add(made, key);
  return made;
}

ObjectPtr KVProject::dbConnections() {
  return PlugInDataObject("KV.DB", "KVDB5.dbConnections");
}
ObjectPtr KVProject::XSDSchemas() {
  return PlugInDataObject("KV.XSD", "KVXSD5.Schemas");
}

// --- Files ----------------------------------------------------------------------------------

void KVProject::LoadFromFile(const std::string& FileName) {
  guard(kModule, [&] {
    FileSystem file(FileName);
    if (!file.Exists()) {
      RaiseLoadError("File '" + FileName + "' could not be found", KVError);
      return;
    }
    KVProjectFileName->FileName(FileName);
    Load(file.ReadAll(0));
    CommentFiles->LoadFiles();
  });
}

void KVProject::SaveBackupFile() {
  ignoreFailure([&] {
    if (KVProjectFileName->BaseName().empty() || !KVProjectFileName->Exists()) return;
    KVProjectFileName->CopyTo(KVProjectFileName->FileName() + ".bak");
  });
}

void KVProject::SaveToFile(const std::string& FileName) {
  guard(kModule, [&] {
    SaveBackupFile();
    FileSystem file(FileName);
    file.CreateFolder();
    replaceFileContents(file.FileName(), Save());
    CommentFiles->SaveFiles();
    FileVersion = "5.0";
  });
}

bool KVProject::SaveToDisk() {
  try {
    SaveBackupFile();
    KVProjectFileName->CreateFolder();
    replaceFileContents(KVProjectFileName->FileName(), Save());
    if (!CommentFiles->SaveFiles()) return false;
    FileVersion = "5.0";
    return true;
  } catch (...) {
    return false;  // reported by the result alone
  }
}

// --- Variables ------------------------------------------------------------------------------

std::string KVProject::GetVariableValue(const std::string& Name) const {
  const std::string value = VariableValues->Item(Name)->Value();
  for (const auto& docType : DocTypes->PopulatedDocTypes()) {
    std::shared_ptr<Template> tmpl;
    ignoreFailure([&] { tmpl = docType->Template(); });
    if (!tmpl) continue;
    for (const auto& def : tmpl->VariableDefs) {
      if (!text::equalsIgnoreCase(def.Name, Name)) continue;
      long colour = 0;
      if (def.Type == 4 && ignoreFailure([&] { colour = xmlvalue::Strict(value); })) return ColorToWebHex(colour);
      return value;
    }
  }
  return value;
}

std::shared_ptr<VariableValue> KVProject::CreateVariableValue(const std::string& Name, const std::string& Value) {
  auto record = NewVariableValue(Name, Value, false, false);
  VariableValues->Add(record, Name);
  return record;
}

std::shared_ptr<VariableValue> KVProject::NewVariableValue(const std::string& Name, const std::string& Value,
                                                           bool IsDefault, bool IsSystem) {
  auto record = VariableValue::Create(std::static_pointer_cast<KVProject>(shared_from_this()), IsSystem, Name, Value);
  record->IsDefaultValue = IsDefault;
  return record;
}

void KVProject::LoadAllVariables() {
  guard(kModule, [&] {
    for (const auto& docType : DocTypes->PopulatedDocTypes()) LoadVariables(*docType);
  });
}

void KVProject::LoadVariables(KVDocType& DocType) {
  guard(kModule, [&] {
    const auto tmpl = DocType.Template();
    if (!tmpl) return;
    for (const auto& def : tmpl->VariableDefs) {
      if (VariableValues->Exists(def.Name)) continue;
      VariableValues->Add(NewVariableValue(def.Name, def.DefaultValue, true, false), def.Name);
    }
  });
}

// --- Phrases and scraps ---------------------------------------------------------------------

std::string KVProject::Phrase(const std::string& Key) {
  if (!mCurrentDocType) return Key;
  return mCurrentDocType->Template()->Phrase(Key);
}

std::string KVProject::Scrap(const std::string& Key) {
  if (!mCurrentDocType) throw ObjectNotSet();
  return mCurrentDocType->Template()->Scrap(Key);
}

// --- Messages -------------------------------------------------------------------------------

int KVProject::ShowMessageBox(const std::string& Message, int Buttons, const std::string& Title) {
  return InternalShowMessageBox(Message, Buttons, Title, -1);
}

int KVProject::InternalShowMessageBox(const std::string& Message, int Buttons, const std::string& Title,
                                      int ExplicitDefault) {
  int result = 0;
  bool cancelDefault = false;
  mSubscribers.Raise([&](KVProjectEvents& e) { e.MessageBox(Message, Buttons, Title, result, cancelDefault); });
  if (cancelDefault) return result;
  if (!Silent) return showHostMessage(Message, Buttons, Title);

  FirePostBuildStatus(Message);
  if (ExplicitDefault != -1) return ExplicitDefault;
  if ((Buttons & 1) || (Buttons & 3) == 3 || (Buttons & 5) == 5) return mb::Cancel;
  if (Buttons & 4) return mb::No;
  return 0;
}

void KVProject::RaiseLoadError(const std::string& Text, KVErrorLevel Level) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.BuildError(Text, Level); });
  ShowMessageBox(Text, mb::OKOnly + (Level == KVWarning ? mb::Exclamation : mb::Critical), "Kavrel Load Error");
}

void KVProject::RaiseBuildError(const std::string& Text, KVErrorLevel Level) {
  mSubscribers.Raise([&](KVProjectEvents& e) { e.BuildError(Text, Level); });
}

// --- End ------------------------------------------------------------------------------------

void KVProject::Terminate() {
  guard(kModule, [&] {
    if (DocTypes)
      for (const auto& docType : *DocTypes)
        if (const auto& plugIn = docType->ProjectPlugIn()) plugIn->Terminate();
    // Releasing the owned objects breaks the reference cycles through plug-ins and doc types.
    mNamespaceProviders.reset();
    mDataProviders.clear();
    DocTypes.reset();
    ExcludeFilters.reset();
    VariableValues.reset();
    AdditionalFiles.reset();
    CommentFiles.reset();
    IgnoreRelationships.reset();
    PlugInData.reset();
    if (KVProjectFileName && KVProjectFileName->Exists()) KVProjectFileName->FileName("");
    ModelCommentCollections.reset();
    ModelCommentProfiles.reset();
    mCurrentDocType.reset();
    CommunityProperties.reset();
    mContents.reset();
    ReleaseKeywordStores();
  });
}

}  // namespace kv
