#include "template/ParserTemplate.h"

#include <algorithm>
#include <cctype>

#include "kavrel/DataProvider.h"
#include "kavrel/Failure.h"
#include "kavrel/Text.h"
#include "template/ReferenceScanner.h"

namespace kv {

namespace {

constexpr std::string_view kTagOpen = "<kv:";
constexpr std::string_view kTagName = "data";

bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
bool isNameStart(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) || c == '_';
}
bool isNameChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-' || c == '.' || c == ':';
}

bool isTagAt(std::string_view layout, std::size_t pos) {
  return layout.size() - pos >= kTagOpen.size() &&
         text::equalsIgnoreCase(layout.substr(pos, kTagOpen.size()), kTagOpen);
}

// Start of the next "<kv:" at or after `from`, ignoring case, or npos.
std::size_t findTag(std::string_view layout, std::size_t from) {
  for (std::size_t lt = layout.find('<', from); lt != std::string_view::npos; lt = layout.find('<', lt + 1)) {
    if (isTagAt(layout, lt)) return lt;
  }
  return std::string_view::npos;
}

// A short one-line quote of a tag for an error message, cut at a character boundary.
std::string excerpt(std::string_view layout, std::size_t from, std::size_t to) {
  constexpr std::size_t kMax = 80;
  std::size_t end = std::min({to, layout.size(), from + kMax});
  while (end > from && end < layout.size() && (static_cast<unsigned char>(layout[end]) & 0xC0) == 0x80) --end;
  std::string quote(layout.substr(from, end - from));
  std::replace_if(quote.begin(), quote.end(), isBlank, ' ');
  if (end < to) quote += "...";
  return quote;
}

// Turns the "/%" that protects a value's percent signs from expansion back into "%".
void appendValue(std::string& out, std::string_view value) {
  for (std::size_t at = value.find("/%"); at != std::string_view::npos; at = value.find("/%")) {
    out.append(value.substr(0, at)).push_back('%');
    value.remove_prefix(at + 2);
  }
  out.append(value);
}

// The text that stands for a failed tag or reference (call inside a catch block).
std::string failureText(int step, std::string_view what) {
  return "!ERROR " + std::to_string(currentFailureNumber()) + "." + std::to_string(step) + std::string(what);
}

}  // namespace

struct ParserTemplate::CompileState {
  std::string_view layout;
  expansion::ScanState scan;
  std::size_t linePos = 0;
  long line = 1;

  // 1-based line of `pos`; positions only move forward.
  long lineAt(std::size_t pos) {
    line += static_cast<long>(std::count(layout.begin() + static_cast<std::ptrdiff_t>(linePos),
                                         layout.begin() + static_cast<std::ptrdiff_t>(pos), '\n'));
    linePos = pos;
    return line;
  }
};

void ParserTemplate::compileText(std::string_view text, CompileState& state) {
  if (text.empty()) return;
  // Literal runs of the layout are expanded like any text, the %%ReplaceInQuotes%% switch and
  // the state of double quotes carrying over from one run to the next.
  struct Sink : expansion::ReferenceSink {
    std::vector<Node>& nodes;
    explicit Sink(std::vector<Node>& n) : nodes(n) {}
    void literal(std::string_view t) override {
      if (nodes.empty() || nodes.back().kind != Node::Kind::Text) nodes.push_back({Node::Kind::Text, {}, {}});
      nodes.back().text.append(t);
    }
    void property(std::string_view name) override { nodes.push_back({Node::Kind::Property, std::string(name), {}}); }
    void data(ParserElement& element, std::string_view name) override {
      nodes.push_back({Node::Kind::Reference, std::string(name), std::move(element)});
    }
  } sink(mNodes);
  expansion::scan(text, state.scan, sink);
}

// Reads the tag at `start` into `element`. Returns the position after it, or npos when the tag
// is malformed; its text then stays in the layout as literal text.
std::size_t ParserTemplate::compileTag(std::string_view layout, std::size_t start, CompileState& state,
                                       ParserElement& element) {
  std::size_t resume = start + kTagOpen.size();
  auto fail = [&](std::size_t at, const std::string& message) {
    mLoadErrors.push_back("Line " + std::to_string(state.lineAt(start)) + ": " + message + ": " +
                          excerpt(layout, start, std::max(at, resume)));
    return std::string_view::npos;
  };
  std::size_t p = resume;
  while (p < layout.size() && isNameChar(layout[p])) ++p;
  const std::string_view tagName = layout.substr(resume, p - resume);
  if (!text::equalsIgnoreCase(tagName, kTagName)) {
    resume = p;
    return fail(p, "unknown tag \"<kv:" + std::string(tagName) + "\"; data tags are written <kv:data ... />");
  }

  element = ParserElement(ParserElement::DataTag);
  std::vector<std::string> warnings;
  for (;;) {
    std::size_t q = p;
    while (q < layout.size() && isBlank(layout[q])) ++q;
    if (q >= layout.size()) return fail(q, "the tag is not closed with \"/>\"");
    if (layout[q] == '>') {
      p = q + 1;
      break;
    }
    if (layout.substr(q, 2) == "/>") {
      p = q + 2;
      break;
    }
    resume = q;
    if (q == p || !isNameStart(layout[q])) {
      return fail(q + 1, "unexpected character '" + std::string(1, layout[q]) +
                             "'; parameters are written name=\"value\" and separated by blanks");
    }
    std::size_t r = q;
    while (r < layout.size() && isNameChar(layout[r])) ++r;
    std::string name(layout.substr(q, r - q));
    while (r < layout.size() && isBlank(layout[r])) ++r;
    resume = r;
    if (r >= layout.size() || layout[r] != '=') {
      return fail(r, "parameter '" + name + "' has no value; write " + name + "=\"...\"");
    }
    ++r;
    while (r < layout.size() && isBlank(layout[r])) ++r;
    resume = r;
    if (r >= layout.size() || layout[r] != '"') {
      return fail(r + 1, "the value of parameter '" + name + "' is not in double quotes");
    }
    resume = r + 1;
    std::string value;
    std::size_t v = r + 1;
    for (;;) {
      const std::size_t quote = layout.find('"', v);
      if (quote == std::string_view::npos) {
        return fail(resume, "the value of parameter '" + name + "' has no closing quote");
      }
      value.append(layout.substr(v, quote - v));
      if (quote + 1 < layout.size() && layout[quote + 1] == '"') {  // "" stands for one quote
        value.push_back('"');
        v = quote + 2;
        continue;
      }
      p = quote + 1;
      break;
    }
    if (element.HasParameter(name)) {
      warnings.push_back("parameter '" + name + "' is given more than once; the first value is used");
    } else {
      element.AddParameter(std::move(value), std::move(name));
    }
  }
  if (!element.HasParameter("type")) warnings.emplace_back("the tag has no type parameter");
  for (const std::string& warning : warnings) {
    mLoadErrors.push_back("Line " + std::to_string(state.lineAt(start)) + ": " + warning + ": " +
                          excerpt(layout, start, p));
  }
  return p;
}

void ParserTemplate::LoadText(std::string_view layout) {
  mNodes.clear();
  mLoadErrors.clear();
  CompileState state{layout, {}, 0, 1};

  constexpr std::size_t npos = std::string_view::npos;
  auto findMarker = [&](const std::string& open, std::size_t from) {
    return open.empty() || mMetaStartClose.empty() || mMetaEndClose.empty() ? npos : layout.find(open, from);
  };
  std::size_t runStart = 0, pos = 0;
  std::size_t nextTag = findTag(layout, 0);
  std::size_t nextStart = findMarker(mMetaStartOpen, 0), nextEnd = findMarker(mMetaEndOpen, 0);
  long openBlockLine = 0;  // the line of the start marker of the block we are in, or 0
  for (;;) {
    if (nextTag < pos) nextTag = findTag(layout, pos);
    if (nextStart < pos) nextStart = findMarker(mMetaStartOpen, pos);
    if (nextEnd < pos) nextEnd = findMarker(mMetaEndOpen, pos);
    const std::size_t next = std::min({nextTag, nextStart, nextEnd});
    if (next == npos) break;

    if (next == nextTag) {
      ParserElement element;
      const std::size_t end = compileTag(layout, next, state, element);
      if (end == npos) {
        // A malformed tag stays in the run as text; tags within its text are still found.
        pos = next + 1;
        continue;
      }
      compileText(layout.substr(runStart, next - runStart), state);
      mNodes.push_back({Node::Kind::Tag, {}, std::move(element)});
      pos = runStart = end;
      continue;
    }

    const bool isStart = next == nextStart;
    const std::string& open = isStart ? mMetaStartOpen : mMetaEndOpen;
    const std::string& close = isStart ? mMetaStartClose : mMetaEndClose;
    const std::size_t closeAt = layout.find(close, next + open.size());
    if (closeAt == npos) {
      mLoadErrors.push_back("Line " + std::to_string(state.lineAt(next)) +
                            ": the metadata marker is not closed with \"" + close +
                            "\": " + excerpt(layout, next, layout.size()));
      pos = next + 1;
      continue;
    }
    if (isStart && openBlockLine != 0) {
      mLoadErrors.push_back("Line " + std::to_string(state.lineAt(next)) +
                            ": a metadata block starts inside another one: " + excerpt(layout, next, closeAt));
    } else if (!isStart && openBlockLine == 0) {
      mLoadErrors.push_back("Line " + std::to_string(state.lineAt(next)) +
                            ": a metadata block ends that was not started: " + excerpt(layout, next, closeAt));
    }
    openBlockLine = isStart ? state.lineAt(next) : 0;
    compileText(layout.substr(runStart, next - runStart), state);
    const std::size_t end = closeAt + close.size();
    mNodes.push_back({Node::Kind::Marker, std::string(layout.substr(next, end - next)), {}});
    pos = runStart = end;
  }
  compileText(layout.substr(runStart), state);
  if (openBlockLine != 0) {
    mLoadErrors.push_back("Line " + std::to_string(openBlockLine) + ": the metadata block is not ended");
  }
}

void ParserTemplate::RefreshFrom(std::string_view page) {
  constexpr std::size_t npos = std::string_view::npos;
  auto isStartMarker = [&](const Node& n) {
    return n.kind == Node::Kind::Marker && std::string_view(n.text).starts_with(mMetaStartOpen);
  };
  // The layout's blocks, markers included.
  std::vector<std::vector<Node>> blocks;
  for (std::size_t i = 0; i < mNodes.size(); ++i) {
    if (!isStartMarker(mNodes[i])) continue;
    std::vector<Node> block{mNodes[i]};
    while (++i < mNodes.size()) {
      block.push_back(mNodes[i]);
      if (mNodes[i].kind == Node::Kind::Marker) break;
    }
    blocks.push_back(std::move(block));
  }

  std::vector<Node> nodes;
  auto literal = [&](std::string_view text) {
    if (!text.empty()) nodes.push_back({Node::Kind::Text, std::string(text), {}});
  };
  std::size_t pos = 0;
  for (std::size_t block = 0; block < blocks.size(); ++block) {
    const bool markers = !mMetaStartOpen.empty() && !mMetaStartClose.empty() && !mMetaEndOpen.empty();
    const std::size_t start = markers ? page.find(mMetaStartOpen, pos) : npos;
    const std::size_t endOpen = start == npos ? npos : page.find(mMetaEndOpen, start);
    const std::size_t endClose = endOpen == npos ? npos : page.find(mMetaEndClose, endOpen + mMetaEndOpen.size());
    if (endClose == npos) break;
    literal(page.substr(pos, start - pos));
    nodes.insert(nodes.end(), blocks[block].begin(), blocks[block].end());
    pos = endClose + mMetaEndClose.size();
  }
  literal(page.substr(pos));
  mNodes = std::move(nodes);
}

std::string ParserTemplate::LoadErrors() const {
  return text::join(mLoadErrors, "\n");
}

std::string ParserTemplate::ParseToString() {
  std::shared_ptr<FileSystem> none;
  std::string out;
  render(none, out, nullptr);
  return out;
}

void ParserTemplate::render(std::shared_ptr<FileSystem>& file, std::string& out, Flush flush) {
  kv::DataProvider* provider = mDataProvider.get();
  for (const Node& node : mNodes) {
    switch (node.kind) {
      case Node::Kind::Text: out.append(node.text); break;
      case Node::Kind::Marker:
        if (!mStripMetaData) out.append(node.text);
        break;
      case Node::Kind::Property: {
        std::string value;
        try {
          if (!provider) throw ObjectNotSet();
          value = provider->GetProperty(node.text);
        } catch (...) {
          value = failureText(5, " FETCHING PROPERTY!");
        }
        if (expansion::isUnrecognised(value)) {
          out.append("%%").append(node.text).append("%%");
        } else {
          appendValue(out, value);
        }
        break;
      }
      case Node::Kind::Reference:
      case Node::Kind::Tag: {
        // The provider may write to the file: what we hold goes first.
        if (flush) flush(file, out);
        ParserElement element = node.element;
        std::string value;
        try {
          if (!provider) throw ObjectNotSet();
          value = provider->ProvideData(element, file);
        } catch (...) {
          value = failureText(node.kind == Node::Kind::Tag ? 2 : 7, " FETCHING ELEMENT!");
        }
        if (node.kind == Node::Kind::Reference && expansion::isUnrecognised(value)) {
          out.append("%%").append(node.text).append("%%");
        } else if (value != Discard) {
          appendValue(out, value);
        }
        break;
      }
    }
  }
  if (flush) flush(file, out);
}

}  // namespace kv
