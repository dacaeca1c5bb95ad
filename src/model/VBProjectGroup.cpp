#include "kavrel/model/VBProjectGroup.h"

namespace kv {

Variant Assemblies::get(std::string_view member) const {
  return assembliesTable().get(*this, member);
}
Variant Assemblies::call(std::string_view member, const Arguments& args) {
  return assembliesTable().call(*this, member, args);
}

const MemberTable& Assemblies::assembliesTable() {
  using A = Assemblies;
  static const MemberTable table = [] {
    MemberTable t;
    t.property<A>("Count", [](const A& a) -> Variant { return a.Count(); });
    t.method<A>("Item", [](A& a, const Arguments& args) -> Variant {
      auto group = a.Group();
      if (!group) throw ObjectNotSet();
      return ItemListView::Of("Assemblies", *group, a.Items())->Item(MemberTable::arg(args, 0));
    });
    t.method<A>("GetObjectFromQualifiedName", [](A& a, const Arguments& args) -> Variant {
      return a.GetObjectFromQualifiedName(MemberTable::arg(args, 0).toString());
    });
    return t;
  }();
  return table;
}

ItemPtr Assemblies::GetObjectFromQualifiedName(std::string_view name) const {
  for (const auto& p : mProjects)
    if (ItemPtr found = p->FindByQualifiedName(name)) return found;
  return nullptr;
}

const MemberTable& VBProjectGroup::memberTable() const {
  return projectGroupTable();
}

const MemberTable& VBProjectGroup::projectGroupTable() {
  using G = VBProjectGroup;
  static const MemberTable table = [] {
    MemberTable t(documentedItemTable());
    t.property<G>("Projects", [](const G& g) -> Variant { return ItemListView::Of("Projects", g, g.Projects()); });
    t.property<G>("Assemblies", [](const G& g) -> Variant { return g.Assemblies(); });
    return t;
  }();
  return table;
}

void VBProjectGroup::Add(std::shared_ptr<vbProject> project) {
  Adopt(*project);
  Assemblies();  // ties the assemblies to this group
  mAssemblies->mProjects.push_back(std::move(project));
}

std::shared_ptr<vbProject> VBProjectGroup::AddProject(Atom name, bool dotNet) {
  auto p = std::make_shared<vbProject>(name);
  p->IsDotNet(dotNet);
  Add(p);
  return p;
}

const std::shared_ptr<kv::Assemblies>& VBProjectGroup::Assemblies() const {
  if (mAssemblies->mGroup.expired())
    mAssemblies->mGroup = std::static_pointer_cast<VBProjectGroup>(std::const_pointer_cast<Item>(self()));
  return mAssemblies;
}

bool VBProjectGroup::ForEachChild(const Visitor& visit) const {
  for (const auto& p : Projects())
    if (!visit(p)) return false;
  return true;
}

}  // namespace kv
