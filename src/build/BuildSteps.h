// The two heavy calls of a build, generation and help compilation, behind one interface, so that
// the build driver runs the same way whatever produces the pages.
#pragma once

#include "kavrel/Enums.h"

namespace kv {

class KVProject;

class BuildSteps {
 public:
  virtual ~BuildSteps() = default;
  // Generates the output of the project into its output folder.
  virtual KVBuildResultEnum Generate(KVProject& project) = 0;
  // Compiles the generated help project; leaves the compiler's messages in CompilerOutput.
  virtual KVHelpCompileResultEnum Compile(KVProject& project) = 0;
};

// Generates the pages and general files (see PageGeneration) and compiles the help project (see
// HelpCompile).
class DefaultBuildSteps : public BuildSteps {
 public:
  KVBuildResultEnum Generate(KVProject& project) override;
  KVHelpCompileResultEnum Compile(KVProject& project) override;
};

}  // namespace kv
