#include "template/CodeHighlighter.h"

#include <srchilite/formatter.h>
#include <srchilite/formattermanager.h>
#include <srchilite/instances.h>
#include <srchilite/langdefmanager.h>
#include <srchilite/langmap.h>
#include <srchilite/sourcehighlighter.h>

#include <exception>
#include <map>
#include <memory>

#include "kavrel/Text.h"

namespace kv {

namespace {

// The element names of the language definitions that get a style class of their own; any other
// element reads as plain text.
constexpr std::string_view kStyledElements[] = {
    "keyword",  "type",    "usertype", "string",     "regexp",      "specialchar", "comment",
    "number",   "preproc", "symbol",   "function",   "cbracket",    "todo",        "classname",
    "variable", "label",   "url",      "predef_var", "predef_func", "property",    "value",
};

// Appends each token to the line being built, joining it to the one before when the class is the
// same (the highlighter reports a keyword run piece by piece).
class TokenFormatter : public srchilite::Formatter {
 public:
  TokenFormatter(std::string cls, CodeLine*& line) : mClass(std::move(cls)), mLine(line) {}
  void format(const std::string& s, const srchilite::FormatterParams*) override {
    if (s.empty()) return;
    if (!mLine->empty() && mLine->back().Class == mClass)
      mLine->back().Text += s;
    else
      mLine->push_back({mClass, s});
  }

 private:
  std::string mClass;
  CodeLine*& mLine;
};

// Language names that the definitions' map spells otherwise.
std::string mapName(std::string_view language) {
  const std::string lower = text::toLower(text::trim(language));
  if (lower == "c++") return "cpp";
  if (lower == "c#") return "csharp";
  return lower;
}

// Definitions are read once; the highlighter owns no state between calls but the current line.
srchilite::HighlightStatePtr loadDefinition(const std::string& definition) {
  static std::map<std::string, srchilite::HighlightStatePtr> cache;
  auto it = cache.find(definition);
  if (it != cache.end()) return it->second;
  srchilite::HighlightStatePtr state = srchilite::Instances::getLangDefManager()->getHighlightState(definition);
  cache.emplace(definition, state);
  return state;
}

std::vector<CodeLine> plain(const std::vector<std::string>& lines) {
  std::vector<CodeLine> out;
  out.reserve(lines.size());
  for (const auto& l : lines) out.push_back(l.empty() ? CodeLine{} : CodeLine{{"", l}});
  return out;
}

}  // namespace

std::string CodeHighlighter::LanguageDefinition(std::string_view language, std::string_view fileName) {
  try {
    srchilite::LangMap* map = srchilite::Instances::getLangMap();
    if (!language.empty()) {
      const std::string file = map->getMappedFileName(mapName(language));
      if (!file.empty()) return file;
    }
    if (!fileName.empty()) {
      const std::string file = map->getMappedFileNameFromFileName(std::string(fileName));
      if (!file.empty()) return file;
    }
  } catch (const std::exception&) {
    // A data folder without its map: the code stays plain.
  }
  return {};
}

std::vector<CodeLine> CodeHighlighter::Highlight(const std::vector<std::string>& lines, const std::string& definition) {
  if (definition.empty()) return plain(lines);
  try {
    CodeLine* current = nullptr;
    srchilite::FormatterManager formatters(srchilite::FormatterPtr(new TokenFormatter("", current)));
    for (std::string_view element : kStyledElements)
      formatters.addFormatter(std::string(element),
                              srchilite::FormatterPtr(new TokenFormatter(std::string(element), current)));
    srchilite::SourceHighlighter highlighter(loadDefinition(definition));
    highlighter.setFormatterManager(&formatters);

    std::vector<CodeLine> out(lines.size());
    for (std::size_t i = 0; i < lines.size(); ++i) {
      current = &out[i];
      highlighter.highlightParagraph(lines[i]);
    }
    return out;
  } catch (const std::exception&) {
    // A definition that does not parse, or a pattern that gives up on a line: plain text is
    // better than no code.
    return plain(lines);
  }
}

}  // namespace kv
