// Sets an environment variable for the lifetime of the object and restores the old value.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace kv::test {

class ScopedEnvironment {
 public:
  ScopedEnvironment(std::string name, const std::string& value) : mName(std::move(name)) {
    if (const char* old = std::getenv(mName.c_str())) mOld = old;
    setenv(mName.c_str(), value.c_str(), 1);
  }
  ~ScopedEnvironment() {
    if (mOld) {
      setenv(mName.c_str(), mOld->c_str(), 1);
    } else {
      unsetenv(mName.c_str());
    }
  }
  ScopedEnvironment(const ScopedEnvironment&) = delete;
  ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

 private:
  std::string mName;
  std::optional<std::string> mOld;
};

}  // namespace kv::test
