// kavrel build: builds a project file with progress on the terminal and a results page at the end.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <regex>

#include "Commands.h"
#include "ConsoleHost.h"
#include "build/KVProjectBuild.h"
#include "project/KVProject.h"

namespace kavrel {
namespace {
namespace fs = std::filesystem;

struct BuildOptions {
  std::string project;
  std::string output;
  std::string config;
  std::string results;
  bool noCompile = false;
  bool open = false;
};

volatile std::sig_atomic_t gInterrupted = 0;

void onInterrupt(int) {
  gInterrupted = 1;
}

// A load error of the error level means the project could not be loaded.
class LoadWatch : public kv::KVProjectEvents {
 public:
  void BuildError(const std::string& /*Text*/, kv::KVErrorLevel Level) override {
    if (Level == kv::KVError) failed = true;
  }
  bool failed = false;
};

// Build output goes to standard output, through the busy display so that it stays readable.
class OutputSink : public kv::KVProjectBuildEvents {
 public:
  void GenericProgressMessage(const std::string& Text) override {
    if (Text.starts_with("Runtime error ") && Text.ends_with("Build failed.")) failed = true;
    print(Text, std::cout);
  }
  void print(const std::string& line, std::ostream& out) const {
    if (auto dialog = busy.lock()) {
      dialog->PrintLine(line, out);
    } else {
      out << line << '\n' << std::flush;
    }
  }
  std::weak_ptr<ConsoleBusyDialog> busy;
  bool failed = false;
};

// Diagnostics of the sources a doc type reads ("file:line: warning: text") also go to standard
// error as they are, where editors and build tools look for them; the log keeps its own prefix.
class DiagnosticSink : public kv::KVProjectEvents {
 public:
  explicit DiagnosticSink(std::shared_ptr<const OutputSink> output) : mOutput(std::move(output)) {}
  void BuildError(const std::string& Text, kv::KVErrorLevel /*Level*/) override {
    static const std::regex located(R"(^[^:\n]+:[0-9]+:(?:[0-9]+:)? (?:warning|error|note): .*)");
    if (std::regex_match(Text, located)) mOutput->print(Text, std::cerr);
  }

 private:
  std::shared_ptr<const OutputSink> mOutput;
};

int runBuild(const BuildOptions& options) {
  useConfigFolder(options.config);
  const bool terminal = isatty(STDERR_FILENO) != 0;
  const bool interactive = terminal && isatty(STDIN_FILENO) != 0;
  kv::setMessageHandler(std::make_shared<ConsoleMessageHandler>(interactive));

  // The project is loaded here rather than by the driver, so that a file that cannot be loaded
  // ends the command and the options apply before the build.
  const std::string projectFile = absolutePath(options.project);
  auto project = kv::KVProject::New();
  auto loadWatch = std::make_shared<LoadWatch>();
  project->Subscribe(loadWatch);
  project->LoadFromFile(projectFile);
  project->Unsubscribe(loadWatch.get());
  if (loadWatch->failed) {
    project->Terminate();
    return 3;
  }
  if (!options.output.empty()) project->OutputFolder(absolutePath(options.output));
  if (options.noCompile) project->CompileHelpFile(false);

  auto sink = std::make_shared<OutputSink>();
  kv::KVProjectBuild driver;
  driver.Subscribe(sink);
  auto diagnostics = std::make_shared<DiagnosticSink>(sink);
  project->Subscribe(diagnostics);
  driver.BusyDialogFactory = [&]() -> std::shared_ptr<kv::BusyDialog> {
    std::shared_ptr<ConsoleBusyDialog> dialog;
    if (terminal) {
      dialog = std::make_shared<TerminalBusyDialog>();
    } else {
      dialog = std::make_shared<PlainBusyDialog>();
    }
    sink->busy = dialog;
    return dialog;
  };
  const std::string fallbackFolder = fs::path(projectFile).parent_path().string() + "/";
  driver.ResultsDialogFactory = [&] {
    return std::make_shared<PageResultsDialog>(options.results, fallbackFolder, options.open, interactive);
  };

  // Ctrl+C asks the build to cancel; a second one ends the process.
  struct sigaction action {};
  action.sa_handler = onInterrupt;
  action.sa_flags = SA_RESETHAND;
  sigemptyset(&action.sa_mask);
  sigaction(SIGINT, &action, nullptr);
  project->DoEvents = [&] {
    if (!gInterrupted) return;
    gInterrupted = 0;
    if (auto dialog = sink->busy.lock()) dialog->CancelPressed();
  };

  const kv::KVBuildResultEnum result = driver.Build(project, true, true);
  // The log names a failed compile but not why; the compiler's own words tell.
  if (driver.HelpCompileResult == kv::HelpCompileFailed && !project->CompilerOutput.empty())
    std::cerr << "Help compiler output:\n" << project->CompilerOutput << '\n';
  const bool compiled = project->CompileHelpFile();
  // The help compiler reported success but left no new help file.
  const bool helpFileMissing =
      compiled && driver.HelpCompileResult == kv::HelpCompileOK && driver.ResultSound() == "alert.wav";
  driver.Terminate();
  project->Unsubscribe(diagnostics.get());
  project->DoEvents = nullptr;
  project->Terminate();
  signal(SIGINT, SIG_DFL);

  if (sink->failed) return 2;
  if (result == kv::BuildResultCancelled) return 1;
  if (compiled && (driver.HelpCompileResult == kv::HelpCompileFailed || helpFileMissing)) return 2;
  return 0;
}

}  // namespace

void registerBuildCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<BuildOptions>();
  CLI::App* command = app.add_subcommand("build", "Build a project: generate its output and compile the help file");
  command->add_option("project", options->project, "The project file (.kvp)")->required();
  command->add_option("--output", options->output, "Output folder, instead of the project's own");
  command->add_option("--config", options->config, "Configuration folder of the installation");
  command->add_flag("--no-compile", options->noCompile, "Leave plain HTML: do not run the help compiler");
  command->add_option("--results", options->results,
                      "Where to write the results page (default: buildresults.html in the output folder)");
  command->add_flag("--open", options->open, "Open the results page with xdg-open");
  command->footer(
      "Exit codes: 0 completed, 1 cancelled, 2 the build or the help compiler failed, 3 the project could not be "
      "loaded.");
  command->callback([options, &exitCode] { exitCode = runBuild(*options); });
}

}  // namespace kavrel
