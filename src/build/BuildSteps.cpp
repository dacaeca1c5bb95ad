#include "build/BuildSteps.h"

#include <filesystem>
#include <sstream>

#include "host/Process.h"
#include "host/modMain.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {
namespace fs = std::filesystem;

KVBuildResultEnum DefaultBuildSteps::Generate(KVProject& project) {
  const std::string folder = project.OutputFolder();
  if (!folder.empty()) fs::create_directories(folder);
  // The doc types prepare around the generation (their plug-ins read the sources and report what
  // they cannot read into the log) and are told when it is done.
  if (project.DocTypes) {
    project.DocTypes->BeforeBuild();
    project.DocTypes->AfterBuild();
  }
  return project.Cancelled() ? BuildResultCancelled : BuildResultCompletedOK;
}

namespace {

bool hasWarningLine(const std::string& output) {
  std::istringstream lines(output);
  std::string line;
  while (std::getline(lines, line))
    if (line.starts_with("Warning:")) return true;
  return false;
}

}  // namespace

KVHelpCompileResultEnum DefaultBuildSteps::Compile(KVProject& project) {
  const fs::path helpProject = project.ProjectFileName();
  std::error_code ec;
  if (helpProject.empty() || !fs::is_regular_file(helpProject, ec)) {
    project.CompilerOutput = "The help project '" + helpProject.string() +
                             "' was not found, so there was nothing to compile. Build the pages first.";
    return HelpCompileFailed;
  }

  std::string compiler = GetAppValue("HHCPath");
  if (compiler.empty()) compiler = FindOnPath("chmcmd");
  if (compiler.empty()) {
    project.CompilerOutput =
        "No HTML Help compiler was found. Install chmcmd (package fp-utils) or name a compiler in the setting "
        "\"HHCPath\".";
    return HelpCompileFailed;
  }

  const ProcessResult run = RunProcess({compiler, helpProject.string()}, helpProject.parent_path().string());
  if (!run.Started) {
    project.CompilerOutput = "The help compiler '" + compiler + "' could not be run.";
    return HelpCompileFailed;
  }
  project.CompilerOutput = run.Output;

  // The compiler names the help file after the help project unless the project says otherwise.
  fs::path helpFile = project.HelpFileName();
  if (helpFile.empty()) helpFile = fs::path(helpProject).replace_extension(".chm");
  if (run.ExitCode != 0 || !fs::is_regular_file(helpFile, ec)) return HelpCompileFailed;
  return hasWarningLine(run.Output) ? HelpCompileCompletedWithErrorsOrWarnings : HelpCompileOK;
}

}  // namespace kv
