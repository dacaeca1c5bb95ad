#include "project/ProjectUpgrade.h"

#include "host/FailureHandler.h"
#include "project/KVProject.h"

namespace kv {
namespace {

// Collects the text of every message the project raises; the silent project answers them.
struct MessageCollector : KVProjectEvents {
  std::ostream* out = nullptr;
  void MessageBox(const std::string& message, int, const std::string&, int&, bool&) override {
    *out << message << '\n';
  }
};

}  // namespace

int UpgradeProjectFile(const std::string& projectFile, const std::string& targetFile, std::ostream& messages) {
  auto project = KVProject::New();
  project->Silent = true;
  auto collector = std::make_shared<MessageCollector>();
  collector->out = &messages;
  project->Subscribe(collector);

  int result = 0;
  project->LoadFromFile(projectFile);
  if (!project->LoadedFromFile) {
    result = 1;
  } else {
    // A new name becomes the project's own, so that relative names are written for its place.
    if (!targetFile.empty()) project->KVProjectFileName->FileName(targetFile);
    if (!project->SaveToDisk()) result = 2;
  }
  project->Terminate();
  return result;
}

}  // namespace kv
