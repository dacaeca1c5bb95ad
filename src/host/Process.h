// Running other programs directly (no shell) and collecting what they print.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

struct ProcessResult {
  bool Started = false;   // false when the program could not be run at all
  int ExitCode = -1;      // the exit status; 128 + signal number when a signal ended it
  std::string Output;     // standard output and standard error, interleaved as written
  bool TimedOut = false;  // the time limit passed and the program was killed
};

// Runs `argv` (argv[0] is looked up on PATH unless it holds a "/") in `WorkingFolder` (empty:
// the current folder), with standard input closed, and waits for it to end. With a `Timeout`
// above zero, a program still running when it has passed is killed, and so are its children.
ProcessResult RunProcess(const std::vector<std::string>& argv, const std::string& WorkingFolder = {},
                         std::chrono::milliseconds Timeout = {});

// The full path of an executable found on PATH, or "" when there is none.
std::string FindOnPath(std::string_view name);

}  // namespace kv
