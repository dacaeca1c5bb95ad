#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "comments/KVContentFiles.h"
#include "definitions/Configuration.h"
#include "kavrel/XmlDocument.h"
#include "project/AdditionalFiles.h"
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
#include "support/Files.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "support/TestConfiguration.h"

namespace kv {
namespace {

using test::readFile;
using test::writeFile;

namespace fs = std::filesystem;

const std::string kReadFailure =
    "Could not read one or more properties from the Kavrel project file. If you are loading a project file created "
    "with Kavrel version 2.0, you should check save the project as soon as possible to restore missing properties";
const std::string kInvalid = "Cannot load KVProject - Kavrel KVProject file is corrupted or invalid";

// An installation with one doc type served by the template "Standard".
const char* kConfiguration = R"(<KavrelConfiguration>
  <DocType Name="kv.net" PlugIn="KVTest.ProjectPlugIn"/>
  <CodeLanguage Name="C#"/><CodeLanguage Name="JScript" On="False"/><CodeLanguage Name="C++" On="False"/>
  <ModelCommentProfile Name="Standard"><ModelComment ItemKind="KV:Method" ItemName="*">Does it.</ModelComment>
  </ModelCommentProfile>
</KavrelConfiguration>)";

const char* kTemplate = R"(<Template Name="Standard" SingleItemTOC="Flat">
  <DocType Name="kv.net"/><ItemType Name="source"/>
  <Variable Name="Company" Default="Default Company"/><Variable Name="Year" Default="2024"/>
  <Namespace Name="KV:Method" Selectable="True" Handler="KVTest.Provider">
    <Namespace Name="KV:Event" Selectable="True" DefaultInclude="False"/>
  </Namespace>
  <Namespace Name="KV:Fixed"/>
  <TOC Name="Flat"><NodeDef Name="Top" Caption="All"/></TOC>
</Template>)";

std::vector<std::string> childNames(const XMLNode& node) {
  std::vector<std::string> names;
  for (const XMLNode child : node.ChildNodes()) names.push_back(child.Name());
  return names;
}

// A plug-in with items to document, some of which can be excluded by name.
struct ItemsPlugIn : IKVProjectPlugIn {
  std::map<std::string, ObjectPtr> items;
  int loadXMLCalls = 0;
  bool SomethingToDocument() override { return true; }
  ObjectPtr GetObjectFromQualifiedName(const std::string& name) override {
    auto found = items.find(name);
    return found == items.end() ? nullptr : found->second;
  }
  void LoadXML(XMLDocument& doc) override {
    ++loadXMLCalls;
    directLoad = doc.RootNode().Attributes().ValueOr("DirectLoad");
  }
  std::string DefaultOutputFolder() override { return "/default/out/"; }
  std::string DefaultOutputFileName() override { return "/default/out/NetHelp.chm"; }
  std::string directLoad;
};

struct Events : KVProjectEvents {
  std::vector<std::string> buildErrors;
  int exclusionsChanged = 0;
  void BuildError(const std::string& text, KVErrorLevel) override { buildErrors.push_back(text); }
  void NamespaceExclusionsChanged() override { ++exclusionsChanged; }
};

class ProjectFile : public ::testing::Test {
 protected:
  void SetUp() override {
    config.write("kavrel.xml", kConfiguration);
    config.write("Templates/Standard/template.xml", kTemplate);
    project = KVProject::New();
    events = std::make_shared<Events>();
    project->Subscribe(events);
  }
  void TearDown() override { project->Terminate(); }
  // Copies a file of the test data into the temporary folder and loads it from there.
  std::string load(const std::string& dataName) {
    const std::string path = temp.path("proj/" + dataName);
    writeFile(path, readFile(std::string(KV_TEST_DATA_DIR) + "/project/" + dataName));
    project->LoadFromFile(path);
    return path;
  }
  std::vector<std::string> messages() const {
    std::vector<std::string> texts;
    for (const auto& m : host.messages()) texts.push_back(m.text);
    return texts;
  }
  std::string plugInLog() {
    return std::dynamic_pointer_cast<Object>(project->DocTypes->Item("kv.net")->ProjectPlugIn())
        ->get("CallLog")
        .toString();
  }
  // A populated doc type of the test's own, with a template made here.
  std::shared_ptr<ItemsPlugIn> addDocType() {
    auto tmpl = std::make_shared<Template>();
    tmpl->Name = "Own";
    auto method = std::make_shared<NamespaceDef>();
    method->Name = "KV:Method";
    method->Selectable = true;
    auto event = std::make_shared<NamespaceDef>();
    event->Name = "KV:Event";
    event->Selectable = true;
    event->DefaultInclude = false;
    auto fixed = std::make_shared<NamespaceDef>();
    fixed->Name = "KV:Fixed";
    method->ChildNamespaceDefs.Add(event, event->Name);
    tmpl->NamespaceDefs.Add(method, method->Name);
    tmpl->NamespaceDefs.Add(fixed, fixed->Name);
    auto plugIn = std::make_shared<ItemsPlugIn>();
    auto docType = std::make_shared<KVDocType>("kv.own", plugIn);
    docType->KVProject = project;
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);
    return plugIn;
  }

  test::TempFolder temp;
  test::TestConfiguration config;
  test::ScopedRecordingHost host;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<Events> events;
};

// The comment file the sample projects name; it loads with the project.
constexpr const char* kCommentFile =
    R"(<KavrelComments Version="5.0" Moniker="lib.dll" DocType="kv.net" Template="" ShowInherited="False"/>)";

TEST_F(ProjectFile, CurrentFileLoadsEverySettingAndCollection) {
  writeFile(temp.path("proj/comments/lib.kvc"), kCommentFile);

  load("full-5.0.kvp");
  const std::string folder = temp.path("proj/");
  EXPECT_EQ(messages(), std::vector<std::string>{});
  EXPECT_FALSE(project->Dirty());
  EXPECT_FALSE(project->PauseEvents);

  EXPECT_FALSE(project->CompileHelpFile());
  EXPECT_TRUE(project->RefreshIfExists());
  EXPECT_EQ(project->PropertyCommentsFrom(), 2);
  EXPECT_EQ(project->RelationshipsFrom(), rfMethodsOnly);
  EXPECT_FALSE(project->DefaultRelsOnlyForCollections());
  EXPECT_EQ(project->ProjectGroupName(), "Grüne Gruppe");
  EXPECT_EQ(project->HTMLHelpVersion(), "2");
  EXPECT_TRUE(project->PlugInToVSNET());
  EXPECT_EQ(project->LocaleID(), 1031);
  EXPECT_EQ(project->OutputFileExtension(), ".htm");
  EXPECT_EQ(project->OutputFolder(), folder + "out/");
  EXPECT_EQ(project->HelpFileName(), folder + "out/help.chm");
  EXPECT_TRUE(project->UseFileNameAliases() && project->StripMetaData() && project->ClearBeforeBuild());
  EXPECT_TRUE(project->UseAlinkMenus());
  EXPECT_FALSE(project->CopySourceCode());
  EXPECT_EQ(project->Language(), "Deutsch");
  EXPECT_TRUE(project->IncludePrivate() && project->IdentifyVisibility());
  EXPECT_TRUE(project->UnTaggedBlocks() && project->UnTaggedUDTs());
  EXPECT_FALSE(project->UnTaggedModules());
  EXPECT_EQ(project->HelpDescriptionImport(), hdiAlwaysUseOverwrite);
  EXPECT_EQ(project->PageNestingLevels(), 5);
  EXPECT_FALSE(project->SupressSingleObjectDiagrams());

  ASSERT_EQ(project->ExcludeFilters->Count(), 2);
  EXPECT_EQ(project->ExcludeFilters->Item(2)->FilterWildCard, "*_Internal");
  EXPECT_EQ(project->IncludedNamespaceNames->PropertyValue("KV:Event", ""), "False");
  EXPECT_EQ(project->DiagramStyle->DiagramStyleSource(), dssCustom);
  EXPECT_EQ(project->DiagramStyle->objBorderColor(), 8421504);
  EXPECT_EQ(project->DiagramStyle->BorderWidth(), 2);
  EXPECT_EQ(project->GetVariableValue("Company"), "Velmora & Söhne");
  EXPECT_TRUE(project->VariableValues->Item("Year")->IsDefaultValue);  // from the template
  ASSERT_EQ(project->AdditionalFiles->Count(), 2);
  EXPECT_EQ(project->AdditionalFiles->Item(1)->FileName, folder + "extra/logo.png");
  EXPECT_EQ(project->ModelCommentProfiles->Count(), 1);
  ASSERT_EQ(project->IgnoreRelationships->Count(), 1);
  EXPECT_EQ(project->IgnoreRelationships->Item(1)->ProcedureName, "Dispose");
  // Only the exclusion a plug-in resolves survives.
  ASSERT_EQ(project->NamespaceExclusions->Count(), 1);
  EXPECT_EQ(project->NamespaceExclusions->Item(1), "Lib~Secret");
  EXPECT_EQ(events->exclusionsChanged, 1);
  EXPECT_EQ(plugInLog(), "Initialise,LoadXML(DirectLoad=True)");
  EXPECT_EQ(project->DocTypes->Item("kv.net")->Template()->Name, "Standard");

  const DotNetProperties& net = *project->DotNetProperties;
  EXPECT_FALSE(net.GenerateXMLLinks());  // written, never read back
  EXPECT_EQ(net.StandardInterfaces(), "System.Collections.*");
  EXPECT_EQ(net.ExcludedLanguages(), "JScript,C++");
  EXPECT_FALSE(net.GenerateBreadcrumbs());
  EXPECT_TRUE(net.IncludeAssemblyBreadcrumb());
  EXPECT_TRUE(net.IncludeAttribute("system.Diagnostics.DebuggerHidden"));
  EXPECT_TRUE(net.IncludeAttribute("Debug1"));
  EXPECT_FALSE(net.IncludeAttribute("Lib.Custom"));
  EXPECT_TRUE(project->DatabaseProperties->RetainTaggedComments());
  EXPECT_EQ(project->XSDProperties->PageNestingLevels(), 7);
  EXPECT_EQ(project->XSDProperties->GroupParticleAllImageFilename(), "all.gif");
  ASSERT_EQ(project->CommentFiles->Count(), 1);
  EXPECT_EQ(project->CommentFiles->Item(1)->FileName, folder + "comments/lib.kvc");
  EXPECT_EQ(project->CommunityProjectKey, "QUJDLWtleQ==");
  EXPECT_EQ(project->PropertyBag->PropertyValues().Count(), 1);
}

TEST_F(ProjectFile, SaveWritesTheCurrentFormInOrderAndReloadsToTheSameText) {
  writeFile(temp.path("proj/comments/lib.kvc"), kCommentFile);
  const std::string path = load("full-5.0.kvp");
  const std::string saved = project->Save();

  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(saved));
  const XMLNode root = doc.RootNode();
  EXPECT_EQ(root.Name(), "KavrelProject");
  EXPECT_EQ(childNames(root),
            (std::vector<std::string>{"OutputLocation", "HTMLHelpOptions", "OtherOptions", "IncludeFilters",
                                      "CommentExtraction", "Diagrams", "VariableValues", "AdditionalFiles",
                                      "ModelComments", "IgnoreRelationships", "NamespaceExclusions", "DotNetProperties",
                                      "DatabaseProperties", "XSDProperties", "CommentFiles", "CommunityExtensions",
                                      "DocType", "TestPlugIn", "PropertyBag"}));
  const XMLAttributes location = root.ChildNodes().Item("OutputLocation").Attributes();
  EXPECT_EQ(location.Item("OutputFolder").Value(), "out/");
  EXPECT_EQ(location.Item("HelpFileName").Value(), "out/help.chm");
  // Template defaults and settings that are never stored stay out of the file.
  EXPECT_EQ(saved.find("Default Company"), std::string::npos);
  EXPECT_EQ(saved.find("\"Year\""), std::string::npos);
  for (const char* never : {"HelpTemplatesFrom", "CompileWinHelpStub", "ShowCompileLog", "IncludeProtectedFriend",
                            "DefaultTopic", "DirectLoad"})
    EXPECT_EQ(saved.find(never), std::string::npos) << never;
  EXPECT_NE(saved.find("<Site Url=\"https://example.org/\"/>"), std::string::npos);

  // A second project reading the saved text writes it again unchanged.
  writeFile(path, saved);
  auto again = KVProject::New();
  again->LoadFromFile(path);
  EXPECT_EQ(again->Save(), saved);
  again->Terminate();
}

TEST_F(ProjectFile, OldSettingsFileIsReadInAllItsLegacyFormsAndUpgraded) {
  load("settings-3.5.kvp");
  const std::string parent = temp.path("");
  EXPECT_EQ(messages(), std::vector<std::string>{kReadFailure});  // it has no diagram style yet
  EXPECT_EQ(project->FileVersion, "3.5");
  EXPECT_EQ(project->RelationshipsFrom(), rfPropertiesOnly);
  EXPECT_EQ(project->OutputFolder(), parent + "Legacy Output/");
  EXPECT_EQ(project->HelpFileName(), parent + "Legacy Output/legacy.chm");
  EXPECT_TRUE(project->UseAlinkMenus());
  EXPECT_TRUE(project->UnTaggedModules() && project->UnTaggedUDTs());
  EXPECT_FALSE(project->UnTaggedBlocks());
  EXPECT_EQ(project->HelpDescriptionImport(), 0);  // non-numeric text reads as 0
  EXPECT_EQ(project->PageNestingLevels(), 2);
  // Only the last legacy "include" survives.
  EXPECT_EQ(project->IncludedNamespaceNames->PropertyValues().Count(), 1);
  EXPECT_EQ(project->IncludedNamespaceNames->PropertyValue("KV:ImplementedInterface", ""), "True");
  EXPECT_EQ(project->ExcludeFilters->Item(1)->FilterWildCard, "Old*");
  EXPECT_EQ(project->AdditionalFiles->Item(1)->FileName, temp.path("proj/images/banner.gif"));
  EXPECT_EQ(project->IgnoreRelationships->Item(1)->QualifiedName, "OldLib~Form1");
  const auto docType = project->DocTypes->Item("kv.net");
  EXPECT_TRUE(docType->UseHelpTemplates);
  EXPECT_EQ(docType->TOCSource->Source(), tsTemplateSpecific);
  EXPECT_EQ(docType->TOCSource->SpecificTOCName(), "Flat");

  const std::string saved = project->Save();
  EXPECT_NE(saved.find("<KavrelProject Version=\"5.0\""), std::string::npos);
  EXPECT_NE(saved.find("OutputFolder=\"../Legacy Output/\""), std::string::npos);
  EXPECT_NE(saved.find("<File>images/banner.gif</File>"), std::string::npos);
  // The doc type has nothing to document, so its TOC source is not saved.
  EXPECT_EQ(saved.find("<TOCSource"), std::string::npos);
  for (const char* legacy :
       {"KavrelSettings", "CHMFileName", "<include", "<untagged", "tableofcontents", "<tocsource", "ProjectName", "\\"})
    EXPECT_EQ(saved.find(legacy), std::string::npos) << legacy;
}

TEST_F(ProjectFile, HelpFileNameComesFromTheOldAttributeOnlyBeforeVersionFour) {
  const std::string path = temp.path("p.kvp");
  const auto write = [&](const std::string& version) {
    writeFile(path, "<KavrelProject Version=\"" + version +
                        "\"><OutputLocation OutputFolder=\"\" CHMFileName=\"old.chm\"/></KavrelProject>");
  };
  write("3.9");
  project->LoadFromFile(path);
  EXPECT_EQ(project->HelpFileName(), temp.path("old.chm"));

  auto newer = KVProject::New();
  write("4.0");
  newer->LoadFromFile(path);
  EXPECT_EQ(newer->HelpFileName(), "");
  newer->Terminate();
}

TEST_F(ProjectFile, VersionMessageForNewerFilesOnly) {
  const std::string path = temp.path("p.kvp");
  for (const std::string version : {"5.0", "5.1", "6.0", "10.0", "4.9"}) {
    writeFile(path, "<KavrelProject Version=\"" + version + "\"><OtherOptions/></KavrelProject>");
    auto fresh = KVProject::New();
    fresh->Silent = true;  // no read failure dialog in the way
    const size_t before = host.messages().size();
    std::vector<std::string> status;
    struct Status : KVProjectEvents {
      std::vector<std::string>* out;
      void MessageBox(const std::string& m, int, const std::string& title, int&, bool&) override {
        if (title.starts_with("Project saved in")) out->push_back(m);
      }
    };
    auto listener = std::make_shared<Status>();
    listener->out = &status;
    fresh->Subscribe(listener);
    fresh->LoadFromFile(path);
    const bool newer = version == "5.1" || version == "6.0";
    EXPECT_EQ(status.size(), newer ? 1u : 0u) << version;
    if (newer) {
      EXPECT_TRUE(status[0].starts_with("This project was last saved in version " + version + " of Kavrel."));
    }
    EXPECT_EQ(host.messages().size(), before);
    fresh->Terminate();
  }
}

TEST_F(ProjectFile, MissingAndBadValuesKeepDefaultsAndReportOnceInTheProjectsLife) {
  load("missing-attributes.kvp");
  EXPECT_EQ(messages(), std::vector<std::string>{kReadFailure});
  EXPECT_EQ(host.messages()[0].title, "Kavrel Load Error");
  EXPECT_EQ(events->buildErrors, std::vector<std::string>{kReadFailure});
  EXPECT_FALSE(project->CompileHelpFile());
  EXPECT_EQ(project->PropertyCommentsFrom(), 0);  // non-numeric: default kept
  EXPECT_EQ(project->Language(), "Français");
  EXPECT_EQ(project->PageNestingLevels(), 0);  // read by leading number
  EXPECT_EQ(project->OverviewNestingLevels(), 2);
  EXPECT_TRUE(project->CopySourceCode());
  EXPECT_FALSE(project->PauseEvents);

  load("missing-attributes.kvp");
  EXPECT_EQ(host.messages().size(), 1u);
}

TEST_F(ProjectFile, DamagedFilesShowTheInvalidFileMessage) {
  auto filter = std::make_shared<ExcludeFilter>();
  project->ExcludeFilters->Add(filter);
  project->Language("Dansk");
  project->Dirty(false);

  load("wrong-root.kvp");
  EXPECT_EQ(messages(), std::vector<std::string>{kInvalid});
  EXPECT_EQ(host.messages()[0].title, "KVProject file invalid");
  EXPECT_EQ(project->ExcludeFilters->Count(), 0);
  EXPECT_EQ(project->Language(), "Dansk");
  EXPECT_FALSE(project->PauseEvents);
  EXPECT_EQ(project->KVProjectFileName->FileName(), temp.path("proj/wrong-root.kvp"));

  load("no-children.kvp");
  EXPECT_TRUE(project->CompileHelpFile());
  load("truncated.kvp");
  EXPECT_EQ(messages(), (std::vector<std::string>{kInvalid, kInvalid, kReadFailure, kInvalid}));
  project->Load("");
  EXPECT_EQ(messages().back(), kInvalid);
}

TEST_F(ProjectFile, MissingCommentFilesAreRemovedWithOneMessageEach) {
  const std::string path = temp.path("p.kvp");
  writeFile(temp.path("here.kvc"), "<KavrelComments/>");
  writeFile(path, R"(<KavrelProject Version="5.0"><CommentFiles>
      <CommentFile FileName="gone1.kvc" DocType="kv.net"/>
      <CommentFile FileName="here.kvc" DocType="kv.net"/>
      <CommentFile FileName="sub\gone2.kvc" DocType="kv.net"/>
    </CommentFiles></KavrelProject>)");
  project->Silent = true;
  std::vector<std::string> missing;
  struct Listener : KVProjectEvents {
    std::vector<std::string>* out;
    void MessageBox(const std::string& m, int, const std::string& title, int&, bool&) override {
      if (title == "Content File Missing") out->push_back(m);
    }
  };
  auto listener = std::make_shared<Listener>();
  listener->out = &missing;
  project->Subscribe(listener);
  project->LoadFromFile(path);
  ASSERT_EQ(missing.size(), 2u);
  EXPECT_EQ(missing[0], "Content File '" + temp.path("gone1.kvc") +
                            "' could not be found. It has been removed from the project. If the Content File has been "
                            "moved, add it again to the project from it's new location.");
  EXPECT_NE(missing[1].find(temp.path("sub/gone2.kvc")), std::string::npos);
  ASSERT_EQ(project->CommentFiles->Count(), 1);
  EXPECT_EQ(project->CommentFiles->Item(1)->FileName, temp.path("here.kvc"));
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectFile, OutputFolderOfTheProjectItselfIsWrittenAsDot) {
  const std::string path = temp.path("p.kvp");
  project->KVProjectFileName->FileName(path);
  project->OutputFolder(temp.path(""));
  project->HelpFileName(temp.path("far/away/h.chm"));
  const std::string saved = project->Save();
  EXPECT_NE(saved.find("OutputFolder=\".\""), std::string::npos);
  writeFile(path, saved);

  auto again = KVProject::New();
  again->LoadFromFile(path);
  EXPECT_EQ(again->OutputFolder(), temp.path(""));
  EXPECT_EQ(again->HelpFileName(), temp.path("far/away/h.chm"));
  again->Terminate();
}

TEST_F(ProjectFile, EmptyPathsNamespacesAndExclusionsAreSettledWithThePlugIns) {
  auto plugIn = addDocType();
  auto secret = std::make_shared<DynamicObject>("Item");
  secret->field("IncludeFlag", true).field("ExcludeFlag", false);
  plugIn->items["A~Secret"] = secret;
  const std::string path = temp.path("p.kvp");
  writeFile(path, R"(<KavrelProject Version="5.0"><IncludeFilters><Namespaces/></IncludeFilters>
    <NamespaceExclusions><e>A~Secret</e><e>A~Gone</e></NamespaceExclusions></KavrelProject>)");
  project->LoadFromFile(path);
  EXPECT_TRUE(secret->get("ExcludeFlag").toBool());
  EXPECT_FALSE(secret->get("IncludeFlag").toBool());
  EXPECT_EQ(project->NamespaceExclusions->Count(), 1);
  EXPECT_EQ(plugIn->loadXMLCalls, 1);
  EXPECT_EQ(plugIn->directLoad, "True");
  EXPECT_EQ(project->OutputFolder(), "/default/out/");
  EXPECT_EQ(project->HelpFileName(), "/default/out/NetHelp.chm");
  EXPECT_EQ(project->HHNamespace(), "NetHelp");
  const KVPropertyBag& names = *project->IncludedNamespaceNames;
  EXPECT_EQ(names.PropertyValue("KV:Method", ""), "True");
  EXPECT_EQ(names.PropertyValue("KV:Event", ""), "False");
  EXPECT_EQ(names.PropertyValue("KV:Fixed", "unset"), "unset");  // not selectable
}

TEST_F(ProjectFile, SettingsOfOlderFilesFallBackAsTheirReadersSay) {
  const std::string path = temp.path("p.kvp");
  writeFile(path, R"(<KavrelProject Version="4.0"><DotNetProperties IncludeRelationshipDiagrams="True"
      IncludeInheritanceHierarchies="True" IncludeBaseMembers="False" StandardInterfaces="System.*"
      OnlyLinkInherited="True" ExternalDocs="True" UseCommentFiles="True" DrillCommentFiles="False"
      XMLIsland="kept" AttributeFilter="Obsolete*"/><XSDProperties DropShadows="True"/></KavrelProject>)");
  project->LoadFromFile(path);
  EXPECT_EQ(project->DotNetProperties->ExcludedLanguages(), "JScript,C++");
  EXPECT_EQ(project->DotNetProperties->XMLIsland(), "kept");
  EXPECT_FALSE(project->DotNetProperties->IncludeAttribute("ObsoleteAttribute"));
  EXPECT_TRUE(project->DotNetProperties->IncludeAttribute("SerializableAttribute"));
  EXPECT_TRUE(project->XSDProperties->DropShadows());
  EXPECT_EQ(project->XSDProperties->PageNestingLevels(), 2);
  EXPECT_TRUE(project->XSDProperties->GroupParticleSequenceImageFilename().ends_with(
      "/Templates/XMLSchema/xDiagramImages/sequence.gif"));
  EXPECT_EQ(messages(), std::vector<std::string>{kReadFailure});  // the root attributes are missing
}

TEST_F(ProjectFile, CustomTableOfContentsKeepsItsNodesThroughSaveAndLoad) {
  const auto docType = project->DocTypes->Item("kv.net");
  const std::string path = temp.path("p.kvp");
  writeFile(path, R"(<KavrelProject Version="5.0"><OtherOptions/>
    <DocType Name="kv.net" Template="Standard" UseHelpTemplates="true">
      <TOCSource TOCSource="1" SpecificTOCName="">
        <NodeDef Name="Root" Caption="All"/>
        <NodeDef Name="Leaf" Caption="Ä" Parent="Root" NodeType="1" NamespaceName="KV:Method"/>
      </TOCSource>
    </DocType><TestPlugIn><Root Name="Lib" Kind="source"/></TestPlugIn></KavrelProject>)");
  project->LoadFromFile(path);
  EXPECT_TRUE(docType->UseHelpTemplates);
  ASSERT_EQ(docType->TOCSource->Source(), tsCustom);
  const auto definition = docType->TOCSource->TOCDefinition();
  ASSERT_EQ(definition->NodeDefs.Count(), 2);
  EXPECT_EQ(definition->NodeDefs.Item("Leaf")->ParentNode.lock(), definition->NodeDefs.Item("Root"));
  const std::string saved = project->Save();
  EXPECT_NE(saved.find("<NodeDef Name=\"Root\" NodeType=\"0\" Caption=\"All\" Parent=\"\""), std::string::npos);
  EXPECT_NE(saved.find("<NodeDef Name=\"Leaf\" NodeType=\"1\" Caption=\"Ä\" Parent=\"Root\""), std::string::npos);

  // A named definition the template lacks falls back at load without a word.
  project->Dirty(false);
  writeFile(path, R"(<KavrelProject Version="5.0"><OtherOptions/><DocType Name="kv.net">
      <TOCSource TOCSource="2" SpecificTOCName="Lost"/></DocType></KavrelProject>)");
  auto again = KVProject::New();
  again->LoadFromFile(path);
  EXPECT_EQ(again->DocTypes->Item("kv.net")->TOCSource->Source(), tsTemplateDefault);
  again->Terminate();
}

struct DefsPlugIn : IKVProjectPlugIn {
  std::shared_ptr<kv::NamespaceDefs> defs = std::make_shared<kv::NamespaceDefs>();
  std::shared_ptr<kv::NamespaceDefs> NamespaceDefs() override { return defs; }
};

TEST_F(ProjectFile, OldModelCommentsGoToTheFirstDocTypeThatKnowsTheirNamespace) {
  auto first = std::make_shared<DefsPlugIn>(), second = std::make_shared<DefsPlugIn>();
  auto property = std::make_shared<NamespaceDef>();
  property->Name = "KV:Property";
  auto method = std::make_shared<NamespaceDef>();
  method->Name = "KV:Method";
  method->ChildNamespaceDefs.Add(property, property->Name);
  second->defs->Add(method, method->Name);
  auto event = std::make_shared<NamespaceDef>();
  event->Name = "KV:Event";
  first->defs->Add(event, event->Name);
  project->DocTypes->Add(std::make_shared<KVDocType>("kv.db", first));
  project->DocTypes->Add(std::make_shared<KVDocType>("kv.own", second));
  const std::string path = temp.path("p.kvp");
  writeFile(path, R"(<KavrelSettings Version="3.0"><ModelComments><SpecificModelComments>
      <ModelComment ItemKind="KV:Property" ItemName="*">x</ModelComment><ModelComment ItemKind="KV:Event"/>
      <ModelComment ItemKind="KV:Unknown"/></SpecificModelComments></ModelComments></KavrelSettings>)");
  project->LoadFromFile(path);
  EXPECT_EQ(project->DocTypes->Item("kv.db")->ModelComments->Count(), 1);
  const auto& netComments = *project->DocTypes->Item("kv.own")->ModelComments;
  ASSERT_EQ(netComments.Count(), 1);
  EXPECT_EQ(netComments.Item(1)->Text, "x");
}

// Two doc types, each served by a template of its own, for the template names of old files.
class LegacyTemplateNames : public ::testing::Test {
 protected:
  void SetUp() override {
    config.write("kavrel.xml", R"(<KavrelConfiguration>
      <DocType Name="kv.guide" PlugIn="KVTest.ProjectPlugIn"/>
      <DocType Name="kv.reference" PlugIn="KVTest.ProjectPlugIn"/></KavrelConfiguration>)");
    config.write("Templates/Guide/template.xml", R"(<Template Name="Guide">
      <DocType Name="kv.guide"/><ItemType Name="source"/><TOC Name="Contents"><NodeDef Name="Top"/></TOC>
      </Template>)");
    config.write("Templates/Reference/template.xml", R"(<Template Name="Reference">
      <DocType Name="kv.reference"/><ItemType Name="source"/><TOC Name="ByName"><NodeDef Name="Top"/></TOC>
      </Template>)");
  }

  test::TempFolder temp;
  test::TestConfiguration config;
  test::ScopedRecordingHost host;
};

TEST_F(LegacyTemplateNames, GoToTheDocTypeOfTheNamedTemplateAndAreSavedInItsElement) {
  const std::string path = temp.path("templates-3.0.kvp");
  writeFile(path, readFile(std::string(KV_TEST_DATA_DIR) + "/project/templates-3.0.kvp"));
  auto project = KVProject::New();
  project->LoadFromFile(path);
  EXPECT_TRUE(host.messages().empty());  // an unknown template is skipped without a word
  const auto check = [](KVProject& loaded) {
    const auto guide = loaded.DocTypes->Item("kv.guide"), reference = loaded.DocTypes->Item("kv.reference");
    EXPECT_FALSE(guide->UseHelpTemplates);
    EXPECT_EQ(guide->TOCSource->Source(), tsTemplateDefault);
    EXPECT_TRUE(reference->UseHelpTemplates);
    EXPECT_EQ(reference->TOCSource->Source(), tsTemplateSpecific);
    EXPECT_EQ(reference->TOCSource->TOCDefinition(),
              ConfigurationRoot::instance().Templates().Item("Reference")->TOCDefinitions.Item("ByName"));
    EXPECT_EQ(loaded.DocTypes->HelpTemplatesFrom(), reference);
  };
  check(*project);

  const std::string saved = project->Save();
  EXPECT_NE(saved.find(R"(<DocType Name="kv.reference" Template="Reference" UseHelpTemplates="True">)"),
            std::string::npos);
  EXPECT_NE(saved.find(R"(<TOCSource TOCSource="2" SpecificTOCName="ByName"/>)"), std::string::npos);
  auto again = KVProject::New();
  again->Load(saved);
  check(*again);
  again->Terminate();
  project->Terminate();
}

}  // namespace
}  // namespace kv
