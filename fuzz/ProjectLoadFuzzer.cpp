// Feeds arbitrary text to the project file reader. Whatever it reads must save, and the saved
// text must read back to the same saved text.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "host/MessageBox.h"
#include "project/KVProject.h"

namespace {

struct QuietHost : kv::MessageHandler {
  int show(const std::string&, int, const std::string&) override { return kv::mb::OK; }
};

std::string loadAndSave(const std::string& text) {
  auto project = kv::KVProject::New();
  project->Silent = true;
  project->Load(text);
  std::string saved = project->Save();
  project->Terminate();
  return saved;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool installed = [] {
    kv::setMessageHandler(std::make_shared<QuietHost>());
    return true;
  }();
  (void)installed;
  const std::string saved = loadAndSave(std::string(reinterpret_cast<const char*>(data), size));
  if (loadAndSave(saved) != saved) std::abort();
  return 0;
}
