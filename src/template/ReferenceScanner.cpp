#include "template/ReferenceScanner.h"

#include "kavrel/Text.h"
#include "template/TextExpansion.h"

namespace kv::expansion {

namespace {

constexpr std::string_view kDelimiter = "%%";

// Reads "key=value,key=\"quoted, value\"" into the element. An entry whose "=" lies only inside
// quotes keeps the key and value of the entry before it.
void readParameters(std::string_view params, ParserElement& element) {
  std::string key, value;
  for (const std::string& part : SplitEx(params, ",")) {
    if (part.find('=') == std::string::npos) continue;
    QuoteTracker<char> quotes(part, false);
    const std::size_t eq = findOutsideQuotes<char>(part, 0, "=", quotes);
    if (eq != std::string::npos) {
      key = part.substr(0, eq);
      value = part.substr(eq + 1);
      // Doubled quotes are an escape of quoted values only.
      if (!value.empty() && value.front() == '"') {
        value.erase(0, 1);
        if (!value.empty() && value.back() == '"') value.pop_back();
        value = text::replaceAll(value, "\"\"", "\"");
      }
    }
    element.AddParameter(value, key);
  }
}

}  // namespace

void scan(std::string_view text, ScanState& state, ReferenceSink& sink) {
  QuoteTracker<char> quotes(text, state.inQuotes);
  auto find = [&](std::size_t from) {
    return state.replaceInQuotes ? text.find(kDelimiter, from) : findOutsideQuotes(text, from, kDelimiter, quotes);
  };
  std::size_t searchFrom = 0;
  while (searchFrom < text.size()) {
    const std::size_t open = find(searchFrom);
    const std::size_t close = open == std::string_view::npos ? open : find(open + kDelimiter.size());
    if (close == std::string_view::npos) {
      sink.literal(text.substr(searchFrom));
      break;
    }
    if (open > searchFrom) sink.literal(text.substr(searchFrom, open - searchFrom));

    const std::string_view reference = text.substr(open + 2, close - open - 2);
    const std::size_t colon = reference.find(':');
    const std::string_view name = reference.substr(0, colon);
    const std::string_view params = colon == std::string_view::npos ? std::string_view() : reference.substr(colon + 1);
    if (params.empty()) {
      sink.property(name);
    } else {
      ParserElement element(ParserElement::DataTag);
      element.AddParameter(std::string(name), "type");
      readParameters(params, element);
      if (text::equalsIgnoreCase(name, "ReplaceInQuotes")) {
        if (const std::string* on = element.Parameters().Find("Value")) {
          state.replaceInQuotes = text::equalsIgnoreCase(*on, "True");
        }
      } else {
        sink.data(element, name);
      }
    }
    searchFrom = close + kDelimiter.size();
  }
  state.inQuotes = quotes.openBefore(text.size());
}

}  // namespace kv::expansion
