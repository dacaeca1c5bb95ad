#include "comments/KVContentFile.h"

#include <algorithm>
#include <atomic>

#include "comments/ContentDates.h"
#include "files/ReplaceFile.h"
#include "files/XmlValues.h"
#include "host/FailureHandler.h"
#include "host/MessageBox.h"
#include "host/modMain.h"
#include "kavrel/FileSystem.h"
#include "kavrel/IKVProject.h"
#include "kavrel/Text.h"
#include "kavrel/XmlDocument.h"
#include "kavrel/model/Item.h"
#include "kavrel/model/TaggedComments.h"

namespace kv {

namespace {

constexpr std::string_view kModule = "KVContentFile";
constexpr std::string_view kRootName = "KavrelComments";

std::atomic<long> gFileCounter{0};

using xmlvalue::Attr;
using xmlvalue::Bool;
using xmlvalue::IsTrue;

// A name relative to the comment file when it can be, as "RelatedProject" stores it.
std::string relativeTo(const std::string& contentFile, const std::string& name) {
  if (name.empty() || contentFile.empty()) return name;
  FileSystem file(name), base(contentFile);
  return ToRelativeFileName(file, base);
}

std::string absoluteFrom(const std::string& contentFile, const std::string& name) {
  if (name.empty() || contentFile.empty()) return name;
  FileSystem base(contentFile);
  return FromRelativeFileNAme(name, base);
}

// The comments of an item, or nothing when it has none or cannot have any.
std::shared_ptr<TaggedComments> commentsOf(const ObjectPtr& item) {
  if (const auto modelItem = std::dynamic_pointer_cast<Item>(item))
    return modelItem->HasTaggedComments() ? modelItem->TaggedCommentsPtr() : nullptr;
  std::shared_ptr<TaggedComments> comments;
  ignoreFailure([&] { comments = std::dynamic_pointer_cast<TaggedComments>(item->get("TaggedComments").toObject()); });
  return comments;
}

}  // namespace

KVContentFile::KVContentFile() : mID(std::to_string(++gFileCounter) + "cf") {}

KVContentFile::~KVContentFile() {
  KillSpellTempFile();
}

float KVContentFile::FileVersionNumeric() const {
  float value = 0;
  ignoreFailure([&] { value = float(Variant(text::trim(FileVersion)).toDouble()); });
  return value;
}

void KVContentFile::Dirty(bool v) {
  if (v == mDirty) return;
  mDirty = v;
  mSubscribers.Raise([](KVContentFileEvents& e) { e.DirtyStateChanged(); });
}

void KVContentFile::takeBinding() {
  if (Bindings) Binding = Bindings(DocType);
}

ContentBinding& KVContentFile::binding() {
  if (!Binding) Binding = std::make_shared<ContentBinding>();
  return *Binding;
}

int KVContentFile::ShowMessage(const std::string& text, int buttons, const std::string& title) const {
  if (const auto project = std::dynamic_pointer_cast<IKVProject>(KVProject.lock()))
    return project->ShowMessageBox(text, buttons, title);
  return showHostMessage(text, buttons, title);
}

// --- The project file's element -----------------------------------------------------------------

void KVContentFile::Load(const XMLNode& e) {
  const XMLAttributes attributes = e.Attributes();
  const std::string stored = attributes.Item("FileName").Value();
  auto project = KVProject.lock();
  FileName = project ? project->FromRelativeFileNAme(stored) : FileSystem(stored).FileName();
  DocType = attributes.Item("DocType").Value();
  takeBinding();
  ItemMoniker = binding().AbsoluteMoniker(ReplaceSystemPath(attributes.ValueOr("ItemMoniker")), FileName);
}

void KVContentFile::Save(XMLNode& e) const {
  auto project = KVProject.lock();
  e.SetAttribute("FileName", project ? project->ToRelativeFileName(FileName) : FileName);
  e.SetAttribute("DocType", DocType);
  const std::string moniker = Binding ? Binding->RelativeMoniker(ItemMoniker, FileName)
                                      : ContentBinding().RelativeMoniker(ItemMoniker, FileName);
  e.SetAttribute("ItemMoniker", moniker);
}

// --- Reading --------------------------------------------------------------------------------------

bool KVContentFile::LoadFile(const std::string& SourceFileName, std::optional<bool> LoadOnDemand) {
  return guard<bool>(kModule, [&] {
    FileSystem file(SourceFileName);
    std::string text = file.ReadAll(codepage::Default);
    // Old writers let a control character of code 1 into files they marked as ASCII; no XML
    // parser takes it.
    if (text.find("encoding=\"us-ascii\"") != std::string::npos) std::replace(text.begin(), text.end(), '\x01', ' ');
    const std::string previous = FileName;
    FileName = file.FileName();
    if (!Read(text, LoadOnDemand)) {
      FileName = previous;
      return false;
    }
    return true;
  });
}

bool KVContentFile::LoadText(const std::string& Text, std::optional<bool> LoadOnDemand) {
  return guard<bool>(kModule, [&] { return Read(Text, LoadOnDemand); });
}

std::string KVContentFile::RebindText() {
  return mDirty || mStoredText.empty() ? SaveText() : mStoredText;
}

bool KVContentFile::Rebind(const std::string& Text) {
  return guard<bool>(kModule, [&] {
    const bool dirty = mDirty;
    const bool bound = Read(Text, LoadOnDemand, false);
    Dirty(dirty);
    return bound;
  });
}

bool KVContentFile::Read(const std::string& text, std::optional<bool> loadOnDemand, bool tellOrphans) {
  auto doc = std::make_shared<XMLDocument>();
  if (!doc->LoadXML(text) || doc->RootNode().Name() != kRootName) {
    ShowMessage("This file does not appear to contain Kavrel comment data", mb::Exclamation, "Invalid file content");
    return false;
  }
  const XMLNode root = doc->RootNode();
  ReadAttributes(root);
  if (loadOnDemand) LoadOnDemand = *loadOnDemand;
  if (LoadSourceComments) LoadOnDemand = false;

  IgnoreWordList = std::make_shared<Collection<std::string>>();
  UserData.clear();
  for (const XMLNode child : root.ChildNodes()) {
    const std::string name = child.Name();
    if (name == "IgnoreWordList") {
      IgnoreWordList = std::make_shared<Collection<std::string>>();
      for (const std::string& part : text::split(child.Text(), "|")) {
        const std::string word = text::trim(part);
        if (!word.empty()) ignoreFailure([&] { IgnoreWordList->Add(word, word); });
      }
    } else if (name == "UserData") {
      UserData = child.Xml();
    }
  }

  LoadCount = 0;
  OrphanedItems = std::make_shared<KVOrphanedItems>();
  mRootItem.reset();
  mContentDoc = doc;
  mFullyPopulated = false;
  if (!binding().Bind(*this)) {
    mContentDoc.reset();
    return false;
  }
  // Loading on demand, what is found now is applied and the rest waits for its items; a full
  // load applies everything it can, makes orphans of the rest and needs the document no more.
  if (mRootItem) InternalApplyContent("", !LoadOnDemand);
  if (mRootItem && !LoadOnDemand) mContentDoc.reset();
  if (tellOrphans && OrphanedItems->Count() > 0)
    ShowMessage(std::to_string(OrphanedItems->Count()) + " item(s) with comments in the Content File '" + FileName +
                    "' could not be found. Their comments are kept and saved with the file.",
                mb::Exclamation, "Orphaned comments");
  mLoaded = true;
  mStoredText = text;
  Dirty(false);
  return true;
}

void KVContentFile::ReadAttributes(const XMLNode& root) {
  // A file read again starts from the defaults, so that what it lacks does not come from before.
  ShowInherited = LoadPrivate = LoadOnDemand = LoadSourceComments = false;
  FileVersion = "5.0";
  TemplateName = TreePath = LoadIncludeFilter = LoadExcludeFilter = "";
  SpellLastCheckDateTime = DateTime{};
  mRelatedProject.clear();
  mRelatedLDProject.clear();

  ignoreFailure([&] { FileVersion = Attr(root, "Version"); });
  std::string moniker;
  if (FileVersionNumeric() < 4.0f) {
    std::string itemType, filter;
    ignoreFailure([&] { TemplateName = Attr(root, "TemplateName"); });
    ignoreFailure([&] { moniker = Attr(root, "ComponentFileName"); });
    ignoreFailure([&] { itemType = Attr(root, "ItemType"); });
    ignoreFailure([&] { filter = Attr(root, "Filter"); });
    const auto colon = itemType.find(':');
    DocType = colon != std::string::npos && itemType.substr(0, colon) == "NamespaceItem" ? itemType.substr(colon + 1)
                                                                                         : "Core";
    ShowInherited = filter == "IncludeInherited=True";
  } else {
    // These four every writer since 4.0 wrote: a file without them is damaged, and says so once.
    bool complete = true;
    auto required = [&](auto&& read) { complete = ignoreFailure(read) && complete; };
    required([&] { TemplateName = Attr(root, "Template"); });
    required([&] { moniker = Attr(root, "Moniker"); });
    required([&] { DocType = Attr(root, "DocType"); });
    required([&] { ShowInherited = IsTrue(Attr(root, "ShowInherited")); });
    // Later writers added these; older files load without them.
    ignoreFailure([&] { SpellLastCheckDateTime = contentdate::FromCheckDate(Attr(root, "SpellLastCheckDateTime")); });
    ignoreFailure([&] { TreePath = Attr(root, "TreePath"); });
    ignoreFailure([&] { mRelatedProject = absoluteFrom(FileName, Attr(root, "RelatedProject")); });
    ignoreFailure([&] { mRelatedLDProject = absoluteFrom(FileName, Attr(root, "RelatedLDProject")); });
    ignoreFailure([&] { LoadIncludeFilter = Attr(root, "LoadIncludeFilter"); });
    ignoreFailure([&] { LoadExcludeFilter = Attr(root, "LoadExcludeFilter"); });
    ignoreFailure([&] { LoadPrivate = IsTrue(Attr(root, "LoadPrivate")); });
    ignoreFailure([&] { LoadOnDemand = IsTrue(Attr(root, "LoadOnDemand")); });
    ignoreFailure([&] { LoadSourceComments = IsTrue(Attr(root, "LoadSourceComments")); });
    if (!complete)
      ShowMessage("Could not read one or more settings from the Content File '" + FileName +
                      "'. They have their default values; save the file to store them again.",
                  mb::Exclamation, "Content File damaged");
  }
  takeBinding();
  ItemMoniker = binding().AbsoluteMoniker(ReplaceSystemPath(moniker), FileName);
}

// --- Writing --------------------------------------------------------------------------------------

std::string KVContentFile::SaveText() {
  XMLDocument doc;
  XMLNode root = doc.RootNode();
  root.Name(kRootName);
  root.SetAttribute("Version", "5.0");
  root.SetAttribute("Moniker", binding().RelativeMoniker(ItemMoniker, FileName));
  root.SetAttribute("DocType", DocType);
  root.SetAttribute("Template", TemplateName);
  root.SetAttribute("ShowInherited", Bool(ShowInherited));
  root.SetAttribute("SpellLastCheckDateTime", contentdate::CheckDate(SpellLastCheckDateTime));
  root.SetAttribute("TreePath", TreePath);
  root.SetAttribute("RelatedProject", relativeTo(FileName, mRelatedProject));
  root.SetAttribute("RelatedLDProject", relativeTo(FileName, mRelatedLDProject));
  root.SetAttribute("LoadIncludeFilter", LoadIncludeFilter);
  root.SetAttribute("LoadExcludeFilter", LoadExcludeFilter);
  root.SetAttribute("LoadPrivate", Bool(LoadPrivate));
  root.SetAttribute("LoadOnDemand", Bool(LoadOnDemand));
  root.SetAttribute("LoadSourceComments", Bool(LoadSourceComments));

  std::string words;
  for (const auto& word : *IgnoreWordList) words += (words.empty() ? "" : "|") + word;
  root.AddChild("IgnoreWordList").Text(words);

  if (!UserData.empty()) {
    XMLDocument userData;
    if (userData.LoadXML(UserData) && userData.RootNode().ChildNodes().Count() > 0)
      root.AppendCopy(userData.RootNode());
  }

  SaveCount = 0;
  if (mRootItem) binding().ForEachItem(mRootItem, [&](const ObjectPtr& item) { WriteItem(root, item); });
  // Comments not yet applied to items go back as they were read.
  if (mContentDoc)
    for (const XMLNode child : mContentDoc->RootNode().ChildNodes())
      if (child.Name() == "c") root.AppendCopy(child);
  WriteOrphans(root);
  return doc.Xml();
}

namespace {

void writeComments(XMLNode& root, const TaggedComments& comments, const std::string& qualifiedName, long& count) {
  for (const auto& comment : comments) {
    if (comment->CommentState() == CommentState::Removed || comment->Hidden()) continue;
    XMLNode c = root.AddChild("c");
    c.Text(comment->Description());
    c.SetAttribute("eid", qualifiedName);
    c.SetAttribute("tid", comment->TagIdentifier());
    c.SetAttribute("q", comment->Qualifier());
    c.SetAttribute("cd", contentdate::DayNumber(comment->CommentDate()));
    ++count;
  }
}

}  // namespace

void KVContentFile::WriteItem(XMLNode& root, const ObjectPtr& item) {
  const auto comments = commentsOf(item);
  if (!comments || comments->Count() == 0) return;
  writeComments(root, *comments, item->get("QualifiedName").toString(), SaveCount);
}

void KVContentFile::WriteOrphans(XMLNode& root) {
  for (const auto& orphan : *OrphanedItems)
    if (orphan->TaggedComments) writeComments(root, *orphan->TaggedComments, orphan->OldQualifiedName, SaveCount);
}

bool KVContentFile::SaveFile(const std::string& TargetFileName) {
  // The file is always written where it was read from: callers of old passed other names.
  (void)TargetFileName;
  return guard<bool>(kModule, [&] {
    const std::string text = SaveText();
    ignoreFailure([&] {
      const FileSystem current(FileName);
      if (current.Exists()) current.CopyTo(FileName + ".bak");
    });
    try {
      replaceFileContents(FileName, text);
    } catch (const Failure& failure) {
      if (failure.number() == err::PathFileAccessError)
        ShowMessage(
            "Content File save failed with a Path/File access error. If the Content File is under Source "
            "Control or otherwise read-only, please ensure the file is Checked Out / writeable and then "
            "retry the save.",
            mb::Exclamation, "Save Failed");
      else
        ShowMessage("Could not save Content File. File error " + std::to_string(failure.number()), mb::Exclamation,
                    "Save Failed");
      return false;
    }
    mLoaded = true;
    mStoredText = text;
    Dirty(false);
    return true;
  });
}

}  // namespace kv
