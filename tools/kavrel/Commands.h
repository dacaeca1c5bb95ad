// The subcommands of kavrel. Each adds itself to the application; when it runs, it leaves the
// process's exit code in `exitCode`.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace CLI {
class App;
}

namespace kavrel {

void registerBuildCommand(CLI::App& app, int& exitCode);
// "kavrel doctypes": the installed doc types, their plug-ins and templates.
void registerDocTypesCommand(CLI::App& app, int& exitCode);
// "kavrel new": a ready project for a doc type and its sources.
void registerNewCommand(CLI::App& app, int& exitCode);
// "kavrel items": the items the doc types of a project deliver.
void registerItemsCommand(CLI::App& app, int& exitCode);
// "kavrel upgrade": a project file of any version saved in the current format.
void registerUpgradeCommand(CLI::App& app, int& exitCode);

// A path given on the command line, absolute and without "." or ".." steps.
inline std::string absolutePath(const std::string& path) {
  return std::filesystem::absolute(path).lexically_normal().string();
}

// The --config option: makes `folder` the configuration folder of the process; empty keeps it.
inline void useConfigFolder(const std::string& folder) {
  if (!folder.empty()) setenv("KAVREL_CONFIG_DIR", std::filesystem::absolute(folder).c_str(), 1);
}

}  // namespace kavrel
