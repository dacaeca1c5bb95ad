#include "contents/HelpCompile.h"

#include <cstdlib>
#include <filesystem>

#include "host/CompilerFileName.h"
#include "host/FailureHandler.h"
#include "host/Process.h"
#include "host/modMain.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"
#include "project/KVProject.h"

namespace kv {
namespace fs = std::filesystem;

namespace {

constexpr const char* kHelp2Fallback =
    "No Microsoft Help 2.x compiler is available on this system (name one in the setting \"HXCompPath\"), so the "
    "help file was compiled as HTML Help 1.x instead. The Help 2 project files are still in the output folder.";

bool helpFilePresent(const std::string& name) {
  std::error_code ec;
  return !name.empty() && fs::is_regular_file(name, ec) && fs::file_size(name, ec) > 0;
}

std::string withExtension(const std::string& name, const char* extension) {
  return fs::path(name).replace_extension(extension).string();
}

void appendLine(std::string& log, std::string_view line) {
  if (!log.empty() && !log.ends_with('\n')) log += '\n';
  log += line;
  log += '\n';
}

}  // namespace

KVHelpCompileResultEnum HelpCompile::Compile() {
  KVHelpCompileResultEnum result = HelpCompileOK;
  try {
    mProject.FirePostBuildStatus("Compiling Help File");
    mProject.CompilerOutput.clear();
    mH2CompilerErrors = false;
    mFatal = false;
    const std::string seconds = GetAppValue("HelpCompileTimeout");
    if (std::atol(seconds.c_str()) > 0) Timeout = std::chrono::seconds(std::atol(seconds.c_str()));

    if (std::atol(mProject.HTMLHelpVersion().c_str()) == 2) {
      const std::string compiler = Help2CompilerFileName();
      result = compiler.empty() ? CompileHTMLHelp(true) : CompileHelp2(compiler);
    } else {
      result = CompileHTMLHelp(false);
    }
    if (mProject.GeneratedFiles && result == HelpCompileOK) PostProcess();
  } catch (...) {
    result = HelpCompileFailed;
    mProject.CompilerOutput = "Runtime Error: " + std::to_string(currentFailureNumber()) +
                              " occured during compilation.  Please ensure you have correctly installed the "
                              "appropriate help compiler.";
  }
  mProject.GeneratedFiles.reset();
  ignoreFailure([&] { WriteCompilerLog(); });
  return result;
}

KVHelpCompileResultEnum HelpCompile::CompileHTMLHelp(bool fallback) {
  std::string log;
  if (fallback) {
    // The project becomes an HTML Help project for the rest of the build, as when the user
    // chooses so before generating.
    appendLine(log, kHelp2Fallback);
    mProject.HTMLHelpVersion("1");
    mProject.ProjectFileName(withExtension(mProject.ProjectFileName(), ".hhp"));
    if (!mProject.HelpFileName().empty()) mProject.HelpFileName(withExtension(mProject.HelpFileName(), ".chm"));
  }
  const std::string helpProject = mProject.ProjectFileName();
  std::string helpFile = mProject.HelpFileName();
  if (helpFile.empty()) helpFile = withExtension(helpProject, ".chm");

  std::error_code ec;
  if (!fs::is_regular_file(helpProject, ec)) {
    appendLine(log, "The help project '" + helpProject + "' was not found, so there was nothing to compile.");
    mProject.CompilerOutput = log;
    return HelpCompileFailed;
  }
  std::string compiler = mProject.HHCCompilerPath;
  if (compiler.empty()) compiler = GetCompilerFileName("", true);
  if (compiler.empty()) {
    appendLine(log,
               "No HTML Help compiler was found. Install chmcmd (package fp-utils) or name a compiler in the "
               "setting \"HHCPath\".");
    mProject.CompilerOutput = log;
    return HelpCompileFailed;
  }

  // A help file left from an earlier build must not pass for the result of this one.
  fs::remove(helpFile, ec);
  mProject.CompilerOutput = log;
  const bool ran = RunCompiler({compiler, helpProject}, fs::path(helpProject).parent_path().string());
  const std::string& output = mProject.CompilerOutput;
  if (!ran || mFatal || !helpFilePresent(helpFile)) {
    if (ran && !helpFilePresent(helpFile))
      appendLine(mProject.CompilerOutput, "The help compiler did not write the help file '" + helpFile + "'.");
    return HelpCompileFailed;
  }
  if (output.find("Warning:") != std::string::npos || output.find("Error:") != std::string::npos) {
    mProject.FireCompileError(output);
    return HelpCompileCompletedWithErrorsOrWarnings;
  }
  return HelpCompileOK;
}

KVHelpCompileResultEnum HelpCompile::CompileHelp2(const std::string& compiler) {
  const std::string helpProject = mProject.ProjectFileName();
  std::vector<std::string> argv{compiler, "-p", helpProject};
  if (!mProject.HelpFileName().empty()) {
    argv.push_back("-o");
    argv.push_back(mProject.HelpFileName());
  }
  if (mProject.PlugInToVSNET()) {
    argv.push_back("-PlugInToVSNET");
    argv.push_back("True");
    argv.push_back("-PlugInNamespaces");
    argv.push_back(mProject.PlugInNamespace());
  }
  if (!RunCompiler(argv, fs::path(helpProject).parent_path().string()) || mFatal) return HelpCompileFailed;
  if (mH2CompilerErrors) {
    mProject.FireCompileError(mProject.CompilerOutput);
    return HelpCompileCompletedWithErrorsOrWarnings;
  }
  return HelpCompileOK;
}

bool HelpCompile::RunCompiler(const std::vector<std::string>& argv, const std::string& folder) {
  const ProcessResult run = RunProcess(argv, folder, Timeout);
  std::string& log = mProject.CompilerOutput;
  if (!run.Started) {
    appendLine(log, "The help compiler '" + argv[0] + "' could not be run.");
    return false;
  }
  log += run.Output;
  for (const CompilerMessage& message : ReadCompilerMessages(run.Output)) IHHNotifySink_CompileMessage(message);
  if (run.TimedOut) {
    appendLine(log, "The help compiler did not finish within " +
                        std::to_string(std::chrono::duration_cast<std::chrono::seconds>(Timeout).count()) +
                        " seconds and was stopped.");
    return false;
  }
  return true;
}

void HelpCompile::IHHNotifySink_CompileMessage(const CompilerMessage& Message) {
  mProject.FireUpdateStatusByIndex(1, Message.MessageString, 0);
  if (Message.Severity >= SeverityFatal) mFatal = true;
  if (std::atol(mProject.HTMLHelpVersion().c_str()) == 2 && Message.Severity != SeverityInformation &&
      !Message.MessageString.starts_with("HXC6019: "))
    mH2CompilerErrors = true;
}

void HelpCompile::PostProcess() {
  mProject.FirePostBuildStatus("Post processing output files");
  const bool remove = mProject.RemoveOutputFilesAfterCompile();
  for (const std::string& name : *mProject.GeneratedFiles) {
    ignoreFailure([&] {
      const fs::path file(name);
      const std::string shortName = file.filename().string();
      std::error_code ec;
      if (text::startsWithIgnoreCase(shortName, "col_") || text::equalsIgnoreCase(shortName, "registerhelp2.bat") ||
          text::equalsIgnoreCase(shortName, "unregisterhelp2.bat")) {
        // These belong beside the help file, wherever that is.
        const fs::path target = fs::path(mProject.HelpFileName()).parent_path() / shortName;
        if (!text::equalsIgnoreCase(target.string(), file.string())) {
          fs::copy_file(file, target, fs::copy_options::overwrite_existing, ec);
          if (remove) fs::remove(file, ec);
        }
      } else if (remove) {
        fs::remove(file, ec);
      }
    });
  }
}

void HelpCompile::WriteCompilerLog() {
  const std::string folder = mProject.OutputFolder();
  if (folder.empty() || !fs::is_directory(folder)) return;
  FileSystem(folder + kCompilerLogName).WriteAll(mProject.CompilerOutput);
}

}  // namespace kv
