// The gate before the pages: the output folder may be used, the help format and compilers are
// settled, the model comments are gathered and the ignored relationships become comments.
#include <filesystem>

#include "comments/TaggedCommentServices.h"
#include "definitions/Configuration.h"
#include "definitions/ModelComments.h"
#include "files/UnicodeHelpers.h"
#include "host/CompilerFileName.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "host/modMain.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "kavrel/Model.h"
#include "kavrel/Text.h"
#include "output/PageGeneration.h"
#include "output/SystemFolders.h"
#include "project/AdditionalFiles.h"
#include "project/IgnoreRelationships.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "template/ParserTemplate.h"

namespace kv {

namespace fs = std::filesystem;

namespace {

constexpr const char* kModule = "KVProject";

// The items of a late-bound collection (Count, Item(1..n)).
std::vector<ObjectPtr> itemsOf(const ObjectPtr& collection) {
  std::vector<ObjectPtr> items;
  if (!collection) return items;
  const long count = long(collection->get("Count").toInteger());
  for (long i = 1; i <= count; ++i) items.push_back(collection->call("Item", {i}).toObject());
  return items;
}

// Adds `procedure` to the ignore comment of `component`, creating it through `project`.
void addIgnoredReference(const ObjectPtr& component, const ObjectPtr& project, const std::string& procedure) {
  const auto item = std::dynamic_pointer_cast<Item>(component);
  if (!item) return;
  if (const auto existing = comments::FindTaggedComment(&item->TaggedComments(), "##IGNORE_REFERENCES")) {
    existing->Description(existing->Description() + "," + procedure);
    return;
  }
  // Without a project to hold it the comment is dropped.
  if (!std::dynamic_pointer_cast<vbProject>(project)) return;
  vbProject::AddTaggedComment(item->TaggedComments(),
                              std::make_shared<TaggedComment>(Atom("##IGNORE_REFERENCES"), procedure));
}

}  // namespace

bool PageGeneration::BeforeBuild() {
  return guard<bool>(kModule, [&] {
    mProject.GeneratedFiles = std::make_shared<Collection<std::string>>();
    mProject.Cancel(false);
    if (!OutputFolderReady()) return false;
    // A project that names no help file gets one beside its pages, named as its help project.
    if (mProject.CompileHelpFile() && mProject.HelpFileName().empty())
      mProject.HelpFileName(mProject.OutputFolder() + mProject.ProjectFileNameNoPathOrExtension() + ".chm");

    mProject.CopiedSupportFiles().Clear();
    mProject.DocTypes->BeforeBuild();
    mProject.FirePreBuildStatus("Copying Additional Files ..");
    CopyAdditionalFiles();

    if (mProject.HTMLHelpVersion() == "2" && mProject.CompileHelpFile() && Help2CompilerFileName().empty()) {
      if (mProject.IsLumideskLite()) {
        mProject.ShowMessageBox(
            "The Help 2 compiler was not found on this machine. Please re-run the Visual Studio 2005 SDK setup and "
            "select the 'Repair' option. If this problem persists, contact support@velmora.example",
            mb::OKOnly + mb::Exclamation, "Help 2 Compiler");
        return false;
      }
      const int answer = mProject.ShowMessageBox(
          "The Microsoft Help 2.x (HTML Help 2) compiler was not found on this machine. If you continue, the HTML "
          "Help 1.x compiler will be used instead.\nYou can find a link to download the Help 2 compiler (part of the "
          "Visual Studio Help Integration Kit) at support@velmora.example",
          mb::OKCancel + mb::Exclamation, "Help 2 Compiler");
      if (answer == mb::Cancel) return false;
      FileSystem helpFile(mProject.HelpFileName());
      if (!helpFile.FileName().empty()) {
        helpFile.Extension("chm");
        mProject.HelpFileName(helpFile.FileName());
      }
      mProject.HTMLHelpVersion("1");
    }
    ChooseCompilers();

    if (mProject.IncludePrivate()) mProject.IncludeFriend(true);
    if (!(mProject.IncludePrivate() || mProject.IncludeFriend())) mProject.IdentifyVisibility(false);

    const std::string config = ConfigurationRoot::instance().ConfigPath();
    mProject.StubHPJTemplate = config + "/template.hpj";
    mProject.StubRTFTemplate = config + "/template.rtf";
    mProject.StubRTFTopicTemplate = config + "/templatetopic.rtf";

    GatherModelComments();
    TurnIgnoredRelationshipsIntoComments();

    mProject.CodePage = 65001;
    if (mProject.LocaleID() != 0)
      if (const Locale locale = UnicodeHelpers::LocaleFromID(mProject.LocaleID()); locale.Valid)
        mProject.CodePage = locale.ANSICodePage.ID;
    mProject.ResetPathLengthWarning();
    return true;
  });
}

bool PageGeneration::OutputFolderReady() {
  const std::string folder = mProject.OutputFolder();
  std::error_code ec;
  if (!folder.empty() && fs::is_directory(folder, ec)) {
    if (!mProject.ClearBeforeBuild()) return true;
    if (IsProtectedFolder(folder)) {
      mProject.ShowMessageBox(
          "Kavrel cannot delete files and directories under the Windows or Program Files directories. Please change "
          "the output directory or clear the option to delete the contents of the output folder before building.",
          mb::OKOnly + mb::Exclamation, "Cannot clear output folder");
      return false;
    }
    mProject.FirePreBuildStatus("Clearing output folder ..");
    DelTree32(folder);
    ignoreFailure([&] { fs::create_directories(folder); });
    return true;
  }

  const int answer = mProject.InternalShowMessageBox(
      "The specified output path '" + folder + "' doesn't exist.  Would you like to create it?",
      mb::YesNo + mb::Question, "Kavrel path does not exist", mb::Yes);
  if (answer == mb::No) return false;
  if (!folder.empty()) fs::create_directories(folder, ec);
  if (folder.empty() || !fs::is_directory(folder, ec)) {
    mProject.ShowMessageBox("Path could not be created, cancelling build", mb::OKOnly + mb::Exclamation,
                            "Could not create path");
    return false;
  }
  return true;
}

void PageGeneration::ChooseCompilers() {
  if (mProject.CompileHelpFile() && mProject.HTMLHelpVersion() == "1" && mProject.HHCCompilerPath.empty()) {
    // The command the machine's settings give the HTML Help project type, if any.
    const std::string type = GetMachineValue("", "hhp.file", "Software\\Classes\\.hhp");
    mProject.HHCCompilerPath = GetCompilerFileName("SOFTWARE\\Classes\\" + type + "\\shell\\open\\command", true);
  }
  if (mProject.CompileHelpFile() && mProject.CreateWinHelpStub()) {
    mProject.CompileWinHelpStub(false);
    mProject.HPJCompilerPath = GetCompilerFileName("SOFTWARE\\Classes\\hpjfiletype\\shell\\open\\command", false);
    if (!mProject.HPJCompilerPath.empty())
      mProject.CompileWinHelpStub(true);
    else
      mProject.RaiseBuildError("HPJ Compiler could not be located, WinHelp stub will be created, but not compiled.",
                               KVWarning);
  }
}

void PageGeneration::GatherModelComments() {
  std::vector<std::shared_ptr<ModelComment>> comments;
  if (mProject.ModelCommentProfiles)
    for (const auto& profile : *mProject.ModelCommentProfiles)
      for (const auto& comment : *profile) comments.push_back(comment);
  for (const auto& docType : mProject.DocTypes->PopulatedDocTypes())
    if (docType->ModelComments)
      for (const auto& comment : *docType->ModelComments) comments.push_back(comment);
  SetModelComments(comments);
}

void PageGeneration::TurnIgnoredRelationshipsIntoComments() {
  for (const auto& ignored : *mProject.IgnoreRelationships) {
    for (const auto& docType : mProject.DocTypes->PopulatedDocTypes()) {
      const auto plugIn = docType->ProjectPlugIn();
      if (!plugIn) continue;
      if (ignored->QualifiedName == "<All>.<All>") {
        std::vector<ObjectPtr> roots;
        ignoreFailure([&] { roots = itemsOf(plugIn->RootItems("0")); });
        for (const auto& root : roots) {
          const ObjectPtr project = GetVBProjectFromRootItem(root);
          std::vector<ObjectPtr> modules;
          ignoreFailure([&] { modules = itemsOf(plugIn->ModuleItems(root).toObject()); });
          for (const auto& module : modules)
            if (TypeMatch(module, "Component"))
              ignoreFailure([&] { addIgnoredReference(module, project, ignored->ProcedureName); });
        }
        continue;
      }
      ObjectPtr found;
      ignoreFailure([&] { found = plugIn->GetObjectFromQualifiedName(ignored->QualifiedName); });
      if (!found || !TypeMatch(found, "Component")) continue;
      ignoreFailure([&] { addIgnoredReference(found, found->get("vbProject").toObject(), ignored->ProcedureName); });
    }
  }
}

bool PageGeneration::CheckFileOpen(FileSystem& File, bool ForWrite) {
  const bool open = File.IsOpen();
  if (!open && ForWrite)
    mProject.RaiseBuildError("Error opening " + File.FileName() +
                                 " for write. The file may be read only, open in another application, or you may not "
                                 "have permissions to overwrite it.",
                             KVWarning);
  return open;
}

void PageGeneration::CopyAdditionalFiles(const std::string& Path) {
  guard(kModule, [&] {
    const std::string base = Path.empty() ? mProject.OutputFolder() : withTrailingSlash(Path);
    // Pages among the files are rendered with the data of the first populated doc type.
    std::shared_ptr<DataProvider> ddp;
    const auto populated = mProject.DocTypes->PopulatedDocTypes();
    if (populated.Count() > 0) {
      std::string handler;
      const auto plugIn = populated.Item(1)->ProjectPlugIn();
      const auto defs = plugIn ? plugIn->NamespaceDefs() : nullptr;
      if (defs && defs->Count() > 0) handler = defs->Item(1)->Handler;
      if (const auto provider = handler.empty() ? nullptr : mProject.GetNamespaceProvider(handler))
        ddp = mProject.DataProviderOf(*provider);
    }

    for (const auto& additional : *mProject.AdditionalFiles) {
      FileSystem source(additional->FileName);
      const std::string name = source.Name();
      if (!source.Exists()) {
        mProject.RaiseBuildError("Additional file '" + name +
                                     "' could not be found.  The file will not be included in the generated HTML Help "
                                     "unless already present in the target output folder.",
                                 KVWarning);
        continue;
      }
      if (text::startsWithIgnoreCase(source.Folder(), base)) continue;
      const std::string target = mProject.OutputFolder() + name;
      FileSystem targetFile(target);
      if (targetFile.Exists() && targetFile.IsReadOnly()) {
        mProject.RaiseBuildError("Could not copy additional file '" + name +
                                     "' as the file already exists in the output directory and is read-only.",
                                 KVWarning);
        continue;
      }
      const std::string ext = text::toLower(source.Extension());
      if ((ext == "html" || ext == "htm") && ddp) {
        // A page among the files is a layout of its own, rendered with the first doc type's data.
        const auto parser = CreateParserTemplate(source.FileName());
        parser->DataProvider(ddp);
        RenderTo(*parser, target);
      } else if (!source.CopyTo(target)) {
        mProject.RaiseBuildError("Could not copy additional file '" + source.FileName() + "' to '" + target +
                                     "'.  Error code " + std::to_string(errno) + ".  Processing will continue.",
                                 KVWarning);
      }
    }
  });
}

}  // namespace kv
