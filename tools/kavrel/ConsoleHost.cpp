#include "ConsoleHost.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <utility>

#include "files/UnicodeHelpers.h"
#include "host/Process.h"
#include "kavrel/Failure.h"
#include "kavrel/FileSystem.h"
#include "kavrel/Text.h"

namespace kavrel {
namespace fs = std::filesystem;

// --- Busy display -----------------------------------------------------------------------------

ConsoleBusyDialog::Bar& ConsoleBusyDialog::bar(long Index) {
  if (Index < 1 || Index > long(mBars.size()))
    throw kv::Failure(kv::err::SubscriptOutOfRange, "Subscript out of range");
  return mBars[size_t(Index - 1)];
}

void ConsoleBusyDialog::Title(const std::string& Title) {
  mTitle = Title;
  Changed();
}

void ConsoleBusyDialog::StatusText(const std::string& Text) {
  mStatus = Text;
  Changed();
}

void ConsoleBusyDialog::AddProgressBar(const std::string& Caption, long Min, long Max, long Value) {
  mBars.push_back({Caption, Min, Max, Value});
  if (!Caption.empty()) CaptionChanged(long(mBars.size()));
  Changed();
}

void ConsoleBusyDialog::RemoveProgressBar(long Index) {
  bar(Index);
  mBars.erase(mBars.begin() + (Index - 1));
  Changed();
}

void ConsoleBusyDialog::SetProgressCaption(long Index, const std::string& Caption) {
  Bar& b = bar(Index);
  if (b.caption == Caption) return;
  b.caption = Caption;
  CaptionChanged(Index);
  Changed();
}

void ConsoleBusyDialog::SetProgressValue(long Index, long Value) {
  Bar& b = bar(Index);
  if (b.value == Value) return;
  b.value = Value;
  Changed();
}

void ConsoleBusyDialog::Show() {
  mVisible = true;
  Changed();
}

void ConsoleBusyDialog::Hide() {
  mVisible = false;
}

void ConsoleBusyDialog::PrintLine(const std::string& line, std::ostream& out) {
  out << line << '\n' << std::flush;
}

void ConsoleBusyDialog::CancelPressed() {
  if (!mCancelEnabled) return;
  bool cancel = false;
  RaiseBeforeCancel(cancel);
}

namespace {

int terminalWidth() {
  winsize size{};
  if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return size.ws_col;
  return 80;
}

// Cuts a line to at most `columns` characters, counting each UTF-8 sequence as one column.
std::string fit(const std::string& line, int columns) {
  int count = 0;
  for (size_t i = 0; i < line.size(); ++i) {
    if ((static_cast<unsigned char>(line[i]) & 0xC0) == 0x80) continue;
    if (count++ == columns) return line.substr(0, i);
  }
  return line;
}

std::string firstLine(const std::string& text) {
  const size_t end = text.find_first_of("\r\n");
  return end == std::string::npos ? text : text.substr(0, end);
}

}  // namespace

void TerminalBusyDialog::Erase() {
  if (mDrawnLines == 0) return;
  std::cerr << "\x1b[" << mDrawnLines << "A\r\x1b[J";
  mDrawnLines = 0;
}

void TerminalBusyDialog::Draw() {
  const int width = terminalWidth() - 1;
  std::string out = "\x1b[1m" + fit(mTitle, width) + "\x1b[0m\n";
  out += fit(firstLine(mStatus), width) + "\n";
  for (const Bar& b : mBars) {
    constexpr int cells = 30;
    const long span = b.max - b.min;
    const long done = span > 0 ? std::clamp<long>((b.value - b.min) * cells / span, 0, cells) : 0;
    const long percent = span > 0 ? std::clamp<long>((b.value - b.min) * 100 / span, 0, 100) : 0;
    std::string line = "  [" + std::string(size_t(done), '=') + std::string(size_t(cells - done), ' ') + "] " +
                       std::to_string(percent) + "%  " + firstLine(b.caption);
    out += fit(line, width) + "\n";
  }
  std::cerr << out << std::flush;
  mDrawnLines = 2 + int(mBars.size());
}

void TerminalBusyDialog::Changed() {
  if (!mVisible) return;
  std::cout << std::flush;
  Erase();
  Draw();
}

void TerminalBusyDialog::Hide() {
  ConsoleBusyDialog::Hide();
  Erase();
  std::cerr << std::flush;
}

void TerminalBusyDialog::PrintLine(const std::string& line, std::ostream& out) {
  const bool drawn = mDrawnLines > 0;
  Erase();
  std::cerr << std::flush;
  out << line << '\n' << std::flush;
  // Kept on top, the display comes back below the line at once; otherwise with its next change.
  if (drawn && mOnTop) Draw();
}

void PlainBusyDialog::CaptionChanged(long Index) {
  const std::string& caption = mBars[size_t(Index - 1)].caption;
  if (!caption.empty()) std::cerr << std::string(size_t(2 * Index), ' ') << firstLine(caption) << '\n';
}

// --- Message boxes ----------------------------------------------------------------------------

int defaultButton(int buttons) {
  const std::vector<int> set = kv::buttonsOf(buttons);
  const size_t chosen = size_t((buttons >> 8) & 3);  // the second, third or fourth button as default
  return chosen < set.size() ? set[chosen] : set.front();
}

int ConsoleMessageHandler::show(const std::string& message, int buttons, const std::string& title) {
  std::cerr << title << ": " << message << '\n';
  if (!mInteractive || (buttons & 7) == kv::mb::OKOnly) return defaultButton(buttons);

  struct Choice {
    char key;
    const char* name;
    int button;
  };
  std::vector<Choice> choices;
  switch (buttons & 7) {
    case kv::mb::OKCancel: choices = {{'o', "ok", kv::mb::OK}, {'c', "cancel", kv::mb::Cancel}}; break;
    case kv::mb::AbortRetryIgnore:
      choices = {{'a', "abort", kv::mb::Abort}, {'r', "retry", kv::mb::Retry}, {'i', "ignore", kv::mb::Ignore}};
      break;
    case kv::mb::YesNoCancel:
      choices = {{'y', "yes", kv::mb::Yes}, {'n', "no", kv::mb::No}, {'c', "cancel", kv::mb::Cancel}};
      break;
    case kv::mb::YesNo: choices = {{'y', "yes", kv::mb::Yes}, {'n', "no", kv::mb::No}}; break;
    default: choices = {{'r', "retry", kv::mb::Retry}, {'c', "cancel", kv::mb::Cancel}}; break;
  }
  const int fallback = defaultButton(buttons);
  std::string prompt;
  for (const Choice& c : choices) {
    prompt += prompt.empty() ? "" : "/";
    prompt += c.button == fallback ? std::string(1, char(std::toupper(c.key))) : std::string(1, c.key);
  }
  for (;;) {
    std::cerr << '[' << prompt << "] " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer)) return fallback;
    answer = kv::text::trim(answer);
    if (answer.empty()) return fallback;
    for (const Choice& c : choices)
      if (std::tolower(static_cast<unsigned char>(answer[0])) == c.key) return c.button;
  }
}

// --- Results page -----------------------------------------------------------------------------

PageResultsDialog::PageResultsDialog(std::string file, std::string fallbackFolder, bool open, bool interactive)
    : mFile(std::move(file)), mFallbackFolder(std::move(fallbackFolder)), mOpen(open), mInteractive(interactive) {}

void PageResultsDialog::ShowPage(const std::string& BaseURL, const std::string& HTML) {
  mBaseURL = BaseURL;
  mHTML = HTML;
}

void PageResultsDialog::ShowModal() {
  std::string file = mFile;
  if (file.empty()) file = (OutputFolder.empty() ? mFallbackFolder : OutputFolder) + "buildresults.html";
  const fs::path path = fs::absolute(file);
  fs::create_directories(path.parent_path());

  std::string html = mHTML;
  if (!CompilerLog.empty()) {
    const fs::path log = fs::path(path).replace_extension(".compilerlog.txt");
    kv::FileSystem(log.string()).WriteAll(CompilerLog);
    html = kv::text::replaceAll(html, "\"showcompilerlog:", "\"file://" + kv::UnicodeHelpers::URLEncode(log.string()));
  }
  html = kv::text::replaceAll(html, "\"showfile:", "\"file://");
  // The page lives elsewhere than its template: its bare names still resolve against the template's folder.
  const std::string base = "<base href=\"file://" + kv::UnicodeHelpers::URLEncode(mBaseURL) + "\">";
  const long head = kv::text::find(html, "<head>", 1, true);
  if (head > 0) {
    const size_t at = kv::text::left(html, head - 1).size() + 6;
    html.insert(at, base);
  } else {
    html.insert(0, base);
  }
  kv::FileSystem(path.string()).WriteAll(html);
  std::cout << "Results page: " << path.string() << '\n' << std::flush;

  if (mOpen) kv::RunProcess({"xdg-open", path.string()});

  RetryCompile = false;
  if (RetryCompileAvailable && mInteractive) {
    std::cerr << "Compile the help file again? [y/N] " << std::flush;
    std::string answer;
    if (std::getline(std::cin, answer)) {
      answer = kv::text::trim(answer);
      RetryCompile = !answer.empty() && std::tolower(static_cast<unsigned char>(answer[0])) == 'y';
    }
  }
}

}  // namespace kavrel
