// The parts of the template that touch files, kept apart so that rendering to a string needs no
// file support.
#include "host/FailureHandler.h"
#include "kavrel/FileSystem.h"
#include "template/ParserTemplate.h"

namespace kv {

namespace {

// Writes the rendered text as it stands. Tags that stream into the file write whole lines, so
// the file goes back to line feeds on after each write.
void writePending(std::shared_ptr<FileSystem>& file, std::string& pending) {
  if (pending.empty() || !file) return;
  file->OutputLineFeeds(false);
  file->WriteLine(pending);
  file->OutputLineFeeds(true);
  pending.clear();
}

}  // namespace

void ParserTemplate::Load(std::string_view path) {
  guard("ParserTemplate", [&] {
    mNodes.clear();
    mLoadErrors.clear();
    FileSystem file{std::string(path)};
    if (file.Exists()) LoadText(file.ReadAll());
  });
}

void ParserTemplate::ParseTo(std::shared_ptr<FileSystem>& output) {
  guard("ParserTemplate", [&] {
    std::string pending;
    render(output, pending, &writePending);
  });
}

}  // namespace kv
