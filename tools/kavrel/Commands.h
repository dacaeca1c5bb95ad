// The subcommands of kavrel, one file each. Each adds itself to the application.
#pragma once

#include <CLI/CLI.hpp>

namespace kavrel {

// "kavrel doctypes": the installed doc types, their plug-ins and templates.
void AddDocTypesCommand(CLI::App& app);

}  // namespace kavrel
