// A source project or the model of an assembly: the root of a model, owning its components.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "kavrel/Export.h"
#include "kavrel/model/Component.h"
#include "kavrel/model/TaggedComments.h"

namespace kv {

class Assemblies;

class KV_API vbProject : public DocumentedItem {
 public:
  using DocumentedItem::DocumentedItem;
  std::string typeName() const override { return "vbProject"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& projectTable();

  // What the model reads from its source; the factory turns seven of them on.
  struct Options {
    bool IncludePublic = false;
    bool IncludeFriend = false;
    bool IncludeProtected = false;
    bool IncludePrivate = false;
    bool ReadSourceComments = false;
    bool ReadXMLComments = false;
    bool MergeSourceComments = false;
    bool KeepSourceText = false;
  };
  Options& ProjectOptions() { return mOptions; }
  const Options& ProjectOptions() const { return mOptions; }

  // A project is the root of its names.
  std::string QualifiedName() const override { return Name(); }

  const ItemVector<Component>& Components() const { return mComponents; }
  std::shared_ptr<Component> AddComponent(Atom name, Atom kind = "Class");
  void Add(std::shared_ptr<Component> component);
  // The component named `name`, ignoring case, or nullptr.
  std::shared_ptr<Component> FindComponent(std::string_view name) const;

  bool IsDotNet() const { return flag(kDotNet); }
  void IsDotNet(bool v) { flag(kDotNet, v); }
  const std::string& FileName() const { return mFileName; }
  void FileName(std::string v) { mFileName = std::move(v); }

  // The item a cref text names ("T:Acme.Widget", "M:Acme.Widget.Run(System.Int32)"), or nullptr.
  ItemPtr GetObjectFromCRef(std::string_view cref) const;
  // An item of this project by its name: a component, or "Component.Member", or else the first
  // item of that name anywhere in the project.
  ItemPtr GetObjectByName(std::string_view name) const;
  // The assemblies of the group the project belongs to, or nullptr for a project on its own.
  std::shared_ptr<kv::Assemblies> Assemblies() const;
  // Drops the comments and descriptions of every item of the project.
  void ClearComments();

  // Joins `text` to `description` as comment kinds ask: wrap 2 by a line break ("<crlf>"), 3 in
  // paragraphs, anything else by a blank. Both arguments take the result too.
  static std::string AppendDescription(std::string& description, std::string& text, long wrap = 0);
  // Adds `comment` to `comments` by the rules of its kind: kinds whose entries merge join their
  // text into the comment already there; others stand side by side. The comment services of the
  // library publish both rules; they live here because the model offers them to plug-ins too.
  static void AddTaggedComment(kv::TaggedComments& comments, const TaggedCommentPtr& comment, bool isBuffer = false,
                               bool preserveOriginalTaggedComments = false);

  bool ForEachChild(const Visitor& visit) const override;

 protected:
  // Finds the component by its name in an index, which a project of thousands of components
  // needs when a comment file looks up one item per comment.
  ItemPtr FindByPath(std::string_view rest) const override;

 public:
  // How a .NET assembly is read into a project; a plug-in that reads assemblies installs it.
  using DotNetReader = std::function<void(vbProject& project, const std::string& fileName)>;
  static void SetDotNetReader(DotNetReader reader);
  // A .NET project for the assembly `fileName`, filled by the installed reader if there is one.
  static std::shared_ptr<vbProject> LoadDotNet(const std::string& fileName);

 private:
  enum : std::uint32_t { kDotNet = kFirstKindFlag };
  ItemVector<Component> mComponents;
  std::string mFileName;
  Options mOptions;
  // Lower-cased component names to positions, made on first lookup and dropped on Add.
  mutable std::unordered_multimap<std::string, std::size_t> mComponentIndex;
};

}  // namespace kv
