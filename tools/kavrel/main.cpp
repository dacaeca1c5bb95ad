// kavrel: builds documentation projects and inspects the installation.
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Commands.h"

int main(int argc, char** argv) {
  CLI::App app{"Kavrel documentation generator"};
  app.require_subcommand(1);
  std::string configFolder;
  app.add_option("--config", configFolder,
                 "Configuration folder to use instead of the installed one (also: KAVREL_CONFIG_DIR)")
      ->check(CLI::ExistingDirectory)
      ->each(
          [](const std::string& folder) { setenv("KAVREL_CONFIG_DIR", std::filesystem::absolute(folder).c_str(), 1); });
  kavrel::AddDocTypesCommand(app);
  CLI11_PARSE(app, argc, argv);
  return 0;
}
