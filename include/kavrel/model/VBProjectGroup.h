// A group of projects, and its assemblies: the projects through which qualified names are found
// across the group.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/model/vbProject.h"

namespace kv {

class VBProjectGroup;

class KV_API Assemblies : public Object {
 public:
  std::string typeName() const override { return "Assemblies"; }
  Variant get(std::string_view member) const override;
  Variant call(std::string_view member, const Arguments& args = {}) override;
  static const MemberTable& assembliesTable();

  const ItemVector<vbProject>& Items() const { return mProjects; }
  long Count() const { return long(mProjects.size()); }
  // The item named `name` ("Project~Component~Member") in whichever project holds it, or nullptr.
  ItemPtr GetObjectFromQualifiedName(std::string_view name) const;
  std::shared_ptr<VBProjectGroup> Group() const { return mGroup.lock(); }

 private:
  friend class VBProjectGroup;
  ItemVector<vbProject> mProjects;
  std::weak_ptr<VBProjectGroup> mGroup;
};

class KV_API VBProjectGroup : public DocumentedItem {
 public:
  using DocumentedItem::DocumentedItem;
  std::string typeName() const override { return "VBProjectGroup"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& projectGroupTable();
  std::string QualifiedName() const override { return Name(); }

  const ItemVector<vbProject>& Projects() const { return mAssemblies->Items(); }
  void Add(std::shared_ptr<vbProject> project);
  std::shared_ptr<vbProject> AddProject(Atom name, bool dotNet = false);
  const std::shared_ptr<kv::Assemblies>& Assemblies() const;

  bool ForEachChild(const Visitor& visit) const override;

 private:
  std::shared_ptr<kv::Assemblies> mAssemblies = std::make_shared<kv::Assemblies>();
};

}  // namespace kv
