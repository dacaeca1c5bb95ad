#include "definitions/Template.h"

#include <algorithm>
#include <filesystem>

#include "definitions/DefinitionReading.h"
#include "kavrel/FileSystem.h"
#include "kavrel/XmlDocument.h"

namespace kv {

using namespace reading;

namespace fs = std::filesystem;

std::string Template::RootFolder() const {
  return Folder.size() > 1 && Folder.back() == '/' ? Folder.substr(0, Folder.size() - 1) : Folder;
}

bool Template::SupportsItemType(std::string_view Type) const {
  return std::any_of(ItemTypes.begin(), ItemTypes.end(),
                     [&](const auto& t) { return text::equalsIgnoreCase(t, Type); });
}

bool Template::ServesDocType(const DocTypeDef* def) const {
  return std::any_of(DocTypeDefs.begin(), DocTypeDefs.end(), [&](const auto& d) { return d.get() == def; });
}

void Template::Language(std::string_view language) {
  if (text::equalsIgnoreCase(language, mLanguage)) return;
  mLanguage = language;
  mPhrases.reset();
}

const Template::PhraseTable& Template::Phrases() const {
  if (mPhrases) return *mPhrases;
  mPhrases.emplace();
  std::vector<std::string> errors;
  auto doc = readDefinitionFile(Folder + "Phrases/" + mLanguage + ".xml", "Phrases", errors);
  if (!doc && !text::equalsIgnoreCase(mLanguage, "English"))
    doc = readDefinitionFile(Folder + "Phrases/English.xml", "Phrases", errors);
  if (doc)
    for (const XMLNode& e : doc->RootNode().ChildNodes())
      if (isElement(e, "Phrase")) mPhrases->insert_or_assign(readText(e, "Key"), e.Text());
  return *mPhrases;
}

std::string Template::Phrase(std::string_view Key) const {
  const auto& phrases = Phrases();
  auto it = phrases.find(Key);
  return it == phrases.end() ? std::string(Key) : it->second;
}

std::string Template::Scrap(std::string_view Key) const {
  if (!mScraps) {
    mScraps.emplace();
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(Folder + "HTMLScraps", ec)) {
      if (!entry.is_regular_file(ec)) continue;
      FileSystem file(entry.path().string());
      mScraps->emplace(entry.path().stem().string(), file.ReadAll());
    }
  }
  auto it = mScraps->find(Key);
  return it == mScraps->end() ? "!MISSING Scrap " + std::string(Key) + "!" : it->second;
}

}  // namespace kv
