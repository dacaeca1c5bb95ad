// An example as a page shows it: its title over its code, coloured by its language.
#pragma once

#include <string>
#include <string_view>

#include "kavrel/model/Example.h"

namespace kv {

// The example's code: `Code` when it has any (comment text in the internal form when the
// example comes from a comment), else the text of `FileName`, read from `baseFolder` when the
// name is relative (the example's own `BaseFolder` when `baseFolder` is empty, the working folder
// when both are). The language is `Language`, or else told by the file name's extension;
// `Highlight` off leaves the code plain.
// With `wrapInDivAndTable` the code stands in a framed table with the title in its head row:
//   <div class="kvexample"><table class="kvexample"><tr><th>title</th></tr>
//   <tr><td><pre class="kvcode">...</pre></td></tr></table></div>
// (the title row only when there is a title: `Title`, else `Caption`, else the file's name).
// Without it the result is the "pre" block alone. A file that cannot be found gives
// "!EXAMPLE FILE NOT FOUND '" path "'!" in place of the code.
std::string ExampleHtml(const Example& e, std::string_view baseFolder, bool wrapInDivAndTable, long wrapLength);

}  // namespace kv
