// Reading and writing the project file's text. The reader accepts everything older versions
// wrote; the writer always writes the current form.
#include <algorithm>

#include "comments/KVContentFiles.h"
#include "definitions/Configuration.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "host/modMain.h"
#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"
#include "project/AdditionalFiles.h"
#include "project/CommunityProperties.h"
#include "project/DatabaseProperties.h"
#include "project/DotNetProperties.h"
#include "project/ExcludeFilters.h"
#include "project/IgnoreRelationships.h"
#include "project/KVDiagramStyle.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVPropertyBag.h"
#include "project/VariableValues.h"
#include "project/XSDProperties.h"

namespace kv {
namespace {

constexpr const char* kModule = "KVProject";

using xmlvalue::Attr;
using xmlvalue::Bool;
using xmlvalue::IsTrue;

// Older Windows versions wrote "\" in relative names.
std::string withSlashes(std::string_view name) {
  std::string out(name);
  std::replace(out.begin(), out.end(), '\\', '/');
  return out;
}

std::shared_ptr<Template> installedTemplate(const std::string& name) {
  return ConfigurationRoot::instance().Templates().Item(name);
}

// The legacy names of namespace selections.
std::string legacyNamespaceName(const std::string& elementType) {
  if (elementType.find(':') != std::string::npos) return elementType;
  static const std::pair<const char*, const char*> names[] = {{"Methods", "KV:Method"},
                                                              {"Properties", "KV:Property"},
                                                              {"Events", "KV:Event"},
                                                              {"Enumerations", "KV:Enumeration"},
                                                              {"UDTs", "KV:Structure"},
                                                              {"Libraries", "KV:Library"},
                                                              {"Implemented Interfaces", "KV:ImplementedInterface"}};
  for (const auto& [old, current] : names)
    if (elementType == old) return current;
  return elementType;
}

}  // namespace

// --- Relative file names ------------------------------------------------------------------------

std::string KVProject::ToRelativeFileName(FileSystem& FileName) const {
  return kv::ToRelativeFileName(FileName, *KVProjectFileName);
}

std::string KVProject::ToRelativeFileName(std::string_view FileName) const {
  FileSystem file{std::string(FileName)};
  return kv::ToRelativeFileName(file, *KVProjectFileName);
}

std::string KVProject::FromRelativeFileNAme(FileSystem& FileName) const {
  return kv::FromRelativeFileNAme(FileName, *KVProjectFileName);
}

std::string KVProject::FromRelativeFileNAme(std::string_view FileName) const {
  return kv::FromRelativeFileNAme(FileName, *KVProjectFileName);
}

// --- Helpers of loading ---------------------------------------------------------------------------

bool KVProject::IsEmptyFileName(const std::string& FileName) {
  return text::replaceAll(FileName, "\\", "").empty();
}

void KVProject::ReportReadFailure() {
  if (mReadFailureShown) return;
  mReadFailureShown = true;
  RaiseLoadError(
      "Could not read one or more properties from the Kavrel project file. If you are loading a project file "
      "created with Kavrel version 2.0, you should check save the project as soon as possible to restore missing "
      "properties",
      KVWarning);
}

void KVProject::EnsurePathsNotEmpty() {
  guard(kModule, [&] {
    if (!IsEmptyFileName(mOutputFolder) && !IsEmptyFileName(mHelpFileName)) return;
    if (!KVProjectFileName || KVProjectFileName->FileName().empty()) return;
    for (const auto& docType : DocTypes->PopulatedDocTypes()) {
      const auto& plugIn = docType->ProjectPlugIn();
      if (IsEmptyFileName(mOutputFolder)) OutputFolder(plugIn->DefaultOutputFolder());
      if (IsEmptyFileName(mHelpFileName)) HelpFileName(plugIn->DefaultOutputFileName());
      if (mHHNamespace.empty()) HHNamespace(FileSystem(plugIn->DefaultOutputFileName()).BaseName());
      if (!IsEmptyFileName(mOutputFolder) && !IsEmptyFileName(mHelpFileName)) break;
    }
  });
}

void KVProject::AddNamespaceToIncludedNamespaceNames(const NamespaceDef& def) {
  if (def.Selectable) IncludedNamespaceNames->PropertyValue(def.Name, "", Bool(def.DefaultInclude));
  for (const auto& child : def.ChildNamespaceDefs) AddNamespaceToIncludedNamespaceNames(*child);
}

void KVProject::ApplyNamespaceExclusions() {
  guard(kModule, [&] {
    auto resolved = std::make_shared<Collection<std::string>>();
    for (const auto& docType : DocTypes->PopulatedDocTypes()) {
      for (long i = 1; i <= NamespaceExclusions->Count(); ++i) {
        const std::string name = NamespaceExclusions->Item(i);
        ObjectPtr item = docType->ProjectPlugIn()->GetObjectFromQualifiedName(name);
        if (!item) continue;
        ignoreFailure([&] { item->set("IncludeFlag", false); });
        ignoreFailure([&] { item->set("ExcludeFlag", true); });
        if (!resolved->Exists(name)) resolved->Add(name, name);
        NamespaceExclusions->Remove(i);
        --i;
      }
    }
    NamespaceExclusions = resolved;
    FireNamespaceExclusionsChanged();
  });
}

void KVProject::LoadDocTypes(XMLDocument& doc, bool LoadPlugIns) {
  // The plug-ins read how they are to load from the document itself.
  ignoreFailure([&] { doc.RootNode().SetAttribute("DirectLoad", Bool(DirectLoad)); });
  DocTypes->LoadFromKVProjectXMLEx(doc, LoadPlugIns);
}

// --- Load -------------------------------------------------------------------------------------------

void KVProject::Load(const std::string& SourceText) {
  guard(kModule, [&] {
    ExcludeFilters = std::make_shared<kv::ExcludeFilters>();
    ExcludeFilters->KVProject = std::static_pointer_cast<KVProject>(shared_from_this());

    XMLDocument doc;
    if (!doc.LoadXML(SourceText)) ReportReadFailure();
    const XMLNode root = doc.RootNode();
    const std::string rootName = root.Name();
    if ((rootName != "KavrelSettings" && rootName != "KavrelProject") || root.ChildNodes().Count() == 0) {
      ShowMessageBox("Cannot load KVProject - Kavrel KVProject file is corrupted or invalid", mb::Exclamation,
                     "KVProject file invalid");
      return;
    }
    PauseEvents = true;
    LoadBody(doc);
    mDirty = LoadDirty;
    LoadedFromFile = true;
    PauseEvents = false;
  });
  PauseEvents = false;
}

void KVProject::LoadBody(XMLDocument& doc) {
  const auto self = std::static_pointer_cast<KVProject>(shared_from_this());
  // A statement whose failure is reported once as a read failure; loading goes on.
  auto E = [&](auto&& body) {
    try {
      body();
    } catch (...) {
      ReportReadFailure();
    }
  };
  XMLNode root = doc.RootNode();

  E([&] { FileVersion = Attr(root, "Version"); });
  {
    const std::string first = text::left(FileVersion, 1), last = text::right(FileVersion, 1);
    if (xmlvalue::Leading(first) > 5 || (first == "5" && last > "0"))
      ShowMessageBox("This project was last saved in version " + FileVersion +
                         " of Kavrel. Kavrel will attempt to load the project, but you should be aware that any "
                         "project settings introduced in a more recent version of Kavrel will not be loaded or saved "
                         "by this version.",
                     mb::Exclamation, "Project saved in " + FileVersion);
  }
  E([&] { mCompileHelpFile = IsTrue(Attr(root, "CompileHelpFile")); });
  E([&] { mRefreshIfExists = IsTrue(Attr(root, "RefreshIfExists")); });
  E([&] { mDocumentSourceCode = IsTrue(Attr(root, "DocumentSourceCode")); });
  E([&] { mAlwaysCopySupportFiles = IsTrue(Attr(root, "AlwaysCopySupportFiles")); });
  E([&] { mPropertyCommentsFrom = xmlvalue::Strict(Attr(root, "PropertyCommentsFrom")); });
  ignoreFailure([&] { mRelationshipsFrom = xmlvalue::Leading(Attr(root, "Relationshipsfrom")); });
  ignoreFailure([&] { mDefaultRelsOnlyForCollections = IsTrue(Attr(root, "DefaultRelsOnlyForCollections")); });
  E([&] { mProjectGroupName = Attr(root, "ProjectGroupName"); });
  ignoreFailure([&] { mHTMLHelpVersion = xmlvalue::Strict(Attr(root, "HTMLHelpVersion")); });
  ignoreFailure([&] { mHHNamespace = Attr(root, "HHNamespace"); });
  ignoreFailure([&] { mHHIdentifier = Attr(root, "HHIdentifier"); });
  ignoreFailure([&] {
    const auto docType = DocTypes->DocTypeFromTemplate(installedTemplate(Attr(root, "HelpTemplatesFrom")));
    if (docType) docType->UseHelpTemplates = true;
  });
  ignoreFailure([&] { mPlugInToVSNET = IsTrue(Attr(root, "H2PlugIn")); });
  ignoreFailure([&] { mPlugInNamespace = Attr(root, "H2PlugInNamespace"); });
  ignoreFailure([&] { mLocaleID = xmlvalue::Leading(Attr(root, "LocaleID")); });
  ignoreFailure([&] { mExcludeFiltersRegExp = IsTrue(Attr(root, "ExcludeFiltersRegExp")); });
  ignoreFailure([&] { mOutputFileExtension = Attr(root, "OutputFileExtension"); });

  // First pass: everything but the legacy TOC sources and the filters.
  for (const XMLNode node : root.ChildNodes()) {
    const std::string name = text::toLower(node.Name());
    if (name == "outputlocation") {
      E([&] { mOutputFolder = withSlashes(Attr(node, "OutputFolder")); });
      E([&] {
        mHelpFileName = withSlashes(Attr(node, FileVersionNumeric() >= 4.0f ? "HelpFileName" : "CHMFileName"));
      });
      ignoreFailure([&] { mUseFileNameAliases = IsTrue(Attr(node, "UseFileNameAliases")); });
      ignoreFailure([&] { mStripMetaData = IsTrue(Attr(node, "StripMetaData")); });
      ignoreFailure([&] { mClearBeforeBuild = IsTrue(Attr(node, "ClearBeforeBuild")); });
      ignoreFailure([&] { mRemoveOutputFilesAfterCompile = IsTrue(Attr(node, "RemoveOutputFilesAfterCompile")); });
    } else if (name == "htmlhelpoptions") {
      E([&] { mUseAlinkMenus = IsTrue(Attr(node, "usealinkmenus")); });
    } else if (name == "otheroptions") {
      E([&] { mCreateContextLinks = IsTrue(Attr(node, "CreateContextLinks")); });
      E([&] { mWriteHelpDescriptions = IsTrue(Attr(node, "WriteHelpDescriptions")); });
      E([&] { mCopySourceCode = IsTrue(Attr(node, "CopySourcecode")); });
      E([&] { mCreateWinHelpStub = IsTrue(Attr(node, "CreateWinHelpStub")); });
      E([&] { mLanguage = Attr(node, "Language"); });
    } else if (name == "commentextraction") {
      ignoreFailure([&] { mUnTaggedModules = IsTrue(Attr(node, "UntaggedModules")); });
      ignoreFailure([&] { mUnTaggedBlocks = IsTrue(Attr(node, "UntaggedBlocks")); });
      ignoreFailure([&] { mUnTaggedVariables = IsTrue(Attr(node, "UntaggedVariables")); });
      ignoreFailure([&] { mUnTaggedEvents = IsTrue(Attr(node, "UntaggedEvents")); });
      ignoreFailure([&] { mUnTaggedEnumerations = IsTrue(Attr(node, "UntaggedEnumerations")); });
      ignoreFailure([&] { mUnTaggedUDTs = IsTrue(Attr(node, "UntaggedUDTs")); });
      ignoreFailure([&] { mHelpDescriptionImport = xmlvalue::Leading(Attr(node, "HelpDescriptionImport")); });
      for (const XMLNode untagged : node.ChildNodes()) {
        if (text::toLower(untagged.Name()) != "untagged") continue;
        E([&] {
          const std::string kind = Attr(untagged, "ElementType");
          if (kind == "Modules") mUnTaggedModules = true;
          if (kind == "Variables") mUnTaggedVariables = true;
          if (kind == "Blocks") mUnTaggedBlocks = true;
          if (kind == "Events") mUnTaggedEvents = true;
          if (kind == "Enumerations") mUnTaggedEnumerations = true;
          if (kind == "UDTs") mUnTaggedUDTs = true;
        });
      }
    } else if (name == "diagrams") {
      E([&] { mPageNestingLevels = xmlvalue::Leading(Attr(node, "PageNestinglevels")); });
      E([&] { mOverviewNestingLevels = xmlvalue::Leading(Attr(node, "Overviewnestinglevels")); });
      ignoreFailure([&] { mSupressSingleObjectDiagrams = IsTrue(Attr(node, "SupressSingleObjectDiagrams")); });
      E([&] { DiagramStyle->Load(node); });
    } else if (name == "tableofcontents") {
      // Written by old versions; it no longer has any effect.
    } else if (name == "variablevalues") {
      VariableValues = std::make_shared<kv::VariableValues>();
      VariableValues->KVProject = self;
      for (const XMLNode child : node.ChildNodes()) {
        E([&] {
          auto record = VariableValue::Create(self, false, Attr(child, "Name"), Attr(child, "Value"));
          ignoreFailure([&] { VariableValues->Add(record, record->Name); });
        });
      }
    } else if (name == "additionalfiles") {
      for (const XMLNode child : node.ChildNodes()) {
        E([&] {
          auto file = std::make_shared<AdditionalFile>();
          file->FileName = FromRelativeFileNAme(child.Text());
          ignoreFailure([&] { AdditionalFiles->Add(file, file->FileName); });
        });
      }
    } else if (name == "modelcomments") {
      for (const XMLNode child : node.ChildNodes()) {
        if (text::toLower(child.Name()) == "specificmodelcomments") {
          E([&] {
            ModelComments specific;
            specific.Load(child);
            for (const auto& comment : specific)
              for (const auto& docType : *DocTypes) {
                const auto plugIn = docType->ProjectPlugIn();
                const auto defs = plugIn ? plugIn->NamespaceDefs() : nullptr;
                if (!defs || defs->FindByName(comment->NamespaceName()).empty()) continue;
                docType->ModelComments->Add(comment);
                break;
              }
          });
          continue;
        }
        const std::string profileName = child.Text();
        for (const auto& profile : ConfigurationRoot::instance().ModelCommentProfiles())
          if (text::equalsIgnoreCase(profile->Name(), profileName)) {
            ignoreFailure([&] { ModelCommentProfiles->Add(profile, profile->Name()); });
            break;
          }
      }
    } else if (name == "ignorerelationships") {
      for (const XMLNode child : node.ChildNodes()) {
        if (child.Name() != "IgnoreRelationship") continue;
        E([&] {
          auto relationship = std::make_shared<IgnoreRelationship>();
          relationship->Load(child);
          IgnoreRelationships->Add(relationship);
        });
      }
    } else if (name == "namespaceexclusions") {
      NamespaceExclusions = std::make_shared<Collection<std::string>>();
      for (const XMLNode child : node.ChildNodes()) {
        const std::string qualifiedName = child.Text();
        ignoreFailure([&] { NamespaceExclusions->Add(qualifiedName, qualifiedName); });
      }
    } else if (name == "commentfiles") {
      E([&] { CommentFiles->Load(node); });
      for (long i = 1; i <= CommentFiles->Count(); ++i) {
        const std::string fileName = CommentFiles->Item(i)->FileName;
        if (FileSystem(fileName).Exists()) continue;
        ShowMessageBox("Content File '" + fileName +
                           "' could not be found. It has been removed from the project. If the Content File has been "
                           "moved, add it again to the project from it's new location.",
                       mb::Exclamation, "Content File Missing");
        CommentFiles->Remove(i);
        --i;
      }
    } else if (name == "propertybag") {
      E([&] { PropertyBag->Load(node); });
    } else if (name == "dotnetproperties") {
      E([&] { DotNetProperties->Load(node); });
    } else if (name == "databaseproperties") {
      E([&] { DatabaseProperties->Load(node); });
    } else if (name == "xsdproperties") {
      E([&] { XSDProperties->Load(node); });
    } else if (name == "communityextensions") {
      E([&] { CommunityProperties->Load(node); });
      E([&] { CommunityProjectKey = Attr(node, "CommunityProjectKey"); });
    }
  }

  // Second pass: legacy TOC sources, and the filters with their children in document order.
  for (const XMLNode node : root.ChildNodes()) {
    const std::string name = text::toLower(node.Name());
    if (name == "tocsource") {
      ignoreFailure([&] {
        const auto docType = DocTypes->DocTypeFromTemplate(installedTemplate(Attr(node, "TemplateName")));
        if (docType) docType->TOCSource->Load(node);
      });
    } else if (name == "includefilters") {
      E([&] { mIncludePrivate = IsTrue(Attr(node, "IncludePrivate")); });
      E([&] { mIncludeFriend = IsTrue(Attr(node, "IncludeFriend")); });
      E([&] { mIncludeProtected = IsTrue(Attr(node, "IncludeProtected")); });
      E([&] { mIdentifyVisibility = IsTrue(Attr(node, "IdentifyVisibility")); });
      for (const XMLNode child : node.ChildNodes()) {
        const std::string childName = text::toLower(child.Name());
        if (childName == "include") {
          // Only the last of these survives.
          IncludedNamespaceNames = std::make_shared<KVPropertyBag>();
          E([&] {
            IncludedNamespaceNames->PropertyValue(legacyNamespaceName(Attr(child, "ElementType")), "", "True");
          });
        } else if (childName == "memberfilter") {
          E([&] {
            if (IsTrue(child.Attributes().ValueOr("Include"))) return;
            auto filter = std::make_shared<ExcludeFilter>();
            filter->FilterWildCard = Attr(child, "Wildcard");
            ExcludeFilters->Add(filter);
          });
        } else if (childName == "namespaces") {
          IncludedNamespaceNames = std::make_shared<KVPropertyBag>();
          E([&] { IncludedNamespaceNames->Load(child); });
        }
      }
    }
  }

  E([&] { LoadDocTypes(doc, LoadPlugInXML); });
  E([&] { EnsurePathsNotEmpty(); });
  E([&] {
    if (IsEmptyFileName(mOutputFolder)) return;
    if (mOutputFolder == ".")
      mOutputFolder = KVProjectFileName->Folder();
    else
      mOutputFolder = FileSystem(FromRelativeFileNAme(OutputFolder() + "dummy.tmp")).Folder();
  });
  E([&] {
    if (!IsEmptyFileName(mHelpFileName)) mHelpFileName = FromRelativeFileNAme(mHelpFileName);
  });
  E([&] { LoadAllVariables(); });
  E([&] {
    if (IncludedNamespaceNames->PropertyValues().Count() != 0) return;
    IncludedNamespaceNames = std::make_shared<KVPropertyBag>();
    for (const auto& def : DocTypes->PopulatedDocTypes().NamespaceDefs()) AddNamespaceToIncludedNamespaceNames(*def);
  });
  E([&] { ApplyNamespaceExclusions(); });
}

// --- Save -------------------------------------------------------------------------------------------

std::string KVProject::Save() {
  return guard<std::string>(kModule, [&] {
    XMLDocument doc;
    XMLNode root = doc.RootNode();
    root.Name("KavrelProject");
    root.SetAttribute("Version", "5.0");
    root.SetAttribute("CompileHelpFile", Bool(mCompileHelpFile));
    root.SetAttribute("RefreshIfExists", Bool(mRefreshIfExists));
    root.SetAttribute("DocumentSourceCode", Bool(mDocumentSourceCode));
    root.SetAttribute("AlwaysCopySupportFiles", Bool(mAlwaysCopySupportFiles));
    root.SetAttribute("PropertyCommentsFrom", std::to_string(mPropertyCommentsFrom));
    root.SetAttribute("RelationshipsFrom", std::to_string(mRelationshipsFrom));
    root.SetAttribute("DefaultRelsOnlyForCollections", Bool(mDefaultRelsOnlyForCollections));
    root.SetAttribute("ProjectGroupName", mProjectGroupName);
    root.SetAttribute("HTMLHelpVersion", std::to_string(mHTMLHelpVersion));
    root.SetAttribute("HHNamespace", mHHNamespace);
    root.SetAttribute("HHIdentifier", mHHIdentifier);
    root.SetAttribute("H2PlugIn", Bool(mPlugInToVSNET));
    root.SetAttribute("H2PlugInNamespace", mPlugInNamespace);
    root.SetAttribute("LocaleID", std::to_string(mLocaleID));
    root.SetAttribute("ExcludeFiltersRegExp", Bool(mExcludeFiltersRegExp));
    root.SetAttribute("OutputFileExtension", mOutputFileExtension);

    XMLNode location = root.AddChild("OutputLocation");
    // The folder goes through the file name conversion as a file inside it, as on reading.
    std::string outputFolder;
    if (!mOutputFolder.empty()) {
      const std::string relative = ToRelativeFileName(OutputFolder() + "dummy.tmp");
      outputFolder = relative.substr(0, relative.size() - std::string_view("dummy.tmp").size());
      if (outputFolder.empty()) outputFolder = ".";
    }
    location.SetAttribute("OutputFolder", outputFolder);
    location.SetAttribute("HelpFileName", mHelpFileName.empty() ? "" : ToRelativeFileName(mHelpFileName));
    location.SetAttribute("UseFilenameAliases", Bool(mUseFileNameAliases));
    location.SetAttribute("StripMetadata", Bool(mStripMetaData));
    location.SetAttribute("ClearBeforeBuild", Bool(mClearBeforeBuild));
    location.SetAttribute("RemoveOutputFilesAfterCompile", Bool(mRemoveOutputFilesAfterCompile));

    root.AddChild("HTMLHelpOptions").SetAttribute("UseALinkMenus", Bool(mUseAlinkMenus));

    XMLNode other = root.AddChild("OtherOptions");
    other.SetAttribute("CreateContextLinks", Bool(mCreateContextLinks));
    other.SetAttribute("WriteHelpDescriptions", Bool(mWriteHelpDescriptions));
    other.SetAttribute("CopySourceCode", Bool(mCopySourceCode));
    other.SetAttribute("CreateWinHelpStub", Bool(mCreateWinHelpStub));
    other.SetAttribute("Language", mLanguage);

    XMLNode filters = root.AddChild("IncludeFilters");
    filters.SetAttribute("IncludePrivate", Bool(mIncludePrivate));
    filters.SetAttribute("IncludeFriend", Bool(mIncludeFriend));
    filters.SetAttribute("IncludeProtected", Bool(mIncludeProtected));
    filters.SetAttribute("IdentifyVisibility", Bool(mIdentifyVisibility));
    for (const auto& filter : *ExcludeFilters) {
      XMLNode member = filters.AddChild("MemberFilter");
      member.SetAttribute("Wildcard", filter->FilterWildCard);
      member.SetAttribute("Include", "False");
    }
    XMLNode namespaces = filters.AddChild("Namespaces");
    IncludedNamespaceNames->Save(namespaces);

    XMLNode extraction = root.AddChild("CommentExtraction");
    extraction.SetAttribute("UnTaggedBlocks", Bool(mUnTaggedBlocks));
    extraction.SetAttribute("UnTaggedEnumerations", Bool(mUnTaggedEnumerations));
    extraction.SetAttribute("UnTaggedEvents", Bool(mUnTaggedEvents));
    extraction.SetAttribute("UnTaggedModules", Bool(mUnTaggedModules));
    extraction.SetAttribute("UnTaggedUDTs", Bool(mUnTaggedUDTs));
    extraction.SetAttribute("UnTaggedVariables", Bool(mUnTaggedVariables));
    extraction.SetAttribute("HelpDescriptionImport", std::to_string(mHelpDescriptionImport));

    XMLNode diagrams = root.AddChild("Diagrams");
    diagrams.SetAttribute("PageNestingLevels", std::to_string(mPageNestingLevels));
    diagrams.SetAttribute("OverviewNestingLevels", std::to_string(mOverviewNestingLevels));
    diagrams.SetAttribute("SupressSingleObjectDiagrams", Bool(mSupressSingleObjectDiagrams));
    diagrams.SetAttribute("DiagramStyleSource", std::to_string(int(DiagramStyle->DiagramStyleSource())));
    DiagramStyle->Save(diagrams);

    XMLNode variables = root.AddChild("VariableValues");
    for (const auto& variable : *VariableValues) {
      if (variable->IsDefaultValue || variable->System) continue;
      XMLNode child = variables.AddChild("VariableValue");
      child.SetAttribute("Name", variable->Name);
      child.SetAttribute("Value", variable->Value());
    }

    XMLNode files = root.AddChild("AdditionalFiles");
    for (const auto& file : *AdditionalFiles) files.AddChild("File").Text(ToRelativeFileName(file->FileName));

    XMLNode profiles = root.AddChild("ModelComments");
    for (const auto& profile : *ModelCommentProfiles) profiles.AddChild("ModelCommentProfile").Text(profile->Name());

    XMLNode ignored = root.AddChild("IgnoreRelationships");
    for (const auto& relationship : *IgnoreRelationships) {
      XMLNode child = ignored.AddChild("IgnoreRelationship");
      relationship->Save(child);
    }

    if (NamespaceExclusions->Count() > 0) {
      XMLNode exclusions = root.AddChild("NamespaceExclusions");
      for (const auto& name : *NamespaceExclusions) exclusions.AddChild("e").Text(name);
    }

    XMLNode dotNet = root.AddChild("DotNetProperties");
    DotNetProperties->Save(dotNet);
    XMLNode database = root.AddChild("DatabaseProperties");
    DatabaseProperties->Save(database);
    XMLNode xsd = root.AddChild("XSDProperties");
    XSDProperties->Save(xsd);

    XMLNode comments = root.AddChild("CommentFiles");
    CommentFiles->Save(comments);

    // The reader looks for this element by name, so it is named although the community object
    // fills it.
    XMLNode community = root.AddChild("CommunityExtensions");
    community.SetAttribute("CommunityProjectKey", CommunityProjectKey);
    CommunityProperties->Save(community);

    DocTypes->SaveToKVProjectXML(doc);

    XMLNode bag = root.AddChild("PropertyBag");
    PropertyBag->Save(bag);
    return doc.Xml();
  });
}

}  // namespace kv
