// The kavrel command line, run as a program on a copy of the bundled example.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/Files.h"
#include "support/KavrelProgram.h"

namespace kv {
namespace {

using test::readFile;

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

class KavrelBuildCommand : public ::testing::Test, public test::KavrelProgram {
 protected:
  void SetUp() override {
    fs::copy(fs::path(KV_SOURCE_CONFIG_DIR).parent_path() / "examples/hello", temp.path("hello"),
             fs::copy_options::recursive);
  }

  std::string project = temp.path("hello/hello.kvp");
  std::string out = temp.path("out");
};

TEST_F(KavrelBuildCommand, PlainHtmlBuildWritesTheResultsPage) {
  const ProcessResult r = run({"build", project, "--output", out, "--no-compile"});
  ASSERT_TRUE(r.Started);
  EXPECT_EQ(r.ExitCode, 0) << r.Output;
  EXPECT_THAT(r.Output, HasSubstr("------ Build started: Project: hello.kvp, Title: Hello Kavrel ------\n"));
  EXPECT_THAT(r.Output, HasSubstr("Build complete. HTML output to directory '" + out + "/'\n"));
  EXPECT_THAT(r.Output, HasSubstr("Results page: " + out + "/buildresults.html\n"));

  const std::string page = readFile(out + "/buildresults.html");
  EXPECT_THAT(page, HasSubstr("<base href=\"file://" KV_SOURCE_CONFIG_DIR "/html/\">"));
  EXPECT_THAT(page, HasSubstr("<tr><td>&nbsp;</td><td class=\"edge\"></td><td>&nbsp;<img src=\"" KV_SOURCE_CONFIG_DIR
                              "/icons/ok.gif\"/>"));
  EXPECT_THAT(page, HasSubstr("<a href=\"file://" + out + "//webframe.html\">"));
  EXPECT_THAT(page, Not(HasSubstr("window.external")));
}

TEST_F(KavrelBuildCommand, FailedCompileExitsWithTwo) {
  // The example leaves plain HTML; this copy asks for a compiled help file with nothing to compile.
  std::string text = readFile(project);
  text.replace(text.find("CompileHelpFile=\"False\""), 23, "CompileHelpFile=\"True\"");
  std::ofstream(project) << text;
  const std::string results = temp.path("pages/results.html");
  const ProcessResult r = run({"build", project, "--output", out, "--results", results});
  EXPECT_EQ(r.ExitCode, 2) << r.Output;
  EXPECT_THAT(r.Output, HasSubstr("Compile failed\n"));
  EXPECT_THAT(r.Output, HasSubstr("Help compiler output:\nThe help project '" + out + "/hello.hhp' was not found"));
  EXPECT_THAT(readFile(results), HasSubstr("exclaim.gif"));
  EXPECT_FALSE(fs::exists(out + "/buildresults.html"));
}

TEST_F(KavrelBuildCommand, MissingProjectExitsWithThree) {
  const std::string missing = temp.path("hello/missing.kvp");
  const ProcessResult r = run({"build", missing});
  EXPECT_EQ(r.ExitCode, 3);
  EXPECT_THAT(r.Output, HasSubstr("File '" + missing + "' could not be found"));
  EXPECT_THAT(r.Output, Not(HasSubstr("Build started")));
}

TEST_F(KavrelBuildCommand, VersionAndUsage) {
  EXPECT_THAT(run({"--version"}).Output, HasSubstr("kavrel 5."));
  const ProcessResult help = run({"build", "--help"});
  EXPECT_EQ(help.ExitCode, 0);
  EXPECT_THAT(help.Output, HasSubstr("--no-compile"));
  EXPECT_NE(run({"build"}).ExitCode, 0);  // the project file is required
}

}  // namespace
}  // namespace kv
