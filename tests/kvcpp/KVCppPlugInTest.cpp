// The plug-in as a user meets it: loaded by the kavrel program from the configuration folder's
// plugins/, fed by "kavrel new", listed by "kavrel items", built by "kavrel build".
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "support/Files.h"
#include "support/KavrelProgram.h"
#include "support/ScopedEnvironment.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

const std::string kData = KV_TEST_DATA_DIR "/kvcpp/";

class KVCppPlugIn : public testing::Test, public test::KavrelProgram {
 protected:
  // A project in the temporary folder for a copy of the data folder `theme`.
  std::string newProject(const std::string& theme) {
    fs::copy(kData + theme, temp.path(theme), fs::copy_options::recursive);
    const ProcessResult r = run({"new", "api.kvp", "--sources", theme});
    EXPECT_EQ(r.ExitCode, 0) << r.Output;
    return temp.path("api.kvp");
  }
  // Sets an attribute of the project file's include filters.
  void setFilter(const std::string& project, const std::string& name) {
    std::string text = test::readFile(project);
    const std::string from = name + "=\"False\"";
    text.replace(text.find(from), from.size(), name + "=\"True\"");
    test::writeFile(project, text);
  }
};

TEST_F(KVCppPlugIn, NewWritesAProjectThatKeepsItsSourcesRelative) {
  const std::string project = newProject("overloads");
  const std::string text = test::readFile(project);
  EXPECT_THAT(text, HasSubstr("<DocType Name=\"kv.cpp\""));
  EXPECT_THAT(text, HasSubstr("<KVCpp DocType=\"kv.cpp\" Standard=\"c++20\""));
  EXPECT_THAT(text, HasSubstr("<Source>overloads</Source>"));

  // Settings written by hand survive a load and a save.
  std::string edited = text;
  edited.replace(edited.find("<Source>"), 8, "<IncludeFolder>inc</IncludeFolder><Define>A=1</Define><Source>");
  test::writeFile(project, edited);
  ASSERT_EQ(run({"upgrade", project}).ExitCode, 0);
  EXPECT_THAT(test::readFile(project), HasSubstr("<IncludeFolder>inc</IncludeFolder>"));
  EXPECT_THAT(test::readFile(project), HasSubstr("<Define>A=1</Define>"));
}

TEST_F(KVCppPlugIn, SourcesOutsideTheProjectsFolderAreWrittenRelativeToIt) {
  fs::copy(kData + "overloads", temp.path("overloads"), fs::copy_options::recursive);
  fs::create_directories(temp.path("doc"));
  const ProcessResult r = run({"new", "doc/api.kvp", "--sources", "overloads/overloads.h"});
  ASSERT_EQ(r.ExitCode, 0) << r.Output;
  EXPECT_THAT(test::readFile(temp.path("doc/api.kvp")), HasSubstr("<Source>../overloads/overloads.h</Source>"));
  EXPECT_THAT(run({"items", "doc/api.kvp"}).Output, HasSubstr("KV:Class Component geo~Point"));
}

TEST_F(KVCppPlugIn, NewTakesWhatTheHeadersNeedToCompile) {
  fs::create_directories(temp.path("inc"));
  const ProcessResult r =
      run({"new", "api.kvp", "--sources", "inc", "--include", "inc", "--define", "A=1", "B", "--std", "c++17"});
  ASSERT_EQ(r.ExitCode, 0) << r.Output;
  const std::string text = test::readFile(temp.path("api.kvp"));
  EXPECT_THAT(text, HasSubstr("Standard=\"c++17\""));
  EXPECT_THAT(text, HasSubstr("<IncludeFolder>inc</IncludeFolder>"));
  EXPECT_THAT(text, HasSubstr("<Define>A=1</Define>"));
  EXPECT_THAT(text, HasSubstr("<Define>B</Define>"));
}

TEST_F(KVCppPlugIn, NewFailsForADocTypeThatIsNotInstalled) {
  const ProcessResult r = run({"new", "x.kvp", "--doctype", "kv.none", "--sources", "."});
  EXPECT_EQ(r.ExitCode, 1);
  EXPECT_THAT(r.Output, HasSubstr("kv.none"));
  EXPECT_FALSE(fs::exists(temp.path("x.kvp")));
}

TEST_F(KVCppPlugIn, ItemsFollowTheTemplatesDefinitionsAndTheAccessFilters) {
  const std::string project = newProject("overloads");
  const std::string header = temp.path("overloads/overloads.h");
  ProcessResult r = run({"items", project});
  ASSERT_EQ(r.ExitCode, 0) << r.Output;
  for (const std::string& line :
       {"  KV:Header Component overloads.h  " + header, "    KV:Class Component geo~Point  " + header + ":7",
        "      KV:Method Block geo~Point~operator bool  " + header + ":25",
        "      KV:Method Block geo~Point~scale~(double, double)  " + header + ":19",
        "      KV:Field Variable geo~Point~x  " + header + ":27",
        "    KV:Function Block geo~distance~(const Point &)  " + header + ":39",
        "    KV:Enumeration Enumeration geo~Colour  " + header + ":47",
        "    KV:Typedef Variable geo~Points  " + header + ":48",
        "    KV:Variable Variable geo~pointCount  " + header + ":50"})
    EXPECT_THAT(r.Output, HasSubstr(line + "\n"));
  EXPECT_THAT(r.Output, Not(HasSubstr("touch")));
  EXPECT_THAT(r.Output, Not(HasSubstr("mY")));

  setFilter(project, "IncludeProtected");
  r = run({"items", project});
  EXPECT_THAT(r.Output, HasSubstr("KV:Method Block geo~Point~touch"));
  EXPECT_THAT(r.Output, Not(HasSubstr("mY")));

  setFilter(project, "IncludePrivate");
  r = run({"items", project});
  EXPECT_THAT(r.Output, HasSubstr("KV:Private Variable geo~Point~mY"));
}

TEST_F(KVCppPlugIn, ABuildLogsTheErrorsOfBrokenHeadersAsWarningsWithFileAndLine) {
  const std::string project = newProject("broken");
  // The log keeps its prefix on standard output; standard error has the lines editors read.
  const ProcessResult r = RunProcess(
      {"/bin/sh", "-c", std::string(KV_KAVREL_EXE) + " build api.kvp --output out --no-compile 2>stderr.txt"},
      temp.path());
  EXPECT_EQ(r.ExitCode, 0) << r.Output;
  const std::string warning = temp.path("broken/b_broken.h") + ":2: warning: 'no/such/header.h' file not found";
  EXPECT_THAT(r.Output, HasSubstr("Build Warning: " + warning));
  const std::string errors = "\n" + test::readFile(temp.path("stderr.txt"));
  EXPECT_THAT(errors, HasSubstr("\n" + warning + "\n"));
  EXPECT_THAT(errors, Not(HasSubstr("Build Warning")));
  const ProcessResult items = run({"items", project});
  EXPECT_THAT(items.Output, HasSubstr("KV:Class Component late~Survivor"));
}

// libclang is loaded only to parse: the run that finds the declarations in its cache goes without.
TEST_F(KVCppPlugIn, LoadsTheParserOnlyWhenTheCacheCannotAnswer) {
  const std::string project = newProject("overloads");
  test::ScopedEnvironment cache("XDG_CACHE_HOME", temp.path("cache"));
  // Declarations of a file written during their parse are not kept.
  for (const auto& entry : fs::directory_iterator(temp.path("overloads")))
    fs::last_write_time(entry.path(), fs::file_time_type::clock::now() - std::chrono::hours(1));
  const auto items = [&](const std::string& loads) {
    const ProcessResult r = RunProcess(
        {"/bin/sh", "-c", "LD_DEBUG=files " + std::string(KV_KAVREL_EXE) + " items " + project + " 2>" + loads},
        temp.path());
    EXPECT_EQ(r.ExitCode, 0) << r.Output;
    return r.Output;
  };
  const std::string parsed = items("first.txt");
  EXPECT_THAT(parsed, HasSubstr("geo~Point"));
  EXPECT_EQ(items("second.txt"), parsed);
  EXPECT_THAT(test::readFile(temp.path("first.txt")), HasSubstr("kvcpp-parser.so"));
  EXPECT_THAT(test::readFile(temp.path("second.txt")), Not(HasSubstr("libclang")));
}

TEST_F(KVCppPlugIn, WithoutItsParserModuleTheBuildSaysWhyItDocumentsNothing) {
  const std::string project = newProject("overloads");
  // An installation whose plug-in lost the folder beside it.
  fs::create_directories(temp.path("config/plugins"));
  for (const auto& entry : fs::directory_iterator(KV_SOURCE_CONFIG_DIR))
    if (entry.path().filename() != "plugins")
      fs::create_symlink(entry.path(), temp.path("config") / entry.path().filename());
  fs::copy_file(fs::path(KV_SOURCE_CONFIG_DIR) / "plugins/kvcpp.so", temp.path("config/plugins/kvcpp.so"));
  test::ScopedEnvironment config("KAVREL_CONFIG_DIR", temp.path("config"));
  test::ScopedEnvironment cache("XDG_CACHE_HOME", temp.path("cache"));
  const ProcessResult r = run({"items", project});
  EXPECT_THAT(r.Output, HasSubstr("warning: the C++ parser could not be loaded: "));
  EXPECT_THAT(r.Output, HasSubstr("kvcpp/kvcpp-parser.so"));
  EXPECT_THAT(r.Output, Not(HasSubstr("geo~Point")));
}

// The bundled example with a comment file, built as a user builds it: every page shows its item
// without a failure text and the comment file's remark reaches its page
// (tests/output/ExampleBuildTest.cpp follows the links of the same site).
TEST_F(KVCppPlugIn, TheExampleBuildsToASiteWithItsComments) {
  fs::copy(fs::path(KV_TEST_DATA_DIR) / "../../examples/cpplib", temp.path("cpplib"), fs::copy_options::recursive);
  // A comment file beside the project adds a remark of its own.
  test::writeFile(
      temp.path("cpplib/geometry.kvc"),
      R"(<KavrelComments Version="5.0" Moniker="geometry.h" DocType="kv.cpp" Template="Standard" )"
      R"(ShowInherited="False"><c eid="cpplib~Circle" tid="##REMARKS">Kreise sind rund.</c></KavrelComments>)");
  std::string kvp = test::readFile(temp.path("cpplib/cpplib.kvp"));
  kvp.replace(
      kvp.find("<CommentFiles/>"), 15,
      R"(<CommentFiles><CommentFile FileName="geometry.kvc" DocType="kv.cpp" ItemMoniker="geometry.h"/></CommentFiles>)");
  test::writeFile(temp.path("cpplib/cpplib.kvp"), kvp);
  const ProcessResult r = run({"build", "cpplib/cpplib.kvp", "--output", "out", "--no-compile"});
  ASSERT_EQ(r.ExitCode, 0) << r.Output;
  long pages = 0;
  for (const auto& entry : fs::directory_iterator(temp.path("out"))) {
    if (entry.path().extension() != ".html" || entry.path().filename() == "buildresults.html") continue;
    ++pages;
    const std::string html = test::readFile(entry.path());
    for (const char* failure : {"!MISSING", "!UNRECOGNISED", "!ERROR", "<kv:", "%%", "$$"})
      EXPECT_THAT(html, Not(HasSubstr(failure))) << entry.path().filename();
  }
  EXPECT_GT(pages, 50);
  EXPECT_THAT(test::readFile(temp.path("out/cpplib~convert.html")), HasSubstr("<dd>the unit wanted</dd>"));
  EXPECT_THAT(test::readFile(temp.path("out/cpplib~Shape.html")),
              HasSubstr("Something that can be drawn and measured."));
  EXPECT_THAT(test::readFile(temp.path("out/cpplib~Circle.html")), HasSubstr("Kreise sind rund."));
}

}  // namespace
}  // namespace kv
