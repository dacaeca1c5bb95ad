// A problem that the parser met in a file, or with the inputs.
#pragma once

#include <string>

namespace kv::cpp {

struct ParseDiagnostic {
  std::string File;  // empty when the problem has no place
  unsigned Line = 0;
  std::string Text;

  // "file:line: warning: text", the form that editors understand.
  std::string Format() const {
    if (File.empty()) return "warning: " + Text;
    return File + ":" + std::to_string(Line) + ": warning: " + Text;
  }
};

}  // namespace kv::cpp
