// The central failure handler. Public entry points run their body under `guard`, which turns a
// run-time failure into a report naming module, procedure and line, shows it, and returns the
// default result, so that the caller sees an ordinary return. `ignoreFailure` is for the lines
// where a failure is expected and dropped.
#pragma once

#include <exception>
#include <functional>
#include <source_location>
#include <string>
#include <string_view>

namespace kv {

struct FailureReport {
  std::string product = "KVObjects5";
  std::string version;  // major.minor.revision
  std::string module;
  std::string procedure;
  unsigned line = 0;
  long number = 0;
  std::string description;
  std::string variables;  // the variable dump, see VariableDump
};

// Builds the report of the exception being handled (call inside a catch block).
FailureReport describeCurrentFailure(std::string_view module, const std::source_location& where,
                                     std::string variables = {});

// Reports a failure: to the registered report object if there is one, else as a plain message
// box through the host. Returns true when the failure must go on to the caller (the report object
// asked for that).
bool ErrorHandler(const FailureReport& report);

// Formats the plain message of a report.
std::string plainFailureMessage(const FailureReport& report);

// Runs `body`; on failure reports it and returns R{}. A failure that the report object wants
// to go on is thrown again.
template <class R = void, class F>
R guard(std::string_view module, F&& body, std::source_location where = std::source_location::current(),
        const std::function<std::string()>& variables = {}) {
  try {
    return body();
  } catch (...) {
    std::string dump;
    if (variables) {
      try {
        dump = variables();
      } catch (...) {
      }
    }
    if (ErrorHandler(describeCurrentFailure(module, where, std::move(dump)))) throw;
    if constexpr (!std::is_void_v<R>) return R{};
  }
}

// Runs `body` and drops any failure. Returns whether it ran through.
template <class F>
bool ignoreFailure(F&& body) noexcept {
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace kv
