// "kavrel items": the items each doc type of a project delivers, as the template's namespace
// definitions walk them, one per line and indented by depth. It shows what pages a build makes
// and where each item is declared; the doc types' warnings go to standard error.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "ConsoleHost.h"
#include "definitions/Configuration.h"
#include "kavrel/Failure.h"
#include "kavrel/INamespaceProvider.h"
#include "project/KVDocType.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "project/KVProjectEvents.h"

namespace kavrel {
namespace {

struct ItemsOptions {
  std::string project;
  std::string config;
};

class Messages : public kv::KVProjectEvents {
 public:
  void BuildError(const std::string& text, kv::KVErrorLevel) override { std::cerr << text << "\n"; }
  void LoadError(const std::string& text, kv::KVErrorLevel) override { std::cerr << text << "\n"; }
};

std::string member(const kv::ObjectPtr& item, const char* name) {
  try {
    return item->get(name).toString();
  } catch (const std::exception&) {
    return {};  // a kind without the member
  }
}

void walk(kv::INamespaceProvider& provider, const kv::NamespaceDefs& defs, const kv::ObjectPtr& parent, int depth) {
  for (const auto& def : defs) {
    const auto items = provider.GetItems(def, parent, "forpagegeneration=true");
    if (!items) continue;
    for (const auto& item : *items) {
      std::cout << std::string(depth * 2, ' ') << def->Name << " " << item->typeName() << " "
                << member(item, "QualifiedName");
      const std::string file = member(item, "SourceFileName"), line = member(item, "SourceLine");
      if (!file.empty()) std::cout << "  " << file << (line.empty() || line == "0" ? "" : ":" + line);
      std::cout << "\n";
      walk(provider, def->ChildNamespaceDefs, item, depth + 1);
    }
  }
}

int runItems(const ItemsOptions& options) {
  kv::setMessageHandler(std::make_shared<ConsoleMessageHandler>(false));
  useConfigFolder(options.config);
  auto project = kv::KVProject::New();
  project->Silent = true;
  auto messages = std::make_shared<Messages>();
  project->Subscribe(messages);
  project->LoadFromFile(absolutePath(options.project));
  int result = project->LoadedFromFile ? 0 : 1;
  if (result == 0)
    for (const auto& docType : project->DocTypes->PopulatedDocTypes()) {
      std::cout << docType->Name() << "\n";
      const auto provider = docType->NamespaceProvider();
      const auto tmpl = docType->Template();
      if (provider && tmpl) walk(*provider, tmpl->NamespaceDefs, nullptr, 1);
    }
  project->Terminate();
  return result;
}

}  // namespace

void registerItemsCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<ItemsOptions>();
  CLI::App* command = app.add_subcommand("items", "List the items that the project's doc types deliver");
  command->add_option("project", options->project, "The project file (.kvp)")->required();
  command->add_option("--config", options->config, "The configuration folder");
  command->footer(
      "Each line: namespace definition, item kind, qualified name, file and line.\n"
      "Exit codes: 0 listed, 1 the project could not be loaded.");
  command->callback([options, &exitCode] { exitCode = runItems(*options); });
}

}  // namespace kavrel
