// Source code as HTML: how code text is cut into lines, wrapped and written as a coloured
// preformatted block. Examples and the source of blocks both come through here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "template/CodeHighlighter.h"

namespace kv {

// The lines of a code text, ready to show:
// - "\r\n", "\r" and "\n" end a line;
// - a tab reaches the next column that is a multiple of four;
// - blanks at the end of a line go, and so do blank lines before the first and after the last
//   line with text;
// - the indentation that every line with text shares is taken off.
std::vector<std::string> CodeLines(std::string_view code);

// Comment text in the internal form as code: "<crlf>" and "<br>" end lines, other tags go and
// entities are decoded, so that the code reads as its author wrote it.
std::string CommentTextToCode(std::string_view internal);

// Cuts a line longer than `width` (counted in UTF-16 units) into pieces of at most `width`: at
// the last blank within the width when the line has one past its indentation, otherwise right at
// the width (never inside a character). The blank at a cut goes; pieces after the first repeat
// the line's indentation when that leaves at least half the width and room for their first
// character. A width below one leaves the line whole.
std::vector<CodeLine> WrapCodeLine(const CodeLine& line, long width);

// The block "<pre class=\"kvcode\">" ... "</pre>" for `code`, coloured when `highlighted`, each
// token of a style class in "<span class=\"hl-" class "\">". Colours given with the code
// (kavrel/CodeColours.h) are taken when they fit it; otherwise the language definition colours it
// (see CodeHighlighter). Lines end with "\n" inside the block.
std::string CodeBlockHtml(std::string_view code, const std::string& definition, bool highlighted, long wrapLength,
                          std::string_view colours = {});

}  // namespace kv
