// Message boxes go to the host: the command line asks on a terminal, a test records them.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kv {

namespace mb {
// Button sets and icons, combined by addition.
inline constexpr int OKOnly = 0, OKCancel = 1, AbortRetryIgnore = 2, YesNoCancel = 3, YesNo = 4, RetryCancel = 5;
inline constexpr int Critical = 16, Question = 32, Exclamation = 48, Information = 64;
// Pressed buttons.
inline constexpr int OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7;
}  // namespace mb

class MessageHandler {
 public:
  virtual ~MessageHandler() = default;
  // Shows a message and returns the pressed button (mb::OK ...).
  virtual int show(const std::string& message, int buttons, const std::string& title) = 0;
};

// The process-wide host handler; nullptr restores the default, which writes the message to
// standard error and answers with the first button of the set.
void setMessageHandler(std::shared_ptr<MessageHandler> handler);
std::shared_ptr<MessageHandler> messageHandler();
int showHostMessage(const std::string& message, int buttons, const std::string& title);

// The buttons of the set in `buttons`, in the order the box shows them.
std::vector<int> buttonsOf(int buttons);
// The answer a host gives when nobody can be asked: the first button of the set.
int firstButton(int buttons);

}  // namespace kv
