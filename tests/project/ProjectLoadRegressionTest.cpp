// Inputs that once broke the project file reader: each must load, save, and read back to the
// same saved text.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "project/KVProject.h"
#include "support/RecordingHost.h"

namespace kv {
namespace {

std::string loadAndSave(const std::string& text) {
  auto project = KVProject::New();
  project->Silent = true;
  project->Load(text);
  std::string saved = project->Save();
  project->Terminate();
  return saved;
}

TEST(ProjectLoadRegression, FoundInputsLoadAndSaveStably) {
  test::ScopedRecordingHost host;
  const std::filesystem::path folder = std::filesystem::path(KV_TEST_DATA_DIR) / "project" / "fuzz";
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream in(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    const std::string saved = loadAndSave(text);
    EXPECT_EQ(loadAndSave(saved), saved) << entry.path().filename();
    ++count;
  }
  EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace kv
