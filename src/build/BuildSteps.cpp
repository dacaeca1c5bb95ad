#include "build/BuildSteps.h"

#include <filesystem>

#include "contents/HelpCompile.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {
namespace fs = std::filesystem;

KVBuildResultEnum DefaultBuildSteps::Generate(KVProject& project) {
  const std::string folder = project.OutputFolder();
  if (!folder.empty()) fs::create_directories(folder);
  // The doc types prepare around the generation (their plug-ins read the sources and report what
  // they cannot read into the log) and are told when it is done.
  if (project.DocTypes) {
    project.DocTypes->BeforeBuild();
    project.DocTypes->AfterBuild();
  }
  return project.Cancelled() ? BuildResultCancelled : BuildResultCompletedOK;
}

KVHelpCompileResultEnum DefaultBuildSteps::Compile(KVProject& project) {
  return HelpCompile(project).Compile();
}

}  // namespace kv
