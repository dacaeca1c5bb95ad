#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/Process.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

using ::testing::HasSubstr;

TEST(Process, CollectsBothStreamsAndTheExitCode) {
  test::TempFolder temp;
  const ProcessResult r = RunProcess({"sh", "-c", "echo out; echo err >&2; pwd; exit 3"}, temp.path());
  EXPECT_TRUE(r.Started);
  EXPECT_EQ(r.ExitCode, 3);
  EXPECT_THAT(r.Output, HasSubstr("out\n"));
  EXPECT_THAT(r.Output, HasSubstr("err\n"));
  EXPECT_THAT(r.Output, HasSubstr(temp.root().string() + "\n"));
}

TEST(Process, ArgumentsAreNotInterpretedByAShell) {
  const ProcessResult r = RunProcess({"echo", "$HOME; rm -rf x", "*"});
  EXPECT_EQ(r.Output, "$HOME; rm -rf x *\n");
}

TEST(Process, ProgramPastItsTimeLimitIsStoppedWithItsChildren) {
  // The child keeps the output open after the shell is gone; the limit ends both.
  const ProcessResult r =
      RunProcess({"sh", "-c", "echo started; sleep 600 & exec sleep 600"}, {}, std::chrono::milliseconds(200));
  EXPECT_TRUE(r.Started);
  EXPECT_TRUE(r.TimedOut);
  EXPECT_EQ(r.Output, "started\n");
  EXPECT_EQ(r.ExitCode, 128 + 9);
  EXPECT_FALSE(RunProcess({"true"}, {}, std::chrono::seconds(60)).TimedOut);
}

TEST(Process, MissingProgramIsNotStarted) {
  EXPECT_FALSE(RunProcess({"kavrel-no-such-program"}).Started);
  EXPECT_EQ(FindOnPath("kavrel-no-such-program"), "");
  EXPECT_NE(FindOnPath("sh"), "");
}

}  // namespace
}  // namespace kv
