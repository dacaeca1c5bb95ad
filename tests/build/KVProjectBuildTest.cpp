#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <regex>
#include <stdexcept>

#include "build/KVProjectBuild.h"
#include "host/SoundPlayer.h"
#include "kavrel/Failure.h"
#include "project/KVProject.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kConfig = std::string(KV_SOURCE_CONFIG_DIR) + "/";

// Generation and compilation as a test sets them up; the compile may write the help file.
struct FakeSteps : BuildSteps {
  KVBuildResultEnum generateResult = BuildResultCompletedOK;
  std::vector<KVHelpCompileResultEnum> compileResults{HelpCompileOK};  // one per call, the last repeats
  std::string compilerOutput;
  bool writeHelpFile = true;
  bool staleHelpFile = false;
  std::function<void(KVProject&)> duringGenerate;
  int generated = 0, compiled = 0;

  KVBuildResultEnum Generate(KVProject& project) override {
    ++generated;
    if (duringGenerate) duringGenerate(project);
    return generateResult;
  }
  KVHelpCompileResultEnum Compile(KVProject& project) override {
    const auto result = compileResults[std::min<size_t>(size_t(compiled), compileResults.size() - 1)];
    ++compiled;
    project.CompilerOutput = compilerOutput;
    if (writeHelpFile) {
      fs::create_directories(fs::path(project.HelpFileName()).parent_path());
      std::ofstream(project.HelpFileName()) << "help";
      if (staleHelpFile)
        fs::last_write_time(project.HelpFileName(), fs::file_time_type::clock::now() - std::chrono::hours(2));
    }
    return result;
  }
};

// Bars behave as a real dialog's: an index that names no bar fails.
struct FakeBusy : BusyDialog {
  std::vector<std::string> calls;
  struct Bar {
    std::string caption;
    long max = 0, value = 0;
  };
  std::vector<Bar> bars;
  bool cancelEnabled = false;

  Bar& bar(long i) {
    if (i < 1 || i > long(bars.size())) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
    return bars[size_t(i - 1)];
  }
  void AnimationFile(const std::string& f) override { calls.push_back("AnimationFile " + f); }
  void Title(const std::string& t) override { calls.push_back("Title " + t); }
  void StatusText(const std::string& t) override { calls.push_back("StatusText " + t); }
  void CancelEnabled(bool e) override {
    cancelEnabled = e;
    calls.push_back(std::string("CancelEnabled ") + (e ? "true" : "false"));
  }
  void AlwaysOnTop(bool on) override { calls.push_back(std::string("AlwaysOnTop ") + (on ? "true" : "false")); }
  long ProgressBarCount() const override { return long(bars.size()); }
  void AddProgressBar(const std::string& c, long, long max, long v) override { bars.push_back({c, max, v}); }
  void RemoveProgressBar(long i) override {
    bar(i);
    bars.erase(bars.begin() + (i - 1));
  }
  void SetProgressCaption(long i, const std::string& c) override { bar(i).caption = c; }
  void SetProgressValue(long i, long v) override { bar(i).value = v; }
  void Show() override { calls.push_back("Show"); }
  void Hide() override { calls.push_back("Hide"); }
  void PressCancel() {
    bool cancel = false;
    RaiseBeforeCancel(cancel);
  }
  std::vector<std::string> animations() const {
    std::vector<std::string> out;
    for (const auto& c : calls)
      if (c.starts_with("AnimationFile ")) out.push_back(c.substr(14));
    return out;
  }
};

struct FakeResults : ResultsDialog {
  struct Shown {
    std::string buildLog, compilerLog, outputFolder, file, baseURL, html;
    bool retryAvailable;
  };
  std::vector<Shown>* shown;
  int* retries;
  int* unloads;
  std::string baseURL, html;
  void ShowPage(const std::string& b, const std::string& h) override {
    baseURL = b;
    html = h;
  }
  void ShowModal() override {
    shown->push_back({BuildLog, CompilerLog, OutputFolder, BuildResultsHTMLFile, baseURL, html, RetryCompileAvailable});
    RetryCompile = (*retries)-- > 0;
  }
  void Unload() override { ++*unloads; }
};

struct Recorder : KVProjectBuildEvents {
  std::vector<std::string> messages;
  std::vector<KVBuildResultEnum> generated, completed;
  bool cancelCompile = false;
  void GenericProgressMessage(const std::string& t) override { messages.push_back(t); }
  void GenerateComplete(KVBuildResultEnum r, bool& cancel) override {
    generated.push_back(r);
    if (cancelCompile) cancel = true;
  }
  void BuildComplete(KVBuildResultEnum r) override { completed.push_back(r); }
  bool said(const std::string& text) const {
    return std::find(messages.begin(), messages.end(), text) != messages.end();
  }
  bool saidStarting(const std::string& prefix) const {
    return std::any_of(messages.begin(), messages.end(), [&](const auto& m) { return m.starts_with(prefix); });
  }
};

struct RecordingPlayer : SoundPlayer {
  std::vector<std::string> played;
  std::vector<int> flags;
  void Play(const std::string& f, int fl) override {
    played.push_back(f);
    flags.push_back(fl);
  }
};

// The two notes that close every log, with whatever time they name.
const std::regex kNotes(
    "<tr><td><img src=\"bullet.gif\"/>&nbsp;</td><td colspan=4>Build completed at [^<]+</td></tr>"
    "<tr><td colspan=5>&nbsp;</td></tr>"
    "<tr><td><img src=\"clock.gif\"/>&nbsp;</td><td colspan=4>Build took \\d+ seconds to complete</td></tr>"
    "<tr><td colspan=5>&nbsp;</td></tr></table>$");

std::string row(const std::string& graphic, const std::string& badge, const std::string& text) {
  return "<tr><td>&nbsp;</td><td class=\"edge\"></td><td>&nbsp;<img src=\"" + kConfig + "icons/" + graphic +
         "\"/>&nbsp;&nbsp;</td><td>" + badge + "</td><td>" + text + "</td></tr><tr><td colspan=5>&nbsp;</td></tr>";
}

const std::string kHtmlBadge = "<img alt=\"Plain HTML generated\" src=\"" + kConfig + "icons/html.gif\"/>&nbsp;";
std::string helpBadge(int version) {
  return "<img alt=\"Compiled help file generated\" src=\"" + kConfig + "icons/help" + std::to_string(version) +
         ".gif\"/>&nbsp;" + kHtmlBadge;
}
const std::string kCompilerWarning =
    "Errors or warnings were generated by the Help Compiler.<br><a href=\"showcompilerlog:\">Click here to view the "
    "Compiler Log</a>";
const std::string kFailedText =
    "The Help Compiler failed to compile the generated help project. Open the generated help project and try "
    "compiling manually to identify the cause of the compilation problem.";
const std::string kNotGenerated =
    "The Help Compiler did not generate any errors or warnings, but the help file was not generated as expected. "
    "Open the generated help project and try compiling manually to identify the cause of the compilation problem.";

class BuildTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->KVProjectFileName->FileName(temp.path("My Project.kvp"));
    project->OutputFolder(temp.path("out"));
    project->HelpFileName(temp.path("out/My Project.chm"));
    driver.Steps = steps;
    driver.Subscribe(recorder);
    setSoundPlayer(player);
  }
  void TearDown() override {
    setSoundPlayer(nullptr);
    driver.Terminate();
    project->Terminate();
  }
  void withBusyDialog() {
    driver.BusyDialogFactory = [this] {
      busy = std::make_shared<FakeBusy>();
      ++busyDialogs;
      return busy;
    };
  }
  void withResultsDialog() {
    driver.ResultsDialogFactory = [this] {
      auto dialog = std::make_shared<FakeResults>();
      dialog->shown = &shown;
      dialog->retries = &retries;
      dialog->unloads = &unloads;
      return dialog;
    };
  }
  std::string outputFolder() const { return temp.path("out") + "/"; }
  std::string version1Links() const {
    return "Build complete.<br><a href=\"showfile:" + temp.path("out/My Project.chm") +
           "\">Click here to open the generated compiled HTML Help file</a><br><a href=\"showfile:" + outputFolder() +
           "webframe.html\">Click here to view the generated plain HTML output</a>";
  }
  // The log without its closing notes, which name the time.
  std::string rowsOf(const std::string& log) const {
    EXPECT_TRUE(std::regex_search(log, kNotes)) << log;
    return std::regex_replace(log, kNotes, "");
  }

  test::TempFolder temp;
  test::ScopedEnvironment config{"KAVREL_CONFIG_DIR", KV_SOURCE_CONFIG_DIR};
  std::shared_ptr<KVProject> project;
  std::shared_ptr<FakeSteps> steps = std::make_shared<FakeSteps>();
  std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
  std::shared_ptr<RecordingPlayer> player = std::make_shared<RecordingPlayer>();
  std::shared_ptr<FakeBusy> busy;
  int busyDialogs = 0;
  std::vector<FakeResults::Shown> shown;
  int retries = 0, unloads = 0;
  KVProjectBuild driver;
};

TEST_F(BuildTest, CompiledHelpFileOfVersion1) {
  EXPECT_EQ(driver.Build(project), BuildResultCompletedOK);

  EXPECT_EQ(steps->compiled, 1);
  EXPECT_EQ(driver.HelpCompileResult, HelpCompileOK);
  EXPECT_EQ(recorder->messages.front(), "------ Build started: Project: My Project.kvp, Title: My Project ------");
  EXPECT_TRUE(recorder->said("Compiling Help File " + temp.path("out/My Project.chm")));
  EXPECT_TRUE(recorder->said("Build complete. Help file compiled to file://" + temp.path("out/My%20Project.chm")));
  EXPECT_TRUE(recorder->said("---------------------- Done ----------------------"));
  EXPECT_TRUE(recorder->saidStarting("Output phase complete (took "));
  EXPECT_TRUE(recorder->saidStarting("Compile complete (took "));
  EXPECT_THAT(recorder->messages.back(), StartsWith("Build of 'My Project.kvp' complete (took a total of "));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" + row("ok.gif", helpBadge(1), version1Links()));
  EXPECT_EQ(driver.ResultSound(), "success.wav");
  EXPECT_THAT(recorder->generated, ElementsAre(BuildResultCompletedOK));
  EXPECT_THAT(recorder->completed, ElementsAre(BuildResultCompletedOK));
  EXPECT_TRUE(player->played.empty());  // no results dialog, no sound
}

TEST_F(BuildTest, Help2LinksAndPlainHtmlEnding) {
  project->HTMLHelpVersion("2");
  project->HHNamespace("My.Help");
  driver.Build(project);
  EXPECT_TRUE(recorder->said("Build complete. Microsoft Help 2.x file compiled to file://" +
                             temp.path("out/My%20Project.chm")));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" +
                row("ok.gif", helpBadge(2),
                    "Build complete.<br><a href=\"showhelp2:ms-help://My.Help\">Click here to open the generated help "
                    "file</a><br><a href=\"showfile:" +
                        outputFolder() + "webframe.html\">Click here to view the generated plain HTML output</a>"));

  // Plain HTML: no compile, and the link adds a separator of its own.
  project->CompileHelpFile(false);
  project->OutputFileExtension(".htm");
  EXPECT_EQ(driver.Build(project), BuildResultCompletedOK);
  EXPECT_EQ(steps->compiled, 1);
  EXPECT_TRUE(recorder->said("Build complete. HTML output to directory '" + outputFolder() + "'"));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" +
                row("ok.gif", kHtmlBadge,
                    "Build complete.<br><a href=\"showfile:" + outputFolder() +
                        "/webframe.htm\">Click here to view the generated HTML output</a>"));
}

TEST_F(BuildTest, CancelledGeneration) {
  steps->generateResult = BuildResultCancelled;
  withResultsDialog();
  EXPECT_EQ(driver.Build(project, false, true), BuildResultCancelled);

  EXPECT_EQ(steps->compiled, 0);
  EXPECT_TRUE(recorder->said("Build cancelled"));
  EXPECT_FALSE(recorder->saidStarting("----------------------"));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" + row("cancel.gif", "", "Build cancelled."));
  EXPECT_EQ(driver.ResultSound(), "failed.wav");
  EXPECT_THAT(player->played, ElementsAre(kConfig + "Sounds/failed.wav"));
  EXPECT_THAT(player->flags, ElementsAre(snd::Async + snd::NoDefault));
  EXPECT_THAT(recorder->completed, ElementsAre(BuildResultCancelled));
}

TEST_F(BuildTest, CancelCompileEndsTheBuildOnlyWithABusyDialog) {
  recorder->cancelCompile = true;
  EXPECT_EQ(driver.Build(project), BuildResultCompletedOK);  // no dialog: the request is dropped
  EXPECT_EQ(steps->compiled, 1);
  EXPECT_THAT(recorder->completed, ElementsAre(BuildResultCompletedOK));

  withBusyDialog();
  EXPECT_EQ(driver.Build(project, true), BuildResultCancelled);
  EXPECT_EQ(steps->compiled, 1);
  EXPECT_EQ(driver.BuildResultsHTML(), "<table cellspacing=0 cellpadding=0>");
  EXPECT_EQ(recorder->completed.size(), 1u);
  EXPECT_EQ(busy->calls.back(), "Hide");
  EXPECT_EQ(busy.use_count(), 1);  // the driver let go of its dialog
}

TEST_F(BuildTest, FailedCompileStillCompletesTheBuild) {
  steps->compileResults = {HelpCompileFailed};
  steps->writeHelpFile = false;
  withResultsDialog();
  EXPECT_EQ(driver.Build(project, false, true), BuildResultCompletedOK);

  EXPECT_EQ(driver.HelpCompileResult, HelpCompileFailed);
  EXPECT_TRUE(recorder->said("Compile failed"));
  EXPECT_TRUE(recorder->said(
      "The Help Compiler failed to compile the generated help project\r\n Open the generated help project and try "
      "compiling manually to identify the cause of the compilation problem."));
  EXPECT_TRUE(recorder->said("---------------------- Done ----------------------"));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" + row("exclaim.gif", "", kFailedText));
  EXPECT_EQ(driver.ResultSound(), "alert.wav");
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_TRUE(shown[0].retryAvailable);
}

TEST_F(BuildTest, FailedCompileLinksToWhatTheCompilerSaid) {
  steps->compileResults = {HelpCompileFailed};
  steps->compilerOutput = "EFOpenError: Unable to open file \"missing.html\"";
  steps->writeHelpFile = false;
  withResultsDialog();
  driver.Build(project, false, true);

  EXPECT_TRUE(recorder->said(steps->compilerOutput));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" +
                row("exclaim.gif", "",
                    kFailedText + "<br><a href=\"showcompilerlog:\">Click here to view the Compiler Log</a>"));
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].compilerLog, steps->compilerOutput);
}

TEST_F(BuildTest, CompileWithWarningsKeepsTheCompilerLog) {
  steps->compileResults = {HelpCompileCompletedWithErrorsOrWarnings};
  steps->compilerOutput = "Warning: Found file missing.html while scanning index.html";
  withResultsDialog();
  driver.Build(project, false, true);

  EXPECT_TRUE(recorder->said("Errors or warnings were generated by the Help Compiler:"));
  EXPECT_TRUE(recorder->said(steps->compilerOutput));
  EXPECT_TRUE(recorder->saidStarting("Compile complete with errors or warnings (took "));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()), "<table cellspacing=0 cellpadding=0>" +
                                                   row("ok.gif", helpBadge(1), version1Links()) +
                                                   row("exclaim.gif", "", kCompilerWarning));
  EXPECT_EQ(driver.ResultSound(), "alert.wav");
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].compilerLog, steps->compilerOutput);
  EXPECT_TRUE(shown[0].retryAvailable);
}

TEST_F(BuildTest, StaleHelpFileWithoutCompilerOutput) {
  steps->staleHelpFile = true;
  withResultsDialog();
  EXPECT_EQ(driver.Build(project, false, true), BuildResultCompletedOK);
  EXPECT_TRUE(recorder->said(kNotGenerated));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" + row("exclaim.gif", "", kNotGenerated));
  EXPECT_EQ(driver.ResultSound(), "alert.wav");
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_FALSE(shown[0].retryAvailable);
  EXPECT_EQ(shown[0].compilerLog, "");
}

TEST_F(BuildTest, MissingHelpFileWithCompilerOutput) {
  steps->writeHelpFile = false;
  steps->compilerOutput = "Error: cannot write";
  withResultsDialog();
  EXPECT_EQ(driver.Build(project, false, true), BuildResultCompletedOK);
  EXPECT_TRUE(recorder->said("ERROR: Errors or warnings were generated by the Help Compiler (below)"));
  EXPECT_TRUE(recorder->said("Error: cannot write"));
  EXPECT_EQ(rowsOf(driver.BuildResultsHTML()),
            "<table cellspacing=0 cellpadding=0>" + row("exclaim.gif", "", kCompilerWarning));
  EXPECT_EQ(driver.ResultSound(), "alert.wav");
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].compilerLog, "Error: cannot write");
  EXPECT_FALSE(shown[0].retryAvailable);
}

TEST_F(BuildTest, RetriedCompileStartsANewLogWithoutTheOpeningTag) {
  steps->compileResults = {HelpCompileFailed, HelpCompileOK};
  withBusyDialog();
  withResultsDialog();
  retries = 1;
  EXPECT_EQ(driver.Build(project, true, true), BuildResultCompletedOK);

  EXPECT_EQ(steps->generated, 1);
  EXPECT_EQ(steps->compiled, 2);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(rowsOf(shown[0].buildLog), "<table cellspacing=0 cellpadding=0>" + row("exclaim.gif", "", kFailedText));
  EXPECT_TRUE(shown[0].retryAvailable);
  EXPECT_EQ(rowsOf(shown[1].buildLog), row("ok.gif", helpBadge(1), version1Links()));
  EXPECT_FALSE(shown[1].retryAvailable);  // a fresh dialog after the retry
  EXPECT_EQ(unloads, 2);
  EXPECT_THAT(recorder->completed, ElementsAre(BuildResultCompletedOK));
  EXPECT_THAT(player->played, ElementsAre(kConfig + "Sounds/alert.wav", kConfig + "Sounds/success.wav"));

  // The page is the template with the log in place of its script line.
  EXPECT_EQ(shown[1].file, kConfig + "html/buildresults.html");
  EXPECT_EQ(shown[1].baseURL, kConfig + "html/");
  EXPECT_THAT(shown[1].html,
              HasSubstr("<script><!--\n--></script>" + shown[1].buildLog + "<script><!--\n--></script>"));
  EXPECT_THAT(shown[1].html, ::testing::Not(HasSubstr("window.external")));

  // Hidden for each results dialog, shown again for the retry, ended at the end.
  std::vector<std::string> visibility;
  for (const auto& c : busy->calls)
    if (c == "Show" || c == "Hide") visibility.push_back(c);
  EXPECT_THAT(visibility, ElementsAre("Show", "Hide", "Show", "Hide", "Hide"));
}

TEST_F(BuildTest, FailureDuringTheBuildIsReportedAndEndsIt) {
  withBusyDialog();
  unsigned line = 0;
  steps->duringGenerate = [&](KVProject&) {
    line = std::source_location::current().line() + 1;
    throw Failure(err::FileNotFound, "File not found");
  };
  EXPECT_EQ(driver.Build(project, true), BuildResultCompletedOK);
  EXPECT_EQ(recorder->messages.back(),
            "Runtime error 53 occured at line " + std::to_string(line) + " during build. Build failed.");
  EXPECT_TRUE(recorder->completed.empty());
  EXPECT_EQ(driver.BuildResultsHTML(), "<table cellspacing=0 cellpadding=0>");
  EXPECT_EQ(busy->calls.back(), "Hide");
  EXPECT_EQ(busy.use_count(), 1);

  steps->duringGenerate = [](KVProject&) { throw std::runtime_error("broken"); };
  driver.Build(project);
  EXPECT_EQ(recorder->messages.back(), "Runtime error 440 occured at line 0 during build. Build failed.");
}

TEST_F(BuildTest, BuildFileLoadsBuildsAndEndsItsOwnProject) {
  const std::string file = temp.path("hello.kvp");
  std::ofstream(file) << "<?xml version=\"1.0\"?><KavrelProject Version=\"5.0\"/>";
  steps->writeHelpFile = false;  // the loaded project names no help file
  withBusyDialog();
  driver.BuildFile(file, true);

  EXPECT_EQ(recorder->messages.front(), "Loading Kavrel Project '" + file + "' for build");
  EXPECT_EQ(recorder->messages[1], "------ Build started: Project: hello.kvp, Title: hello ------");
  ASSERT_NE(driver.KVProject(), nullptr);
  EXPECT_NE(driver.KVProject(), project);
  EXPECT_TRUE(driver.KVProject()->Silent);
  EXPECT_EQ(driver.KVProject()->DocTypes, nullptr);  // ended
  EXPECT_EQ(busyDialogs, 1);
  EXPECT_EQ(busy.use_count(), 1);

  // A missing file reaches the output as a build error; a later Build leaves the caller's project alone.
  recorder->messages.clear();
  driver.BuildFile(temp.path("missing.kvp"));
  EXPECT_TRUE(recorder->said("Build Error: File '" + temp.path("missing.kvp") + "' could not be found"));
  driver.Build(project);
  EXPECT_NE(project->DocTypes, nullptr);
}

TEST_F(BuildTest, BusyDialogFollowsTheProjectsEvents) {
  withBusyDialog();
  std::vector<std::vector<long>> barSizes;
  steps->duringGenerate = [&](KVProject& p) {
    auto bars = [&] {
      std::vector<long> maxima;
      for (const auto& b : busy->bars) maxima.push_back(b.max);
      barSizes.push_back(maxima);
    };
    p.FireInitialiseStatus(3, 10);  // one bar, even for an index further ahead
    bars();
    p.FireInitialiseStatus(1, 99);  // no bar for an index that has one
    bars();
    p.FireUpdateStatusByIndex(0, "ignored", 1);
    p.FireUpdateStatusByIndex(2, "Pages", 5);
    bars();
    EXPECT_EQ(busy->bars[1].caption, "Pages");
    EXPECT_EQ(busy->bars[1].value, 5);
    p.FireUpdateStatusByIndex(5, "Far ahead", 1);  // adds one bar; the failing caption call is ignored
    bars();

    p.FirePreBuildStatus("Writing pages");  // all bars go, the animation changes once
    bars();
    p.FireUpdateStatusByIndex(1, "x", 1);
    p.FirePostBuildStatus("writing more");
    bars();
    p.FirePreBuildStatus("Compiling help");
    p.FirePreBuildStatus("Still compiling");
    p.FireUpdateStatusAnim("search");
    p.FireUpdateStatusAnim("/anim/copy.avi");

    p.FireCancelAvailabilityChanged(false);
    EXPECT_FALSE(busy->cancelEnabled);
    p.RaiseBuildError("odd name", KVWarning);
    p.RaiseBuildError("no template", KVError);
  };
  driver.Build(project, true);

  EXPECT_THAT(barSizes, ElementsAre(std::vector<long>{10}, std::vector<long>{10}, std::vector<long>{10, 5},
                                    std::vector<long>{10, 5, 1}, std::vector<long>{}, std::vector<long>{}));
  EXPECT_THAT(busy->animations(),
              ElementsAre(kConfig + "Anims/wait.avi", kConfig + "Anims/writing.avi", kConfig + "Anims/compiling.avi",
                          kConfig + "Anims/search.avi", "/anim/copy.avi"));
  EXPECT_TRUE(recorder->said("Build Warning: odd name"));
  EXPECT_TRUE(recorder->said("Build Error: no template"));
  // The status line always shows the last output line.
  EXPECT_NE(std::find(busy->calls.begin(), busy->calls.end(), "StatusText Build Error: no template"),
            busy->calls.end());
  EXPECT_THAT(std::vector<std::string>(busy->calls.begin(), busy->calls.begin() + 8),
              ElementsAre("AnimationFile " + kConfig + "Anims/wait.avi", "Title Build Progress",
                          "StatusText Initializing ...", "CancelEnabled true", "AlwaysOnTop true", "Show",
                          "StatusText ------ Build started: Project: My Project.kvp, Title: My Project ------",
                          "StatusText Building ..."));

  // Without a dialog the same events are dropped.
  busy.reset();
  driver.BusyDialogFactory = nullptr;
  barSizes.clear();
  steps->duringGenerate = [](KVProject& p) {
    p.FireInitialiseStatus(1, 10);
    p.FireUpdateStatusByIndex(1, "x", 1);
    p.FirePreBuildStatus("Writing");
    p.FireUpdateStatusAnim("search");
  };
  EXPECT_EQ(driver.Build(project, true), BuildResultCompletedOK);
}

TEST_F(BuildTest, CancelButtonCancelsUnlessCancelIsDisabled) {
  withBusyDialog();
  steps->duringGenerate = [&](KVProject& p) {
    p.CancelDisabled = true;
    busy->PressCancel();
    EXPECT_FALSE(p.Cancel());
    p.CancelDisabled = false;
    busy->PressCancel();
    EXPECT_TRUE(p.Cancel());
  };
  driver.Build(project, true);
  EXPECT_EQ(steps->generated, 1);
}

TEST_F(BuildTest, ConfigurationFolderIsWorkedOutOnce) {
  project->CompileHelpFile(false);
  {
    test::ScopedEnvironment first("KAVREL_CONFIG_DIR", temp.path("first"));
    driver.Build(project);
  }
  test::ScopedEnvironment second("KAVREL_CONFIG_DIR", temp.path("second"));
  driver.Build(project);
  EXPECT_THAT(driver.BuildResultsHTML(), HasSubstr(temp.path("first") + "/icons/ok.gif"));

  KVProjectBuild other;
  other.Steps = steps;
  other.Build(project);
  EXPECT_THAT(other.BuildResultsHTML(), HasSubstr(temp.path("second") + "/icons/ok.gif"));
  other.Terminate();
}

}  // namespace
}  // namespace kv
