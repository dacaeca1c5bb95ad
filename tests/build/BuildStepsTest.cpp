#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "build/BuildSteps.h"
#include "host/Process.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class BuildStepsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->OutputFolder(temp.path("out"));
    project->ProjectFileName(temp.path("out/hello.hhp"));
    project->HelpFileName(temp.path("out/hello.chm"));
  }
  void TearDown() override { project->Terminate(); }

  // A help project of one page and a table of contents; the page may link to a missing page.
  void writeHelpProject(bool brokenLink) {
    fs::create_directories(temp.path("out"));
    std::ofstream(temp.path("out/hello.hhp")) << "[OPTIONS]\nCompiled file=hello.chm\nContents file=hello.hhc\n"
                                                 "Default topic=index.html\nTitle=Hello\n\n[FILES]\nindex.html\n";
    std::ofstream(temp.path("out/index.html"))
        << "<html><head><title>Hello</title></head><body><p>Hello from Kavrel."
        << (brokenLink ? " <a href=\"missing.html\">More</a>" : "") << "</p></body></html>\n";
    std::ofstream(temp.path("out/hello.hhc"))
        << "<html><body><ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"Hello\">"
           "<param name=\"Local\" value=\"index.html\"></object></ul></body></html>\n";
  }
  void requireCompiler() {
    if (FindOnPath("chmcmd").empty()) GTEST_SKIP() << "chmcmd is not installed";
  }

  test::TempFolder temp;
  test::ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", temp.path("settings")};
  std::shared_ptr<KVProject> project;
  DefaultBuildSteps steps;
};

TEST_F(BuildStepsTest, GenerationPreparesTheOutputFolder) {
  project->Silent = true;
  EXPECT_EQ(steps.Generate(*project), BuildResultCompletedOK);
  EXPECT_TRUE(fs::is_directory(temp.path("out")));

  // A cancel while the build prepares stops it before the pages.
  struct CancelWhilePreparing : KVProjectEvents {
    KVProject* project = nullptr;
    void ProgressPreBuildStatus(std::string& status) override {
      if (status == "Copying Additional Files ..") project->Cancel(true);
    }
  };
  auto events = std::make_shared<CancelWhilePreparing>();
  events->project = project.get();
  project->Subscribe(events);
  EXPECT_EQ(steps.Generate(*project), BuildResultCancelled);
}

TEST_F(BuildStepsTest, CompilesAHelpFileWithChmcmd) {
  requireCompiler();
  writeHelpProject(false);
  EXPECT_EQ(steps.Compile(*project), HelpCompileOK) << project->CompilerOutput;
  ASSERT_TRUE(fs::is_regular_file(temp.path("out/hello.chm")));
  const ProcessResult listing = RunProcess({"chmls", "list", temp.path("out/hello.chm")});
  ASSERT_TRUE(listing.Started);
  EXPECT_THAT(listing.Output, HasSubstr("/index.html"));
  EXPECT_THAT(listing.Output, HasSubstr("/hello.hhc"));
}

}  // namespace
}  // namespace kv
