// The parser on real headers, one folder per theme in tests/data/kvcpp.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <tuple>

#include "CppParser.h"
#include "StandardLibrary.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv::cpp {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

const std::string kData = KV_TEST_DATA_DIR "/kvcpp/";

ParseResult parse(std::vector<std::string> sources, bool plain = false, std::string standard = "c++20") {
  CppInput input;
  input.Sources = std::move(sources);
  input.PlainComments = plain;
  input.Standard = std::move(standard);
  return Parse(input);
}

// The declaration at a "::" path below `scope`; the first of that name.
const Declaration* at(const Declaration& scope, const std::string& path) {
  const size_t sep = path.find("::");
  const std::string head = path.substr(0, sep);
  for (const auto& child : scope.Children)
    if (child->Name == head) return sep == std::string::npos ? child.get() : at(*child, path.substr(sep + 2));
  return nullptr;
}

std::vector<const Declaration*> all(const Declaration& scope, const std::string& name) {
  std::vector<const Declaration*> found;
  for (const auto& child : scope.Children)
    if (child->Name == name) found.push_back(child.get());
  return found;
}

void write(const std::string& file, const std::string& text) {
  std::ofstream(file) << text;
}

TEST(CppParser, AttachesCommentsOfEveryForm) {
  const ParseResult r = parse({kData + "comments"});
  const Declaration& g = *r.Global;
  for (const auto& [name, brief] :
       std::vector<std::pair<std::string, std::string>>{{"slashes", "Triple-slash summary."},
                                                        {"exclamation", "Exclamation summary."},
                                                        {"stars", "Javadoc summary."},
                                                        {"qtStyle", "Qt-style summary."},
                                                        {"Holder", "A documented field holder."},
                                                        {"Holder::count", "How many there are."},
                                                        {"Holder::name", "The name."},
                                                        {"KV_MAX", "The largest of two values."}}) {
    const Declaration* d = at(g, name);
    ASSERT_TRUE(d) << name;
    EXPECT_EQ(d->Comment.Brief, brief) << name;
  }
  EXPECT_EQ(at(g, "slashes")->Comment.Params.size(), 2u);
  EXPECT_EQ(at(g, "qtStyle")->Comment.TParams.at(0).first, "T");
  EXPECT_THAT(at(g, "stars")->Comment.Details, HasSubstr("<pre>"));
  EXPECT_EQ(at(g, "stars")->Comment.Deprecated, "Use slashes instead.");
  EXPECT_TRUE(at(g, "plain")->Comment.empty());
  EXPECT_TRUE(at(g, "undocumented")->Comment.empty());
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
}

TEST(CppParser, PlainCommentsDocumentWhenAsked) {
  const ParseResult r = parse({kData + "comments/comments.h"}, true);
  EXPECT_EQ(at(*r.Global, "plain")->Comment.Brief, "A plain comment that documents only when asked.");
  EXPECT_TRUE(at(*r.Global, "undocumented")->Comment.empty());
}

TEST(CppParser, TellsMemberFunctionsApart) {
  const ParseResult r = parse({kData + "overloads"});
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
  // The namespace that the header opens twice is one.
  ASSERT_EQ(all(*r.Global, "geo").size(), 1u);
  const Declaration& point = *at(*r.Global, "geo::Point");
  EXPECT_EQ(point.Kind, DeclKind::Class);
  EXPECT_EQ(point.QualifiedName, "geo::Point");

  const auto ctors = all(point, "Point");
  ASSERT_EQ(ctors.size(), 4u);
  for (const Declaration* c : ctors) EXPECT_EQ(c->Kind, DeclKind::Constructor);
  EXPECT_TRUE(ctors[0]->Has(Defaulted));
  EXPECT_EQ(ctors[1]->Signature, "(double, double)");
  EXPECT_TRUE(ctors[2]->Has(Explicit));
  EXPECT_TRUE(ctors[3]->Has(Deleted));

  struct Expect {
    const char* name;
    DeclKind kind;
    unsigned flags;
  };
  for (const Expect& e :
       {Expect{"~Point", DeclKind::Destructor, Virtual}, Expect{"length", DeclKind::Method, Const},
        Expect{"origin", DeclKind::Method, Static}, Expect{"draw", DeclKind::Method, Virtual | PureVirtual | Const},
        Expect{"operator==", DeclKind::Method, Operator | Const},
        Expect{"operator bool", DeclKind::Conversion, Explicit | Noexcept | Const}}) {
    const Declaration* d = at(point, e.name);
    ASSERT_TRUE(d) << e.name;
    EXPECT_EQ(d->Kind, e.kind) << e.name;
    EXPECT_EQ(d->Flags & e.flags, e.flags) << e.name;
  }
  // The inline definition after the class is the same function, not another.
  EXPECT_EQ(all(point, "length").size(), 1u);
  EXPECT_EQ(all(point, "scale").size(), 2u);
  EXPECT_EQ(all(*at(*r.Global, "geo"), "distance").size(), 2u);
  EXPECT_EQ(at(point, "operator bool")->Code.Text, "explicit operator bool() const noexcept");
  EXPECT_EQ(at(point, "operator==")->Code.Text, "bool operator==(const Point& other) const");

  EXPECT_EQ(at(point, "x")->AccessLevel, Access::Public);
  EXPECT_EQ(at(point, "touch")->AccessLevel, Access::Protected);
  EXPECT_EQ(at(point, "mY")->AccessLevel, Access::Private);
  EXPECT_EQ(at(point, "x")->Line, 27u);
  EXPECT_EQ(at(point, "x")->File, kData + "overloads/overloads.h");
}

TEST(CppParser, ReadsEnumerationsAliasesAndVariables) {
  const ParseResult r = parse({kData + "overloads/overloads.h"});
  const Declaration& colour = *at(*r.Global, "geo::Colour");
  EXPECT_TRUE(colour.Has(ScopedEnum));
  EXPECT_EQ(colour.Type, "unsigned char");
  ASSERT_EQ(colour.Children.size(), 3u);
  EXPECT_EQ(colour.Children[1]->Name, "Green");
  EXPECT_EQ(colour.Children[1]->Type, "2");
  EXPECT_EQ(at(*r.Global, "geo::Points")->Type, "Point *");
  EXPECT_EQ(at(*r.Global, "geo::Coordinate")->Kind, DeclKind::TypeAlias);
  EXPECT_EQ(at(*r.Global, "geo::pointCount")->Kind, DeclKind::Variable);
}

TEST(CppParser, ReadsTemplatesAndBases) {
  const ParseResult r = parse({kData + "templates"});
  const Declaration& buffer = *at(*r.Global, "Buffer");
  ASSERT_EQ(buffer.TemplateParameters.size(), 2u);
  EXPECT_EQ(buffer.TemplateParameters[1].Name, "N");
  EXPECT_EQ(buffer.TemplateParameters[1].Type, "std::size_t");
  EXPECT_EQ(buffer.TemplateParameters[1].Default, "4");
  EXPECT_EQ(at(buffer, "put")->TemplateParameters.at(0).Name, "U");
  EXPECT_TRUE(at(*r.Global, "Buffer<T *, 1>"));
  EXPECT_EQ(at(*r.Global, "BufferOf")->TemplateParameters.size(), 1u);
  EXPECT_EQ(at(*r.Global, "make")->Code.Text, "template<typename T, typename... Args> Buffer<T> make(Args&&... args)");
}

// The colours of the first `piece` of a declaration's text.
std::string coloursOf(const Declaration& d, const std::string& piece) {
  const size_t at = d.Code.Text.find(piece);
  return at == std::string::npos ? "(not in " + d.Code.Text + ")" : d.Code.Colours.substr(at, piece.size());
}

void forEach(const Declaration& scope, const std::function<void(const Declaration&)>& visit) {
  for (const auto& child : scope.Children) {
    visit(*child);
    forEach(*child, visit);
  }
}

TEST(CppParser, ColoursEveryByteOfADeclarationByItsToken) {
  const ParseResult r = parse({kData + "comments", kData + "overloads", kData + "templates"});
  long checked = 0;
  forEach(*r.Global, [&](const Declaration& d) {
    ASSERT_EQ(d.Code.Colours.size(), d.Code.Text.size()) << d.Code.Text;
    ++checked;
  });
  EXPECT_GT(checked, 40);

  const Declaration& equals = *at(*r.Global, "geo::Point::operator==");
  const Declaration& macro = *at(*r.Global, "KV_MAX");
  const Declaration& buffer = *at(*r.Global, "Buffer");
  for (const auto& [d, piece, colours] : std::vector<std::tuple<const Declaration*, std::string, std::string>>{
           {&equals, "bool operator==(", "tttt kkkkkkkkyyy"},  // a built-in type, a keyword, symbols
           {&equals, "Point& other", ".....y ....."},          // names that are not called stay plain
           {&macro, "#define KV_MAX(a, b)", "ppppppp ......y.y .y"},
           {at(*r.Global, "slashes"), "slashes(", "fffffffy"},  // a name with a parameter list
           {&buffer, "N = 4", ". y n"},
           {at(*r.Global, "geo"), "namespace geo", "kkkkkkkkk ..."}}) {
    EXPECT_EQ(coloursOf(*d, piece), colours) << d->Code.Text;
  }
}

TEST(CppParser, ABrokenHeaderIsReportedAndTheOthersAreDocumented) {
  const ParseResult r = parse({kData + "broken"});
  for (const char* name : {"beforeBroken", "afterBroken", "late::Survivor", "afterErrors"})
    EXPECT_TRUE(at(*r.Global, name)) << name;
  // Nothing of the header after the unfinished class ends up inside it.
  EXPECT_FALSE(at(*r.Global, "Unfinished::afterBroken"));
  std::vector<std::string> lines;
  for (const auto& d : r.Diagnostics) lines.push_back(d.Format());
  EXPECT_THAT(lines, testing::Contains(kData + "broken/b_broken.h:2: warning: 'no/such/header.h' file not found"));
  for (const auto& d : r.Diagnostics) EXPECT_EQ(d.File, kData + "broken/b_broken.h");
}

TEST(CppParser, ReadsCTypedefsOfUnnamedTypes) {
  const ParseResult r = parse({kData + "c"}, false, "c11");
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
  ASSERT_EQ(all(*r.Global, "Node").size(), 1u);
  const Declaration& node = *at(*r.Global, "Node");
  EXPECT_EQ(node.Kind, DeclKind::Struct);
  EXPECT_EQ(node.Comment.Brief, "A node of a list.");
  EXPECT_EQ(node.Children.size(), 2u);
  EXPECT_EQ(at(*r.Global, "NodeKind")->Kind, DeclKind::Enum);
  EXPECT_EQ(at(*r.Global, "BUFFER_SIZE")->Type, "256");
  // The include guard is no macro worth a page.
  EXPECT_FALSE(at(*r.Global, "PLAIN_H"));
}

TEST(CppParser, ReadsDeclarationsInsideExternCBlocks) {
  test::TempFolder temp;
  write(temp.path("api.h"),
        "extern \"C\" {\n/// A C function.\nint c_api(void);\ntypedef struct { int x; } c_point;\n}\n");
  const ParseResult r = parse({temp.path("api.h")});
  ASSERT_TRUE(at(*r.Global, "c_api"));
  EXPECT_EQ(at(*r.Global, "c_api")->Comment.Brief, "A C function.");
  EXPECT_EQ(at(*r.Global, "c_point")->Kind, DeclKind::Struct);
}

TEST(CppParser, ExpandsFoldersPatternsAndReportsWhatNamesNothing) {
  test::TempFolder temp;
  std::filesystem::create_directories(temp.path("a/deep"));
  for (const char* f : {"a/one.h", "a/two.hpp", "a/deep/three.h", "a/notes.txt", "a/impl.cpp"}) write(temp.path(f), "");
  std::vector<std::string> problems;
  CppInput input;
  input.Sources = {temp.path("a")};
  EXPECT_EQ(ExpandSources(input, problems),
            (std::vector<std::string>{temp.path("a/deep/three.h"), temp.path("a/one.h"), temp.path("a/two.hpp")}));
  input.Sources = {temp.path("a/*.hpp"), temp.path("a/**/*.h"), temp.path("a/impl.cpp"), temp.path("missing")};
  EXPECT_EQ(ExpandSources(input, problems),
            (std::vector<std::string>{temp.path("a/deep/three.h"), temp.path("a/impl.cpp"), temp.path("a/one.h"),
                                      temp.path("a/two.hpp")}));
  ASSERT_EQ(problems.size(), 1u);
  EXPECT_THAT(problems[0], HasSubstr("missing"));
}

TEST(CppParser, TakesFlagsFromCompileCommands) {
  test::TempFolder temp;
  std::filesystem::create_directories(temp.path("inc"));
  write(temp.path("inc/config.h"), "#define HAS_CONFIG 1\n");
  write(temp.path("api.h"), "#include \"config.h\"\n#if defined(FEATURE) && HAS_CONFIG\nint feature();\n#endif\n");
  write(temp.path("compile_commands.json"),
        R"([{"directory": ")" + temp.path() +
            R"(", "file": "x.cpp", "arguments": ["c++", "-Iinc", "-D", "FEATURE", "-std=c++17", "-c", "x.cpp"]}])");
  CppInput input;
  input.Sources = {temp.path("api.h")};
  EXPECT_FALSE(at(*Parse(input).Global, "feature"));
  input.CompileCommands = temp.path("compile_commands.json");
  const ParseResult r = Parse(input);
  EXPECT_TRUE(at(*r.Global, "feature"));
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
}

TEST(CppParser, DefinesAndIncludeFoldersOfTheInput) {
  test::TempFolder temp;
  std::filesystem::create_directories(temp.path("elsewhere"));
  write(temp.path("elsewhere/dep.h"), "typedef int dep_t;\n");
  write(temp.path("api.h"), "#include <dep.h>\n#ifdef WITH_X\ndep_t withX();\n#endif\n");
  CppInput input;
  input.Sources = {temp.path("api.h")};
  input.IncludeFolders = {temp.path("elsewhere")};
  input.Defines = {"WITH_X=1"};
  const ParseResult r = Parse(input);
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
  ASSERT_TRUE(at(*r.Global, "withX"));
  EXPECT_EQ(at(*r.Global, "withX")->Type, "dep_t");
  // Declarations of headers outside the documented files are not documented.
  EXPECT_FALSE(at(*r.Global, "dep_t"));
}

TEST(CppParser, SourceFilesAreUnitsOfTheirOwnAndShareNothingTwice) {
  test::TempFolder temp;
  write(temp.path("shared.h"), "/// Shared.\nint shared();\n");
  write(temp.path("one.cpp"), "#include \"shared.h\"\n/// Only here.\nstatic int onlyInOne() { return 1; }\n");
  write(temp.path("two.cpp"), "#include \"shared.h\"\nint shared() { return 2; }\n");
  const ParseResult r = parse({temp.path("shared.h"), temp.path("one.cpp"), temp.path("two.cpp")});
  EXPECT_TRUE(r.Diagnostics.empty()) << r.Diagnostics.front().Format();
  EXPECT_EQ(all(*r.Global, "shared").size(), 1u);
  EXPECT_EQ(at(*r.Global, "shared")->File, temp.path("shared.h"));
  EXPECT_EQ(at(*r.Global, "onlyInOne")->Comment.Brief, "Only here.");
}

// Everything a declaration tells, for comparing two parses.
std::string describe(const Declaration& d) {
  std::string out = std::string(KindName(d.Kind)) + " " + d.QualifiedName + d.Signature + "|" + d.Usr + "|" +
                    d.Code.Text + "|" + d.Code.Colours + "|" + d.Type + "|" + d.File + ":" + std::to_string(d.Line) +
                    "|" + AccessName(d.AccessLevel) + "|" + std::to_string(d.Flags) + "\n";
  for (const auto* list : {&d.Parameters, &d.TemplateParameters})
    for (const auto& p : *list) out += "  parameter " + p.Name + ":" + p.Type + "=" + p.Default + "\n";
  for (const auto& b : d.Bases)
    out += "  base " + b.Type + " " + AccessName(b.AccessLevel) + (b.Virtual ? " virtual" : "") + "\n";
  const DocComment& c = d.Comment;
  out += "  comment " + c.Brief + "|" + c.Details + "|" + c.Returns + "|" + c.Deprecated + "\n";
  for (const auto* list : {&c.Notes, &c.See})
    for (const auto& text : *list) out += "  " + text + "\n";
  for (const auto* list : {&c.Params, &c.TParams})
    for (const auto& [name, text] : *list) out += "  " + name + ": " + text + "\n";
  for (const auto& child : d.Children) out += describe(*child);
  return out;
}

// The kept declarations in a cache folder.
std::vector<fs::path> declarationFiles(const test::TempFolder& cache) {
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(cache.path("kavrel")))
    if (entry.path().filename().string().rfind("declarations-", 0) == 0) files.push_back(entry.path());
  return files;
}

// Spoils the kept declarations, so that the next parse runs the compiler as for changed files.
void spoilDeclarations(const test::TempFolder& cache) {
  for (const auto& file : declarationFiles(cache)) fs::resize_file(file, 40);
}

std::vector<fs::path> precompiledHeaders(const test::TempFolder& cache) {
  std::vector<fs::path> made;
  for (const auto& entry : fs::directory_iterator(cache.path("kavrel")))
    if (entry.path().extension() == ".pch") made.push_back(entry.path());
  return made;
}

std::string describe(const ParseResult& r) {
  std::string out = describe(*r.Global);
  for (const auto& d : r.Diagnostics) out += d.Format() + "\n";
  return out;
}

TEST(CppParser, CachesTheSystemHeadersOnceFilesChangeAndParsesAlikeWithThem) {
  test::TempFolder cache;
  test::ScopedEnvironment environment("XDG_CACHE_HOME", cache.path());
  // A first build only keeps its declarations; the next parse of changed files makes the header.
  const ParseResult first = parse({kData + "overloads", kData + "templates"});
  EXPECT_TRUE(precompiledHeaders(cache).empty());
  spoilDeclarations(cache);
  EXPECT_EQ(describe(parse({kData + "overloads", kData + "templates"})), describe(first));
  const std::vector<fs::path> made = precompiledHeaders(cache);
  ASSERT_EQ(made.size(), 1u);

  spoilDeclarations(cache);
  const ParseResult withHeader = parse({kData + "overloads", kData + "templates"});
  EXPECT_EQ(describe(withHeader), describe(first));
  EXPECT_TRUE(withHeader.Diagnostics.empty()) << withHeader.Diagnostics.front().Format();

  // A cache entry that libclang cannot read is made again, and costs nothing else.
  write(made[0].string(), "not a precompiled header");
  spoilDeclarations(cache);
  EXPECT_EQ(describe(parse({kData + "overloads", kData + "templates"})), describe(first));
  EXPECT_GT(fs::file_size(made[0]), 1000u);

  // One that does not list the files it holds is not used but made again, list and all: the
  // declarations read with it could not tell when those files change.
  const fs::path list = made[0].string() + ".files";
  ASSERT_TRUE(fs::exists(list));
  fs::remove(list);
  spoilDeclarations(cache);
  EXPECT_EQ(describe(parse({kData + "overloads", kData + "templates"})), describe(first));
  EXPECT_TRUE(fs::exists(list));
}

TEST(CppParser, KeepsTheDeclarationsUntilAFileTheyWereReadFromChanges) {
  test::TempFolder cache, tree;
  test::ScopedEnvironment environment("XDG_CACHE_HOME", cache.path());
  const auto before = fs::file_time_type::clock::now() - std::chrono::hours(1);
  auto writeAt = [&](const std::string& name, const std::string& text, fs::file_time_type when) {
    write(tree.path(name), text);
    fs::last_write_time(tree.path(name), when);
  };
  writeAt("alpha.h", "/// First.\nstruct Alpha { int a; };\nstruct Broken {\n", before);
  const ParseResult cold = parse({tree.path()});
  ASSERT_TRUE(at(*cold.Global, "Alpha"));
  ASSERT_FALSE(cold.Diagnostics.empty());
  // Read back whole, warnings and all, without parsing: a text of the same size and time is
  // taken for the same text.
  writeAt("alpha.h", "/// First.\nstruct Gamma { int a; };\nstruct Broken {\n", before);
  EXPECT_EQ(describe(parse({tree.path()})), describe(cold));
  // A new time is a change.
  writeAt("alpha.h", "/// First.\nstruct Gamma { int a; };\nstruct Broken {\n", before + std::chrono::seconds(1));
  EXPECT_TRUE(at(*parse({tree.path()}).Global, "Gamma"));
  // Other compiler arguments are another parse.
  EXPECT_EQ(at(*parse({tree.path()}, false, "c++17").Global, "Gamma")->Code.Text, "struct Gamma");
  // A cache file cut short is parsed again.
  spoilDeclarations(cache);
  EXPECT_TRUE(at(*parse({tree.path()}).Global, "Gamma"));
}

TEST(CppParser, CachesTheProjectsOtherHeadersButNeverADocumentedOne) {
  test::TempFolder cache, tree;
  test::ScopedEnvironment environment("XDG_CACHE_HOME", cache.path());
  fs::create_directories(tree.path("public"));
  fs::create_directories(tree.path("src"));
  // A public header the sources use, and one through which a documented header is reached.
  write(tree.path("public/api.h"), "#pragma once\n#define API_LEVEL 1\nstruct Api { int v; };\n");
  write(tree.path("public/bridge.h"), "#pragma once\n#include \"../src/inner.h\"\n");
  write(tree.path("src/inner.h"), "#pragma once\n/// Reached through the bridge.\nstruct Inner {};\n");
  write(tree.path("src/outer.h"),
        "#pragma once\n#include \"../public/api.h\"\n#include \"../public/bridge.h\"\n"
        "struct Outer { Api api; Inner inner; };\n#if API_LEVEL > 1\nstruct Later {};\n#endif\n");

  // Written an hour ago: the parser keeps nothing read from a file changed while it ran.
  for (const auto& entry : fs::recursive_directory_iterator(tree.path()))
    if (entry.is_regular_file())
      fs::last_write_time(entry.path(), fs::file_time_type::clock::now() - std::chrono::hours(1));
  const ParseResult cold = parse({tree.path("src")});
  spoilDeclarations(cache);
  parse({tree.path("src")});  // makes the cached header
  ASSERT_EQ(precompiledHeaders(cache).size(), 1u);
  spoilDeclarations(cache);
  const ParseResult warm = parse({tree.path("src")});
  EXPECT_EQ(describe(*warm.Global), describe(*cold.Global));
  ASSERT_TRUE(at(*warm.Global, "Inner"));
  EXPECT_EQ(at(*warm.Global, "Inner")->Comment.Brief, "Reached through the bridge.");
  EXPECT_TRUE(warm.Diagnostics.empty()) << warm.Diagnostics.front().Format();

  // A changed public header is read again, not taken from the cache.
  write(tree.path("public/api.h"), "#pragma once\n#define API_LEVEL 2\nstruct Api { int v; };\n");
  fs::last_write_time(tree.path("public/api.h"), fs::file_time_type::clock::now() + std::chrono::seconds(5));
  EXPECT_TRUE(at(*parse({tree.path("src")}).Global, "Later"));
  EXPECT_TRUE(at(*parse({tree.path("src")}).Global, "Later"));
}

TEST(CppParser, LoadsThePrecompiledStandardLibraryThatTheHeadersNeed) {
  test::TempFolder cache, installed, tree;
  test::ScopedEnvironment environment("XDG_CACHE_HOME", cache.path());
  // Stand-ins for the library's two parts, each declaring a type of its own.
  fs::create_directories(tree.path("library"));
  fs::create_directories(tree.path("api"));
  write(tree.path("library/core.h"), "#pragma once\nstruct FromCore {};\n");
  write(tree.path("library/whole.h"), "#pragma once\nstruct FromWhole {};\n");
  for (const auto& [part, header] : {std::pair{LibraryPart::Core, "core.h"}, std::pair{LibraryPart::Whole, "whole.h"}})
    ASSERT_EQ(PrecompileStandardLibrary(installed.path(), "c++20", part,
                                        "#include \"" + tree.path("library/") + header + "\"\n"),
              "");
  write(tree.path("api/core_only.h"),
        "#include <cstddef>\n#include <sys/types.h>\n#include <stddef.h>\nFromCore make();\n");
  write(tree.path("api/beyond.h"), "#include <csignal>\nFromWhole other();\n");
  const auto parseWith = [&](const std::string& file, const std::string& folder, CppInput input = {}) {
    input.Sources = {tree.path("api/" + file)};
    return Parse(input, folder);
  };
  const auto clean = [](const ParseResult& r) {
    std::string problems;
    for (const auto& d : r.Diagnostics) problems += d.Format() + "\n";
    return problems;
  };

  // Headers that stay within the core load it; one library header beyond it loads the whole.
  // Headers with a folder or an extension are not the library's.
  EXPECT_EQ(clean(parseWith("core_only.h", installed.path())), "");
  EXPECT_EQ(clean(parseWith("beyond.h", installed.path())), "");
  EXPECT_THAT(clean(parseWith("core_only.h", "")), HasSubstr("FromCore"));

  // Not for C, nor another standard, nor a define that the library's headers may test.
  CppInput c, other, reserved;
  c.Standard = "c11";
  other.Standard = "c++17";
  reserved.Defines = {"_GNU_SOURCE"};
  for (const auto& input : {c, other, reserved})
    EXPECT_THAT(clean(parseWith("core_only.h", installed.path(), input)), HasSubstr("FromCore")) << input.Standard;

  // A part whose headers changed since it was made is not loaded (libclang does not check system
  // headers): the other part stands in, then none, and the installation keeps its files.
  const std::vector<std::string> arguments = CompilerArguments(CppInput(), {});
  const std::vector<std::string> documented{tree.path("api/core_only.h")};
  const auto later = fs::file_time_type::clock::now() + std::chrono::seconds(5);
  fs::last_write_time(tree.path("library/core.h"), later);
  EXPECT_EQ(StandardLibraryFor(installed.path(), arguments, documented), installed.path("std-c++20.pch"));
  fs::last_write_time(tree.path("library/whole.h"), later);
  EXPECT_EQ(StandardLibraryFor(installed.path(), arguments, documented), "");
  EXPECT_THAT(clean(parseWith("core_only.h", installed.path())), HasSubstr("FromCore"));
  EXPECT_TRUE(fs::exists(installed.path("std-c++20-core.pch")));
}

TEST(CppParser, MakesTheCachedHeaderOnTopOfThePrecompiledStandardLibrary) {
  test::TempFolder cache, installed, tree;
  test::ScopedEnvironment environment("XDG_CACHE_HOME", cache.path());
  fs::create_directories(tree.path("library"));
  fs::create_directories(tree.path("public"));
  fs::create_directories(tree.path("src"));
  write(tree.path("library/core.h"), "#pragma once\nstruct FromCore {};\n");
  write(tree.path("public/api.h"), "#pragma once\nstruct Api {};\n");
  write(tree.path("src/outer.h"),
        "#include <cstddef>\n#include \"../public/api.h\"\nstruct Outer { Api api; FromCore core; };\n");
  for (const auto& entry : fs::recursive_directory_iterator(tree.path()))
    if (entry.is_regular_file())
      fs::last_write_time(entry.path(), fs::file_time_type::clock::now() - std::chrono::hours(1));
  ASSERT_EQ(PrecompileStandardLibrary(installed.path(), "c++20", LibraryPart::Core,
                                      "#include \"" + tree.path("library/core.h") + "\"\n"),
            "");
  CppInput input;
  input.Sources = {tree.path("src")};
  const auto problems = [](const ParseResult& r) {
    std::string text;
    for (const auto& d : r.Diagnostics) text += d.Format() + "\n";
    return text;
  };

  // The second parse makes the cached header from what the first one read past the library.
  EXPECT_EQ(problems(Parse(input, installed.path())), "");
  spoilDeclarations(cache);
  EXPECT_EQ(problems(Parse(input, installed.path())), "");
  const std::vector<fs::path> made = precompiledHeaders(cache);
  ASSERT_EQ(made.size(), 1u);
  std::ifstream list(made[0].string() + ".files");
  const std::string held{std::istreambuf_iterator<char>(list), {}};
  EXPECT_THAT(held, HasSubstr("library/core.h"));
  EXPECT_THAT(held, HasSubstr("public/api.h"));

  // Loading it loads the library too.
  spoilDeclarations(cache);
  const ParseResult warm = Parse(input, installed.path());
  EXPECT_EQ(problems(warm), "");
  EXPECT_TRUE(at(*warm.Global, "Outer"));

  // A change to the library's headers is a change to the cached header.
  fs::last_write_time(tree.path("library/core.h"), fs::file_time_type::clock::now() + std::chrono::seconds(5));
  spoilDeclarations(cache);
  EXPECT_THAT(problems(Parse(input, installed.path())), HasSubstr("FromCore"));
}

}  // namespace
}  // namespace kv::cpp
