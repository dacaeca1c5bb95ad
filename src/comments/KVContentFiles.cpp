#include "comments/KVContentFiles.h"

#include "kavrel/XmlDocument.h"

namespace kv {

void KVContentFiles::LoadFiles() {
  for (const auto& file : *this) file->LoadFile(file->FileName);
}

bool KVContentFiles::SaveFiles() {
  bool saved = true;
  // An unread file is never written: its content would be lost.
  for (const auto& file : *this)
    if (file->Loaded()) saved = file->SaveFile() && saved;
  return saved;
}

void KVContentFiles::Load(const XMLNode& e) {
  mCol.Clear();
  for (const XMLNode child : e.ChildNodes()) {
    auto file = std::make_shared<KVContentFile>();
    file->KVProject = KVProject;
    file->Bindings = Bindings;
    file->Load(child);
    mCol.Add(file);
  }
}

void KVContentFiles::Save(XMLNode& e) const {
  for (const auto& file : *this) {
    XMLNode child = e.AddChild("CommentFile");
    file->Save(child);
  }
}

}  // namespace kv
