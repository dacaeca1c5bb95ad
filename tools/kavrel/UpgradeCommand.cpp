// kavrel upgrade: reads a project file of any version and writes it in the current format.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "ConsoleHost.h"
#include "project/ProjectUpgrade.h"

namespace kavrel {
namespace {

struct UpgradeOptions {
  std::string project;
  std::string target;
};

int runUpgrade(const UpgradeOptions& options) {
  // Nobody is asked: the project answers its own questions, and failure reports go to standard error.
  kv::setMessageHandler(std::make_shared<ConsoleMessageHandler>(false));
  const std::string projectFile = absolutePath(options.project);
  const std::string target = options.target.empty() ? std::string() : absolutePath(options.target);
  return kv::UpgradeProjectFile(projectFile, target, std::cerr);
}

}  // namespace

void registerUpgradeCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<UpgradeOptions>();
  CLI::App* command =
      app.add_subcommand("upgrade", "Read a project file of any version and save it in the current format");
  command->add_option("project", options->project, "The project file (.kvp)")->required();
  command->add_option("--to", options->target, "Save under this name instead of in place (keeping a .bak)");
  command->footer(
      "Every message the project raised while loading is printed on standard error, one per line.\n"
      "Exit codes: 0 saved, 1 the project could not be loaded, 2 it could not be saved.");
  command->callback([options, &exitCode] { exitCode = runUpgrade(*options); });
}

}  // namespace kavrel
