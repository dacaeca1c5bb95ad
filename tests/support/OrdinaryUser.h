// Runs a piece of code without the superuser's rights, so that tests of refused access also run
// where the suite runs as root (containers, CI).
#pragma once

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>

namespace kv::test {

// What `body` returns, computed in a child process that runs as the user "nobody" when this
// process is the superuser, and as the same user otherwise; -1 when the child could not run it.
inline long asOrdinaryUser(const std::function<long()>& body) {
  constexpr uid_t nobody = 65534;
  int channel[2];
  if (::pipe(channel) != 0) return -1;
  const pid_t child = ::fork();
  if (child == 0) {
    ::close(channel[0]);
    long result = -1;
    if (::geteuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setresgid(nobody, nobody, nobody) == 0 &&
                             ::setresuid(nobody, nobody, nobody) == 0 && ::geteuid() == nobody))
      result = body();
    const bool written = ::write(channel[1], &result, sizeof result) == sizeof result;
    ::_exit(written ? 0 : 1);
  }
  ::close(channel[1]);
  long result = -1;
  if (child < 0 || ::read(channel[0], &result, sizeof result) != sizeof result) result = -1;
  ::close(channel[0]);
  if (child > 0) ::waitpid(child, nullptr, 0);
  return result;
}

}  // namespace kv::test
