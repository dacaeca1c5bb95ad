// The subcommands of kavrel. Each adds itself to the application; when it runs, it leaves the
// process's exit code in `exitCode`.
#pragma once

namespace CLI {
class App;
}

namespace kavrel {

void registerBuildCommand(CLI::App& app, int& exitCode);
// "kavrel doctypes": the installed doc types, their plug-ins and templates.
void registerDocTypesCommand(CLI::App& app, int& exitCode);
// "kavrel upgrade": a project file of any version saved in the current format.
void registerUpgradeCommand(CLI::App& app, int& exitCode);

}  // namespace kavrel
