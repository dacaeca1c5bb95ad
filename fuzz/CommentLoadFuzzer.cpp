// Feeds arbitrary text to the comment file reader. Whatever it reads must save, and the saved
// text must read back and save to the same text.
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "comments/KVContentFile.h"
#include "host/MessageBox.h"

namespace {

struct QuietHost : kv::MessageHandler {
  int show(const std::string&, int, const std::string&) override { return kv::mb::OK; }
};

// The saved text, or nothing when the reader refused the input.
std::optional<std::string> loadAndSave(const std::string& text) {
  kv::KVContentFile file;
  file.FileName = "/nonexistent/kavrel-fuzz/comments/library.kvc";  // relative names resolve against it
  if (!file.LoadText(text)) return std::nullopt;
  return file.SaveText();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool installed = [] {
    kv::setMessageHandler(std::make_shared<QuietHost>());
    return true;
  }();
  (void)installed;
  const auto saved = loadAndSave(std::string(reinterpret_cast<const char*>(data), size));
  if (!saved) return 0;
  const auto again = loadAndSave(*saved);
  if (!again || *again != *saved) std::abort();
  return 0;
}
