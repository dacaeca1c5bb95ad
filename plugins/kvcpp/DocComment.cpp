#include "DocComment.h"

#include <algorithm>
#include <cctype>

namespace kv::cpp {
namespace {

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view s) {
  while (!s.empty() && isSpace(s.front())) s.remove_prefix(1);
  while (!s.empty() && isSpace(s.back())) s.remove_suffix(1);
  return s;
}

bool startsWith(std::string_view s, std::string_view prefix) {
  return s.substr(0, prefix.size()) == prefix;
}

std::string escaped(std::string_view s) {
  std::string out;
  for (char c : s) {
    if (c == '&')
      out += "&amp;";
    else if (c == '<')
      out += "&lt;";
    else if (c == '>')
      out += "&gt;";
    else
      out += c;
  }
  return out;
}

// The next word of `s` from `pos` (letters, digits, "_", ":", "." and "~" inside a name).
std::string_view wordAt(std::string_view s, size_t pos) {
  size_t end = pos;
  while (end < s.size() && !isSpace(s[end]) && s[end] != ',' && s[end] != ')' &&
         !(s[end] == '.' && (end + 1 == s.size() || isSpace(s[end + 1]))))
    ++end;
  return s.substr(pos, end - pos);
}

// Escapes a line of text and turns the inline commands (@c, @p, @a, @e, @em, @b and `code`) into
// their markup.
std::string inlineMarkup(std::string_view s) {
  std::string out;
  size_t i = 0;
  while (i < s.size()) {
    const char c = s[i];
    if ((c == '@' || c == '\\') && i + 1 < s.size() && std::isalpha(static_cast<unsigned char>(s[i + 1]))) {
      size_t end = i + 1;
      while (end < s.size() && std::isalpha(static_cast<unsigned char>(s[end]))) ++end;
      const std::string_view cmd = s.substr(i + 1, end - i - 1);
      const char* tag = cmd == "c" || cmd == "p"                  ? "code"
                        : cmd == "b"                              ? "b"
                        : cmd == "a" || cmd == "e" || cmd == "em" ? "i"
                                                                  : nullptr;
      if (tag && end < s.size() && isSpace(s[end])) {
        size_t start = end;
        while (start < s.size() && isSpace(s[start])) ++start;
        const std::string_view word = wordAt(s, start);
        out += "<" + std::string(tag) + ">" + escaped(word) + "</" + tag + ">";
        i = start + word.size();
        continue;
      }
    }
    if (c == '`') {
      const size_t close = s.find('`', i + 1);
      if (close != std::string_view::npos) {
        out += "<code>" + escaped(s.substr(i + 1, close - i - 1)) + "</code>";
        i = close + 1;
        continue;
      }
    }
    out += escaped(s.substr(i, 1));
    ++i;
  }
  return out;
}

class Builder {
 public:
  DocComment Result;

  void Line(std::string_view line) {
    const std::string_view text = trimmed(line);
    if (mInCode) {
      if (isCommand(text, "endcode") || isCommand(text, "endverbatim")) {
        EndCode();
      } else {
        mCode.push_back(escaped(line));
      }
      return;
    }
    if (text.empty()) {
      Flush();
      if (mTarget != Target::Details) mTarget = Target::None;
      return;
    }
    if ((text[0] == '@' || text[0] == '\\') && Command(text)) return;
    mParagraph.push_back(inlineMarkup(text));
  }

  void End() {
    if (mInCode) EndCode();
    Flush();
  }

 private:
  enum class Target { None, Brief, Details, Returns, Deprecated, Note, See, Param, TParam };

  static bool isCommand(std::string_view text, std::string_view name) {
    return text.size() > name.size() && (text[0] == '@' || text[0] == '\\') && text.substr(1, name.size()) == name &&
           (text.size() == name.size() + 1 || !std::isalpha(static_cast<unsigned char>(text[name.size() + 1])));
  }

  // A command that opens a section; false leaves the line to be read as text.
  bool Command(std::string_view text) {
    size_t end = 1;
    while (end < text.size() && std::isalpha(static_cast<unsigned char>(text[end]))) ++end;
    const std::string_view cmd = text.substr(1, end - 1);
    std::string_view rest = trimmed(text.substr(end));
    if (cmd == "brief" || cmd == "short") return Open(Target::Brief, rest);
    if (cmd == "details" || cmd == "remark" || cmd == "remarks") return Open(Target::Details, rest);
    if (cmd == "return" || cmd == "returns" || cmd == "result" || cmd == "retval") {
      Flush();
      mTarget = Target::Returns;
      if (!Result.Returns.empty()) Result.Returns += "<crlf>";
      if (cmd == "retval") {
        const std::string_view value = wordAt(rest, 0);
        Result.Returns += "<code>" + escaped(value) + "</code> ";
        rest = trimmed(rest.substr(value.size()));
      }
      if (!rest.empty()) mParagraph.push_back(inlineMarkup(rest));
      return true;
    }
    if (cmd == "deprecated") return Open(Target::Deprecated, rest);
    if (cmd == "note" || cmd == "warning" || cmd == "attention") {
      Flush();
      Result.Notes.emplace_back();
      return Open(Target::Note, rest);
    }
    if (cmd == "see" || cmd == "sa") {
      Flush();
      Result.See.emplace_back();
      return Open(Target::See, rest);
    }
    if (cmd == "param" || cmd == "tparam") {
      // "@param[in,out] name text"
      if (!rest.empty() && rest[0] == '[') {
        const size_t close = rest.find(']');
        rest = trimmed(rest.substr(close == std::string_view::npos ? rest.size() : close + 1));
      }
      const std::string_view name = wordAt(rest, 0);
      Flush();
      auto& list = cmd == "param" ? Result.Params : Result.TParams;
      list.emplace_back(std::string(name), std::string());
      return Open(cmd == "param" ? Target::Param : Target::TParam, trimmed(rest.substr(name.size())));
    }
    if (cmd == "code" || cmd == "verbatim") {
      Flush();
      mInCode = true;
      return true;
    }
    return false;
  }

  bool Open(Target target, std::string_view rest) {
    Flush();
    mTarget = target;
    if (!rest.empty()) mParagraph.push_back(inlineMarkup(rest));
    return true;
  }

  void EndCode() {
    mInCode = false;
    // Indentation common to every line is the comment's, not the code's.
    size_t common = std::string::npos;
    for (const auto& line : mCode)
      if (!trimmed(line).empty()) common = std::min(common, line.find_first_not_of(" \t"));
    std::string pre;
    for (size_t i = 0; i < mCode.size(); ++i) {
      if (i) pre += "<crlf>";
      if (mCode[i].size() > common && common != std::string::npos) pre += mCode[i].substr(common);
    }
    if (!mCode.empty()) Result.Details += "<pre>" + pre + "</pre>";
    mCode.clear();
  }

  static void Append(std::string& to, const std::string& text) {
    if (!to.empty()) to += ' ';
    to += text;
  }

  void Flush() {
    if (mParagraph.empty()) return;
    std::string text;
    for (const auto& line : mParagraph) Append(text, line);
    mParagraph.clear();
    switch (mTarget) {
      case Target::None:
        if (Result.Brief.empty()) {
          Result.Brief = text;
        } else {
          Result.Details += "<p>" + text + "</p>";
        }
        break;
      case Target::Brief: Append(Result.Brief, text); break;
      case Target::Details: Result.Details += "<p>" + text + "</p>"; break;
      case Target::Returns: Result.Returns += text; break;
      case Target::Deprecated: Append(Result.Deprecated, text); break;
      case Target::Note: Append(Result.Notes.back(), text); break;
      case Target::See: Append(Result.See.back(), text); break;
      case Target::Param: Append(Result.Params.back().second, text); break;
      case Target::TParam: Append(Result.TParams.back().second, text); break;
    }
  }

  Target mTarget = Target::None;
  std::vector<std::string> mParagraph;
  bool mInCode = false;
  std::vector<std::string> mCode;
};

}  // namespace

std::vector<std::string> CommentLines(std::string_view raw) {
  std::vector<std::string> lines;
  bool block = false;
  size_t start = 0;
  while (start <= raw.size()) {
    size_t end = raw.find('\n', start);
    if (end == std::string_view::npos) end = raw.size();
    std::string_view line = raw.substr(start, end - start);
    start = end + 1;
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    std::string_view text = line;
    while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
    bool marker = false;
    if (!block && startsWith(text, "/*")) {
      block = true;
      marker = true;
      text.remove_prefix(2);
      while (!text.empty() && (text.front() == '*' || text.front() == '!')) text.remove_prefix(1);
      if (startsWith(text, "<")) text.remove_prefix(1);
    } else if (!block && startsWith(text, "//")) {
      marker = true;
      while (!text.empty() && text.front() == '/') text.remove_prefix(1);
      if (startsWith(text, "!")) text.remove_prefix(1);
      if (startsWith(text, "<")) text.remove_prefix(1);
    } else if (block && startsWith(text, "*") && !startsWith(text, "*/")) {
      marker = true;
      text.remove_prefix(1);
    } else if (block) {
      text = line;  // no column of stars: the line as written
    }
    if (block) {
      const size_t close = text.rfind("*/");
      if (close != std::string_view::npos) {
        text = text.substr(0, close);
        while (!text.empty() && text.back() == '*') text.remove_suffix(1);
        block = false;
      }
    }
    if (marker && startsWith(text, " ")) text.remove_prefix(1);
    while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
    lines.emplace_back(text);
    if (end == raw.size()) break;
  }
  // Leading and trailing blank lines are the markers' own.
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  size_t first = 0;
  while (first < lines.size() && lines[first].empty()) ++first;
  lines.erase(lines.begin(), lines.begin() + static_cast<long>(first));
  return lines;
}

DocComment ParseDocComment(std::string_view raw) {
  Builder builder;
  for (const auto& line : CommentLines(raw)) builder.Line(line);
  builder.End();
  return std::move(builder.Result);
}

}  // namespace kv::cpp

namespace kv::cpp {

std::string FindCommentAbove(std::string_view source, unsigned line, bool plain) {
  std::vector<std::string_view> lines;
  for (size_t start = 0; start <= source.size() && lines.size() < line;) {
    size_t end = source.find('\n', start);
    if (end == std::string_view::npos) end = source.size();
    lines.push_back(source.substr(start, end - start));
    start = end + 1;
  }
  if (line == 0 || lines.size() < line) return {};
  const std::string_view own = lines[line - 1];
  const size_t trailing = own.find("///<");
  if (trailing != std::string_view::npos) return std::string(own.substr(trailing));

  const auto isDocLine = [&](std::string_view t) {
    return startsWith(t, "///") || startsWith(t, "//!") || (plain && startsWith(t, "//"));
  };
  long i = static_cast<long>(line) - 2;
  if (i < 0) return {};
  std::string_view last = trimmed(lines[i]);
  std::vector<std::string_view> taken;
  if (isDocLine(last)) {
    while (i >= 0 && isDocLine(trimmed(lines[i]))) taken.push_back(lines[i--]);
  } else if (last.size() >= 2 && last.substr(last.size() - 2) == "*/") {
    while (i >= 0) {
      taken.push_back(lines[i]);
      const std::string_view t = trimmed(lines[i--]);
      if (t.find("/*") != std::string_view::npos) {
        const std::string_view open = t.substr(t.find("/*"));
        if (!(startsWith(open, "/**") || startsWith(open, "/*!") || plain) || t.find("/*") != 0) return {};
        break;
      }
      if (i < 0) return {};
    }
  }
  std::string raw;
  for (auto it = taken.rbegin(); it != taken.rend(); ++it) {
    if (!raw.empty()) raw += '\n';
    raw += *it;
  }
  return raw;
}

}  // namespace kv::cpp
