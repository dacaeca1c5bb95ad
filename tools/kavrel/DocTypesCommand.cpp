// "kavrel doctypes": lists the doc types of the configuration, whether the plug-in of each can be
// created (and why not), and the templates that serve it, so that a user can see why a doc type
// is missing from projects.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "definitions/Configuration.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "project/PlugInLoader.h"

namespace kavrel {
namespace {

std::string plugInState(const kv::DocTypeDef& def) {
  if (def.PlugInProgID.empty()) return "no plug-in class is named: the doc type is left out";
  auto& registry = kv::ClassRegistry::instance();
  if (!registry.isRegistered(def.PlugInProgID)) return "not installed: no library in plugins/ registers this class";
  const kv::ObjectPtr made = registry.tryCreate(def.PlugInProgID);
  if (!made) return "the class is installed but could not be created";
  if (!std::dynamic_pointer_cast<kv::IKVProjectPlugIn>(made)) return "the class is not a project plug-in";
  return "ok";
}

int run() {
  auto& config = kv::ConfigurationRoot::instance();
  kv::LoadInstalledPlugIns();
  std::cout << "Configuration folder: " << config.ConfigPath() << "\n\n";

  std::cout << "Plug-in libraries:\n";
  if (kv::PlugInLibraries().empty()) std::cout << "  none in " << config.ConfigPath() << "plugins\n";
  for (const auto& library : kv::PlugInLibraries())
    std::cout << "  " << library.FileName << ": " << (library.Loaded ? "loaded" : "not loaded, " + library.Error)
              << "\n";

  std::cout << "\nDoc types:\n";
  if (config.DocTypeDefs().empty()) std::cout << "  none defined\n";
  for (const auto& def : config.DocTypeDefs()) {
    std::cout << "  " << def->Name;
    if (!def->Description.empty()) std::cout << " - " << def->Description;
    std::cout << "\n    plug-in:   " << (def->PlugInProgID.empty() ? "(none)" : def->PlugInProgID) << ": "
              << plugInState(*def) << "\n    templates:";
    bool any = false;
    for (const auto& tmpl : config.Templates())
      if (tmpl->ServesDocType(def.get())) {
        std::cout << (any ? ", " : " ") << tmpl->Name;
        any = true;
      }
    std::cout << (any ? "" : " none") << "\n";
  }

  if (!config.LoadErrors().empty()) {
    std::cout << "\nProblems in the configuration:\n";
    for (const auto& error : config.LoadErrors()) std::cout << "  " << error << "\n";
  }
  return 0;
}

}  // namespace

void registerDocTypesCommand(CLI::App& app, int& exitCode) {
  auto* command = app.add_subcommand(
      "doctypes", "List the installed doc types, whether each plug-in can be created, and their templates");
  auto config = std::make_shared<std::string>();
  command->add_option("--config", *config, "Configuration folder of the installation")->check(CLI::ExistingDirectory);
  command->callback([&exitCode, config] {
    useConfigFolder(*config);
    exitCode = run();
  });
}

}  // namespace kavrel
