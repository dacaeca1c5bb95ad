// Text helpers that count characters the way the object model does: in UTF-16 code units.
// Strings are UTF-8 everywhere; positions are 1-based like the rest of the object model.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv::text {

// Malformed UTF-8 reads as U+FFFD, one per byte that does not fit.
std::u16string toUtf16(std::string_view utf8);
std::string fromUtf16(std::u16string_view utf16);
// Code points, for matching character by character.
std::u32string toUtf32(std::string_view utf8);

// Length in UTF-16 code units.
long length(std::string_view s);

// Cuts counted in UTF-16 code units. Out-of-range counts are clamped.
std::string left(std::string_view s, long count);
std::string right(std::string_view s, long count);
// `start` is 1-based; a negative `count` means "to the end".
std::string mid(std::string_view s, long start, long count = -1);

// 1-based position of `find` in `s` from `start`, or 0. Empty `find` gives `start`
// when start <= length + 1.
long find(std::string_view s, std::string_view what, long start = 1, bool ignoreCase = false);
// 1-based position of the last `what` in `s`, or 0.
long findLast(std::string_view s, std::string_view what, bool ignoreCase = false);

std::string toLower(std::string_view s);
std::string toUpper(std::string_view s);
bool equalsIgnoreCase(std::string_view a, std::string_view b);
bool containsIgnoreCase(std::string_view s, std::string_view what);
bool startsWithIgnoreCase(std::string_view s, std::string_view prefix);
bool endsWithIgnoreCase(std::string_view s, std::string_view suffix);

std::string replaceAll(std::string_view s, std::string_view what, std::string_view with);

// Blank (U+0020) trimming, as the object model trims.
std::string trim(std::string_view s);
std::string trimLeft(std::string_view s);
std::string trimRight(std::string_view s);

// Split at every `delimiter`; an empty text gives no parts.
std::vector<std::string> split(std::string_view s, std::string_view delimiter);
std::string join(const std::vector<std::string>& parts, std::string_view delimiter);

// Case-insensitive ordering for maps keyed by names.
struct LessIgnoreCase {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace kv::text
