#include <gtest/gtest.h>

#include <filesystem>

#include "comments/KVContentFiles.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/XmlDocument.h"
#include "project/CommunityProperties.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "project/KVPropertyBag.h"
#include "project/PlugInLoader.h"
#include "project/VariableValues.h"
#include "support/RecordingHost.h"
#include "support/TestConfiguration.h"

namespace kv {
namespace {

namespace fs = std::filesystem;

const char* kMain = R"(<KavrelConfiguration>
  <DocType Name="kv.lumidesk.test" PlugIn="KVTest.LumideskPlugIn"/>
  <DocType Name="kv.test" Description="Test sources" PlugIn="KVTest.ProjectPlugIn"/>
  <DocType Name="kv.missing" PlugIn="KVMissing.ProjectPlugIn"/>
  <DocType Name="kv.broken" PlugIn="KVTest.Broken"/>
  <DocType Name="kv.notaplugin" PlugIn="KVTest.NotAPlugIn"/>
  <DocType Name="kv.noclass"/>
  <DocType Name="kv.other" PlugIn="KVTest.ProjectPlugIn"/>
</KavrelConfiguration>)";

const char* kAlpha = R"(<Template Name="Alpha">
  <DocType Name="kv.test"/><DocType Name="kv.other"/>
  <ItemType Name="source"/>
  <Variable Name="Company" Default="Velmora"/><Variable Name="Year" Default="2024"/>
  <TOC Name="Flat"><NodeDef Name="Top" Caption="All"/></TOC>
  <Namespace Name="KV:Module" Handler="KVTest.Provider">
    <Namespace Name="KV:Method" Selectable="True" DefaultInclude="False"/>
  </Namespace>
</Template>)";

const char* kBeta = R"(<Template Name="Beta">
  <DocType Name="kv.test"/><DocType Name="kv.lumidesk.test"/>
  <ItemType Name="source"/><ItemType Name="binary"/>
  <Namespace Name="KV:Module" Handler="KVTest.Provider"/>
  <Namespace Name="KV:Table" Handler="KVTest.Provider"/>
</Template>)";

struct RecordingEvents : KVProjectEvents {
  std::vector<std::string> buildErrors, created, statuses;
  int exclusionsChanged = 0;
  void NamespaceExclusionsChanged() override { ++exclusionsChanged; }
  void BuildError(const std::string& text, KVErrorLevel) override { buildErrors.push_back(text); }
  void ContentCreated(const std::string& fileName) override { created.push_back(fileName); }
  void ProgressPostBuildStatus(std::string& status) override { statuses.push_back(status); }
};

class DocTypesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    config.write("kavrel.xml", kMain);
    config.write("Templates/Alpha/template.xml", kAlpha);
    config.write("Templates/Beta/template.xml", kBeta);
    project = KVProject::New();
    project->Subscribe(events);
  }
  void TearDown() override { project->Terminate(); }

  std::shared_ptr<KVDocType> docType(const std::string& name) { return project->DocTypes->Item(name); }
  ObjectPtr plugIn(const std::string& name) {
    return std::dynamic_pointer_cast<Object>(docType(name)->ProjectPlugIn());
  }
  std::string log(const std::string& name) { return plugIn(name)->get("CallLog").toString(); }
  void addRoot(const std::string& docTypeName, const std::string& root, const std::string& kind) {
    plugIn(docTypeName)->call("AddRoot", {root, kind});
  }
  std::shared_ptr<Template> installed(const std::string& name) {
    return ConfigurationRoot::instance().Templates().Item(name);
  }

  test::TestConfiguration config;
  test::ScopedRecordingHost host;
  std::shared_ptr<RecordingEvents> events = std::make_shared<RecordingEvents>();
  std::shared_ptr<KVProject> project;
};

TEST_F(DocTypesTest, PopulateKeepsDocTypesWhosePlugInCanBeMadeWithLumideskLast) {
  ASSERT_EQ(project->DocTypes->Count(), 3);
  EXPECT_EQ(project->DocTypes->Item(1)->Name(), "kv.test");
  EXPECT_EQ(project->DocTypes->Item(2)->Name(), "kv.other");
  EXPECT_EQ(project->DocTypes->Item(3)->Name(), "kv.lumidesk.test");
  EXPECT_EQ(docType("kv.test")->Description(), "Test sources");
  EXPECT_EQ(docType("kv.test")->ModelComments->Name(), "kv.test");
  EXPECT_EQ(log("kv.test"), "Initialise");
  EXPECT_TRUE(host.messages().empty());

  bool pluginLibraryLoaded = false;
  for (const auto& library : PlugInLibraries())
    if (library.FileName == config.path("plugins/kvtest.so")) pluginLibraryLoaded = library.Loaded;
  EXPECT_TRUE(pluginLibraryLoaded);

  // Nothing has root items yet.
  EXPECT_FALSE(project->SomethingToDocument());
  EXPECT_EQ(project->DocTypes->PopulatedDocTypes().Count(), 0);
  EXPECT_THROW(project->DocTypes->HelpTemplatesFrom(), Failure);
  EXPECT_EQ(docType("kv.test")->ItemCount(), 0);
}

TEST_F(DocTypesTest, TemplatesAreThoseThatServeTheDocTypeAndFitItsRootItems) {
  auto test = docType("kv.test");
  ASSERT_EQ(test->Templates().Count(), 2);
  EXPECT_EQ(test->ValidTemplates().Count(), 2);  // no root items: every template is valid
  addRoot("kv.test", "lib.so", "binary");
  ASSERT_EQ(test->ValidTemplates().Count(), 1);
  EXPECT_EQ(test->ValidTemplates().Item(1)->Name, "Beta");
  EXPECT_EQ(test->Template()->Name, "Beta");  // the first valid one, kept from now on
  addRoot("kv.other", "main.c", "binary");
  EXPECT_THROW(docType("kv.other")->Template(), Failure);  // no valid template

  EXPECT_EQ(project->DocTypes->DocTypeFromTemplate(installed("Alpha")), test);
  EXPECT_EQ(project->DocTypes->DocTypeFromTemplate(std::make_shared<Template>()), nullptr);
}

TEST_F(DocTypesTest, ChoosingAForeignTemplateMarksTheProjectChangedButKeepsTheChoice) {
  auto lumidesk = docType("kv.lumidesk.test");
  EXPECT_EQ(lumidesk->Template()->Name, "Beta");
  lumidesk->Template(installed("Alpha"));
  EXPECT_TRUE(project->Dirty());
  EXPECT_EQ(lumidesk->Template()->Name, "Beta");

  project->Dirty(false);
  lumidesk->Template(installed("Beta"));  // the same template: no change
  EXPECT_FALSE(project->Dirty());
  docType("kv.test")->Template(installed("Beta"));  // nothing chosen before: a change
  EXPECT_TRUE(project->Dirty());
  EXPECT_EQ(docType("kv.test")->Template()->Name, "Beta");
}

TEST_F(DocTypesTest, OnlyPopulatedDocTypesAreSavedAndEveryPlugInLoadsTheDocument) {
  addRoot("kv.test", "one.h", "source");
  addRoot("kv.test", "two.h", "source");
  docType("kv.test")->Template(installed("Beta"));
  docType("kv.test")->UseHelpTemplates = true;
  EXPECT_EQ(project->SourceItemCount(), 2);
  EXPECT_EQ(docType("kv.test")->ItemCount(), 2);

  XMLDocument doc;
  doc.RootNode().Name("KavrelProject");
  project->DocTypes->SaveToKVProjectXML(doc);
  const XMLNode root = doc.RootNode();
  ASSERT_EQ(root.ChildNodes().Count(), 2);  // one DocType and the plug-in's own element, in that order
  const XMLNode saved = root.ChildNodes().Item(1L);
  EXPECT_EQ(saved.Name(), "DocType");
  EXPECT_EQ(saved.Attributes().ValueOr("Name"), "kv.test");
  EXPECT_EQ(saved.Attributes().ValueOr("Template"), "Beta");
  EXPECT_EQ(saved.Attributes().ValueOr("UseHelpTemplates"), "True");
  EXPECT_TRUE(saved.ChildNodes().Exists("ModelCommentProfile"));
  EXPECT_EQ(root.ChildNodes().Item(2L).Name(), "TestPlugIn");
  EXPECT_EQ(log("kv.test"), "Initialise,ProjectChanged,SaveXML");
  EXPECT_EQ(log("kv.other"), "Initialise,ProjectChanged");

  auto fresh = KVProject::New();
  doc.RootNode().SetAttribute("DirectLoad", "False");
  fresh->DocTypes->LoadFromKVProjectXMLEx(doc, true);
  auto loaded = fresh->DocTypes->Item("kv.test");
  EXPECT_EQ(loaded->Template()->Name, "Beta");
  EXPECT_TRUE(loaded->UseHelpTemplates);
  EXPECT_EQ(loaded->SourceItemCount(), 2);
  for (const auto& each : *fresh->DocTypes)
    EXPECT_EQ(std::dynamic_pointer_cast<Object>(each->ProjectPlugIn())->get("CallLog").toString(),
              "Initialise,ProjectChanged,LoadXML(DirectLoad=False)");  // choosing the template was a change
  EXPECT_EQ(fresh->DocTypes->HelpTemplatesFrom(), loaded);
  fresh->Terminate();

  auto withoutPlugIns = KVProject::New();
  withoutPlugIns->DocTypes->LoadFromKVProjectXMLEx(doc, false);
  EXPECT_TRUE(withoutPlugIns->DocTypes->Item("kv.test")->UseHelpTemplates);
  EXPECT_EQ(withoutPlugIns->DocTypes->Item("kv.test")->SourceItemCount(), 0);
  withoutPlugIns->Terminate();
}

TEST_F(DocTypesTest, DocTypeElementsOfUnknownDocTypesGoToThePrecedingOne) {
  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(R"(<KavrelProject>
      <doctype Name="kv.gone" UseHelpTemplates="true"/>
      <DocType Name="kv.other" Template="Nonexistent"/>
      <DocType Name="kv.gone" UseHelpTemplates="TRUE" Template="Alpha"/>
    </KavrelProject>)"));
  project->DocTypes->LoadFromKVProjectXML(doc);
  EXPECT_FALSE(docType("kv.test")->UseHelpTemplates);
  EXPECT_TRUE(docType("kv.other")->UseHelpTemplates);
  EXPECT_EQ(docType("kv.other")->Template()->Name, "Alpha");
}

TEST_F(DocTypesTest, HelpTemplatesAndNamespaceDefinitionsComeFromPopulatedDocTypes) {
  addRoot("kv.other", "a.h", "source");
  addRoot("kv.lumidesk.test", "b.h", "source");
  const KVDocTypes populated = project->DocTypes->PopulatedDocTypes();
  ASSERT_EQ(populated.Count(), 2);
  EXPECT_EQ(populated.HelpTemplatesFrom()->Name(), "kv.other");  // none flagged: the first
  project->DocTypes->HelpTemplatesFrom(docType("kv.lumidesk.test"));
  EXPECT_EQ(project->DocTypes->HelpTemplatesFrom()->Name(), "kv.lumidesk.test");
  EXPECT_FALSE(docType("kv.other")->UseHelpTemplates);

  const auto defs = populated.NamespaceDefs();  // Alpha's KV:Module, then Beta's KV:Table
  ASSERT_EQ(defs.Count(), 2);
  EXPECT_EQ(defs.Item(1), installed("Alpha")->NamespaceDefs.Item("KV:Module"));
  EXPECT_EQ(defs.Item(2)->Name, "KV:Table");
  const auto templates = project->DocTypes->Templates();
  ASSERT_EQ(templates.Count(), 2);
  EXPECT_EQ(templates.Item(1)->Name, "Alpha");
  EXPECT_TRUE(project->IsLumideskDocType(*docType("kv.lumidesk.test")));
}

TEST_F(DocTypesTest, NamespaceProvidersAreSharedAndCreationIsTriedAgainAfterAFailure) {
  {
    test::ScopedEnvironment failing("KAVREL_TEST_PROVIDER_FAILS", "1");
    EXPECT_EQ(project->GetNamespaceProvider("KVTest.Provider"), nullptr);
    EXPECT_EQ(docType("kv.test")->NamespaceProvider(), nullptr);
  }
  const auto provider = project->GetNamespaceProvider("kvtest.provider");
  ASSERT_NE(provider, nullptr);
  EXPECT_TRUE(std::dynamic_pointer_cast<Object>(provider)->get("HasProject").toBool());
  EXPECT_EQ(docType("kv.test")->NamespaceProvider(), provider);
  EXPECT_EQ(docType("kv.other")->NamespaceProvider(), provider);
  EXPECT_EQ(project->GetNamespaceProvider("KVMissing.Provider"), nullptr);
}

std::shared_ptr<ModelComment> modelComment(const std::string& text) {
  auto comment = std::make_shared<ModelComment>();
  comment->ItemKind = "KV:Method";
  comment->ItemName = "*";
  comment->Text = text;
  return comment;
}

TEST_F(DocTypesTest, ResettingPlugInsKeepsTheProjectsContentAndReappliesExclusions) {
  addRoot("kv.test", "one.h", "source");
  addRoot("kv.test", "two.h", "source");
  auto test = docType("kv.test");
  test->Template(installed("Beta"));
  test->UseHelpTemplates = true;
  test->ModelComments->Add(modelComment("Does it."));
  project->NamespaceExclusions->Add("one.h", "one.h");
  project->DirectLoad = false;
  const std::string before = project->Save();

  project->ResetPlugIns();
  EXPECT_TRUE(log("kv.test").ends_with(",SaveXML,Reset,LoadXML(DirectLoad=False)")) << log("kv.test");
  EXPECT_EQ(test->SourceItemCount(), 2);
  EXPECT_EQ(test->ModelComments->Count(), 1);
  EXPECT_EQ(project->Save(), before);
  EXPECT_EQ(events->exclusionsChanged, 1);
  EXPECT_TRUE(project->Dirty());

  // An exclusion that the reloaded plug-ins cannot resolve is dropped; the dirty state stays.
  project->NamespaceExclusions->Add("gone.h", "gone.h");
  project->Dirty(false);
  project->ResetPlugIns();
  ASSERT_EQ(project->NamespaceExclusions->Count(), 1);
  EXPECT_EQ(project->NamespaceExclusions->Item(1), "one.h");
  EXPECT_EQ(events->exclusionsChanged, 2);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(DocTypesTest, DocTypeKeepsTemplateTableOfContentsAndModelCommentsThroughSaveAndLoad) {
  auto test = docType("kv.test"), other = docType("kv.other");
  test->Template(installed("Alpha"));
  test->UseHelpTemplates = true;
  test->TOCSource->Source(tsTemplateSpecific);
  test->TOCSource->SpecificTOCName("Flat");
  test->ModelComments->Add(modelComment("Does it."));
  auto custom = std::make_shared<TOCDefinition>();
  for (const char* name : {"Root", "Leaf"}) {
    auto node = std::make_shared<NodeDef>();
    node->Name = name;
    node->Caption = "Ä " + std::string(name);
    if (node->Name == "Leaf") node->ParentName = "Root";
    custom->NodeDefs.Add(node, node->Name);
  }
  other->TOCSource->CustomTOCDefinition(custom);
  other->TOCSource->Source(tsCustom);

  const auto saveBoth = [](KVProject& from) {
    XMLDocument doc;
    doc.RootNode().Name("KavrelProject");
    for (const char* name : {"kv.test", "kv.other"}) {
      XMLNode e = doc.RootNode().AddChild("DocType");
      from.DocTypes->Item(name)->Save(e);
    }
    return doc;
  };
  XMLDocument doc = saveBoth(*project);
  auto fresh = KVProject::New();
  fresh->DocTypes->LoadFromKVProjectXMLEx(doc, false);
  const auto loaded = fresh->DocTypes->Item("kv.test");
  EXPECT_EQ(loaded->Template(), installed("Alpha"));
  EXPECT_TRUE(loaded->UseHelpTemplates);
  EXPECT_EQ(loaded->TOCSource->Source(), tsTemplateSpecific);
  EXPECT_EQ(loaded->TOCSource->TOCDefinition(), installed("Alpha")->TOCDefinitions.Item("Flat"));
  ASSERT_EQ(loaded->ModelComments->Count(), 1);
  EXPECT_EQ(loaded->ModelComments->Item(1)->Text, "Does it.");
  const auto loadedCustom = fresh->DocTypes->Item("kv.other")->TOCSource->TOCDefinition();
  ASSERT_EQ(loadedCustom->NodeDefs.Count(), 2);
  EXPECT_EQ(loadedCustom->NodeDefs.Item("Leaf")->ParentNode.lock(), loadedCustom->NodeDefs.Item("Root"));
  EXPECT_EQ(loadedCustom->NodeDefs.Item("Leaf")->Caption, "Ä Leaf");
  EXPECT_EQ(saveBoth(*fresh).Xml(), doc.Xml());

  // Loading the same elements again leaves one copy of each model comment.
  fresh->DocTypes->LoadFromKVProjectXMLEx(doc, false);
  EXPECT_EQ(loaded->ModelComments->Count(), 1);
  fresh->Terminate();
}

TEST_F(DocTypesTest, CommentFilesAreWrittenForItemsAndFoundByTheirMonikers) {
  fs::create_directories(config.scratch("comments"));
  auto test = docType("kv.test");
  const auto item = [](const std::string& name) {
    auto object = std::make_shared<DynamicObject>("TestRoot");
    object->field("Name", name);
    return object;
  };
  const auto lib = item("Lib"), other = item("Other");
  const auto rootOf = [](const std::string& fileName) {
    XMLDocument written;
    EXPECT_TRUE(written.LoadXML(FileSystem(fileName).ReadAll()));
    return std::pair(written.RootNode().Name(), written.RootNode().Attributes().ValueOr("RelatedProject"));
  };
  // Before the project has a file there is no project to relate to.
  const auto otherFile = test->CreateNewCommentFileForItem(other, config.scratch("comments/other.kvc"));
  ASSERT_NE(otherFile, nullptr);
  EXPECT_EQ(rootOf(otherFile->FileName), std::pair(std::string("KavrelComments"), std::string()));

  project->KVProjectFileName->FileName(config.scratch("proj/p.kvp"));
  const auto libFile = test->CreateNewCommentFileForItem(lib, config.scratch("comments/lib.kvc"));
  ASSERT_NE(libFile, nullptr);
  EXPECT_EQ(libFile->FileName, config.scratch("comments/lib.kvc"));
  EXPECT_EQ(libFile->DocType, "kv.test");
  EXPECT_EQ(libFile->ItemMoniker, "test:Lib");
  EXPECT_EQ(libFile->KVProject.lock(), project);
  EXPECT_EQ(project->CommentFiles->Count(), 0);  // the caller adds it
  EXPECT_EQ(rootOf(libFile->FileName), std::pair(std::string("KavrelComments"), std::string("../proj/p.kvp")));

  project->CommentFiles->Add(otherFile);
  project->CommentFiles->Add(libFile);
  project->Dirty(false);
  const auto found = test->ItemCommentFiles(lib);
  ASSERT_EQ(found->Count(), 1);
  EXPECT_EQ(found->Item(1), libFile);
  EXPECT_EQ(test->ItemCommentFiles(item("None"))->Count(), 0);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(DocTypesTest, BeforeBuildFollowsTheIncludedNamespacesAndAddsMissingVariables) {
  addRoot("kv.test", "a.h", "source");
  project->OutputFolder(config.scratch("out"));
  project->CreateVariableValue("Year", "1999");
  const auto method = docType("kv.test")->Template()->NamespaceDefs.Item(1)->ChildNamespaceDefs.Item("KV:Method");
  for (const char* included : {"True", "False"}) {
    project->IncludedNamespaceNames->PropertyValue("KV:Method", "", included);
    docType("kv.test")->BeforeBuild();
    EXPECT_EQ(method->IncludeFlag, std::string(included) == "True");
  }

  ASSERT_EQ(project->VariableValues->Count(), 2);
  const auto company = project->VariableValues->Item("Company");
  EXPECT_EQ(company->Value(), "");
  EXPECT_TRUE(company->IsDefaultValue);
  EXPECT_EQ(project->VariableValues->Item("Year")->Value(), "1999");
  EXPECT_FALSE(project->VariableValues->Item("Year")->IsDefaultValue);
  EXPECT_EQ(project->Save().find("\"Company\""), std::string::npos);  // defaults are not saved
}

TEST_F(DocTypesTest, BeforeBuildPreparesDefinitionsAndCopiesSupportFiles) {
  config.write("Templates/Alpha/styles/page.css", "body {}");
  config.write("Templates/Alpha/Phrases/English.xml", "<Phrases/>");
  config.write("Templates/Alpha/HTMLScraps/banner.html", "<div/>");
  addRoot("kv.test", "a.h", "source");
  project->OutputFolder(config.scratch("out"));
  project->Language("German");
  auto test = docType("kv.test");
  const auto tmpl = test->Template();
  const auto& module = tmpl->NamespaceDefs.Item(1);
  module->ItemCounter = 7;
  module->IncludeFlag = false;
  module->ChildNamespaceDefs.Item(1)->IncludeFlag = true;

  project->DocTypes->BeforeBuild();
  EXPECT_EQ(module->ItemCounter, 0);
  EXPECT_TRUE(module->IncludeFlag);                               // not selectable: always included
  EXPECT_FALSE(module->ChildNamespaceDefs.Item(1)->IncludeFlag);  // selectable: its default
  EXPECT_EQ(tmpl->Language(), "German");
  // The template's variables are new to the project: their records are a change.
  EXPECT_EQ(log("kv.test"), "Initialise,ProjectChanged,ProjectChanged,BeforeBuild,ProjectChanged,ProjectChanged");
  EXPECT_EQ(log("kv.other"), "Initialise,ProjectChanged,ProjectChanged,ProjectChanged,ProjectChanged");
  EXPECT_TRUE(fs::exists(config.scratch("out/styles/page.css")));
  EXPECT_FALSE(fs::exists(config.scratch("out/template.xml")));
  EXPECT_FALSE(fs::exists(config.scratch("out/Phrases")));
  EXPECT_FALSE(fs::exists(config.scratch("out/HTMLScraps")));
  EXPECT_EQ(events->created, std::vector<std::string>{config.scratch("out/styles/page.css")});
  project->DocTypes->AfterBuild();
  EXPECT_TRUE(log("kv.test").ends_with(",BeforeBuild,ProjectChanged,ProjectChanged,AfterBuild"));
}

class SupportFilesTest : public DocTypesTest {
 protected:
  void SetUp() override {
    DocTypesTest::SetUp();
    for (const char* file : {"a.css", "designtime.css", "x.scc", "community/c.js", "designtime/d.js",
                             "images/designtime/e.gif", "WebImages/w.gif", "sub/deep/f.js", "HTMLScraps/more/g.html"})
      config.write(std::string("Templates/Alpha/") + file, file);
    addRoot("kv.test", "a.h", "source");
    project->OutputFolder(config.scratch("out"));
    tmpl = docType("kv.test")->Template();
  }
  std::string out(const std::string& relative) { return config.scratch("out/" + relative); }
  std::string pageOutputs() {
    return std::dynamic_pointer_cast<Object>(docType("kv.test")->NamespaceProvider())->get("PageOutputs").toString();
  }
  std::shared_ptr<Template> tmpl;
};

TEST_F(SupportFilesTest, TheTemplatesMachineryIsNotCopied) {
  docType("kv.test")->CopySupportFiles(tmpl);
  for (const char* copied : {"a.css", "WebImages/w.gif", "sub/deep/f.js", "HTMLScraps/more/g.html"})
    EXPECT_TRUE(fs::exists(out(copied))) << copied;
  for (const char* skipped :
       {"template.xml", "designtime.css", "x.scc", "community/c.js", "designtime/d.js", "images/designtime/e.gif"})
    EXPECT_FALSE(fs::exists(out(skipped))) << skipped;
  EXPECT_EQ(events->statuses, std::vector<std::string>{"Copying template files"});
  EXPECT_EQ(project->CopiedSupportFiles().Count(), 4);
  // The provider hears of every file but those for web images.
  EXPECT_EQ(pageOutputs(), out("HTMLScraps/more/g.html") + "|" + out("a.css") + "|" + out("sub/deep/f.js"));

  docType("kv.test")->CopySupportFiles(tmpl, true);
  EXPECT_TRUE(fs::exists(out("community/c.js")));
  EXPECT_TRUE(fs::exists(out("designtime/d.js")));
  EXPECT_TRUE(fs::exists(out("images/designtime/e.gif")));
  EXPECT_FALSE(fs::exists(out("designtime.css")));
}

TEST_F(SupportFilesTest, CommunityFilesAreCopiedWhenTheCommunitySettingsAreEnabled) {
  XMLDocument doc;
  ASSERT_TRUE(doc.LoadXML(R"(<CommunityExtensions CommunityProjectKey="k" Enabled="True"/>)"));
  project->CommunityProperties->Load(doc.RootNode());
  docType("kv.test")->CopySupportFiles(tmpl);
  EXPECT_TRUE(fs::exists(out("community/c.js")));
  EXPECT_FALSE(fs::exists(out("designtime/d.js")));
}

TEST_F(SupportFilesTest, FilesAlreadyThereAreReplacedOnlyWhenAlwaysCopying) {
  docType("kv.test")->CopySupportFiles(tmpl);
  const std::size_t createdOnce = events->created.size();
  config.write("Templates/Alpha/a.css", "changed");
  docType("kv.test")->CopySupportFiles(tmpl);  // recorded as copied: left alone
  project->CopiedSupportFiles().Clear();
  docType("kv.test")->CopySupportFiles(tmpl);  // exists: left alone
  EXPECT_EQ(events->created.size(), createdOnce);
  project->AlwaysCopySupportFiles(true);
  docType("kv.test")->CopySupportFiles(tmpl);
  EXPECT_EQ(FileSystem(out("a.css")).ReadAll(), "changed");
  EXPECT_TRUE(events->buildErrors.empty());
}

TEST_F(SupportFilesTest, ReadOnlyTargetsAreLeftAloneWithAWarningWhenAlwaysCopying) {
  docType("kv.test")->CopySupportFiles(tmpl);
  fs::permissions(out("a.css"), fs::perms::owner_read);
  fs::permissions(out("sub/deep/f.js"), fs::perms::owner_read);
  config.write("Templates/Alpha/a.css", "changed");
  project->CopiedSupportFiles().Clear();
  docType("kv.test")->CopySupportFiles(tmpl);
  EXPECT_TRUE(events->buildErrors.empty());

  project->AlwaysCopySupportFiles(true);
  docType("kv.test")->CopySupportFiles(tmpl);
  EXPECT_EQ(FileSystem(out("a.css")).ReadAll(), "a.css");
  ASSERT_EQ(events->buildErrors.size(), 2u);
  EXPECT_EQ(events->buildErrors[0], "Could not copy support file '" + config.path("Templates/Alpha/a.css") +
                                        "' as the file already exists in the output directory and is read-only.");
}

TEST_F(SupportFilesTest, AFailedCopyIsReportedAndTheRestGoesOn) {
  fs::create_directories(out("sub/deep/f.js"));  // a folder where the file should go
  project->AlwaysCopySupportFiles(true);
  docType("kv.test")->CopySupportFiles(tmpl);
  ASSERT_EQ(events->buildErrors.size(), 1u);
  EXPECT_EQ(events->buildErrors[0], "Could not copy support file '" + config.path("Templates/Alpha/sub/deep/f.js") +
                                        "' to '" + out("sub/deep/f.js") +
                                        "'.  Error code 75.  Processing will continue.");
  EXPECT_TRUE(fs::exists(out("a.css")));
  EXPECT_EQ(project->CopiedSupportFiles().Count(), 4);
}

}  // namespace
}  // namespace kv
