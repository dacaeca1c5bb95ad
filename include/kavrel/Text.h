// Text helpers that count characters the way the object model does: in UTF-16 code units.
// Strings are UTF-8 everywhere; positions are 1-based like the rest of the object model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kavrel/Export.h"

namespace kv::text {

// Malformed UTF-8 reads as U+FFFD, one per byte that does not fit.
KV_API std::u16string toUtf16(std::string_view utf8);
KV_API std::string fromUtf16(std::u16string_view utf16);
// Code points, for matching character by character.
KV_API std::u32string toUtf32(std::string_view utf8);
// Appends one code point as UTF-8; a surrogate, zero or a value beyond U+10FFFF appends U+FFFD.
KV_API void appendUtf8(std::string& out, char32_t codePoint);

// Length in UTF-16 code units.
KV_API long length(std::string_view s);

// Cuts counted in UTF-16 code units. Out-of-range counts are clamped.
KV_API std::string left(std::string_view s, long count);
KV_API std::string right(std::string_view s, long count);
// `start` is 1-based; a negative `count` means "to the end".
KV_API std::string mid(std::string_view s, long start, long count = -1);

// 1-based position of `find` in `s` from `start`, or 0. Empty `find` gives `start`
// when start <= length + 1.
KV_API long find(std::string_view s, std::string_view what, long start = 1, bool ignoreCase = false);
// 1-based position of the last `what` in `s`, or 0.
KV_API long findLast(std::string_view s, std::string_view what, bool ignoreCase = false);

KV_API std::string toLower(std::string_view s);
KV_API std::string toUpper(std::string_view s);
KV_API bool equalsIgnoreCase(std::string_view a, std::string_view b);
KV_API bool containsIgnoreCase(std::string_view s, std::string_view what);
KV_API bool startsWithIgnoreCase(std::string_view s, std::string_view prefix);
KV_API bool endsWithIgnoreCase(std::string_view s, std::string_view suffix);

KV_API std::string replaceAll(std::string_view s, std::string_view what, std::string_view with);
// The same with the ASCII letters of `what` matching either case.
KV_API std::string replaceAllIgnoringCase(std::string_view s, std::string_view what, std::string_view with);

// Blank (U+0020) trimming, as the object model trims.
KV_API std::string trim(std::string_view s);
KV_API std::string trimLeft(std::string_view s);
KV_API std::string trimRight(std::string_view s);

// Split at every `delimiter`; an empty text gives no parts.
KV_API std::vector<std::string> split(std::string_view s, std::string_view delimiter);
KV_API std::string join(const std::vector<std::string>& parts, std::string_view delimiter);

// Case-insensitive ordering for maps keyed by names.
struct KV_API LessIgnoreCase {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace kv::text
