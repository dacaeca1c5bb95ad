// A documentation project: every setting, the project collections, the doc types with their
// plug-ins and the comment files; the dirty state and the project's events; the project file.
//
// Create one with KVProject::New() and end it with Terminate(): the object graph holds cycles.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/UnicodeHelpers.h"
#include "kavrel/Collection.h"
#include "kavrel/Enums.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProject.h"
#include "kavrel/Object.h"
#include "project/KVProjectEvents.h"
#include "services/Subscribers.h"

namespace kv {

class KVDocTypes;
class KVDocType;
class ExcludeFilters;
class VariableValues;
class AdditionalFiles;
class KVPropertyBag;
class ContentBinding;
class KVContentFiles;
class IgnoreRelationships;
class KVDiagramStyle;
class DotNetProperties;
class DatabaseProperties;
class XSDProperties;
class VariableValue;
class ModelComments;
class ModelCommentCollections;
class CommunityProperties;
class NamespaceDef;
class XMLDocument;
class INamespaceProvider;
class DataProvider;
class Template;
class PageLayout;
class NodeDef;
class Keywords;
class ProjectContents;

class KVProject : public Object, public IKVProject {
  struct Token {};

 public:
  explicit KVProject(Token);
  ~KVProject() override;
  static std::shared_ptr<KVProject> New();
  // Number of live project objects in the process.
  static long InstanceCount();

  std::string typeName() const override { return "KVProject"; }

  // --- What plug-ins see --------------------------------------------------------------------
  std::weak_ptr<IKVProject> WeakReference() override;
  ObjectPtr AsObject() override { return shared_from_this(); }
  std::string DocTypeOfPlugIn(const IKVProjectPlugIn& PlugIn) const override;

  // --- Events -----------------------------------------------------------------------------
  void Subscribe(std::weak_ptr<KVProjectEvents> subscriber);
  void Unsubscribe(const KVProjectEvents* subscriber);

  // --- Owned objects ----------------------------------------------------------------------
  std::shared_ptr<kv::KVDocTypes> DocTypes;
  std::shared_ptr<kv::ExcludeFilters> ExcludeFilters;
  std::shared_ptr<kv::VariableValues> VariableValues;
  std::shared_ptr<kv::AdditionalFiles> AdditionalFiles;
  std::shared_ptr<kv::KVPropertyBag> IncludedNamespaceNames;
  std::shared_ptr<kv::KVContentFiles> CommentFiles;
  std::shared_ptr<kv::IgnoreRelationships> IgnoreRelationships;
  std::shared_ptr<kv::KVDiagramStyle> DiagramStyle;
  std::shared_ptr<kv::KVPropertyBag> PropertyBag;
  std::shared_ptr<kv::DotNetProperties> DotNetProperties;
  std::shared_ptr<kv::DatabaseProperties> DatabaseProperties;
  std::shared_ptr<kv::XSDProperties> XSDProperties;
  std::shared_ptr<kv::CommunityProperties> CommunityProperties;
  std::shared_ptr<FileSystem> KVProjectFileName;
  // The model comments of the build at hand, gathered before the pages are written.
  std::shared_ptr<kv::ModelCommentCollections> ModelCommentCollections;
  // The model comment profiles chosen for this project, keyed by name.
  std::shared_ptr<Collection<std::shared_ptr<kv::ModelComments>>> ModelCommentProfiles;
  std::shared_ptr<Collection<std::string>> NamespaceExclusions;
  std::shared_ptr<Collection<ObjectPtr>> PlugInData;

  // Per-kind project data, created by class name on first use.
  ObjectPtr dbConnections();
  ObjectPtr XSDSchemas();

  // --- Public variables (no dirty tracking) -----------------------------------------------
  bool PauseEvents = false;
  bool Silent = false;
  bool CancelDisabled = false;
  bool LoadedFromFile = false;
  bool DirectLoad = true;
  bool LoadPlugInXML = true;
  bool LoadDirty = false;
  std::string FileVersion = "5.0";
  long CodePage = 65001;
  std::string CommunityProjectKey;
  std::string TOCBookPrefix = "<UL>";
  std::string TOCNodeScrap;
  std::string TOCBookSuffix = "</UL>";
  std::string TOCSuffix;
  std::string StubHPJTemplate, StubRTFTemplate, StubRTFTopicTemplate;
  std::string HPJCompilerPath, HHCCompilerPath, HPJCompilerOutput, CompilerOutput;
  // Set by the first build; a later build resets the plug-ins first.
  bool AlreadyBuilt = false;
  // The output files of this build that the help compile moves beside the help file or removes,
  // keyed by name; a build creates it, and it is released after the compile.
  std::shared_ptr<Collection<std::string>> GeneratedFiles;

  // --- Settings: the setter marks the project changed only on a real change ---------------
  bool CompileHelpFile() const { return mCompileHelpFile; }
  void CompileHelpFile(bool v) { Set(mCompileHelpFile, v); }
  bool RefreshIfExists() const { return mRefreshIfExists; }
  void RefreshIfExists(bool v) { Set(mRefreshIfExists, v); }
  bool DocumentSourceCode() const { return mDocumentSourceCode; }
  void DocumentSourceCode(bool v) { Set(mDocumentSourceCode, v); }
  bool AlwaysCopySupportFiles() const { return mAlwaysCopySupportFiles; }
  void AlwaysCopySupportFiles(bool v) { Set(mAlwaysCopySupportFiles, v); }
  long PropertyCommentsFrom() const { return mPropertyCommentsFrom; }
  void PropertyCommentsFrom(long v) { Set(mPropertyCommentsFrom, v); }
  long RelationshipsFrom() const { return mRelationshipsFrom; }
  void RelationshipsFrom(long v) { Set(mRelationshipsFrom, v); }
  bool DefaultRelsOnlyForCollections() const { return mDefaultRelsOnlyForCollections; }
  void DefaultRelsOnlyForCollections(bool v) { Set(mDefaultRelsOnlyForCollections, v); }
  std::string ProjectGroupName() const;
  void ProjectGroupName(const std::string& v) { Set(mProjectGroupName, v); }
  // Reading the version of a fresh project stores 1 and marks the project changed.
  std::string HTMLHelpVersion();
  void HTMLHelpVersion(const std::string& v);
  std::string HHNamespace() const { return mHHNamespace; }
  void HHNamespace(const std::string& v) { Set(mHHNamespace, v); }
  std::string HHIdentifier() const { return mHHIdentifier; }
  void HHIdentifier(const std::string& v) { Set(mHHIdentifier, v); }
  bool PlugInToVSNET() const { return mPlugInToVSNET; }
  void PlugInToVSNET(bool v) { Set(mPlugInToVSNET, v); }
  std::string PlugInNamespace() const { return mPlugInNamespace; }
  void PlugInNamespace(const std::string& v) { Set(mPlugInNamespace, v); }
  long LocaleID() const { return mLocaleID; }
  void LocaleID(long v) { Set(mLocaleID, v); }
  bool ExcludeFiltersRegExp() const { return mExcludeFiltersRegExp; }
  void ExcludeFiltersRegExp(bool v) { Set(mExcludeFiltersRegExp, v); }
  std::string OutputFileExtension() const { return mOutputFileExtension; }
  void OutputFileExtension(const std::string& v) { Set(mOutputFileExtension, v); }
  // A non-empty folder always ends in "/".
  std::string OutputFolder() const override;
  void OutputFolder(const std::string& v) { Set(mOutputFolder, v); }
  std::string HelpFileName() const { return mHelpFileName; }
  void HelpFileName(const std::string& v) { Set(mHelpFileName, v); }
  bool UseFileNameAliases() const { return mUseFileNameAliases; }
  void UseFileNameAliases(bool v) { Set(mUseFileNameAliases, v); }
  bool StripMetaData() const { return mStripMetaData; }
  void StripMetaData(bool v) { Set(mStripMetaData, v); }
  bool ClearBeforeBuild() const { return mClearBeforeBuild; }
  void ClearBeforeBuild(bool v) { Set(mClearBeforeBuild, v); }
  bool RemoveOutputFilesAfterCompile() const { return mRemoveOutputFilesAfterCompile; }
  void RemoveOutputFilesAfterCompile(bool v) { Set(mRemoveOutputFilesAfterCompile, v); }
  bool UseAlinkMenus() const { return mUseAlinkMenus; }
  void UseAlinkMenus(bool v) { Set(mUseAlinkMenus, v); }
  bool CreateContextLinks() const { return mCreateContextLinks; }
  void CreateContextLinks(bool v) { Set(mCreateContextLinks, v); }
  bool WriteHelpDescriptions() const { return mWriteHelpDescriptions; }
  void WriteHelpDescriptions(bool v) { Set(mWriteHelpDescriptions, v); }
  bool CreateWinHelpStub() const { return mCreateWinHelpStub; }
  void CreateWinHelpStub(bool v) { Set(mCreateWinHelpStub, v); }
  bool CopySourceCode() const { return mCopySourceCode; }
  void CopySourceCode(bool v) { Set(mCopySourceCode, v); }
  std::string Language() const { return mLanguage; }
  void Language(const std::string& v) { Set(mLanguage, v); }
  bool IncludePrivate() const override { return mIncludePrivate; }
  void IncludePrivate(bool v) { Set(mIncludePrivate, v); }
  bool IncludeFriend() const override { return mIncludeFriend; }
  void IncludeFriend(bool v) { Set(mIncludeFriend, v); }
  bool IncludeProtected() const override { return mIncludeProtected; }
  void IncludeProtected(bool v) { Set(mIncludeProtected, v); }
  bool IdentifyVisibility() const { return mIdentifyVisibility; }
  void IdentifyVisibility(bool v) { Set(mIdentifyVisibility, v); }
  bool IncludeProtectedFriend() const { return mIncludeProtectedFriend; }
  void IncludeProtectedFriend(bool v) { Set(mIncludeProtectedFriend, v); }
  bool UnTaggedModules() const { return mUnTaggedModules; }
  void UnTaggedModules(bool v) { Set(mUnTaggedModules, v); }
  bool UnTaggedVariables() const { return mUnTaggedVariables; }
  void UnTaggedVariables(bool v) { Set(mUnTaggedVariables, v); }
  bool UnTaggedBlocks() const { return mUnTaggedBlocks; }
  void UnTaggedBlocks(bool v) { Set(mUnTaggedBlocks, v); }
  bool UnTaggedEvents() const { return mUnTaggedEvents; }
  void UnTaggedEvents(bool v) { Set(mUnTaggedEvents, v); }
  bool UnTaggedEnumerations() const { return mUnTaggedEnumerations; }
  void UnTaggedEnumerations(bool v) { Set(mUnTaggedEnumerations, v); }
  bool UnTaggedUDTs() const { return mUnTaggedUDTs; }
  void UnTaggedUDTs(bool v) { Set(mUnTaggedUDTs, v); }
  long HelpDescriptionImport() const { return mHelpDescriptionImport; }
  void HelpDescriptionImport(long v) { Set(mHelpDescriptionImport, v); }
  long PageNestingLevels() const { return mPageNestingLevels; }
  void PageNestingLevels(long v) { Set(mPageNestingLevels, v); }
  long OverviewNestingLevels() const { return mOverviewNestingLevels; }
  void OverviewNestingLevels(long v) { Set(mOverviewNestingLevels, v); }
  bool SupressSingleObjectDiagrams() const { return mSupressSingleObjectDiagrams; }
  void SupressSingleObjectDiagrams(bool v) { Set(mSupressSingleObjectDiagrams, v); }
  bool CompileWinHelpStub() const { return mCompileWinHelpStub; }
  void CompileWinHelpStub(bool v) { Set(mCompileWinHelpStub, v); }
  bool ShowCompileLog() const { return mShowCompileLog; }
  void ShowCompileLog(bool v) { Set(mShowCompileLog, v); }
  // Compares and stores without marking the project changed.
  std::string DefaultTopic() const;
  void DefaultTopic(const std::string& v);
  // The help project file (".hhp" or ".hxc"); stores without comparing and without a change mark.
  std::string ProjectFileName();
  void ProjectFileName(const std::string& v) { mProjectFileName = v; }

  bool Dirty() const { return mDirty; }
  void Dirty(bool v);
  bool Cancel() const { return mCancel; }
  void Cancel(bool v);
  // A plain reference to the doc type being worked on; not a setting.
  std::shared_ptr<KVDocType> CurrentDocType() const { return mCurrentDocType; }
  void CurrentDocType(std::shared_ptr<KVDocType> v) { mCurrentDocType = std::move(v); }

  // --- Derived values ----------------------------------------------------------------------
  float FileVersionNumeric() const;
  // The locale of LocaleID; nothing while LocaleID is 0 (the system's locale applies).
  std::optional<kv::Locale> Locale() const;
  std::string ProjectFileNameNoPathOrExtension();
  bool SomethingToDocument() const;
  long SourceItemCount() const;
  long BinaryItemCount() const;
  long VBSourceItemCount() const;
  bool IsLumidesk() const;
  bool IsLumideskLite() const;
  bool IsLumideskDocType(const KVDocType& docType) const;

  // --- Files -------------------------------------------------------------------------------
  void LoadFromFile(const std::string& FileName);
  void SaveToFile(const std::string& FileName);
  bool SaveToDisk();
  void Load(const std::string& SourceText);
  std::string Save();
  void SaveBackupFile();
  // Gives an empty output folder and help file the first populated plug-in's defaults.
  void EnsurePathsNotEmpty();
  // A file name relative to the project file, and back to an absolute one. The text forms take
  // names as stored in files, relative or absolute, with "/" or "\\".
  std::string ToRelativeFileName(FileSystem& FileName) const;
  std::string ToRelativeFileName(std::string_view FileName) const override;
  std::string FromRelativeFileNAme(FileSystem& FileName) const;
  std::string FromRelativeFileNAme(std::string_view FileName) const override;

  // --- Variables ----------------------------------------------------------------------------
  // The stored value of a project or template variable, a colour variable as "#RRGGBB"; fails
  // when there is none.
  std::string GetVariableValue(const std::string& Name) const;
  std::shared_ptr<VariableValue> CreateVariableValue(const std::string& Name, const std::string& Value);
  std::shared_ptr<VariableValue> NewVariableValue(const std::string& Name, const std::string& Value, bool IsDefault,
                                                  bool IsSystem);
  // Adds a default record for each template variable the project does not have.
  void LoadAllVariables();
  void LoadVariables(KVDocType& DocType);

  // --- Phrases and scraps of the current doc type's template ------------------------------
  // The phrase, or `Key` itself without a current doc type.
  std::string Phrase(const std::string& Key);
  // The scrap; fails without a current doc type.
  std::string Scrap(const std::string& Key);

  // --- Output file names and their aliases (see FileNameAliases.cpp) ----------------------
  // Numbers every page name of the non-Lumidesk doc types as "topic<n>"; false when cancelled.
  bool CreateAllFileNameAliases();
  // "topic<n>" + extension for a page name (no path) that has an alias while aliases are on;
  // otherwise the name unchanged. While aliases are on but no alias pass has run, empty.
  std::string GetFileNameAlias(const std::string& FileName) const;
  // Decodes every "%XX"; the scan starts again from the beginning after each one.
  static std::string RemoveEntities(std::string_view Source);
  // The help file's name without its folder, computed once.
  std::string Short_HelpFileName();
  // Whether an item counts as new: its IsNew mark or its new-item comment, unless the comment's
  // date lies before the project's "IsNewDate" (dates as yyyy-mm-dd or dd/mm/yyyy); a member of
  // a new component is new.
  bool IsItemNew(const ObjectPtr& Item);
  // The name of a page of `Layout` for `Item` (no folder), patterns expanded by `DDP`.
  std::string GetPageLayoutFileName(const kv::PageLayout& Layout, const std::shared_ptr<kv::NamespaceDef>& Def,
                                    const ObjectPtr& Item, kv::DataProvider& DDP);
  // Whether a layout's comma list of namespace definition names serves `Name`: the first match,
  // ignoring case, counts when it ends the list or an entry.
  static bool LayoutListsNamespace(std::string_view NamespaceList, std::string_view Name);
  // The name part made usable as a file name (see ValidFileName), and ".html" turned into the
  // project's output extension when that differs.
  std::string CleanOutputFileName(std::string_view FileName);
  bool GetIsNew(const NodeDef& Node, const ObjectPtr& Item);
  // The page (HTML text) with its links to aliased pages rewritten, or nothing when no link
  // names one. A rewritten link loses its fragment.
  std::optional<std::string> LookForFileNameAliases(std::string_view Page) const;
  std::string GetLocalFileName(const std::string& URL) const;
  static bool IsFileURL(std::string_view URL);
  static std::string FileURLToFileName(std::string_view URL);
  // Warns once per build when an output file's full name is too long for other platforms'
  // help tools; `ResetPathLengthWarning` starts a new build.
  void CheckOutputPathLength(const std::string& FileName);
  void ResetPathLengthWarning() { mShownPathLengthWarning = false; }

  // --- Keyword stores and bulk content of a build ---------------------------------------------
  // The stores of index keywords (kind K), associative links (A) and Help 2's F keywords; null
  // outside a build. NewKeywordStores makes them empty and marks none as written.
  const std::shared_ptr<Keywords>& KKeywords() const { return mKKeywords; }
  const std::shared_ptr<Keywords>& AKeywords() const { return mAKeywords; }
  const std::shared_ptr<Keywords>& FKeywords() const { return mFKeywords; }
  void NewKeywordStores();
  void ReleaseKeywordStores();
  // Whether a store was already completed and sorted for an index in this build.
  bool KIndexBuilt = false, AIndexBuilt = false, FIndexBuilt = false;

  // What writes tables of contents, indexes and content streams; nothing is written without one.
  const std::shared_ptr<ProjectContents>& Contents() const { return mContents; }
  void Contents(std::shared_ptr<ProjectContents> v) { mContents = std::move(v); }
  void BuildTOC(std::shared_ptr<FileSystem>& OutputFile, const std::shared_ptr<KVDocType>& SpecificDocType = nullptr);
  void BuildIndex(std::shared_ptr<FileSystem>& OutputFile, const std::string& ScrapName);
  void StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType);

  // --- Messages and errors ------------------------------------------------------------------
  int ShowMessageBox(const std::string& Message, int Buttons, const std::string& Title) override;
  int InternalShowMessageBox(const std::string& Message, int Buttons, const std::string& Title, int ExplicitDefault);
  void RaiseLoadError(const std::string& Text, KVErrorLevel Level = KVWarning) override;
  void RaiseBuildError(const std::string& Text, KVErrorLevel Level = KVWarning) override;

  // --- Change tracking and build state ------------------------------------------------------
  void Changed() override;
  // Lets the host handle input (the default polls nothing), then tells whether to stop.
  bool Cancelled() override;
  std::function<void()> DoEvents;

  void FirePreBuildStatus(std::string Status);
  void FirePostBuildStatus(std::string Status);
  void FireCancelAvailabilityChanged(bool Available);
  void FireCompileError(const std::string& CompilerLog);
  void FireUpdateStatusAnim(const std::string& StatusAnimFileName);
  void FireInitialiseStatus(long Index, long MaxValue);
  void FireUpdateStatusByIndex(long Index, const std::string& Caption, long Progress);
  // Records the file in GeneratedFiles, while there is one, when the compile must handle it: every
  // file when output files are removed after the compile, otherwise only the Help 2 collection
  // files ("col_...") and the registration batch files. Then raises ContentCreated.
  void FireContentCreated(const std::string& FileName);
  void FireNamespaceExclusionsChanged();
  void FireBeforeOutputNamespacePage(const std::shared_ptr<kv::PageLayout>& Layout,
                                     const std::shared_ptr<kv::NamespaceDef>& Def, const ObjectPtr& Item,
                                     bool& DontGenerate);

  void Terminate();

  // --- Plug-ins -----------------------------------------------------------------------------
  // The namespace provider of a handler class, created on first use and shared by all doc
  // types with that handler; nothing when the class cannot be created (the next call tries
  // again).
  std::shared_ptr<INamespaceProvider> GetNamespaceProvider(const std::string& Handler);
  // What ties a comment file of the doc type `DocType` to its items: the doc type's provider and
  // its template's namespace definitions; nothing for a doc type the project does not have.
  std::shared_ptr<ContentBinding> CommentFileBinding(const std::string& DocType);
  // The data provider of a namespace provider's pages: its own, else one made by
  // `DataProviderFactory` (the common provider of the page generation), kept per provider.
  std::shared_ptr<kv::DataProvider> DataProviderOf(INamespaceProvider& Provider);
  std::function<std::shared_ptr<kv::DataProvider>(KVProject&)> DataProviderFactory;
  // Resets every plug-in without losing the project's content: the project is written to text
  // and read back into the doc types and plug-ins.
  void ResetPlugIns();
  // The support files copied into the output folder in this build, keyed by name.
  Collection<std::string>& CopiedSupportFiles() { return mCopiedSupportFiles; }
  // For plug-ins that add files to the output: tells the current template's provider, then
  // raises ContentCreated.
  void OtherContentCreated(const std::string& FileName);

 private:
  template <class T, class V>
  void Set(T& member, const V& value) {
    if (member == value) return;
    member = value;
    Changed();
  }
  ObjectPtr PlugInDataObject(const std::string& key, const std::string& className);

  // Project file reading, see KVProjectFile.cpp.
  void ApplyNamespaceExclusions();
  void AddNamespaceToIncludedNamespaceNames(const NamespaceDef& def);
  static bool IsEmptyFileName(const std::string& FileName);
  void ReportReadFailure();
  void LoadBody(XMLDocument& doc);
  // Lets the doc types, and when `LoadPlugIns` their plug-ins, read the document.
  void LoadDocTypes(XMLDocument& doc, bool LoadPlugIns);
  // The read failure message is shown at most once in the life of the object.
  bool mReadFailureShown = false;

  Subscribers<KVProjectEvents> mSubscribers;

  bool mCompileHelpFile = true;
  bool mRefreshIfExists = false;
  bool mDocumentSourceCode = false;
  bool mAlwaysCopySupportFiles = false;
  long mPropertyCommentsFrom = 0;
  long mRelationshipsFrom = rfAll;
  bool mDefaultRelsOnlyForCollections = true;
  std::string mProjectGroupName;
  long mHTMLHelpVersion = 0;
  std::string mHHNamespace, mHHIdentifier;
  bool mPlugInToVSNET = false;
  std::string mPlugInNamespace;
  long mLocaleID = 0;
  bool mExcludeFiltersRegExp = false;
  std::string mOutputFileExtension = ".html";
  std::string mOutputFolder;
  std::string mHelpFileName;
  bool mUseFileNameAliases = false, mStripMetaData = false, mClearBeforeBuild = false,
       mRemoveOutputFilesAfterCompile = false;
  bool mUseAlinkMenus = false;
  bool mCreateContextLinks = false, mWriteHelpDescriptions = false, mCreateWinHelpStub = false;
  bool mCopySourceCode = true;
  std::string mLanguage = "English";
  bool mIncludePrivate = false, mIncludeFriend = false, mIncludeProtected = false, mIdentifyVisibility = false;
  bool mIncludeProtectedFriend = false;
  bool mUnTaggedModules = false, mUnTaggedVariables = false, mUnTaggedBlocks = false, mUnTaggedEvents = false,
       mUnTaggedEnumerations = false, mUnTaggedUDTs = false;
  long mHelpDescriptionImport = hdiUseIfBlank;
  long mPageNestingLevels = 3, mOverviewNestingLevels = 3;
  bool mSupressSingleObjectDiagrams = true;
  bool mCompileWinHelpStub = false, mShowCompileLog = false;
  std::string mDefaultTopic;
  std::string mProjectFileName;

  void CreateFileNameAliases(KVDocType& DocType, const std::shared_ptr<kv::NamespaceDef>& Def,
                             const ObjectPtr& ParentItem, const std::shared_ptr<kv::NamespaceDef>& ParentDef,
                             bool& cancelled);
  void AddFileNameAlias(const std::string& FileName);
  // The alias a link of a page takes, if it names an aliased page.
  std::optional<std::string> AliasOfLink(const std::string& Link) const;
  // Page name (no path) -> alias number; the counter starts at 1 in each alias pass.
  std::shared_ptr<Collection<long>> mFileNameAliases;
  long mFileNameAliasIncrement = 1;
  std::optional<std::string> mShortHelpFileName;
  bool mShownPathLengthWarning = false;

  bool mDirty = false;
  bool mCancel = false;
  std::shared_ptr<KVDocType> mCurrentDocType;
  std::shared_ptr<Collection<std::shared_ptr<INamespaceProvider>>> mNamespaceProviders;
  std::map<const INamespaceProvider*, std::shared_ptr<kv::DataProvider>> mDataProviders;
  Collection<std::string> mCopiedSupportFiles;
  std::shared_ptr<Keywords> mKKeywords, mAKeywords, mFKeywords;
  std::shared_ptr<ProjectContents> mContents;
};

}  // namespace kv
