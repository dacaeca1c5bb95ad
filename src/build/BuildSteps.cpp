#include "build/BuildSteps.h"

#include <filesystem>

#include "contents/HelpCompile.h"
#include "output/PageGeneration.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {
namespace fs = std::filesystem;

KVBuildResultEnum DefaultBuildSteps::Generate(KVProject& project) {
  return PageGeneration(project).Build();
}

KVHelpCompileResultEnum DefaultBuildSteps::Compile(KVProject& project) {
  return HelpCompile(project).Compile();
}

}  // namespace kv
