// A host message handler that records every message box and answers with a fixed button, installed
// for the lifetime of the object.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/MessageBox.h"

namespace kv::test {

struct RecordedMessage {
  std::string text;
  int buttons;
  std::string title;
};

class RecordingHost : public MessageHandler {
 public:
  int show(const std::string& message, int buttons, const std::string& title) override {
    messages.push_back({message, buttons, title});
    return answer;
  }

  std::vector<RecordedMessage> messages;
  int answer = mb::OK;
};

// Installs a RecordingHost and restores the previous handler at the end of the scope.
class ScopedRecordingHost {
 public:
  ScopedRecordingHost() : mPrevious(messageHandler()), mHost(std::make_shared<RecordingHost>()) {
    setMessageHandler(mHost);
  }
  ~ScopedRecordingHost() { setMessageHandler(mPrevious); }
  ScopedRecordingHost(const ScopedRecordingHost&) = delete;
  ScopedRecordingHost& operator=(const ScopedRecordingHost&) = delete;

  RecordingHost* operator->() const { return mHost.get(); }
  const std::vector<RecordedMessage>& messages() const { return mHost->messages; }

 private:
  std::shared_ptr<MessageHandler> mPrevious;
  std::shared_ptr<RecordingHost> mHost;
};

}  // namespace kv::test
