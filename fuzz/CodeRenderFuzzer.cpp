// Feeds arbitrary text to code rendering: as code of each configured language, wrapped at a width
// the input chooses, as comment text read back as code, and as the paragraph and scrap texts
// that pages are built from. Whatever comes in, the code block must be one "pre" element whose
// text has no character cut in half.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "kavrel/FileSystem.h"
#include "template/BlockRendering.h"
#include "template/CodeRendering.h"
#include "template/XmlTagRendering.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  static const char* const languages[] = {"cpp.lang", "c.lang", "sql.lang", "xml.lang", ""};
  const std::string definition = languages[data[0] % 5];
  const long width = long(data[1] % 100);
  const std::string text(reinterpret_cast<const char*>(data + 2), size - 2);

  // Valid text must come out without replacement characters: wrapping never cuts a character.
  constexpr std::string_view replacement = "\xEF\xBF\xBD";
  const bool clean = kv::codepage::isUtf8(text) && text.find(replacement) == std::string::npos;
  const std::string codes[] = {text, kv::CommentTextToCode(text)};
  for (const std::string& code : codes) {
    const std::string html = kv::CodeBlockHtml(code, definition, true, width);
    if (!html.starts_with("<pre class=\"kvcode\">") || !html.ends_with("</pre>")) std::abort();
    if (clean && &code == &codes[0] && html.find(replacement) != std::string::npos) std::abort();
  }
  kv::blocks::StripFirstPara(text);
  kv::XmlInScrap(text, text, text);
  return 0;
}
