#include "template/TextExpansion.h"

#include <cctype>
#include <cstring>

#include "kavrel/DataProvider.h"
#include "kavrel/Failure.h"
#include "kavrel/ParserElement.h"
#include "kavrel/Text.h"
#include "template/ReferenceScanner.h"

namespace kv {

namespace {

// Step numbers of the expansion, shown in its failure text.
enum Step { ScanStep = 1, PropertyStep = 5, DataStep = 7, AppendStep = 9 };

class ExpansionSink : public expansion::ReferenceSink {
 public:
  ExpansionSink(DataProvider& provider, std::shared_ptr<FileSystem>& file, bool alwaysUseProvideData)
      : mProvider(provider), mFile(file), mAlwaysUseProvideData(alwaysUseProvideData) {}

  void literal(std::string_view text) override { AppendString(mBuffer, text, mPointer); }
  void property(std::string_view name) override {
    step = PropertyStep;
    if (mAlwaysUseProvideData) {
      ParserElement element(ParserElement::DataTag);
      element.AddParameter(std::string(name), "Type");
      value(mProvider.ProvideData(element, mFile), name);
    } else {
      value(mProvider.GetProperty(name), name);
    }
  }
  void data(ParserElement& element, std::string_view name) override {
    step = DataStep;
    value(mProvider.ProvideData(element, mFile), name);
  }

  std::string result() && {
    mBuffer.resize(static_cast<std::size_t>(mPointer));
    return std::move(mBuffer);
  }

  int step = ScanStep;

 private:
  void value(const std::string& text, std::string_view name) {
    step = AppendStep;
    if (expansion::isUnrecognised(text)) {
      AppendString(mBuffer, "%%", mPointer);
      AppendString(mBuffer, name, mPointer);
      AppendString(mBuffer, "%%", mPointer);
    } else {
      AppendString(mBuffer, text, mPointer);
    }
    step = ScanStep;
  }

  DataProvider& mProvider;
  std::shared_ptr<FileSystem>& mFile;
  bool mAlwaysUseProvideData;
  std::string mBuffer;
  long mPointer = 0;
};

// One pass replacing delimited keys through `lookup`; unknown keys stay as written.
template <class Lookup>
std::string substitute(std::string_view text, std::string_view delimiter, Lookup&& lookup) {
  if (delimiter.empty()) return std::string(text);
  std::string out;
  out.reserve(text.size());
  std::size_t pos = 0;
  for (;;) {
    const std::size_t open = text.find(delimiter, pos);
    const std::size_t close = open == std::string_view::npos ? open : text.find(delimiter, open + delimiter.size());
    if (close == std::string_view::npos) break;
    const std::string_view key = text.substr(open + delimiter.size(), close - open - delimiter.size());
    out.append(text.substr(pos, open - pos));
    if (std::optional<std::string> value = lookup(key)) {
      out.append(*value);
    } else {
      out.append(delimiter).append(key).append(delimiter);
    }
    pos = close + delimiter.size();
  }
  out.append(text.substr(pos));
  return out;
}

// `what` is ASCII, so bytes of other characters never match it.
bool asciiEqualsIgnoreCase(std::string_view a, std::string_view what) {
  for (std::size_t i = 0; i < what.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) != std::tolower(static_cast<unsigned char>(what[i])))
      return false;
  }
  return true;
}

std::string replaceIgnoringAsciiCase(std::string_view s, std::string_view what, std::string_view with) {
  std::string out;
  std::size_t pos = 0;
  while (pos < s.size()) {
    if (s.size() - pos >= what.size() && asciiEqualsIgnoreCase(s.substr(pos, what.size()), what)) {
      out.append(with);
      pos += what.size();
    } else {
      out.push_back(s[pos++]);
    }
  }
  return out;
}

}  // namespace

long InStrEx(long Start, std::string_view Source, std::string_view Seeking, int CompareMode,
             bool /*IgnoreCommentCharacter*/) {
  if (Start < 1) throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument");
  const bool fold = CompareMode == compare::TextCompare;
  const std::u16string source = text::toUtf16(fold ? text::toLower(Source) : std::string(Source));
  const std::u16string seeking = text::toUtf16(fold ? text::toLower(Seeking) : std::string(Seeking));
  if (static_cast<std::size_t>(Start) > source.size() + 1) return 0;
  expansion::QuoteTracker<char16_t> quotes(source, false);
  const std::size_t match =
      expansion::findOutsideQuotes<char16_t>(source, static_cast<std::size_t>(Start - 1), seeking, quotes);
  return match == std::u16string::npos ? 0 : static_cast<long>(match + 1);
}

std::vector<std::string> SplitEx(std::string_view Source, std::string_view Delimeter) {
  std::vector<std::string> parts;
  if (Delimeter.empty()) return {std::string(Source)};
  expansion::QuoteTracker<char> quotes(Source, false);
  std::size_t pos = 0;
  bool found = false;
  for (;;) {
    const std::size_t at = expansion::findOutsideQuotes(Source, pos, Delimeter, quotes);
    if (at == std::string_view::npos) break;
    found = true;
    parts.emplace_back(Source.substr(pos, at - pos));
    pos = at + Delimeter.size();
  }
  // The rest counts only from two characters up, which drops a last part of one character.
  const std::string_view rest = pos < Source.size() ? Source.substr(pos) : std::string_view();
  if (!found || text::length(rest) >= 2) parts.emplace_back(rest);
  return parts;
}

StringCollection GetParameters(std::string_view Source) {
  StringCollection parameters;
  if (Source.empty()) return parameters;
  for (const std::string& part : SplitEx(Source, ",")) {
    const std::size_t eq = part.find('=');
    if (eq == std::string::npos) continue;
    std::string name = text::trim(std::string_view(part).substr(0, eq));
    std::string value = text::trim(std::string_view(part).substr(eq + 1));
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"') value = value.substr(1, value.size() - 2);
    if (!parameters.Exists(name)) parameters.Add(std::move(value), std::move(name));
  }
  return parameters;
}

std::string InternalParseForProviderProperties(std::string_view Text, DataProvider& DDP,
                                               std::shared_ptr<FileSystem>& FileSystemObject, bool AlwaysUseProvideData,
                                               bool ReplaceInQuotes) {
  if (Text.find("%%") == std::string_view::npos) return std::string(Text);
  ExpansionSink sink(DDP, FileSystemObject, AlwaysUseProvideData);
  try {
    expansion::ScanState state{ReplaceInQuotes, false};
    expansion::scan(Text, state, sink);
  } catch (...) {
    return "!ERROR " + std::to_string(currentFailureNumber()) + "." + std::to_string(sink.step) +
           " IN PARSEFORPROVIDERPROPERTIES!";
  }
  return std::move(sink).result();
}

std::string InternalParseForProviderProperties(std::string_view Text, DataProvider& DDP, bool AlwaysUseProvideData,
                                               bool ReplaceInQuotes) {
  std::shared_ptr<FileSystem> none;
  return InternalParseForProviderProperties(Text, DDP, none, AlwaysUseProvideData, ReplaceInQuotes);
}

std::string ParseForProviderProperties(std::string_view Text, DataProvider& DDP,
                                       std::shared_ptr<FileSystem>& FileSystemObject) {
  return InternalParseForProviderProperties(Text, DDP, FileSystemObject, false, true);
}

std::string ParseForProviderProperties(std::string_view Text, DataProvider& DDP) {
  return InternalParseForProviderProperties(Text, DDP, false, true);
}

std::string ParseForProviderPropertiesEx(std::string_view Text, DataProvider& DDP,
                                         std::shared_ptr<FileSystem>& FileSystemObject) {
  return InternalParseForProviderProperties(Text, DDP, FileSystemObject, true, true);
}

std::string ParseForProviderPropertiesEx(std::string_view Text, DataProvider& DDP) {
  return InternalParseForProviderProperties(Text, DDP, true, true);
}

std::string ParseForProviderProperties2(const std::string& Text, DataProvider& DDP,
                                        std::shared_ptr<FileSystem>& FileSystemObject) {
  return InternalParseForProviderProperties(Text, DDP, FileSystemObject, false, true);
}

void AppendString(std::string& OutputBuffer, std::string_view NewText, long& OutputPointer) {
  if (NewText.empty()) return;
  const std::size_t used = static_cast<std::size_t>(OutputPointer);
  if (used + NewText.size() > OutputBuffer.size()) {
    if (used == 0) {
      OutputBuffer.assign(NewText);
      OutputBuffer.append(256, ' ');
      OutputPointer = static_cast<long>(NewText.size());
      return;
    }
    OutputBuffer.resize(OutputBuffer.size() + NewText.size() + 1024, ' ');
  }
  std::memcpy(OutputBuffer.data() + used, NewText.data(), NewText.size());
  OutputPointer += static_cast<long>(NewText.size());
}

std::string ParseForPhrases(std::string_view Text, const PhraseLookup& Phrases, std::string_view Delimeter) {
  return substitute(Text, Delimeter,
                    [&](std::string_view key) { return Phrases ? Phrases(key) : std::optional<std::string>(); });
}

std::string ParseForPhrasesEx(std::string_view Text, const PhraseLookup& Phrases, std::string_view Delimeter) {
  std::string s(Text);
  for (int pass = 0; pass < 3 && !Delimeter.empty() && s.find(Delimeter) != std::string::npos; ++pass) {
    s = ParseForPhrases(s, Phrases, Delimeter);
  }
  return s;
}

std::string ParseForParameters(std::string_view Text, const StringCollection& Parameters, std::string_view Delimeter) {
  return substitute(Text, Delimeter, [&](std::string_view key) {
    const std::string* value = Parameters.Find(key);
    return value ? std::optional<std::string>(*value) : std::nullopt;
  });
}

std::string StripQuotes(std::string_view Source) {
  if (Source.starts_with('"')) Source.remove_prefix(1);
  if (Source.ends_with('"')) Source.remove_suffix(1);
  return std::string(Source);
}

std::string StripTags(std::string_view Source) {
  std::string s = text::replaceAll(Source, "\r\n", " ");
  std::string out;
  std::string_view rest = s;
  for (;;) {
    const std::size_t lt = rest.find('<');
    const std::size_t gt = rest.find('>');
    if (lt == std::string_view::npos || gt == std::string_view::npos) break;
    // A ">" before the "<" keeps what lies between them and scans it again.
    out.append(rest.substr(0, lt));
    rest.remove_prefix(gt + 1);
  }
  out.append(rest);
  return replaceIgnoringAsciiCase(replaceIgnoringAsciiCase(out, "&nbsp;", " "), "&quot;", "\"");
}

std::string CollectionToString(const StringCollection& col, std::string_view Delimeter) {
  std::string out;
  bool first = true;
  for (const auto& value : col) {
    if (!first) out.append(Delimeter);
    out.append(value);
    first = false;
  }
  return out;
}

std::string ProtectPercent(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (const char c : text) {
    if (c == '%') out += '/';
    out += c;
  }
  return out;
}

}  // namespace kv
