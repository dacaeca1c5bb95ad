#include "contents/ContentIndex.h"

#include <cstdlib>
#include <filesystem>

#include "contents/ContentsData.h"
#include "definitions/Template.h"
#include "files/EscapeText.h"
#include "kavrel/DataProvider.h"
#include "kavrel/FileSystem.h"
#include "kavrel/INamespaceProvider.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"
#include "project/AdditionalFiles.h"
#include "project/KVDocType.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/Keywords.h"

namespace kv {
namespace {

// The provider of a doc type's first namespace definition, which speaks for the doc type.
std::shared_ptr<INamespaceProvider> firstProvider(KVProject& project, KVDocType& docType) {
  const auto tmpl = docType.Template();
  if (tmpl->NamespaceDefs.Count() == 0) return nullptr;
  return project.GetNamespaceProvider(tmpl->NamespaceDefs.Item(1)->Handler);
}

std::string nameOnly(const std::string& fileName) {
  return std::filesystem::path(fileName).filename().string();
}

}  // namespace

void ContentIndex::BuildIndex(std::shared_ptr<FileSystem>& OutputFile, std::string ScrapName) {
  std::shared_ptr<Keywords> store;
  bool* built = &mProject.KIndexBuilt;
  if (ScrapName.find("_F_") != std::string::npos) {
    store = mProject.FKeywords();
    built = &mProject.FIndexBuilt;
  } else if (ScrapName.find("_A_") != std::string::npos) {
    store = mProject.AKeywords();
    built = &mProject.AIndexBuilt;
  } else {
    store = mProject.KKeywords();
  }
  if (!store) return;
  // Sorted once per build: a second index of the same kind writes the same order.
  if (!*built) {
    store->Sort();
    *built = true;
  }

  const auto docType = mProject.CurrentDocType();
  const auto DDP = ContentsDataProvider(docType ? docType->NamespaceProvider().get() : nullptr, mProject);
  bool HH2 = std::atol(mProject.HTMLHelpVersion().c_str()) == 2;
  if (!ScrapName.empty())
    HH2 = HH2 && text::containsIgnoreCase(ScrapName, "v2");
  else
    ScrapName = "_INDEXCONTENT_ENTRY";

  std::string SeparatorScrap = mProject.Scrap(text::replaceAllIgnoringCase(ScrapName, "_BODY", "_SEPARATOR"));
  if (SeparatorScrap.starts_with("!MISSING Scrap ")) SeparatorScrap.clear();
  const std::string KeywordScrap = mProject.Scrap(ScrapName);

  const long count = store->Count();
  for (long i = 1; i <= count; ++i) {
    const auto keyword = store->Item(i);
    if (HH2) {
      // Help 2 reads these three as separators of its own; the store keeps the escaped name.
      keyword->Name =
          text::replaceAll(text::replaceAll(text::replaceAll(keyword->Name, ",", "%2C"), ";", "%3B"), ":", "%3A");
    }
    DDP->SetCurrentItem(nullptr, keyword, "Keyword", nullptr);
    OutputFile->WriteLine(DDP->ParseForProperties(KeywordScrap));
    if (!SeparatorScrap.empty() && i < count) OutputFile->WriteLine(DDP->ParseForProperties(SeparatorScrap));
  }
}

void ContentIndex::StreamContent(std::shared_ptr<FileSystem>& OutputFile, const std::string& ContentType) {
  mProject.FirePostBuildStatus("Generating " + ContentType);
  if (text::toLower(ContentType) == "files") {
    OutputFile->OutputLineFeeds(true);
    const bool help2 = std::atol(mProject.HTMLHelpVersion().c_str()) == 2;
    if (mProject.AdditionalFiles)
      for (const auto& file : *mProject.AdditionalFiles) {
        const std::string name = nameOnly(file->FileName);
        OutputFile->WriteLine(help2 ? "<File Url = \"" + EscapeText(name) + "\"/>" : name);
      }
  }
  const auto keptDocType = mProject.CurrentDocType();
  for (const auto& docType : mProject.DocTypes->PopulatedDocTypes()) {
    mProject.CurrentDocType(docType);
    if (const auto provider = firstProvider(mProject, *docType)) provider->StreamContent(OutputFile, ContentType);
  }
  mProject.CurrentDocType(keptDocType);
}

}  // namespace kv
