// Runs a save in a child process whose files may not grow beyond a limit, as a full disk or a
// crash in the middle of a write would leave things.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace kv::test {

// With `survive` the write fails as on a full disk; without, the child dies inside it (SIGXFSZ).
// Returns the child's wait status; the child exits 0 when `save` returned true.
inline int saveLimitedTo(rlim_t limit, bool survive, const std::function<bool()>& save) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (survive) std::signal(SIGXFSZ, SIG_IGN);
    const rlimit r{limit, limit};
    ::setrlimit(RLIMIT_FSIZE, &r);
    ::_exit(save() ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return status;
}

}  // namespace kv::test
