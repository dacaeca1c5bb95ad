// The messages of a help compiler run, read from what the compiler prints: one message per line,
// with its severity and, where the line names them, the file and line it concerns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Severity 1 is information; anything above counts against the compile.
enum CompileSeverity : int { SeverityInformation = 1, SeverityWarning = 2, SeverityError = 3, SeverityFatal = 4 };

struct CompilerMessage {
  int Severity = SeverityInformation;
  std::string FileName;  // empty when the line names no file
  long LineNumber = 0;   // 0 when the line gives none
  long CharNum = 0;
  std::string Task;  // the compiler's word for the kind of message ("Warning", "EFOpenError", ...)
  std::string MessageString;
};

// One message for each line that says something; blank lines and the stack addresses of a
// crash report are left out.
std::vector<CompilerMessage> ReadCompilerMessages(std::string_view Output);

}  // namespace kv
