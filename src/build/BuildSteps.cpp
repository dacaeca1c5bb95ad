#include "build/BuildSteps.h"

#include <filesystem>

#include "contents/ContentsWriter.h"
#include "contents/HelpCompile.h"
#include "output/PageGeneration.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"

namespace kv {
namespace fs = std::filesystem;

KVBuildResultEnum DefaultBuildSteps::Generate(KVProject& project) {
  // General files write their table of contents, index and sections through the project.
  ContentsWriter::Install(std::static_pointer_cast<KVProject>(project.shared_from_this()));
  return PageGeneration(project).Build();
}

KVHelpCompileResultEnum DefaultBuildSteps::Compile(KVProject& project) {
  return HelpCompile(project).Compile();
}

}  // namespace kv
