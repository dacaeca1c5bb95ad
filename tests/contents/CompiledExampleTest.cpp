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
using ::testing::HasSubstr;
using ::testing::Not;

TEST(CompiledExample, HelpFileHoldsThePagesTheContentsAndTheIndex) {
  if (FindOnPath("chmcmd").empty()) GTEST_SKIP() << "chmcmd is not installed";
  KavrelProgram program;
  ScopedEnvironment config{"KAVREL_CONFIG_DIR", KV_BUILD_CONFIG_DIR};
  ScopedEnvironment cache{"XDG_CACHE_HOME", program.temp.path("cache")};
  ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", program.temp.path("settings")};
  fs::copy(fs::path(KV_SOURCE_CONFIG_DIR).parent_path() / "examples/cpplib", program.temp.path("cpplib"),
           fs::copy_options::recursive);
  // The example names no help file: the build puts one beside the pages.
  const std::string out = program.temp.path("out");
  const ProcessResult result = program.run({"build", program.temp.path("cpplib/cpplib.kvp"), "--output", out});
  ASSERT_TRUE(result.Started);
  EXPECT_EQ(result.ExitCode, 0) << result.Output;
  // Every link of every page leads the compiler to a page: overloads and operators included.
  EXPECT_THAT(readFile(out + "/helpcompilerlog.txt"), Not(HasSubstr("couldn't find it on disk")));

  fs::path helpFile;
  for (const auto& entry : fs::directory_iterator(out))
    if (entry.path().extension() == ".chm") helpFile = entry.path();
  ASSERT_FALSE(helpFile.empty()) << result.Output;
  ChmFile chm(helpFile.string());
  ASSERT_TRUE(chm.IsOpen());
  // Every page the build wrote is inside, found by its name: chmlib's listing of a help file
  // stops early once chmcmd's directory spans several chunks, so the test does not rely on it.
  long pages = 0;
  for (const auto& entry : fs::directory_iterator(out)) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() != ".html" || name.find('~') == std::string::npos) continue;
    ++pages;
    EXPECT_FALSE(chm.Read("/" + name).empty()) << name;
  }
  EXPECT_GT(pages, 10);
  EXPECT_FALSE(chm.Read("/index.html").empty());
  const std::string contents = chm.Read("/cpplib.hhc"), index = chm.Read("/cpplib.hhk");
  for (const char* entry : {"value=\"geometry.h\"", "value=\"Shape\"", "value=\"RingBuffer\""})
    EXPECT_THAT(contents, HasSubstr(entry));
  EXPECT_THAT(contents, HasSubstr("<param name=\"Local\" value=\"index.html\">"));
  for (const char* keyword : {"value=\"Circle\"", "value=\"convert\""}) EXPECT_THAT(index, HasSubstr(keyword));
}

}  // namespace
}  // namespace kv::test
