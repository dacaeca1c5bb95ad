// The links of an HTML page, read and rewritten with libxml2's HTML parser, which accepts the
// loose markup that pages and layouts hold.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kv {

// Offers the href of every <a> element of `html` (UTF-8) to `rewrite`; a value it returns
// replaces the link. Returns the page written out again when a link changed, nothing otherwise.
std::optional<std::string> RewriteAnchorLinks(
    std::string_view html, const std::function<std::optional<std::string>(const std::string& href)>& rewrite);

}  // namespace kv
