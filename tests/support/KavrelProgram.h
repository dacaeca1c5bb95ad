// Runs the kavrel program as a user would, with the sources' configuration and settings of its
// own in a temporary folder.
#pragma once

#include <string>
#include <vector>

#include "host/Process.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv::test {

class KavrelProgram {
 public:
  // Runs kavrel with `args` in the temporary folder.
  ProcessResult run(std::vector<std::string> args) {
    args.insert(args.begin(), KV_KAVREL_EXE);
    return RunProcess(args, temp.path());
  }

  TempFolder temp;

 private:
  ScopedEnvironment mConfig{"KAVREL_CONFIG_DIR", KV_SOURCE_CONFIG_DIR};
  ScopedEnvironment mSettings{"KAVREL_SETTINGS_DIR", temp.path("settings")};
};

}  // namespace kv::test
