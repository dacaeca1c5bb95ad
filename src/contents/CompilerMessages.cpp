#include "contents/CompilerMessages.h"

#include <regex>

#include "kavrel/Text.h"

namespace kv {
namespace {

std::string trimmed(std::string_view line) {
  const size_t first = line.find_first_not_of(" \t\r");
  if (first == std::string_view::npos) return {};
  const size_t last = line.find_last_not_of(" \t\r");
  return std::string(line.substr(first, last - first + 1));
}

// "Warning: ...", "Error: ...", "Note: ", the exception class of a crash ("EFOpenError: ..."), and
// the numbered messages of the Help 2 compiler ("HXC6019: ..."), which all report a problem.
int severityOf(const std::string& task, const std::string& line) {
  if (task == "Warning") return SeverityWarning;
  if (task.size() == 7 && task.starts_with("HXC") && task.find_first_not_of("0123456789", 3) == std::string::npos)
    return SeverityWarning;
  if (task == "Error") return SeverityError;
  if (task == "Fatal") return SeverityFatal;
  if (task.size() > 1 && task[0] == 'E' && task.ends_with("Error")) return SeverityFatal;
  if (line.starts_with("An unhandled exception occurred")) return SeverityFatal;
  return SeverityInformation;
}

// Where a line says which file and line it is about: "name(12)" or "name(12,4)" and "name:12:",
// else a quoted name, else the file named after "file" or "scanning".
void locate(CompilerMessage& message) {
  static const std::regex withLine(R"(([^\s"'(]+\.[A-Za-z0-9]+)(?:\((\d+)(?:,(\d+))?\)|:(\d+):(?:(\d+):)?))");
  static const std::regex quoted(R"re("([^"]+)")re");
  static const std::regex named(R"((?:[Ff]ile|scanning) ([^\s,"']+\.[A-Za-z0-9]+))");
  std::smatch m;
  const std::string& text = message.MessageString;
  if (std::regex_search(text, m, withLine)) {
    message.FileName = m[1];
    const std::string line = m[2].matched ? m[2].str() : m[4].str();
    const std::string column = m[3].matched ? m[3].str() : m[5].str();
    message.LineNumber = std::stol(line);
    if (!column.empty()) message.CharNum = std::stol(column);
  } else if (std::regex_search(text, m, quoted)) {
    message.FileName = m[1];
  } else if (std::regex_search(text, m, named)) {
    message.FileName = m[1];
  }
}

}  // namespace

std::vector<CompilerMessage> ReadCompilerMessages(std::string_view Output) {
  std::vector<CompilerMessage> messages;
  size_t start = 0;
  while (start < Output.size()) {
    size_t end = Output.find('\n', start);
    if (end == std::string_view::npos) end = Output.size();
    const std::string line = trimmed(Output.substr(start, end - start));
    start = end + 1;
    // A crash report lists its stack as bare addresses.
    if (line.empty() || line.starts_with('$')) continue;

    CompilerMessage message;
    message.MessageString = line;
    const size_t colon = line.find(": ");
    if (colon != std::string::npos && line.find(' ') >= colon) message.Task = line.substr(0, colon);
    message.Severity = severityOf(message.Task, line);
    locate(message);
    messages.push_back(std::move(message));
  }
  return messages;
}

}  // namespace kv
