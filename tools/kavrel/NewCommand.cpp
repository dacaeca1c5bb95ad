// "kavrel new": writes a ready project for a doc type and the sources it documents, a user's first
// command: "kavrel new api.kvp --doctype kv.cpp --sources include".
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "ConsoleHost.h"
#include "kavrel/Failure.h"
#include "project/KVDocType.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kavrel {
namespace {

struct NewOptions {
  std::string project;
  std::string docType = "kv.cpp";
  std::vector<std::string> sources;
  std::vector<std::string> includes;
  std::vector<std::string> defines;
  std::string standard;
  std::string config;
};

int runNew(const NewOptions& options) {
  kv::setMessageHandler(std::make_shared<ConsoleMessageHandler>(false));
  useConfigFolder(options.config);
  const std::string file = absolutePath(options.project);
  auto project = kv::KVProject::New();
  project->Silent = true;
  int result = 0;
  try {
    project->KVProjectFileName->FileName(file);
    project->ProjectGroupName(std::filesystem::path(file).stem().string());
    const auto& docType = project->DocTypes->Item(options.docType);
    const auto plugIn = std::dynamic_pointer_cast<kv::Object>(docType->ProjectPlugIn());
    if (!plugIn) throw std::runtime_error("the doc type has no plug-in");
    for (const auto& source : options.sources) plugIn->call("AddSource", {absolutePath(source)});
    for (const auto& folder : options.includes) plugIn->call("AddIncludeFolder", {absolutePath(folder)});
    for (const auto& define : options.defines) plugIn->call("AddDefine", {define});
    if (!options.standard.empty()) plugIn->call("SetStandard", {options.standard});
    if (!project->SaveToDisk()) {
      std::cerr << file << ": the project could not be saved\n";
      result = 2;
    }
  } catch (const std::exception& e) {
    std::cerr << "kavrel new: doc type '" << options.docType << "': " << e.what()
              << " (\"kavrel doctypes\" lists what is installed)\n";
    result = 1;
  }
  project->Terminate();
  return result;
}

}  // namespace

void registerNewCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<NewOptions>();
  CLI::App* command = app.add_subcommand("new", "Write a new project that documents the given sources");
  command->add_option("project", options->project, "The project file to write (.kvp)")->required();
  command->add_option("--doctype", options->docType, "The doc type (default kv.cpp)");
  command->add_option("--sources", options->sources, "Files, folders or wildcard patterns to document")
      ->required()
      ->expected(1, -1);
  command->add_option("--include", options->includes, "Include folders the sources need (C and C++)");
  command->add_option("--define", options->defines, "Macros to define, NAME or NAME=VALUE (C and C++)");
  command->add_option("--std", options->standard, "The language standard, such as c++17 or c11 (C and C++)");
  command->add_option("--config", options->config, "The configuration folder");
  command->footer("Exit codes: 0 written, 1 no such doc type, 2 the file could not be written.");
  command->callback([options, &exitCode] { exitCode = runNew(*options); });
}

}  // namespace kavrel
