#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "contents/HelpCompile.h"
#include "host/CompilerFileName.h"
#include "host/Process.h"
#include "host/modMain.h"
#include "kavrel/FileSystem.h"
#include "project/KVProject.h"
#include "support/ChmFile.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

// What the compile tells the project's subscribers.
struct CompileEvents : KVProjectEvents {
  std::vector<std::string> statusLines;
  std::vector<std::string> compileErrors;
  void UpdateStatusByIndex(long Index, const std::string& Caption, long) override {
    if (Index == 1) statusLines.push_back(Caption);
  }
  void CompileError(const std::string& CompilerLog) override { compileErrors.push_back(CompilerLog); }
};

class HelpCompileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->Subscribe(events);
    project->OutputFolder(temp.path("out"));
    project->ProjectFileName(temp.path("out/hello.hhp"));
    project->HelpFileName(temp.path("out/hello.chm"));
    fs::create_directories(temp.path("out"));
  }
  void TearDown() override { project->Terminate(); }

  void write(const std::string& name, const std::string& text) { std::ofstream(temp.path(name)) << text; }
  // A help project of two pages with a table of contents and an index; `extraFile` is listed
  // among its files, `pageText` goes into the first page.
  void writeHelpProject(const std::string& extraFile = {}, const std::string& pageText = {}) {
    write("out/hello.hhp",
          "[OPTIONS]\nCompiled file=hello.chm\nContents file=hello.hhc\nIndex file=hello.hhk\n"
          "Default topic=index.html\nTitle=Hello\n\n[FILES]\nindex.html\nsecond.html\n" +
              extraFile + "\n");
    write("out/index.html", "<html><head><title>Hello</title></head><body><p>Grüße from Kavrel. " + pageText +
                                "<a href=\"second.html\">Next</a></p></body></html>\n");
    write("out/second.html", "<html><head><title>Second</title></head><body><p>Two</p></body></html>\n");
    write("out/hello.hhc",
          "<html><body><ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"Hello\">"
          "<param name=\"Local\" value=\"index.html\"></object>\n<ul><li><object type=\"text/sitemap\">"
          "<param name=\"Name\" value=\"Second page\"><param name=\"Local\" value=\"second.html\"></object></ul>"
          "</ul></body></html>\n");
    write("out/hello.hhk",
          "<html><body><ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"greeting\">"
          "<param name=\"Local\" value=\"index.html\"></object></ul></body></html>\n");
  }
  void requireCompiler() {
    if (FindOnPath("chmcmd").empty()) GTEST_SKIP() << "chmcmd is not installed";
  }
  // An executable shell script in the temporary folder.
  std::string script(const std::string& name, const std::string& body) {
    write(name, "#!/bin/sh\n" + body + "\n");
    fs::permissions(temp.path(name), fs::perms::owner_all);
    return temp.path(name);
  }
  std::string compilerLog() const { return FileSystem(temp.path("out/helpcompilerlog.txt")).ReadAll(); }

  test::TempFolder temp;
  test::ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", temp.path("settings")};
  std::shared_ptr<CompileEvents> events = std::make_shared<CompileEvents>();
  std::shared_ptr<KVProject> project;
};

TEST_F(HelpCompileTest, CompilesPagesContentsAndIndexIntoTheHelpFile) {
  requireCompiler();
  writeHelpProject();
  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileOK) << project->CompilerOutput;

  test::ChmFile chm(temp.path("out/hello.chm"));
  ASSERT_TRUE(chm.IsOpen());
  EXPECT_THAT(chm.Files(), Contains("/index.html"));
  EXPECT_THAT(chm.Files(), Contains("/second.html"));
  EXPECT_THAT(chm.Read("/index.html"), HasSubstr("Grüße from Kavrel."));
  EXPECT_THAT(chm.Read("/hello.hhc"), HasSubstr("value=\"Second page\""));
  EXPECT_THAT(chm.Read("/hello.hhk"), HasSubstr("value=\"greeting\""));
  // The compiler's lines reach the status and the log in the output folder.
  EXPECT_THAT(events->statusLines, Contains(HasSubstr("Writing CHM")));
  EXPECT_EQ(compilerLog(), project->CompilerOutput);
  EXPECT_TRUE(events->compileErrors.empty());
}

TEST_F(HelpCompileTest, BrokenLinksCompileWithWarningsAndKeepTheOutputFiles) {
  requireCompiler();
  writeHelpProject({}, "<a href=\"missing.html\">Gone</a>");
  project->RemoveOutputFilesAfterCompile(true);
  project->GeneratedFiles = std::make_shared<Collection<std::string>>();
  project->FireContentCreated(temp.path("out/second.html"));

  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileCompletedWithErrorsOrWarnings);
  EXPECT_THAT(project->CompilerOutput, HasSubstr("missing.html"));
  ASSERT_EQ(events->compileErrors.size(), 1u);
  EXPECT_THAT(compilerLog(), HasSubstr("Warning:"));
  // No post-processing after warnings.
  EXPECT_TRUE(fs::exists(temp.path("out/second.html")));
  EXPECT_FALSE(project->GeneratedFiles);
}

TEST_F(HelpCompileTest, MissingPageFailsWithTheCompilersReason) {
  requireCompiler();
  writeHelpProject("missing.html");
  fs::copy_file(temp.path("out/index.html"), temp.path("out/hello.chm"));  // an old help file

  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileFailed);
  EXPECT_THAT(compilerLog(), HasSubstr("missing.html"));
  EXPECT_THAT(events->statusLines, Contains(HasSubstr("missing.html")));
}

TEST_F(HelpCompileTest, CompilerThatHangsIsStopped) {
  writeHelpProject();
  project->HHCCompilerPath = script("hang.sh", "echo Compiling; exec sleep 600");
  HelpCompile compile(*project);
  compile.Timeout = std::chrono::milliseconds(300);
  EXPECT_EQ(compile.Compile(), HelpCompileFailed);
  EXPECT_THAT(compilerLog(), HasSubstr("Compiling\n"));
  EXPECT_THAT(compilerLog(), HasSubstr("was stopped"));
}

TEST_F(HelpCompileTest, CompilerThatClaimsSuccessWithoutAHelpFileFails) {
  writeHelpProject();
  project->HHCCompilerPath = script("quiet.sh", "exit 0");
  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileFailed);
  EXPECT_THAT(project->CompilerOutput, HasSubstr("did not write the help file"));
}

TEST_F(HelpCompileTest, NothingToCompileOrNothingToCompileWith) {
  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileFailed);
  EXPECT_THAT(compilerLog(), HasSubstr(temp.path("out/hello.hhp")));

  writeHelpProject();
  project->HHCCompilerPath = temp.path("no-such-compiler");
  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileFailed);
  EXPECT_THAT(project->CompilerOutput, HasSubstr("could not be run"));
}

TEST_F(HelpCompileTest, Help2ProjectWithoutItsCompilerIsCompiledAsHTMLHelp) {
  requireCompiler();
  writeHelpProject();
  project->HTMLHelpVersion("2");
  project->ProjectFileName(temp.path("out/hello.hxc"));
  project->HelpFileName(temp.path("out/hello.hxs"));

  EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileOK) << project->CompilerOutput;
  EXPECT_EQ(project->HTMLHelpVersion(), "1");
  EXPECT_EQ(project->HelpFileName(), temp.path("out/hello.chm"));
  EXPECT_TRUE(test::ChmFile(temp.path("out/hello.chm")).IsOpen());
  EXPECT_THAT(compilerLog(), HasSubstr("compiled as HTML Help 1.x instead"));
}

struct Help2Case {
  const char* output;
  KVHelpCompileResultEnum result;
};

class Help2CompileTest : public HelpCompileTest, public ::testing::WithParamInterface<Help2Case> {};

TEST_P(Help2CompileTest, MessagesDecideTheResult) {
  write("out/hello.hxc", "<HelpCollection/>");
  project->HTMLHelpVersion("2");
  project->ProjectFileName(temp.path("out/hello.hxc"));
  project->HelpFileName(temp.path("out/hello.hxs"));
  SetAppValue("HXCompPath", script("hxcomp.sh", std::string("printf '") + GetParam().output + "'"));
  EXPECT_EQ(HelpCompile(*project).Compile(), GetParam().result) << project->CompilerOutput;
  EXPECT_EQ(project->HTMLHelpVersion(), "2");
}

INSTANTIATE_TEST_SUITE_P(
    Messages, Help2CompileTest,
    ::testing::Values(Help2Case{"Compiling hello.hxc\\n", HelpCompileOK},
                      Help2Case{"HXC6019: Warning: a file of the compiler was not found\\n", HelpCompileOK},
                      Help2Case{"HXC6019: one\\nHXC3000: Warning: topic.htm is missing\\n",
                                HelpCompileCompletedWithErrorsOrWarnings},
                      Help2Case{"Error: the collection cannot be read\\n", HelpCompileCompletedWithErrorsOrWarnings}));

TEST_F(HelpCompileTest, PostProcessingMovesHelp2FilesBesideTheHelpFileAndRemovesTheRest) {
  requireCompiler();
  writeHelpProject();
  fs::create_directories(temp.path("help"));
  project->HelpFileName(temp.path("help/hello.chm"));
  write("out/hello.hhp",
        "[OPTIONS]\nCompiled file=../help/hello.chm\nContents file=hello.hhc\n"
        "Default topic=index.html\n\n[FILES]\nindex.html\nsecond.html\n");
  write("out/registerhelp2.bat", "rem");
  write("out/COL_hello.HxC", "<x/>");

  for (const bool remove : {false, true}) {
    SCOPED_TRACE(remove);
    project->RemoveOutputFilesAfterCompile(remove);
    project->GeneratedFiles = std::make_shared<Collection<std::string>>();
    for (const char* name : {"out/second.html", "out/registerhelp2.bat", "out/COL_hello.HxC"})
      project->FireContentCreated(temp.path(name));
    EXPECT_EQ(HelpCompile(*project).Compile(), HelpCompileOK) << project->CompilerOutput;
    EXPECT_TRUE(fs::exists(temp.path("help/registerhelp2.bat")));
    EXPECT_TRUE(fs::exists(temp.path("help/COL_hello.HxC")));
    EXPECT_EQ(fs::exists(temp.path("out/registerhelp2.bat")), !remove);
    EXPECT_EQ(fs::exists(temp.path("out/second.html")), !remove);
    EXPECT_FALSE(project->GeneratedFiles);
  }
}

TEST(CompilerFileName, SettingNamingAFileComesFirstThenChmcmdOnThePath) {
  test::TempFolder temp;
  test::ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", temp.path("settings")};
  std::ofstream(temp.path("my-hhc")) << "";
  SetAppValue("HHCPath", temp.path("my-hhc"));
  EXPECT_EQ(GetCompilerFileName("", true), temp.path("my-hhc"));
  EXPECT_EQ(GetCompilerFileName("", false), "");
  SetAppValue("HHCPath", temp.path("gone"));
  EXPECT_EQ(GetCompilerFileName("", true), FindOnPath("chmcmd"));
  EXPECT_EQ(Help2CompilerFileName(), "");
}

}  // namespace
}  // namespace kv
