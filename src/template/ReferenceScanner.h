// The scanner behind provider expansion: finds %%name%% and %%name:key=value%% references in a
// text and reports literal stretches and references, in order, to a sink. Expansion at run time
// and the template parser's compilation at load time share it, so both read a text alike.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kavrel/ParserElement.h"

namespace kv::expansion {

// What carries over from one stretch of text to the next: the %%ReplaceInQuotes%% switch and
// whether the text so far leaves an open double quote.
struct ScanState {
  bool replaceInQuotes = true;
  bool inQuotes = false;
};

class ReferenceSink {
 public:
  virtual ~ReferenceSink() = default;
  virtual void literal(std::string_view text) = 0;
  // %%name%%, or %%name:%% with nothing after the colon.
  virtual void property(std::string_view name) = 0;
  // %%name:params%%: an element of kind 2 with "type" = name and the parameters.
  virtual void data(ParserElement& element, std::string_view name) = 0;
};

// Scans `text` once from left to right. Values are not scanned again.
void scan(std::string_view text, ScanState& state, ReferenceSink& sink);

// Whether a provider's value says that it does not know a reference, which then stays in the
// text as written.
inline bool isUnrecognised(std::string_view value) {
  return value.starts_with("!UNCRECOGNISED");
}

// Counts double quotes from the start of a text as a search moves forward, so that a search that
// skips quoted text stays linear however many times it restarts.
template <class CharT>
class QuoteTracker {
 public:
  QuoteTracker(std::basic_string_view<CharT> text, bool inQuotes) : mText(text), mOdd(inQuotes) {}
  // Whether the quotes before `pos` leave a string open. `pos` never moves backwards.
  bool openBefore(std::size_t pos) {
    for (; mPos < pos && mPos < mText.size(); ++mPos) {
      if (mText[mPos] == CharT('"')) mOdd = !mOdd;
    }
    return mOdd;
  }

 private:
  std::basic_string_view<CharT> mText;
  std::size_t mPos = 0;
  bool mOdd;
};

// Offset of `seeking` from `from` outside double quotes, or npos. A match inside a string that
// is never closed is no match. A quote at the match position counts as before the match.
template <class CharT>
std::size_t findOutsideQuotes(std::basic_string_view<CharT> text, std::size_t from,
                              std::basic_string_view<CharT> seeking, QuoteTracker<CharT>& quotes) {
  for (;;) {
    const std::size_t match = text.find(seeking, from);
    if (match == std::basic_string_view<CharT>::npos) return match;
    const bool quoteAtMatch = !seeking.empty() && seeking.front() == CharT('"');
    if (!quotes.openBefore(match + (quoteAtMatch ? 1 : 0))) return match;
    const std::size_t closing = text.find(CharT('"'), match + 1);
    if (closing == std::basic_string_view<CharT>::npos) return closing;
    from = closing + 1;
  }
}

}  // namespace kv::expansion
