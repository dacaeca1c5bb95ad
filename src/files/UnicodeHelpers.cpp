#include "files/UnicodeHelpers.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"

namespace kv {
namespace {

struct CodePageRow {
  long id;
  const char* charset;
  const char* converter;
};

// Charset names are the ones browsers and help viewers accept in a meta tag.
constexpr std::array kCodePages{
    CodePageRow{437, "ibm437", "CP437"},
    CodePageRow{850, "ibm850", "CP850"},
    CodePageRow{866, "cp866", "CP866"},
    CodePageRow{874, "windows-874", "CP874"},
    CodePageRow{932, "shift_jis", "CP932"},
    CodePageRow{936, "gb2312", "CP936"},
    CodePageRow{949, "ks_c_5601-1987", "CP949"},
    CodePageRow{950, "big5", "CP950"},
    CodePageRow{1200, "utf-16", "UTF-16LE"},
    CodePageRow{1201, "unicodeFFFE", "UTF-16BE"},
    CodePageRow{1250, "windows-1250", "CP1250"},
    CodePageRow{1251, "windows-1251", "CP1251"},
    CodePageRow{1252, "windows-1252", "CP1252"},
    CodePageRow{1253, "windows-1253", "CP1253"},
    CodePageRow{1254, "windows-1254", "CP1254"},
    CodePageRow{1255, "windows-1255", "CP1255"},
    CodePageRow{1256, "windows-1256", "CP1256"},
    CodePageRow{1257, "windows-1257", "CP1257"},
    CodePageRow{1258, "windows-1258", "CP1258"},
    CodePageRow{20127, "us-ascii", "ASCII"},
    CodePageRow{20866, "koi8-r", "KOI8-R"},
    CodePageRow{21866, "koi8-u", "KOI8-U"},
    CodePageRow{28591, "iso-8859-1", "ISO-8859-1"},
    CodePageRow{28592, "iso-8859-2", "ISO-8859-2"},
    CodePageRow{28595, "iso-8859-5", "ISO-8859-5"},
    CodePageRow{28597, "iso-8859-7", "ISO-8859-7"},
    CodePageRow{28605, "iso-8859-15", "ISO-8859-15"},
    CodePageRow{50220, "iso-2022-jp", "ISO-2022-JP"},
    CodePageRow{51932, "euc-jp", "EUC-JP"},
    CodePageRow{51949, "euc-kr", "EUC-KR"},
    CodePageRow{54936, "gb18030", "GB18030"},
    CodePageRow{65001, "utf-8", "UTF-8"},
};

struct LocaleRow {
  long id;
  const char* name;
  const char* language;
  long codePage;
};

constexpr std::array kLocales{
    LocaleRow{1025, "ar-SA", "Arabic (Saudi Arabia)", 1256},
    LocaleRow{1026, "bg-BG", "Bulgarian (Bulgaria)", 1251},
    LocaleRow{1027, "ca-ES", "Catalan (Catalan)", 1252},
    LocaleRow{1028, "zh-TW", "Chinese (Taiwan)", 950},
    LocaleRow{1029, "cs-CZ", "Czech (Czech Republic)", 1250},
    LocaleRow{1030, "da-DK", "Danish (Denmark)", 1252},
    LocaleRow{1031, "de-DE", "German (Germany)", 1252},
    LocaleRow{1032, "el-GR", "Greek (Greece)", 1253},
    LocaleRow{1033, "en-US", "English (United States)", 1252},
    LocaleRow{1034, "es-ES_tradnl", "Spanish (Spain, Traditional Sort)", 1252},
    LocaleRow{1035, "fi-FI", "Finnish (Finland)", 1252},
    LocaleRow{1036, "fr-FR", "French (France)", 1252},
    LocaleRow{1037, "he-IL", "Hebrew (Israel)", 1255},
    LocaleRow{1038, "hu-HU", "Hungarian (Hungary)", 1250},
    LocaleRow{1039, "is-IS", "Icelandic (Iceland)", 1252},
    LocaleRow{1040, "it-IT", "Italian (Italy)", 1252},
    LocaleRow{1041, "ja-JP", "Japanese (Japan)", 932},
    LocaleRow{1042, "ko-KR", "Korean (Korea)", 949},
    LocaleRow{1043, "nl-NL", "Dutch (Netherlands)", 1252},
    LocaleRow{1044, "nb-NO", "Norwegian, Bokmål (Norway)", 1252},
    LocaleRow{1045, "pl-PL", "Polish (Poland)", 1250},
    LocaleRow{1046, "pt-BR", "Portuguese (Brazil)", 1252},
    LocaleRow{1048, "ro-RO", "Romanian (Romania)", 1250},
    LocaleRow{1049, "ru-RU", "Russian (Russia)", 1251},
    LocaleRow{1050, "hr-HR", "Croatian (Croatia)", 1250},
    LocaleRow{1051, "sk-SK", "Slovak (Slovakia)", 1250},
    LocaleRow{1053, "sv-SE", "Swedish (Sweden)", 1252},
    LocaleRow{1054, "th-TH", "Thai (Thailand)", 874},
    LocaleRow{1055, "tr-TR", "Turkish (Turkey)", 1254},
    LocaleRow{1057, "id-ID", "Indonesian (Indonesia)", 1252},
    LocaleRow{1058, "uk-UA", "Ukrainian (Ukraine)", 1251},
    LocaleRow{1060, "sl-SI", "Slovenian (Slovenia)", 1250},
    LocaleRow{1061, "et-EE", "Estonian (Estonia)", 1257},
    LocaleRow{1062, "lv-LV", "Latvian (Latvia)", 1257},
    LocaleRow{1063, "lt-LT", "Lithuanian (Lithuania)", 1257},
    LocaleRow{1066, "vi-VN", "Vietnamese (Vietnam)", 1258},
    LocaleRow{2052, "zh-CN", "Chinese (People's Republic of China)", 936},
    LocaleRow{2055, "de-CH", "German (Switzerland)", 1252},
    LocaleRow{2057, "en-GB", "English (United Kingdom)", 1252},
    LocaleRow{2058, "es-MX", "Spanish (Mexico)", 1252},
    LocaleRow{2060, "fr-BE", "French (Belgium)", 1252},
    LocaleRow{2064, "it-CH", "Italian (Switzerland)", 1252},
    LocaleRow{2067, "nl-BE", "Dutch (Belgium)", 1252},
    LocaleRow{2068, "nn-NO", "Norwegian, Nynorsk (Norway)", 1252},
    LocaleRow{2070, "pt-PT", "Portuguese (Portugal)", 1252},
    LocaleRow{3076, "zh-HK", "Chinese (Hong Kong S.A.R.)", 950},
    LocaleRow{3079, "de-AT", "German (Austria)", 1252},
    LocaleRow{3081, "en-AU", "English (Australia)", 1252},
    LocaleRow{3082, "es-ES", "Spanish (Spain, International Sort)", 1252},
    LocaleRow{3084, "fr-CA", "French (Canada)", 1252},
    LocaleRow{4100, "zh-SG", "Chinese (Singapore)", 936},
    LocaleRow{4105, "en-CA", "English (Canada)", 1252},
    LocaleRow{4108, "fr-CH", "French (Switzerland)", 1252},
    LocaleRow{5129, "en-NZ", "English (New Zealand)", 1252},
    LocaleRow{6153, "en-IE", "English (Ireland)", 1252},
    LocaleRow{7177, "en-ZA", "English (South Africa)", 1252},
};

Locale toLocale(const LocaleRow& row) {
  return Locale{row.id, row.name, row.language, UnicodeHelpers::CodePageFromID(row.codePage), true};
}

int hexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

std::string UnicodeHelpers::PartBeforeColon(std::string_view text) {
  return std::string(text.substr(0, text.find(':')));
}

std::string UnicodeHelpers::PartAfterColon(std::string_view text) {
  const auto colon = text.find(':');
  return colon == std::string_view::npos ? std::string() : std::string(text.substr(colon + 1));
}

std::string UnicodeHelpers::NthField(std::string_view text, std::string_view delimiter, long index) {
  if (index < 1) return {};
  if (delimiter.empty()) return index == 1 ? std::string(text) : std::string();
  size_t start = 0;
  for (long field = 1; field < index; ++field) {
    const auto next = text.find(delimiter, start);
    if (next == std::string_view::npos) return {};
    start = next + delimiter.size();
  }
  const auto end = text.find(delimiter, start);
  return std::string(text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
}

void UnicodeHelpers::AppendInPlace(std::string& text, std::string_view addition) {
  const size_t needed = text.size() + addition.size();
  if (needed > text.capacity()) text.reserve(std::max(needed, text.capacity() * 2));
  text.append(addition);
}

std::string UnicodeHelpers::VariantToString(const Variant& value) {
  if (value.isEmpty() || value.isNull() || value.isNothing()) return {};
  return value.toString();
}

std::string UnicodeHelpers::URLDecode(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 && hexValue(text[i + 2]) >= 0) {
      bytes += char(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
      i += 2;
    } else {
      bytes += text[i];
    }
  }
  // Older browsers escaped the ANSI bytes of a name rather than its UTF-8 bytes.
  return codepage::isUtf8(bytes) ? bytes : codepage::toUtf8(bytes, codepage::Windows1252);
}

std::string UnicodeHelpers::URLEncode(std::string_view text, std::string_view alsoPlain) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    const auto b = static_cast<unsigned char>(c);
    const bool keep = (b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z') || (b >= '0' && b <= '9') || b == '-' ||
                      b == '.' || b == '_' || b == '~' || b == '/' || b == ':' ||
                      alsoPlain.find(c) != std::string_view::npos;
    if (keep) {
      out += c;
    } else {
      out += '%';
      out += kHex[b >> 4];
      out += kHex[b & 0x0F];
    }
  }
  return out;
}

Locale UnicodeHelpers::LocaleFromID(long lcid) {
  for (const auto& row : kLocales)
    if (row.id == lcid) return toLocale(row);
  return Locale{lcid, {}, {}, {}, false};
}

Locale UnicodeHelpers::LocaleFromName(std::string_view name) {
  for (const auto& row : kLocales)
    if (text::equalsIgnoreCase(row.name, name)) return toLocale(row);
  return Locale{};
}

CodePage UnicodeHelpers::CodePageFromID(long codePage) {
  for (const auto& row : kCodePages)
    if (row.id == codePage) return CodePage{row.id, row.charset, row.converter, true};
  return CodePage{codePage, {}, {}, false};
}

Locale UnicodeHelpers::SystemLocale() {
  for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(variable);
    if (!value || !*value) continue;
    std::string name(value);
    name = name.substr(0, name.find_first_of(".@"));
    std::replace(name.begin(), name.end(), '_', '-');
    if (Locale locale = LocaleFromName(name); locale.Valid) return locale;
  }
  return LocaleFromID(1033);
}

long UnicodeHelpers::CharSetID(long codePage) {
  static constexpr std::array<std::pair<long, long>, 14> kSets{{{1252, 0},
                                                                {932, 128},
                                                                {949, 129},
                                                                {936, 134},
                                                                {950, 136},
                                                                {1253, 161},
                                                                {1254, 162},
                                                                {1258, 163},
                                                                {1255, 177},
                                                                {1256, 178},
                                                                {1257, 186},
                                                                {1251, 204},
                                                                {874, 222},
                                                                {1250, 238}}};
  for (const auto& [page, set] : kSets)
    if (page == codePage) return set;
  return 1;
}

}  // namespace kv
