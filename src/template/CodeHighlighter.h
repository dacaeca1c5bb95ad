// Colours source code by its language with GNU Source-highlight's language definitions. The
// result is tokens with a style class, so that the caller can still cut lines and escape text.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct CodeToken {
  std::string Class;  // the kind of text ("keyword", "comment", "string"); empty for plain text
  std::string Text;
  bool operator==(const CodeToken&) const = default;
};
using CodeLine = std::vector<CodeToken>;

class CodeHighlighter {
 public:
  // The language definition for a language name ("C++", "sql") or, when the name is empty or
  // unknown, for the extension of `fileName`; empty when neither is known.
  static std::string LanguageDefinition(std::string_view language, std::string_view fileName = {});
  // Splits each line in tokens. Lines are coloured in order, so that a comment or string running
  // over several lines keeps its colour. Without a definition, or when the definition cannot be
  // read, every line is one plain token.
  static std::vector<CodeLine> Highlight(const std::vector<std::string>& lines, const std::string& definition);
};

}  // namespace kv
