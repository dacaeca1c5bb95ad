#include "host/Process.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

extern char** environ;

namespace kv {

ProcessResult RunProcess(const std::vector<std::string>& argv, const std::string& WorkingFolder,
                         std::chrono::milliseconds Timeout) {
  ProcessResult result;
  if (argv.empty()) return result;

  int pipeFds[2];
  if (pipe2(pipeFds, O_CLOEXEC) != 0) return result;

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 1);
  posix_spawn_file_actions_adddup2(&actions, pipeFds[1], 2);
  if (!WorkingFolder.empty()) posix_spawn_file_actions_addchdir_np(&actions, WorkingFolder.c_str());
  // A group of its own, so that a timeout ends whatever the program started too.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
  posix_spawnattr_setpgroup(&attributes, 0);

  std::vector<char*> args;
  for (const auto& a : argv) args.push_back(const_cast<char*>(a.c_str()));
  args.push_back(nullptr);

  pid_t pid = 0;
  const int spawned = posix_spawnp(&pid, args[0], &actions, &attributes, args.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  close(pipeFds[1]);
  if (spawned != 0) {
    close(pipeFds[0]);
    return result;
  }
  result.Started = true;

  using Clock = std::chrono::steady_clock;
  const Clock::time_point deadline = Clock::now() + Timeout;
  char buffer[4096];
  for (;;) {
    if (Timeout.count() > 0) {
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
      pollfd readable{pipeFds[0], POLLIN, 0};
      const int ready = left.count() > 0 ? poll(&readable, 1, int(left.count())) : 0;
      if (ready < 0 && errno == EINTR) continue;
      if (ready == 0) {
        result.TimedOut = true;
        kill(-pid, SIGKILL);
        break;
      }
    }
    const ssize_t n = read(pipeFds[0], buffer, sizeof buffer);
    if (n > 0) {
      result.Output.append(buffer, size_t(n));
    } else if (n == 0 || errno != EINTR) {
      break;
    }
  }
  close(pipeFds[0]);

  int status = 0;
  while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
  }
  if (WIFEXITED(status)) {
    result.ExitCode = WEXITSTATUS(status);
  } else if (WIFSIGNALED(status)) {
    result.ExitCode = 128 + WTERMSIG(status);
  }
  return result;
}

std::string FindOnPath(std::string_view name) {
  if (name.empty()) return {};
  if (name.find('/') != std::string_view::npos)
    return access(std::string(name).c_str(), X_OK) == 0 ? std::string(name) : std::string();
  const char* path = std::getenv("PATH");
  std::string_view rest = path ? path : "/usr/local/bin:/usr/bin:/bin";
  while (true) {
    const size_t colon = rest.find(':');
    std::string folder(rest.substr(0, colon));
    if (folder.empty()) folder = ".";
    const std::string candidate = folder + "/" + std::string(name);
    std::error_code ec;
    if (std::filesystem::is_regular_file(candidate, ec) && access(candidate.c_str(), X_OK) == 0) return candidate;
    if (colon == std::string_view::npos) break;
    rest.remove_prefix(colon + 1);
  }
  return {};
}

}  // namespace kv
