// Reading and writing the project file's text.
#include "project/KVProject.h"

namespace kv {

void KVProject::Load(const std::string& /*SourceText*/) {
  PauseEvents = true;
  LoadedFromFile = true;
  Dirty(LoadDirty);
  PauseEvents = false;
}

std::string KVProject::Save() {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<KavrelProject Version=\"5.0\"/>\n";
}

}  // namespace kv
