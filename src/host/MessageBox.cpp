#include "host/MessageBox.h"

#include <iostream>

namespace kv {
namespace {

std::shared_ptr<MessageHandler>& current() {
  static std::shared_ptr<MessageHandler> handler;
  return handler;
}

}  // namespace

void setMessageHandler(std::shared_ptr<MessageHandler> handler) {
  current() = std::move(handler);
}
std::shared_ptr<MessageHandler> messageHandler() {
  return current();
}

std::vector<int> buttonsOf(int buttons) {
  switch (buttons & 7) {
    case mb::OKCancel: return {mb::OK, mb::Cancel};
    case mb::AbortRetryIgnore: return {mb::Abort, mb::Retry, mb::Ignore};
    case mb::YesNoCancel: return {mb::Yes, mb::No, mb::Cancel};
    case mb::YesNo: return {mb::Yes, mb::No};
    case mb::RetryCancel: return {mb::Retry, mb::Cancel};
    default: return {mb::OK};
  }
}

int firstButton(int buttons) {
  return buttonsOf(buttons).front();
}

int showHostMessage(const std::string& message, int buttons, const std::string& title) {
  if (auto handler = current()) return handler->show(message, buttons, title);
  std::cerr << title << ": " << message << '\n';
  return firstButton(buttons);
}

}  // namespace kv
