#include "template/CodeRendering.h"

#include <optional>

#include "files/EscapeText.h"
#include "kavrel/CodeColours.h"
#include "kavrel/Text.h"

namespace kv {

namespace {

constexpr long kTabWidth = 4;

// UTF-16 units of one UTF-8 sequence, told by its first byte; continuation bytes count nothing.
long unitsOfByte(unsigned char c) {
  if ((c & 0xC0) == 0x80) return 0;
  return c >= 0xF0 ? 2 : 1;
}

std::string expandTabs(std::string_view line) {
  std::string out;
  long column = 0;
  for (char ch : line) {
    if (ch == '\t') {
      const long spaces = kTabWidth - column % kTabWidth;
      out.append(std::size_t(spaces), ' ');
      column += spaces;
    } else {
      out += ch;
      column += unitsOfByte(static_cast<unsigned char>(ch));
    }
  }
  return out;
}

std::size_t leadingBlanks(std::string_view line) {
  std::size_t n = 0;
  while (n < line.size() && line[n] == ' ') ++n;
  return n;
}

// The entity at the start of `s` ("&lt;", "&#233;"): its text and length, or length 0.
std::size_t decodeEntity(std::string_view s, std::string& out) {
  const std::size_t end = s.find(';');
  if (end == std::string_view::npos || end > 10) return 0;
  const std::string name = text::toLower(s.substr(1, end - 1));
  static constexpr std::pair<std::string_view, std::string_view> named[] = {
      {"lt", "<"}, {"gt", ">"}, {"amp", "&"}, {"quot", "\""}, {"apos", "'"}, {"nbsp", " "}};
  for (const auto& [n, t] : named)
    if (name == n) {
      out += t;
      return end + 1;
    }
  if (name.size() < 2 || name[0] != '#') return 0;
  const bool hex = name[1] == 'x';
  const std::string digits = name.substr(hex ? 2 : 1);
  if (digits.empty() || digits.find_first_not_of(hex ? "0123456789abcdef" : "0123456789") != std::string::npos)
    return 0;
  const unsigned long cp = std::stoul(digits.substr(0, 8), nullptr, hex ? 16 : 10);
  text::appendUtf8(out, char32_t(cp > 0x10FFFF ? 0xFFFD : cp));
  return end + 1;
}

void appendToken(CodeLine& line, const std::string& cls, std::string_view piece) {
  if (piece.empty()) return;
  if (!line.empty() && line.back().Class == cls)
    line.back().Text += piece;
  else
    line.push_back({cls, std::string(piece)});
}

bool blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view colourClass(char letter) {
  switch (letter) {
    case colour::Keyword: return "keyword";
    case colour::Type: return "type";
    case colour::Function: return "function";
    case colour::String: return "string";
    case colour::Number: return "number";
    case colour::Symbol: return "symbol";
    case colour::Bracket: return "cbracket";
    case colour::Preprocessor: return "preproc";
    case colour::Comment: return "comment";
    default: return "";
  }
}

// The lines of `code` coloured by a colour string, cut and trimmed as CodeLines cuts the code;
// nothing when the colours do not fit the code byte for byte.
std::optional<std::vector<CodeLine>> colouredLines(std::string_view code, std::string_view colours) {
  if (colours.size() != code.size()) return std::nullopt;
  for (std::size_t i = 0; i < code.size(); ++i)
    if ((blank(code[i]) || blank(colours[i])) && code[i] != colours[i]) return std::nullopt;
  // Blanks stand in both, so both are cut, trimmed and indented alike.
  const std::vector<std::string> lines = CodeLines(code), letters = CodeLines(colours);
  if (lines.size() != letters.size()) return std::nullopt;
  std::vector<CodeLine> out(lines.size());
  for (std::size_t l = 0; l < lines.size(); ++l) {
    if (lines[l].size() != letters[l].size()) return std::nullopt;
    const std::string_view text = lines[l], mask = letters[l];
    for (std::size_t i = 0; i < text.size();) {
      const std::string_view cls = colourClass(mask[i]);
      std::size_t end = i + 1;
      while (end < text.size() && colourClass(mask[end]) == cls) ++end;
      appendToken(out[l], std::string(cls), text.substr(i, end - i));
      i = end;
    }
  }
  return out;
}

std::string lineHtml(const CodeLine& line) {
  std::string out;
  for (const CodeToken& t : line) {
    if (t.Class.empty())
      out += EscapeText(t.Text);
    else
      out += "<span class=\"hl-" + t.Class + "\">" + EscapeText(t.Text) + "</span>";
  }
  return out;
}

}  // namespace

std::vector<std::string> CodeLines(std::string_view code) {
  std::vector<std::string> lines;
  std::size_t pos = 0;
  while (pos <= code.size()) {
    std::size_t end = code.find_first_of("\r\n", pos);
    if (end == std::string_view::npos) end = code.size();
    std::string line = expandTabs(code.substr(pos, end - pos));
    while (!line.empty() && line.back() == ' ') line.pop_back();
    lines.push_back(std::move(line));
    if (end == code.size()) break;
    pos = end + ((code[end] == '\r' && end + 1 < code.size() && code[end + 1] == '\n') ? 2 : 1);
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  std::size_t first = 0;
  while (first < lines.size() && lines[first].empty()) ++first;
  lines.erase(lines.begin(), lines.begin() + long(first));

  std::size_t common = std::string::npos;
  for (const auto& l : lines)
    if (!l.empty()) common = std::min(common, leadingBlanks(l));
  if (common != std::string::npos && common > 0)
    for (auto& l : lines)
      if (!l.empty()) l.erase(0, common);
  return lines;
}

std::string CommentTextToCode(std::string_view internal) {
  std::string out;
  std::size_t i = 0;
  while (i < internal.size()) {
    const char c = internal[i];
    if (c == '<') {
      const std::size_t close = internal.find('>', i);
      if (close == std::string_view::npos) {
        out += internal.substr(i);
        break;
      }
      std::string tag = text::toLower(internal.substr(i + 1, close - i - 1));
      while (!tag.empty() && (tag.back() == '/' || tag.back() == ' ')) tag.pop_back();
      if (tag == "crlf" || tag == "br") out += '\n';
      i = close + 1;
    } else if (c == '&') {
      const std::size_t used = decodeEntity(internal.substr(i), out);
      if (used == 0) out += c;
      i += used == 0 ? 1 : used;
    } else {
      out += c;
      ++i;
    }
  }
  return out;
}

std::vector<CodeLine> WrapCodeLine(const CodeLine& line, long width) {
  std::u16string units;
  std::vector<std::size_t> owner;  // the token each unit comes from
  for (std::size_t t = 0; t < line.size(); ++t) {
    const std::u16string u = text::toUtf16(line[t].Text);
    units += u;
    owner.insert(owner.end(), u.size(), t);
  }
  const std::size_t n = units.size();
  if (width < 1 || n <= std::size_t(width)) return {line};

  const auto isBlank = [&](std::size_t i) { return units[i] == u' '; };
  const auto isLowSurrogate = [&](std::size_t i) { return units[i] >= 0xDC00 && units[i] <= 0xDFFF; };
  std::size_t indent = 0;
  while (indent < n && isBlank(indent)) ++indent;
  const std::size_t repeat = indent * 2 <= std::size_t(width) ? indent : 0;

  std::vector<CodeLine> pieces;
  std::size_t start = 0;
  while (start < n) {
    const bool firstPiece = pieces.empty();
    std::size_t prefix = firstPiece ? 0 : repeat;
    // A character that would not fit after the indentation goes without it.
    const std::size_t firstUnits = start + 1 < n && isLowSurrogate(start + 1) ? 2 : 1;
    if (prefix > 0 && firstUnits > std::size_t(width) - prefix) prefix = 0;
    const std::size_t room = std::size_t(width) - prefix;
    std::size_t end = n, next = n;
    if (n - start > room) {
      const std::size_t limit = start + room;  // the first unit that does not fit
      const std::size_t lowest = firstPiece ? indent : start;
      std::size_t blank = limit;
      while (blank > lowest && !isBlank(blank)) --blank;
      if (blank > lowest && isBlank(blank)) {
        end = blank;
        next = blank;
        while (next < n && isBlank(next)) ++next;
      } else {
        end = limit;
        if (isLowSurrogate(end)) --end;
        if (end == start) end = start + (isLowSurrogate(start + 1) ? 2 : 1);
        next = end;
      }
    }
    CodeLine piece;
    if (prefix > 0) appendToken(piece, "", std::string(prefix, ' '));
    std::size_t i = start;
    while (i < end) {
      std::size_t j = i;
      while (j < end && owner[j] == owner[i]) ++j;
      appendToken(piece, line[owner[i]].Class, text::fromUtf16(std::u16string_view(units).substr(i, j - i)));
      i = j;
    }
    pieces.push_back(std::move(piece));
    start = next;
  }
  return pieces;
}

std::string CodeBlockHtml(std::string_view code, const std::string& definition, bool highlighted, long wrapLength,
                          std::string_view colours) {
  std::optional<std::vector<CodeLine>> given;
  if (highlighted && !colours.empty()) given = colouredLines(code, colours);
  const std::vector<CodeLine> coloured =
      given ? std::move(*given) : CodeHighlighter::Highlight(CodeLines(code), highlighted ? definition : std::string());
  std::string out = "<pre class=\"kvcode\">";
  bool firstLine = true;
  for (const CodeLine& line : coloured)
    for (const CodeLine& piece : WrapCodeLine(line, wrapLength)) {
      if (!firstLine) out += '\n';
      firstLine = false;
      out += lineHtml(piece);
    }
  return out + "</pre>";
}

}  // namespace kv
