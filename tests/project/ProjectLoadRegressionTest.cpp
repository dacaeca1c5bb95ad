// Every sample project file, and every input that once broke the project file reader, must load,
// save, and read back to the same saved text. The samples are the fuzzer's seeds as well.
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

TEST(ProjectLoadRegression, SamplesAndFoundInputsLoadAndSaveStably) {
  test::ScopedRecordingHost host;
  const std::filesystem::path samples = std::filesystem::path(KV_TEST_DATA_DIR) / "project";
  int count = 0;
  for (const auto& folder : {samples, samples / "fuzz"})
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (!entry.is_regular_file()) continue;
      std::ifstream in(entry.path(), std::ios::binary);
      const std::string text{std::istreambuf_iterator<char>(in), {}};
      const std::string saved = loadAndSave(text);
      EXPECT_EQ(loadAndSave(saved), saved) << entry.path().filename();
      ++count;
    }
  EXPECT_GE(count, 10);  // the samples and the found inputs were all there
}

}  // namespace
}  // namespace kv
