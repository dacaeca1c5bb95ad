// One comment file of a project: the authored comments of one root item (an assembly, a project,
// a database...) named by a moniker, kept in an XML file beside the project. The object reads the
// file, keeps what is not yet applied to items, the spell checker's word list and the items whose
// comments have lost their item, and writes everything back. Binding the file to its items goes
// through its ContentBinding.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "comments/ContentBinding.h"
#include "comments/KVOrphanedItems.h"
#include "kavrel/Collection.h"
#include "kavrel/Object.h"
#include "kavrel/Variant.h"
#include "services/Subscribers.h"

namespace kv {

class NamespaceDef;
class ProjectContext;
class XMLDocument;
class XMLNode;

class KVContentFileEvents {
 public:
  virtual ~KVContentFileEvents() = default;
  virtual void DirtyStateChanged() {}
  // A provider that loads on demand has loaded the part of the tree below `Item`, and the
  // comments that `RelevantContentFilter` names have been applied to it.
  virtual void ItemPopulated(const ObjectPtr& /*Item*/, const std::string& /*RelevantContentFilter*/) {}
};

class KVContentFile {
 public:
  KVContentFile();
  ~KVContentFile();
  KVContentFile(const KVContentFile&) = delete;
  KVContentFile& operator=(const KVContentFile&) = delete;

  std::weak_ptr<ProjectContext> KVProject;
  std::string FileName;  // absolute
  std::string DocType;
  std::string ItemMoniker;  // absolute; the file stores it relative to itself
  std::shared_ptr<ContentBinding> Binding;
  // Gives the binding of a doc type by its name (nothing for a doc type that is not known); a
  // file that reads its doc type takes its binding from here.
  std::function<std::shared_ptr<ContentBinding>(const std::string& DocType)> Bindings;

  // --- The file's settings ---------------------------------------------------------------------
  bool ShowInherited = false;
  std::string FileVersion = "5.0";
  std::string TemplateName;
  std::string TreePath;  // the editor's place in the tree
  DateTime SpellLastCheckDateTime{};
  std::string LoadIncludeFilter, LoadExcludeFilter;
  bool LoadPrivate = false;
  bool LoadOnDemand = false;
  bool LoadSourceComments = false;
  // The "UserData" element as XML text, carried through unread.
  std::string UserData;
  // Words the spell checker accepts, keyed by the word.
  std::shared_ptr<Collection<std::string>> IgnoreWordList = std::make_shared<Collection<std::string>>();
  std::shared_ptr<KVOrphanedItems> OrphanedItems = std::make_shared<KVOrphanedItems>();

  // The collection key: a process-wide number followed by "cf".
  const std::string& ID() const { return mID; }
  float FileVersionNumeric() const;
  // Absolute file names; stored relative to the comment file.
  const std::string& RelatedProject() const { return mRelatedProject; }
  void RelatedProject(std::string v) { mRelatedProject = std::move(v); }
  const std::string& RelatedLDProject() const { return mRelatedLDProject; }
  void RelatedLDProject(std::string v) { mRelatedLDProject = std::move(v); }

  // Comments read at the last load and written at the last save.
  long LoadCount = 0;
  long SaveCount = 0;

  // The item the file documents, set by its binding.
  const ObjectPtr& RootItem() const { return mRootItem; }
  void RootItem(ObjectPtr item) { mRootItem = std::move(item); }
  // The file's document while comments in it are not yet applied to items, else nothing. Its
  // "c" elements leave it as they are applied.
  const std::shared_ptr<XMLDocument>& ContentDocument() const { return mContentDoc; }
  void ReleaseContentDocument() { mContentDoc.reset(); }
  // Whether the file was read, or written, by this object: only then may a save replace it.
  bool Loaded() const { return mLoaded; }

  bool Dirty() const { return mDirty; }
  void Dirty(bool v);
  void Subscribe(std::weak_ptr<KVContentFileEvents> subscriber) { mSubscribers.Add(std::move(subscriber)); }

  // --- The project file's "CommentFile" element --------------------------------------------------
  void Load(const XMLNode& e);
  void Save(XMLNode& e) const;

  // --- The comment file -----------------------------------------------------------------------
  // Reads the file (it becomes FileName) and binds it to its items. A file that is not a comment
  // file, or that does not parse, is reported once and leaves the object as it was: false.
  bool LoadFile(const std::string& SourceFileName, std::optional<bool> LoadOnDemand = {});
  // Writes the file, always to FileName whatever is asked (an empty argument means FileName),
  // keeping the previous content as FileName + ".bak". The file is replaced whole or not at all;
  // a failure is reported and gives false.
  bool SaveFile(const std::string& TargetFileName = {});
  // The same without the disk, for readers of text: FileName only resolves relative names.
  bool LoadText(const std::string& Text, std::optional<bool> LoadOnDemand = {});
  std::string SaveText();
  // Binds the file again after its doc type has made its items anew (a new parse, say): `Text`,
  // what RebindText gave before, is read onto the new items. The user was told of orphans before,
  // and Dirty stays as it was.
  bool Rebind(const std::string& Text);
  // The file as last read or written; with unsaved changes, as SaveText makes it. Comments the doc
  // type puts on its items itself (from source code) are in it only then.
  std::string RebindText();

  // --- Comments onto items ------------------------------------------------------------------------
  // A full load applies every comment at once; one that loads on demand leaves the comments of
  // items not yet loaded in ContentDocument() until these calls take them.
  // Applies the comments of the item `QualifiedName` and of everything below it; a comment whose
  // item is not found becomes an orphan. An empty name applies what is found, everywhere.
  void ApplyContent(const std::string& QualifiedName);
  void InternalApplyContent(const std::string& QualifiedNameFilter, bool AddOrphanedItems);
  // Whether `Name` is `Filter` (ignoring case) or lies below it (a "~" part further).
  static bool FilterMatch(std::string_view Filter, std::string_view Name);
  // `Item` and the items below it (by the definitions below `NamespaceDef`) whose having comments
  // equals `HasContent`, applying their comments first; added to `Collection` when given.
  std::shared_ptr<std::vector<ObjectPtr>> FindItems(const ObjectPtr& Item,
                                                    const std::shared_ptr<NamespaceDef>& NamespaceDef, bool HasContent,
                                                    std::shared_ptr<std::vector<ObjectPtr>> Collection = nullptr);
  // Kept for providers of the older contract; does nothing.
  void ItemPopulated(const ObjectPtr&) {}
  // A provider that loads on demand has loaded `Item`'s part of the tree, whose comments
  // `RelevantContentFilter` names.
  void ItemPopulatedEx(const ObjectPtr& Item, const std::string& RelevantContentFilter);
  // Loads the whole tree on demand and applies every comment to it, once.
  void FullyPopulate();
  bool FullyPopulated() const { return mFullyPopulated; }

  // --- The spell checker's word list --------------------------------------------------------------
  // Writes every word the checker must accept to a temporary file and returns its name.
  std::string SaveSpellIgnoreWordListToFile();
  void KillSpellTempFile();
  const std::string& SpellTempFile() const { return mSpellTempFile; }
  void AddIgnoreWord(const std::string& Word);
  void RemoveIgnoreWord(const std::string& Word);

  // A message to the user through the project, or the host when there is none.
  int ShowMessage(const std::string& text, int buttons, const std::string& title) const;

 private:
  void InternalFullyPopulate(const ObjectPtr& Item, const NamespaceDef& NamespaceDef);
  void takeBinding();
  bool Read(const std::string& text, std::optional<bool> loadOnDemand, bool tellOrphans = true);
  void ReadAttributes(const XMLNode& root);
  void WriteItem(XMLNode& root, const ObjectPtr& item);
  void WriteOrphans(XMLNode& root);
  void WriteItemNames(std::string& lines);
  void AppendItemNames(const ObjectPtr& item);
  ContentBinding& binding();

  std::string mID;
  std::string mRelatedProject, mRelatedLDProject;
  ObjectPtr mRootItem;
  std::shared_ptr<XMLDocument> mContentDoc;
  std::string mSpellTempFile;
  std::string mStoredText;  // the text last read or written
  bool mLoaded = false;
  bool mFullyPopulated = false;
  bool mDirty = false;
  Subscribers<KVContentFileEvents> mSubscribers;
};

}  // namespace kv
