#include <gtest/gtest.h>

#include "contents/CompilerMessages.h"

namespace kv {
namespace {

struct MessageCase {
  const char* line;
  int severity;
  const char* task;
  const char* file;
  long lineNumber;
  long charNum;
};

class CompilerMessageLine : public ::testing::TestWithParam<MessageCase> {};

TEST_P(CompilerMessageLine, IsReadWithSeverityAndPlace) {
  const MessageCase& c = GetParam();
  const auto messages = ReadCompilerMessages(std::string(c.line) + "\r\n");
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0].Severity, c.severity);
  EXPECT_EQ(messages[0].Task, c.task);
  EXPECT_EQ(messages[0].FileName, c.file);
  EXPECT_EQ(messages[0].LineNumber, c.lineNumber);
  EXPECT_EQ(messages[0].CharNum, c.charNum);
  EXPECT_EQ(messages[0].MessageString, c.line);
}

INSTANTIATE_TEST_SUITE_P(
    ChmcmdLines, CompilerMessageLine,
    ::testing::Values(
        MessageCase{"Note: Index items:1", SeverityInformation, "Note", "", 0, 0},
        MessageCase{"Writing CHM hello.chm", SeverityInformation, "", "", 0, 0},
        MessageCase{"Warning: Found file c.html while scanning a.html, but couldn't find it on disk", SeverityWarning,
                    "Warning", "c.html", 0, 0},
        MessageCase{"Warning: File missing.html does not exist", SeverityWarning, "Warning", "missing.html", 0, 0},
        MessageCase{"EFOpenError: Unable to open file \"/out/näme.html\": No such file or directory", SeverityFatal,
                    "EFOpenError", "/out/näme.html", 0, 0},
        MessageCase{"An unhandled exception occurred at $0000000000416AC9:", SeverityFatal, "", "", 0, 0},
        MessageCase{"Error: project.hhp(12,4): unknown option", SeverityError, "Error", "project.hhp", 12, 4},
        MessageCase{"HXC2000: toc.hxt:7: Unknown element", SeverityWarning, "HXC2000", "toc.hxt", 7, 0}));

TEST(CompilerMessages, StackAddressesAndBlankLinesAreNotMessages) {
  const auto messages = ReadCompilerMessages(
      "chmcmd, a CHM compiler.\n\nAn unhandled exception occurred at $0000000000416AC9:\n  $0000000000416AC9\n");
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[1].Severity, SeverityFatal);
}

}  // namespace
}  // namespace kv
