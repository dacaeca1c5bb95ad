// kavrel: the command line of the Kavrel documentation generator.
#include <CLI/CLI.hpp>
#include <clocale>

#include "Commands.h"

int main(int argc, char** argv) {
  // Dates in the build log follow the user's locale; everything else stays in the C locale.
  std::setlocale(LC_TIME, "");

  CLI::App app{"Kavrel turns source code, databases and schemas into help systems.", "kavrel"};
  app.set_version_flag("--version", "kavrel " KAVREL_VERSION);
  app.require_subcommand(1);

  int exitCode = 0;
  kavrel::registerBuildCommand(app, exitCode);
  kavrel::registerDocTypesCommand(app, exitCode);
  kavrel::registerUpgradeCommand(app, exitCode);
  kavrel::registerNewCommand(app, exitCode);
  kavrel::registerItemsCommand(app, exitCode);

  CLI11_PARSE(app, argc, argv);
  return exitCode;
}
