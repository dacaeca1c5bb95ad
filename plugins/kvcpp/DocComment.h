// A documentation comment of a declaration, split into its sections. Each text is in the internal
// comment form: an HTML fragment, paragraphs in "<p>", code in "<pre>" with "<crlf>" between its
// lines, everything else escaped.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kv::cpp {

struct DocComment {
  using Named = std::pair<std::string, std::string>;  // a name and its text

  std::string Brief;    // @brief, or the first paragraph
  std::string Details;  // every other paragraph and code block
  std::string Returns;  // @return, @returns, @retval
  std::string Deprecated;
  std::vector<std::string> Notes;  // @note, @warning, @attention
  std::vector<std::string> See;    // @see, @sa
  std::vector<Named> Params;       // @param[in,out] name text
  std::vector<Named> TParams;      // @tparam name text

  bool empty() const {
    return Brief.empty() && Details.empty() && Returns.empty() && Deprecated.empty() && Notes.empty() && See.empty() &&
           Params.empty() && TParams.empty();
  }
};

// Reads a comment as the source holds it, markers included ("///", "//!", "//", "/** */",
// "/*! */", "///<"), with commands written "@cmd" or "\cmd". Unknown commands stay as text.
DocComment ParseDocComment(std::string_view raw);

// Removes the comment markers: the text lines of the comment, without the leading "*" column.
std::vector<std::string> CommentLines(std::string_view raw);

}  // namespace kv::cpp

namespace kv::cpp {

// The documentation comment that ends right above line `line` (1-based) of `source`, markers
// included, or a "///<" comment on that line; empty when there is none. Plain "//" comments count
// only when `plain` is set.
std::string FindCommentAbove(std::string_view source, unsigned line, bool plain);

}  // namespace kv::cpp
