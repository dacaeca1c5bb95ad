// Text for HTML: the characters that mean something in markup written as entities.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// "&", "<", ">" and '"' become "&amp;", "&lt;", "&gt;" and "&quot;"; everything else stays.
std::string EscapeText(std::string_view text);

}  // namespace kv
