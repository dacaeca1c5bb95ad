#include "comments/KVContentFiles.h"

#include "kavrel/FileSystem.h"
#include "kavrel/ProjectContext.h"
#include "kavrel/XmlDocument.h"

namespace kv {

void KVContentFile::Load(const XMLNode& e) {
  const XMLAttributes attributes = e.Attributes();
  const std::string stored = attributes.Item("FileName").Value();
  auto project = KVProject.lock();
  FileName = project ? project->FromRelativeFileNAme(stored) : FileSystem(stored).FileName();
  DocType = attributes.Item("DocType").Value();
  ItemMoniker = attributes.ValueOr("ItemMoniker");
}

void KVContentFile::Save(XMLNode& e) const {
  auto project = KVProject.lock();
  e.SetAttribute("FileName", project ? project->ToRelativeFileName(FileName) : FileName);
  e.SetAttribute("DocType", DocType);
  e.SetAttribute("ItemMoniker", ItemMoniker);
}

void KVContentFiles::Load(const XMLNode& e) {
  mCol.Clear();
  for (const XMLNode child : e.ChildNodes()) {
    auto file = std::make_shared<KVContentFile>();
    file->KVProject = KVProject;
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
