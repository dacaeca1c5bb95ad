#include "services/MessageBox.h"

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

int firstButton(int buttons) {
  switch (buttons & 7) {
    case mb::AbortRetryIgnore: return mb::Abort;
    case mb::YesNoCancel:
    case mb::YesNo: return mb::Yes;
    case mb::RetryCancel: return mb::Retry;
    default: return mb::OK;
  }
}

int showHostMessage(const std::string& message, int buttons, const std::string& title) {
  if (auto handler = current()) return handler->show(message, buttons, title);
  std::cerr << title << ": " << message << '\n';
  return firstButton(buttons);
}

}  // namespace kv
