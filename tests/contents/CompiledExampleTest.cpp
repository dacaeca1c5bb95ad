// The bundled C++ example built by the kavrel program into a compiled help file, read back with
// chmlib: its pages, its table of contents and its index are inside.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/ChmFile.h"
#include "support/Files.h"
#include "support/KavrelProgram.h"
#include "support/ScopedEnvironment.h"

namespace kv::test {
namespace {

namespace fs = std::filesystem;
using ::testing::Contains;
using ::testing::HasSubstr;

TEST(CompiledExample, HelpFileHoldsThePagesTheContentsAndTheIndex) {
  if (FindOnPath("chmcmd").empty()) GTEST_SKIP() << "chmcmd is not installed";
  KavrelProgram program;
  ScopedEnvironment config{"KAVREL_CONFIG_DIR", KV_BUILD_CONFIG_DIR};
  ScopedEnvironment cache{"XDG_CACHE_HOME", program.temp.path("cache")};
  ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", program.temp.path("settings")};
  fs::copy(fs::path(KV_SOURCE_CONFIG_DIR).parent_path() / "examples/cpplib", program.temp.path("cpplib"),
           fs::copy_options::recursive);
  // The example names no help file; this copy does, beside the pages.
  std::string text = readFile(program.temp.path("cpplib/cpplib.kvp"));
  text.replace(text.find("HelpFileName=\"\""), 15, "HelpFileName=\"../out/cpplib.chm\"");
  writeFile(program.temp.path("cpplib/cpplib.kvp"), text);
  const std::string out = program.temp.path("out");
  const ProcessResult result = program.run({"build", program.temp.path("cpplib/cpplib.kvp"), "--output", out});
  ASSERT_TRUE(result.Started);
  EXPECT_EQ(result.ExitCode, 0) << result.Output;
  EXPECT_TRUE(fs::exists(out + "/helpcompilerlog.txt"));

  fs::path helpFile;
  for (const auto& entry : fs::directory_iterator(out))
    if (entry.path().extension() == ".chm") helpFile = entry.path();
  ASSERT_FALSE(helpFile.empty()) << result.Output;
  ChmFile chm(helpFile.string());
  ASSERT_TRUE(chm.IsOpen());
  const auto files = chm.Files();
  EXPECT_THAT(files, Contains("/index.html"));
  long pages = 0;
  std::string contents, index;
  for (const std::string& name : files) {
    if (name.ends_with(".html") && name.find('~') != std::string::npos) ++pages;
    if (name.ends_with(".hhc")) contents = chm.Read(name);
    if (name.ends_with(".hhk")) index = chm.Read(name);
  }
  EXPECT_GT(pages, 10);
  for (const char* entry : {"value=\"geometry.h\"", "value=\"Shape\"", "value=\"RingBuffer\""})
    EXPECT_THAT(contents, HasSubstr(entry));
  EXPECT_THAT(contents, HasSubstr("<param name=\"Local\" value=\"index.html\">"));
  for (const char* keyword : {"value=\"Circle\"", "value=\"convert\""}) EXPECT_THAT(index, HasSubstr(keyword));
}

}  // namespace
}  // namespace kv::test
