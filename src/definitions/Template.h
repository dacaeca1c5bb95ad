// The templates of the installation: definitions, layouts, tables of contents, variables, phrases
// and scraps of each, read from its folder below "Templates/".
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "definitions/PageLayout.h"
#include "definitions/TOCDefinition.h"
#include "kavrel/Collection.h"
#include "kavrel/DocTypeDef.h"
#include "kavrel/NamespaceDef.h"
#include "kavrel/Text.h"

namespace kv {

struct VariableDef {
  std::string Name;
  std::string DefaultValue;
  long Type = 0;  // 4: a colour
};

class Template {
 public:
  std::string Name;
  std::string Description;
  std::string Folder;               // ends in "/"
  std::string DefinitionFileName;   // full name of the definition file, never copied
  kv::NamespaceDefs NamespaceDefs;  // the root definitions
  Collection<std::shared_ptr<kv::PageLayout>> PageLayouts;
  Collection<std::shared_ptr<kv::TOCDefinition>> TOCDefinitions;
  std::string SingleItemTOCName, MultipleItemTOCName;
  std::vector<VariableDef> VariableDefs;
  // The doc types the template serves, compared by object identity.
  std::vector<std::shared_ptr<DocTypeDef>> DocTypeDefs;
  // Root item types the template handles: "source", "binary".
  std::vector<std::string> ItemTypes;
  // Diagram style: colours as RGB with red in the lowest byte.
  std::int32_t objFillColor = 0xFFFFFF, objTextColor = 0, objBorderColor = 0;
  std::int32_t colFillColor = 0xFFFFFF, colTextColor = 0, colBorderColor = 0;
  std::int32_t BorderWidth = 1;
  bool UseDropShadow = false, CenterCaptions = false, DiagramBold = false, UseDiagramShapes = false;

  // The folder without its trailing "/", for names joined with "/".
  std::string RootFolder() const;
  bool SupportsItemType(std::string_view Type) const;
  bool ServesDocType(const DocTypeDef* def) const;

  // The language that selects the phrase set; "English" until set.
  std::string Language() const { return mLanguage; }
  void Language(std::string_view language);
  using PhraseTable = std::map<std::string, std::string, text::LessIgnoreCase>;
  // The phrases of the language, read from "Phrases/<language>.xml" on first use; a language
  // without a file has the English phrases.
  const PhraseTable& Phrases() const;
  // The phrase, or the key itself when there is no such phrase.
  std::string Phrase(std::string_view Key) const;
  // The text block "HTMLScraps/<key>.*", or "!MISSING Scrap <key>!" when there is none.
  std::string Scrap(std::string_view Key) const;

 private:
  std::string mLanguage = "English";
  mutable std::optional<PhraseTable> mPhrases;
  mutable std::optional<std::map<std::string, std::string, text::LessIgnoreCase>> mScraps;
};

// A keyed list of templates, creatable by callers.
class Templates : public Collection<std::shared_ptr<kv::Template>> {};

}  // namespace kv
