#include "kavrel/Text.h"

#include <algorithm>
#include <cwctype>
#include <locale>

namespace kv::text {
namespace {

bool isAscii(std::string_view s) {
  return std::all_of(s.begin(), s.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

unsigned char asciiLower(unsigned char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + ('a' - 'A')) : c;
}

// Decodes one UTF-8 sequence at `i`; malformed input yields U+FFFD and advances one byte.
char32_t decode(std::string_view s, size_t& i) {
  const auto b0 = static_cast<unsigned char>(s[i]);
  auto cont = [&](size_t k) -> int {
    if (i + k >= s.size()) return -1;
    const auto b = static_cast<unsigned char>(s[i + k]);
    return (b & 0xC0) == 0x80 ? (b & 0x3F) : -1;
  };
  if (b0 < 0x80) {
    ++i;
    return b0;
  }
  if ((b0 & 0xE0) == 0xC0 && b0 >= 0xC2) {
    int c1 = cont(1);
    if (c1 >= 0) {
      i += 2;
      return char32_t(((b0 & 0x1F) << 6) | c1);
    }
  } else if ((b0 & 0xF0) == 0xE0) {
    int c1 = cont(1), c2 = cont(2);
    if (c1 >= 0 && c2 >= 0) {
      char32_t cp = ((b0 & 0x0F) << 12) | (c1 << 6) | c2;
      if (cp >= 0x800 && (cp < 0xD800 || cp > 0xDFFF)) {
        i += 3;
        return cp;
      }
    }
  } else if ((b0 & 0xF8) == 0xF0) {
    int c1 = cont(1), c2 = cont(2), c3 = cont(3);
    if (c1 >= 0 && c2 >= 0 && c3 >= 0) {
      char32_t cp = ((b0 & 0x07) << 18) | (c1 << 12) | (c2 << 6) | c3;
      if (cp >= 0x10000 && cp <= 0x10FFFF) {
        i += 4;
        return cp;
      }
    }
  }
  ++i;
  return 0xFFFD;
}

void encode(char32_t cp, std::string& out) {
  if (cp < 0x80) {
    out += char(cp);
  } else if (cp < 0x800) {
    out += char(0xC0 | (cp >> 6));
    out += char(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += char(0xE0 | (cp >> 12));
    out += char(0x80 | ((cp >> 6) & 0x3F));
    out += char(0x80 | (cp & 0x3F));
  } else {
    out += char(0xF0 | (cp >> 18));
    out += char(0x80 | ((cp >> 12) & 0x3F));
    out += char(0x80 | ((cp >> 6) & 0x3F));
    out += char(0x80 | (cp & 0x3F));
  }
}

const std::ctype<wchar_t>& wideCType() {
  static const std::locale loc = [] {
    try {
      return std::locale("C.UTF-8");
    } catch (...) {
      return std::locale::classic();
    }
  }();
  return std::use_facet<std::ctype<wchar_t>>(loc);
}

template <class Map>
std::string mapCase(std::string_view s, Map map) {
  std::string out;
  out.reserve(s.size());
  if (isAscii(s)) {
    for (char c : s) out += char(map(wchar_t(c)));
    return out;
  }
  for (size_t i = 0; i < s.size();) encode(char32_t(map(wchar_t(decode(s, i)))), out);
  return out;
}

}  // namespace

std::u16string toUtf16(std::string_view s) {
  std::u16string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) {
    char32_t cp = decode(s, i);
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out += char16_t(0xD800 + (cp >> 10));
      out += char16_t(0xDC00 + (cp & 0x3FF));
    } else {
      out += char16_t(cp);
    }
  }
  return out;
}

std::u32string toUtf32(std::string_view s) {
  std::u32string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size();) out += decode(s, i);
  return out;
}

std::string fromUtf16(std::u16string_view s) {
  std::string out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    char32_t cp = s[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < s.size() && s[i + 1] >= 0xDC00 && s[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (s[i + 1] - 0xDC00);
      ++i;
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = 0xFFFD;  // a lone surrogate, e.g. from a cut between a pair
    }
    encode(cp, out);
  }
  return out;
}

void appendUtf8(std::string& out, char32_t codePoint) {
  if (codePoint == 0 || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF)) codePoint = 0xFFFD;
  encode(codePoint, out);
}

long length(std::string_view s) {
  if (isAscii(s)) return long(s.size());
  long n = 0;
  for (size_t i = 0; i < s.size();) n += decode(s, i) >= 0x10000 ? 2 : 1;
  return n;
}

std::string mid(std::string_view s, long start, long count) {
  if (start < 1) start = 1;
  if (isAscii(s)) {
    if (size_t(start - 1) >= s.size()) return {};
    return std::string(s.substr(size_t(start - 1), count < 0 ? std::string_view::npos : size_t(count)));
  }
  const std::u16string w = toUtf16(s);
  if (size_t(start - 1) >= w.size()) return {};
  return fromUtf16(
      std::u16string_view(w).substr(size_t(start - 1), count < 0 ? std::u16string_view::npos : size_t(count)));
}

std::string left(std::string_view s, long count) {
  return count <= 0 ? std::string() : mid(s, 1, count);
}

std::string right(std::string_view s, long count) {
  if (count <= 0) return {};
  const long n = length(s);
  return count >= n ? std::string(s) : mid(s, n - count + 1);
}

long find(std::string_view s, std::string_view what, long start, bool ignoreCase) {
  if (start < 1) start = 1;
  std::string hayLower, whatLower;
  if (ignoreCase) {
    hayLower = toLower(s);
    whatLower = toLower(what);
    s = hayLower;
    what = whatLower;
  }
  if (isAscii(s)) {
    if (size_t(start - 1) > s.size()) return 0;
    auto pos = s.find(what, size_t(start - 1));
    return pos == std::string_view::npos ? 0 : long(pos) + 1;
  }
  const std::u16string w = toUtf16(s), f = toUtf16(what);
  if (size_t(start - 1) > w.size()) return 0;
  auto pos = w.find(f, size_t(start - 1));
  return pos == std::u16string::npos ? 0 : long(pos) + 1;
}

long findLast(std::string_view s, std::string_view what, bool ignoreCase) {
  const std::u16string w = toUtf16(ignoreCase ? toLower(s) : std::string(s));
  const std::u16string f = toUtf16(ignoreCase ? toLower(what) : std::string(what));
  auto pos = w.rfind(f);
  return pos == std::u16string::npos ? 0 : long(pos) + 1;
}

std::string toLower(std::string_view s) {
  if (isAscii(s)) {
    std::string out(s);
    for (char& c : out) c = static_cast<char>(asciiLower(static_cast<unsigned char>(c)));
    return out;
  }
  const auto& ct = wideCType();
  return mapCase(s, [&](wchar_t c) { return ct.tolower(c); });
}

std::string toUpper(std::string_view s) {
  const auto& ct = wideCType();
  return mapCase(s, [&](wchar_t c) { return ct.toupper(c); });
}

// Names are nearly always ASCII, and they are compared on every member lookup: the common part
// is compared byte by byte, and only from the first non-ASCII byte on do both go through the
// full case mapping.
bool equalsIgnoreCase(std::string_view a, std::string_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if ((x | y) & 0x80) return toLower(a.substr(i)) == toLower(b.substr(i));
    if (asciiLower(x) != asciiLower(y)) return false;
  }
  return a.size() == b.size();
}

bool containsIgnoreCase(std::string_view s, std::string_view what) {
  return toLower(s).find(toLower(what)) != std::string::npos;
}

bool startsWithIgnoreCase(std::string_view s, std::string_view prefix) {
  const std::string ls = toLower(s), lp = toLower(prefix);
  return ls.compare(0, lp.size(), lp) == 0;
}

bool endsWithIgnoreCase(std::string_view s, std::string_view suffix) {
  const std::string ls = toLower(s), lx = toLower(suffix);
  return ls.size() >= lx.size() && ls.compare(ls.size() - lx.size(), lx.size(), lx) == 0;
}

std::string replaceAll(std::string_view s, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(s);
  std::string out;
  out.reserve(s.size());
  size_t pos = 0;
  for (;;) {
    size_t hit = s.find(what, pos);
    if (hit == std::string_view::npos) break;
    out.append(s.substr(pos, hit - pos)).append(with);
    pos = hit + what.size();
  }
  out.append(s.substr(pos));
  return out;
}

std::string replaceAllIgnoringCase(std::string_view s, std::string_view what, std::string_view with) {
  if (what.empty()) return std::string(s);
  const auto same = [](char a, char b) {
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
  };
  std::string out;
  out.reserve(s.size());
  std::size_t i = 0;
  while (i < s.size()) {
    if (s.size() - i >= what.size() && std::equal(what.begin(), what.end(), s.begin() + long(i), same)) {
      out += with;
      i += what.size();
    } else {
      out += s[i++];
    }
  }
  return out;
}

std::string trimLeft(std::string_view s) {
  size_t b = s.find_first_not_of(' ');
  return b == std::string_view::npos ? std::string() : std::string(s.substr(b));
}

std::string trimRight(std::string_view s) {
  size_t e = s.find_last_not_of(' ');
  return e == std::string_view::npos ? std::string() : std::string(s.substr(0, e + 1));
}

std::string trim(std::string_view s) {
  return trimLeft(trimRight(s));
}

std::vector<std::string> split(std::string_view s, std::string_view delimiter) {
  std::vector<std::string> parts;
  if (s.empty()) return parts;
  if (delimiter.empty()) return {std::string(s)};
  size_t pos = 0;
  for (;;) {
    size_t hit = s.find(delimiter, pos);
    if (hit == std::string_view::npos) break;
    parts.emplace_back(s.substr(pos, hit - pos));
    pos = hit + delimiter.size();
  }
  parts.emplace_back(s.substr(pos));
  return parts;
}

std::string join(const std::vector<std::string>& parts, std::string_view delimiter) {
  std::string out;
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i) out.append(delimiter);
    out.append(parts[i]);
  }
  return out;
}

bool LessIgnoreCase::operator()(std::string_view a, std::string_view b) const {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if ((x | y) & 0x80) return toLower(a.substr(i)) < toLower(b.substr(i));
    if (asciiLower(x) != asciiLower(y)) return asciiLower(x) < asciiLower(y);
  }
  return a.size() < b.size();
}

}  // namespace kv::text
