// Wildcard matching of text against a pattern:
//   *        any run of characters, none included
//   ?        one character
//   #        one digit 0-9
//   [list]   one character of the list; ranges such as [a-z]; "-" first or last stands for itself
//   [!list]  one character not in the list
// Inside brackets "*", "?", "#" and "[" stand for themselves, so "[[]" matches "[" and "[*]" a
// star; "]" outside brackets is an ordinary character, "[]" matches nothing (it is skipped).
// Characters are Unicode code points, not bytes. A bracket that is never closed or a descending
// range fails with "Invalid pattern string" (93).
#pragma once

#include <string_view>

namespace kv {

// Binary (case-sensitive) compare unless `ignoreCase`.
bool Like(std::string_view text, std::string_view pattern, bool ignoreCase = false);

}  // namespace kv
