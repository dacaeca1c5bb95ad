// Compiling the generated help project into the help file, and the work after it: the compiler's
// messages as notifications, the compiler log in the output folder, the result, and the output
// files moved beside the help file or removed.
#pragma once

#include <chrono>

#include "contents/CompilerMessages.h"
#include "kavrel/Enums.h"

namespace kv {

class KVProject;

// The name of the compiler log the compile leaves in the output folder.
inline constexpr const char* kCompilerLogName = "helpcompilerlog.txt";

class HelpCompile {
 public:
  explicit HelpCompile(KVProject& project) : mProject(project) {}

  // A compiler that runs longer is stopped and the compile fails (a crashed compiler may wait
  // for input that never comes). The setting "HelpCompileTimeout", in seconds, overrides it.
  std::chrono::milliseconds Timeout{std::chrono::minutes(30)};

  // Runs the compiler for the project's help version on ProjectFileName. The result comes from
  // the help file's presence and the messages, not from the compiler's exit status; CompilerOutput
  // holds the log. A Help 2 project with no Help 2 compiler is compiled as HTML Help.
  KVHelpCompileResultEnum Compile();

  // One message of the compiler: shown as status; for Help 2, any message above information
  // except HXC6019 (a warning about the compiler's own files) marks the compile as having errors.
  void IHHNotifySink_CompileMessage(const CompilerMessage& Message);

 private:
  KVHelpCompileResultEnum CompileHTMLHelp(bool fallback);
  KVHelpCompileResultEnum CompileHelp2(const std::string& compiler);
  // Runs `argv`, collects the log and sends each message to the notify sink; false when the
  // compiler could not be started or was stopped.
  bool RunCompiler(const std::vector<std::string>& argv, const std::string& folder);
  void PostProcess();
  void WriteCompilerLog();

  KVProject& mProject;
  bool mH2CompilerErrors = false;
  bool mFatal = false;
};

}  // namespace kv
