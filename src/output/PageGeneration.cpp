// The build: phases, the walk over namespace definitions and items, and one page per item and
// page layout.
#include "output/PageGeneration.h"

#include <chrono>
#include <ctime>
#include <filesystem>

#include "definitions/Template.h"
#include "host/FailureHandler.h"
#include "kavrel/DataProvider.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/Text.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/Keywords.h"
#include "project/ModelCommentCollections.h"
#include "project/VariableValues.h"
#include "template/CommonProvider.h"
#include "template/ParserTemplate.h"
#include "template/TextExpansion.h"

namespace kv {

namespace {

constexpr const char* kModule = "KVProject";

bool isHelpProjectExtension(const std::string& ext) {
  for (const char* e : {"hxc", "hxt", "hxf", "hxk", "hhp", "hhk", "hhc"})
    if (ext == e) return true;
  return false;
}

std::string itemName(const ObjectPtr& item) {
  std::string name;
  ignoreFailure([&] { name = item->get("Name").toString(); });
  return name;
}

}  // namespace

PageGeneration::PageGeneration(KVProject& project) : mProject(project) {
  if (!mProject.DataProviderFactory)
    mProject.DataProviderFactory = [](KVProject& owner) -> std::shared_ptr<DataProvider> {
      auto provider = std::make_shared<CommonProvider>();
      provider->KVProject(std::static_pointer_cast<KVProject>(owner.shared_from_this()));
      return provider;
    };
}

PageGeneration::~PageGeneration() = default;

bool PageGeneration::Cancelled() {
  return mProject.Cancelled();
}

KVBuildResultEnum PageGeneration::Build() {
  return guard<KVBuildResultEnum>(kModule, [&] {
    KVBuildResultEnum result = BuildResultCancelled;
    if (mProject.AlreadyBuilt) {
      const bool dirty = mProject.Dirty();
      mProject.ResetPlugIns();
      mProject.Dirty(dirty);
    }
    try {
      if (BeforeBuild()) result = GenerateAll();
    } catch (...) {
      mLoadedParserTemplates.clear();
      mProject.ReleaseKeywordStores();
      throw;
    }
    mLoadedParserTemplates.clear();
    mProject.ReleaseKeywordStores();
    return result;
  });
}

KVBuildResultEnum PageGeneration::GenerateAll() {
  mProject.AlreadyBuilt = true;
  mProject.NewKeywordStores();
  AddStandardVariableValues();
  if (Cancelled() || Cancelled()) return BuildResultCancelled;

  mProject.FirePreBuildStatus("Generating content ..");
  mProject.FireUpdateStatusAnim("Writing");
  if (mProject.UseFileNameAliases() && !mProject.CreateAllFileNameAliases()) return BuildResultCancelled;

  bool cancelled = false;
  for (const auto& docType : mProject.DocTypes->PopulatedDocTypes()) {
    mProject.CurrentDocType(docType);
    for (const auto& def : docType->Template()->NamespaceDefs) {
      ProcessNamespace(*docType, def, nullptr, nullptr, 0);
      if ((cancelled = Cancelled())) break;
    }
    if (cancelled) break;
  }
  mProject.CurrentDocType(nullptr);

  if (!cancelled) {
    if (mProject.CompileHelpFile())
      ignoreFailure([&] { std::filesystem::remove(mProject.OutputFolder() + "helpcompilerlog.txt"); });
    OutputGeneralFiles();
  }
  mProject.CurrentDocType(nullptr);
  mProject.DocTypes->AfterBuild();

  if (Cancelled()) return BuildResultCancelled;
  mProject.CancelDisabled = true;
  mProject.FireCancelAvailabilityChanged(false);
  return BuildResultCompletedOK;
}

std::string PageGeneration::ParseForPhrases(const std::string& Text) {
  const auto docType = mProject.CurrentDocType();
  const auto tmpl = docType ? docType->Template() : nullptr;
  return ParseForPhrasesEx(Text, [&](std::string_view key) -> std::optional<std::string> {
    if (!tmpl) return std::nullopt;
    const auto& phrases = tmpl->Phrases();
    const auto found = phrases.find(key);
    if (found == phrases.end()) return std::nullopt;
    return found->second;
  });
}

void PageGeneration::AddStandardVariableValues() {
  auto& values = *mProject.VariableValues;
  if (values.Exists("CreationDate")) values.Remove("CreationDate");
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  char stamp[64] = {};
  std::strftime(stamp, sizeof stamp, "%c", std::localtime(&now));
  values.Add(mProject.NewVariableValue("CreationDate", stamp, true, true), "CreationDate");
}

void PageGeneration::ProcessNamespace(KVDocType& DocType, const std::shared_ptr<NamespaceDef>& Def,
                                      const ObjectPtr& ParentItem, const std::shared_ptr<NamespaceDef>& ParentDef,
                                      long Nesting) {
  guard(kModule, [&] {
    const bool isLDDocType = mProject.IsLumideskDocType(DocType);
    // Three status bars at most: deeper levels report nothing.
    const bool noStatus = Nesting > 3;
    mNesting = noStatus ? 3 : Nesting;
    const long level = mNesting;

    std::shared_ptr<INamespaceProvider> provider;
    ignoreFailure([&] { provider = mProject.GetNamespaceProvider(Def->Handler); });
    if (!provider) return;
    const auto ddp = mProject.DataProviderOf(*provider);
    const ItemCollection items = provider->GetItems(Def, ParentItem, "forpagegeneration=true");
    if (!items || !ddp) return;
    if (!noStatus && !items->empty()) {
      mProject.FireInitialiseStatus(level, long(items->size()));
      mProject.FireUpdateStatusByIndex(level, "", 0);
    }

    const auto tmpl = DocType.Template();
    const bool generates = !(Def->DontGeneratePages && !Def->CoreDefinition);
    std::vector<std::shared_ptr<PageLayout>> layouts;
    if (generates)
      for (const auto& layout : tmpl->PageLayouts)
        if (KVProject::LayoutListsNamespace(layout->NamespaceList, Def->Name)) layouts.push_back(layout);

    const auto& collections = *mProject.ModelCommentCollections;
    const bool modelComments =
        collections.Count() > 0 || (mProject.ModelCommentProfiles && mProject.ModelCommentProfiles->Count() > 0);
    long counter = 0;
    for (const ObjectPtr& item : *items) {
      ++Def->ItemCounter;
      ++counter;
      const std::string caption = Def->DisplayName + " : " + itemName(item);
      if (!noStatus) mProject.FireUpdateStatusByIndex(level, caption, counter);

      if (!ParentDef) {
        ddp->CurrentRootItem(item);
        provider->BeginRootItem(item);
        if (modelComments) ApplyAllModelComments(Def, *provider, item);
      } else {
        provider->BeginChildItem(ddp->CurrentRootItem(), item);
      }

      if (generates) {
        ddp->SetCurrentItem(Def, item, Def->DisplayName, ParentItem);
        for (const auto& layout : layouts) {
          bool dontGenerate = false;
          if (!layout->DependsOnNamespaceName.empty() && layout->DependsOnMinimum != -1) {
            const auto found = tmpl->NamespaceDefs.FindByName(layout->DependsOnNamespaceName);
            std::shared_ptr<INamespaceProvider> depProvider;
            if (!found.empty())
              ignoreFailure([&] { depProvider = mProject.GetNamespaceProvider(found.front()->Handler); });
            if (depProvider) {
              const ItemCollection dependants = depProvider->GetItems(found.front(), item, layout->DependsOnParameters);
              if (dependants && long(dependants->size()) < layout->DependsOnMinimum) dontGenerate = true;
            }
          }
          if (!dontGenerate) mProject.FireBeforeOutputNamespacePage(layout, Def, item, dontGenerate);
          if (dontGenerate) continue;

          const std::string folder = mProject.OutputFolder();
          std::string fileName;
          if (!layout->OutputFileNamePattern.empty()) {
            fileName = folder + ddp->ParseForProperties(layout->OutputFileNamePattern);
          } else if (!Def->OutputFileNamePattern.empty()) {
            ddp->SetCurrentItem(Def, item, Def->DisplayName, ParentItem);
            fileName = folder + ddp->ParseForProperties(Def->OutputFileNamePattern);
          } else {
            fileName = folder + item->get("QualifiedName").toString() + mProject.OutputFileExtension();
          }
          FileSystem file(fileName);
          if (mProject.UseFileNameAliases() && !isLDDocType) {
            const std::string alias = mProject.GetFileNameAlias(file.Name());
            if (!alias.empty() && alias != file.Name()) {
              fileName = file.Folder() + alias;
              file.FileName(fileName);
            }
          }

          const std::string ext = text::toLower(file.Extension());
          const bool fromHelpTemplates = mProject.DocTypes->HelpTemplatesFrom().get() == &DocType;
          bool skip = false;
          if (isHelpProjectExtension(ext)) {
            skip = !fromHelpTemplates;
          } else if (text::equalsIgnoreCase(file.Name(), "registerhelp2.bat") ||
                     text::equalsIgnoreCase(file.Name(), "unregisterhelp2.bat")) {
            skip = mProject.HTMLHelpVersion() != "2" || !fromHelpTemplates;
          }
          if (skip) continue;

          // A pattern ending in "_P" and the extension names a core page too.
          const std::string& pattern = layout->OutputFileNamePattern;
          const std::string coreTail = "_P" + mProject.OutputFileExtension();
          const bool core =
              pattern.empty() || text::equalsIgnoreCase(text::right(pattern, text::length(coreTail)), coreTail);
          OutputNamespacePage(*tmpl, *provider, layout->TemplateFileName, fileName);
          provider->PageOutput(ddp->NamespaceDef(), ddp->CurrentItem(), fileName, core, false);
          mProject.FireContentCreated(fileName);
          AddPageKeywords(*layout, *ddp, Def, item, fileName);
        }
      }
      if (Cancelled()) break;

      for (const auto& child : Def->ChildNamespaceDefs)
        if (child->ChildKinds.find('x') == std::string::npos) ProcessNamespace(DocType, child, item, Def, Nesting + 1);
      if (Cancelled()) break;

      if (!ParentDef)
        provider->EndRootItem(item);
      else
        provider->EndChildItem(ddp->CurrentRootItem(), item);
      if (!noStatus) mProject.FireUpdateStatusByIndex(level, caption, counter);
      if (Cancelled()) break;
    }
  });
}

void PageGeneration::AddPageKeywords(const PageLayout& Layout, DataProvider& DDP,
                                     const std::shared_ptr<NamespaceDef>& Def, const ObjectPtr& Item,
                                     const std::string& FileName) {
  const std::string target = FileSystem(FileName).Name();
  for (const auto& keyword : Layout.Keywords) {
    const auto store = keyword.Kind == "A"   ? mProject.AKeywords()
                       : keyword.Kind == "F" ? mProject.FKeywords()
                                             : mProject.KKeywords();
    if (!store) continue;
    DDP.SetCurrentItem(Def, Item, DDP.CurrentItemType(), DDP.CurrentParentItem());
    std::string text = DDP.ParseForProperties(keyword.Text);
    if (text.find("$$") != std::string::npos) text = ParseForPhrases(text);
    if (text.find(',') != std::string::npos)
      store->AddHierarchicalKeyword(text, target);
    else
      store->AddSimpleKeyword(text, target);
  }
}

void PageGeneration::OutputNamespacePage(const Template& Template, INamespaceProvider& Provider,
                                         const std::string& TemplateName, const std::string& OutputFileName) {
  guard(kModule, [&] {
    auto parser = GetParserTemplate(Template, TemplateName);
    const auto ddp = mProject.DataProviderOf(Provider);
    FileSystem existing(OutputFileName);
    if (mProject.RefreshIfExists() && existing.Exists()) {
      // The page keeps what lies outside its metadata blocks; the blocks come anew.
      parser = std::make_shared<ParserTemplate>(*parser);
      parser->RefreshFrom(existing.ReadAll());
    }
    parser->DataProvider(ddp);
    mProject.CheckOutputPathLength(OutputFileName);
    RenderTo(*parser, OutputFileName);
    if (mProject.UseFileNameAliases()) {
      // Links to pages with aliases take the alias; the page is written again only then.
      const std::string page = existing.ReadAll();
      if (const auto rewritten = mProject.LookForFileNameAliases(page))
        existing.WriteAll(*rewritten, parser->OutputCodePage() == 65001 ? codepage::UTF8 : parser->OutputCodePage());
    }
  });
}

void PageGeneration::RenderTo(ParserTemplate& Template, const std::string& FileName) {
  auto file = std::make_shared<FileSystem>(FileName);
  ignoreFailure([&] {
    if (file->Folder() != mMadeFolder) {
      file->CreateFolder();
      mMadeFolder = file->Folder();
    }
    file->Open(FileSystem::CreateAlways, FileSystem::AccessWrite);
  });
  CheckFileOpen(*file, true);
  if (mProject.CodePage != 0) {
    const std::string ext = text::toLower(file->Extension());
    const bool help2 = ext == "hxc" || ext == "hxf" || ext == "hxt" || ext == "hxa" || ext == "hxk";
    Template.OutputCodePage(help2 ? 65001 : mProject.CodePage);
  }
  file->CodePage(Template.OutputCodePage());
  file->UTF8(Template.OutputCodePage() == 65001);
  // A file that could not be opened is rendered into nothing.
  std::shared_ptr<FileSystem> output = file->IsOpen() ? file : nullptr;
  Template.ParseTo(output);
  if (output) output->Close();
}

std::shared_ptr<ParserTemplate> PageGeneration::GetParserTemplate(const Template& Template,
                                                                  const std::string& TemplateName) {
  const std::string key = text::toLower(TemplateName + ":" + Template.Name);
  auto& cached = mLoadedParserTemplates[key];
  if (!cached) cached = CreateParserTemplate(Template.Folder + TemplateName);
  return cached;
}

std::shared_ptr<ParserTemplate> PageGeneration::CreateParserTemplate(const std::string& FileName) {
  auto parser = std::make_shared<ParserTemplate>();
  if (mProject.StripMetaData()) parser->StripMetaData(true);
  parser->MetaStartOpen("<!--KVMETADATA start");
  parser->MetaStartClose("-->");
  parser->MetaEndOpen("<!--KVMETADATA end");
  parser->MetaEndClose("-->");
  FileSystem file(FileName);
  if (!file.Exists()) return parser;
  parser->Load(FileName);
  const std::string errors = parser->LoadErrors();
  if (!errors.empty()) {
    mProject.RaiseBuildError("Page layout file '" + file.Name() +
                                 "' contained one or more page layout tag formatting errors which are likely to cause "
                                 "malformed output. These errors must be corrected to prevent this message from "
                                 "appearing in future. Problem tag details follow.",
                             KVWarning);
    mProject.RaiseBuildError(errors, KVWarning);
  }
  return parser;
}

}  // namespace kv
