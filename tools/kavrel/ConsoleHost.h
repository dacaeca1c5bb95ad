// What kavrel shows while a build runs and when it ends: a busy display on the terminal (or plain
// lines elsewhere), questions on the terminal, and the results page written to a file.
#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "build/BusyDialog.h"
#include "build/ResultsDialog.h"
#include "host/MessageBox.h"

namespace kavrel {

// Progress bars and the status line, kept here and shown by the subclasses.
class ConsoleBusyDialog : public kv::BusyDialog {
 public:
  void AnimationFile(const std::string& /*FileName*/) override {}  // a terminal shows no animation
  void Title(const std::string& Title) override;
  void StatusText(const std::string& Text) override;
  void CancelEnabled(bool Enabled) override { mCancelEnabled = Enabled; }
  void AlwaysOnTop(bool OnTop) override { mOnTop = OnTop; }
  long ProgressBarCount() const override { return long(mBars.size()); }
  void AddProgressBar(const std::string& Caption, long Min, long Max, long Value) override;
  void RemoveProgressBar(long Index) override;
  void SetProgressCaption(long Index, const std::string& Caption) override;
  void SetProgressValue(long Index, long Value) override;
  void Show() override;
  void Hide() override;

  // Prints a line of build output on `out` (standard output or error) without breaking the display.
  virtual void PrintLine(const std::string& line, std::ostream& out);
  // Passes an interrupt from the keyboard on as a press of Cancel, when Cancel is enabled.
  void CancelPressed();

 protected:
  struct Bar {
    std::string caption;
    long min = 0, max = 0, value = 0;
  };
  Bar& bar(long Index);
  virtual void Changed() {}
  virtual void CaptionChanged(long /*Index*/) {}

  std::string mTitle, mStatus;
  std::vector<Bar> mBars;
  bool mCancelEnabled = false;
  bool mOnTop = false;
  bool mVisible = false;
};

// Draws the display with ANSI sequences on standard error, below the build output.
class TerminalBusyDialog : public ConsoleBusyDialog {
 public:
  void Hide() override;
  void PrintLine(const std::string& line, std::ostream& out) override;

 protected:
  void Changed() override;

 private:
  void Erase();
  void Draw();
  int mDrawnLines = 0;
};

// Writes the caption of a progress bar as a line of its own on standard error whenever it
// changes; the status line is left out, since it repeats the build output.
class PlainBusyDialog : public ConsoleBusyDialog {
 protected:
  void CaptionChanged(long Index) override;
};

// Asks on the terminal, or answers with the default button when nobody can be asked.
class ConsoleMessageHandler : public kv::MessageHandler {
 public:
  explicit ConsoleMessageHandler(bool interactive) : mInteractive(interactive) {}
  int show(const std::string& message, int buttons, const std::string& title) override;

 private:
  bool mInteractive;
};

// Writes the composed results page to a file, and the compiler log beside it; the page's links
// to files become file links. Offers another compile on the terminal when one is available.
class PageResultsDialog : public kv::ResultsDialog {
 public:
  // `file` empty: "buildresults.html" in the output folder, or in `fallbackFolder` without one.
  PageResultsDialog(std::string file, std::string fallbackFolder, bool open, bool interactive);
  void ShowPage(const std::string& BaseURL, const std::string& HTML) override;
  void ShowModal() override;
  void Unload() override {}

 private:
  std::string mFile, mFallbackFolder, mBaseURL, mHTML;
  bool mOpen, mInteractive;
};

// The default button of a message box: the one its flags name, else the first of its set.
int defaultButton(int buttons);

}  // namespace kavrel
