#include "ParseCache.h"

#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "CacheFolder.h"
#include "ParserModule.h"

namespace kv::cpp {
namespace fs = std::filesystem;

namespace {

// Raised when a cache file ends early or holds what this version did not write.
struct Unreadable {};

constexpr std::string_view kMagic = "kavrel-declarations 1\n";

// A file as the cache remembers it: a change of size or modification time is a change.
struct Stamp {
  std::uint64_t Size = 0;
  std::int64_t Nanoseconds = 0;
  bool operator==(const Stamp&) const = default;
};

std::optional<Stamp> stampOf(const std::string& path) {
  struct stat st {};
  if (::stat(path.c_str(), &st) != 0) return std::nullopt;
  return Stamp{std::uint64_t(st.st_size), std::int64_t(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec};
}

class Writer {
 public:
  void Number(std::uint64_t n) {
    do {
      mOut += char((n & 0x7F) | (n > 0x7F ? 0x80 : 0));
      n >>= 7;
    } while (n);
  }
  void Text(const std::string& s) {
    Number(s.size());
    mOut += s;
  }
  void Texts(const std::vector<std::string>& list) {
    Number(list.size());
    for (const auto& s : list) Text(s);
  }
  void Parameters(const std::vector<CppParameter>& list) {
    Number(list.size());
    for (const auto& p : list) {
      Text(p.Name);
      Text(p.Type);
      Text(p.Default);
    }
  }
  void Named(const std::vector<DocComment::Named>& list) {
    Number(list.size());
    for (const auto& [name, text] : list) {
      Text(name);
      Text(text);
    }
  }
  void Declaration(const cpp::Declaration& d) {
    Number(unsigned(d.Kind));
    for (const std::string* s :
         {&d.Name, &d.QualifiedName, &d.Usr, &d.Signature, &d.Code.Text, &d.Code.Colours, &d.Type, &d.File})
      Text(*s);
    Number(d.Line);
    Number(unsigned(d.AccessLevel));
    Number(d.Flags);
    Parameters(d.Parameters);
    Parameters(d.TemplateParameters);
    Number(d.Bases.size());
    for (const auto& b : d.Bases) {
      Text(b.Type);
      Number(unsigned(b.AccessLevel));
      Number(b.Virtual);
    }
    const DocComment& c = d.Comment;
    for (const std::string* s : {&c.Brief, &c.Details, &c.Returns, &c.Deprecated}) Text(*s);
    Texts(c.Notes);
    Texts(c.See);
    Named(c.Params);
    Named(c.TParams);
    Number(d.Children.size());
    for (const auto& child : d.Children) Declaration(*child);
  }
  const std::string& Bytes() const { return mOut; }

 private:
  std::string mOut;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : mIn(bytes) {}
  std::uint64_t Number() {
    std::uint64_t n = 0;
    for (int shift = 0; shift < 64; shift += 7) {
      if (mIn.empty()) throw Unreadable();
      const auto byte = static_cast<unsigned char>(mIn.front());
      mIn.remove_prefix(1);
      n |= std::uint64_t(byte & 0x7F) << shift;
      if (!(byte & 0x80)) return n;
    }
    throw Unreadable();
  }
  std::string Text() {
    const std::uint64_t size = Number();
    if (size > mIn.size()) throw Unreadable();
    std::string s(mIn.substr(0, size));
    mIn.remove_prefix(size);
    return s;
  }
  std::vector<std::string> Texts() {
    std::vector<std::string> list(Count());
    for (auto& s : list) s = Text();
    return list;
  }
  std::vector<CppParameter> Parameters() {
    std::vector<CppParameter> list(Count());
    for (auto& p : list) {
      p.Name = Text();
      p.Type = Text();
      p.Default = Text();
    }
    return list;
  }
  std::vector<DocComment::Named> Named() {
    std::vector<DocComment::Named> list(Count());
    for (auto& [name, text] : list) {
      name = Text();
      text = Text();
    }
    return list;
  }
  std::unique_ptr<cpp::Declaration> Declaration() {
    auto d = std::make_unique<cpp::Declaration>();
    d->Kind = DeclKind(Small(unsigned(DeclKind::Macro)));
    for (std::string* s :
         {&d->Name, &d->QualifiedName, &d->Usr, &d->Signature, &d->Code.Text, &d->Code.Colours, &d->Type, &d->File})
      *s = Text();
    d->Line = unsigned(Number());
    d->AccessLevel = Access(Small(unsigned(Access::Private)));
    d->Flags = unsigned(Number());
    d->Parameters = Parameters();
    d->TemplateParameters = Parameters();
    d->Bases.resize(Count());
    for (auto& b : d->Bases) {
      b.Type = Text();
      b.AccessLevel = Access(Small(unsigned(Access::Private)));
      b.Virtual = Small(1) != 0;
    }
    DocComment& c = d->Comment;
    for (std::string* s : {&c.Brief, &c.Details, &c.Returns, &c.Deprecated}) *s = Text();
    c.Notes = Texts();
    c.See = Texts();
    c.Params = Named();
    c.TParams = Named();
    const std::size_t children = Count();
    for (std::size_t i = 0; i < children; ++i) d->Children.push_back(Declaration());
    return d;
  }
  bool AtEnd() const { return mIn.empty(); }

 private:
  // A count of entries that follow: each takes at least a byte.
  std::size_t Count() {
    const std::uint64_t n = Number();
    if (n > mIn.size()) throw Unreadable();
    return std::size_t(n);
  }
  unsigned Small(unsigned most) {
    const std::uint64_t n = Number();
    if (n > most) throw Unreadable();
    return unsigned(n);
  }
  std::string_view mIn;
};

}  // namespace

ParseCache::ParseCache(const std::vector<std::string>& arguments, bool plainComments,
                       const std::vector<std::string>& files) {
  const std::string folder = CacheFolder();
  if (folder.empty()) return;
  std::string key(kMagic);
  for (const auto& a : arguments) key += a + '\n';
  key += plainComments ? "plain\n" : "marked\n";
  for (const auto& f : files) key += f + '\n';
  // The builds of the parser and the plug-in: another build may read the same files into other
  // declarations.
  for (const std::string& module : {ParserModuleFile(), PlugInFile()})
    if (const auto stamp = stampOf(module))
      key += module + std::to_string(stamp->Size) + ":" + std::to_string(stamp->Nanoseconds) + '\n';
  mFile = folder + "/declarations-" + std::to_string(std::hash<std::string>()(key)) + ".bin";
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  mStarted = std::chrono::duration_cast<std::chrono::nanoseconds>(now).count();
}

std::optional<ParseResult> ParseCache::Load() const {
  if (mFile.empty()) return std::nullopt;
  std::ifstream in(mFile, std::ios::binary);
  if (!in) return std::nullopt;
  const std::string bytes{std::istreambuf_iterator<char>(in), {}};
  if (bytes.compare(0, kMagic.size(), kMagic) != 0) return std::nullopt;
  try {
    Reader r(std::string_view(bytes).substr(kMagic.size()));
    const std::vector<std::string> read = r.Texts();
    for (const auto& path : read) {
      const Stamp was{r.Number(), std::int64_t(r.Number())};
      if (stampOf(path) != was) return std::nullopt;
    }
    ParseResult result;
    result.Files = r.Texts();
    result.Diagnostics.resize(r.Number());
    for (auto& d : result.Diagnostics) {
      d.File = r.Text();
      d.Line = unsigned(r.Number());
      d.Text = r.Text();
    }
    result.Global = r.Declaration();
    if (!r.AtEnd()) return std::nullopt;
    return result;
  } catch (const Unreadable&) {
    return std::nullopt;  // written by another version, or cut short: parsed again
  }
}

bool ParseCache::Kept() const {
  std::error_code ec;
  return !mFile.empty() && fs::exists(mFile, ec);
}

void ParseCache::Save(const ParseResult& result, const std::set<std::string>& read) const {
  if (mFile.empty() || !result.Global) return;
  Writer w;
  w.Texts({read.begin(), read.end()});
  for (const auto& path : read) {
    const std::optional<Stamp> stamp = stampOf(path);
    // A file that is gone already, or changed while it was parsed: nothing worth keeping. File
    // times come from a coarser clock than the start's, hence the margin.
    if (!stamp || stamp->Nanoseconds >= mStarted - 50'000'000) return;
    w.Number(stamp->Size);
    w.Number(std::uint64_t(stamp->Nanoseconds));
  }
  w.Texts(result.Files);
  w.Number(result.Diagnostics.size());
  for (const auto& d : result.Diagnostics) {
    w.Text(d.File);
    w.Number(d.Line);
    w.Text(d.Text);
  }
  w.Declaration(*result.Global);

  std::error_code ec;
  fs::create_directories(fs::path(mFile).parent_path(), ec);
  // Written aside and renamed, so that another build never reads half a file.
  const std::string partial = mFile + "." + std::to_string(getpid());
  {
    std::ofstream out(partial, std::ios::binary | std::ios::trunc);
    out << kMagic << w.Bytes();
    if (!out.flush()) {
      fs::remove(partial, ec);
      return;
    }
  }
  fs::rename(partial, mFile, ec);
  if (ec) fs::remove(partial, ec);
  PruneCacheFolder(fs::path(mFile).parent_path().string());
}

}  // namespace kv::cpp
