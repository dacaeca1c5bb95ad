// The dialog that shows the outcome of a build: the composed results page, the compiler log and
// a button to compile the help file again. Hosts implement it; the build driver fills it in.
#pragma once

#include <string>

namespace kv {

class ResultsDialog {
 public:
  virtual ~ResultsDialog() = default;

  std::string OutputFolder;
  std::string CompilerLog;
  std::string BuildLog;
  // The page template the results page was composed from.
  std::string BuildResultsHTMLFile;
  // Whether the user may ask for the help file to be compiled again.
  bool RetryCompileAvailable = false;
  // Set by the dialog when the user asked for another compile.
  bool RetryCompile = false;

  // The composed page and the base URL its relative links resolve against.
  virtual void ShowPage(const std::string& BaseURL, const std::string& HTML) = 0;
  // Shows the dialog and returns when the user closes it.
  virtual void ShowModal() = 0;
  virtual void Unload() = 0;
};

}  // namespace kv
