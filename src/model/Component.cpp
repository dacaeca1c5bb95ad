#include "kavrel/model/Component.h"

#include "kavrel/model/vbProject.h"

namespace kv {

namespace {

template <class T>
bool visitAll(const ItemVector<T>& items, const Item::Visitor& visit) {
  for (const auto& i : items)
    if (!visit(i)) return false;
  return true;
}

}  // namespace

const MemberTable& Component::memberTable() const {
  return componentTable();
}

const MemberTable& Component::componentTable() {
  using C = Component;
  static const MemberTable table = [] {
    MemberTable t(documentedItemTable());
    t.property<C>("ComponentKind", [](const C& c) -> Variant { return c.ComponentKind(); });
    t.property<C>("Blocks", [](const C& c) -> Variant { return ItemListView::Of("Blocks", c, c.Blocks()); });
    t.property<C>("PropertyGroups",
                  [](const C& c) -> Variant { return ItemListView::Of("PropertyGroups", c, c.PropertyGroups()); });
    t.property<C>("Enumerations",
                  [](const C& c) -> Variant { return ItemListView::Of("Enumerations", c, c.Enumerations()); });
    t.property<C>("UDTs", [](const C& c) -> Variant { return ItemListView::Of("UDTs", c, c.UDTs()); });
    t.property<C>("Events", [](const C& c) -> Variant { return ItemListView::Of("Events", c, c.Events()); });
    t.property<C>("Declarations",
                  [](const C& c) -> Variant { return ItemListView::Of("Declarations", c, c.Declarations()); });
    t.property<C>("Variables", [](const C& c) -> Variant { return ItemListView::Of("Variables", c, c.Variables()); });
    t.property<C>("GenericArguments",
                  [](const C& c) -> Variant { return ItemListView::Of("GenericArguments", c, c.GenericArguments()); });
    t.property<C>("HasGenericArguments", [](const C& c) -> Variant { return c.HasGenericArguments(); });
    t.property<C>("BaseTypes", [](const C& c) -> Variant { return ItemListView::Of("BaseTypes", c, c.BaseTypes()); });
    t.property<C>("HasBaseTypes", [](const C& c) -> Variant { return c.HasBaseTypes(); });
    t.property<C>("Block", [](const C& c) -> Variant { return c.Block(); });
    t.property<C>("vbProject", [](const C& c) -> Variant { return c.vbProject(); });
    t.property<C>(
        "ModuleIsCollection", [](const C& c) -> Variant { return c.ModuleIsCollection(); },
        [](C& c, const Variant& v) { c.ModuleIsCollection(v.toBool()); });
    t.property<C>(
        "PropertyCommentsFrom", [](const C& c) -> Variant { return c.PropertyCommentsFrom(); },
        [](C& c, const Variant& v) { c.PropertyCommentsFrom(v.toString()); });
    t.property<C>(
        "FilteredCopyFrom", [](const C& c) -> Variant { return c.FilteredCopyFrom(); },
        [](C& c, const Variant& v) { c.FilteredCopyFrom(v.toString()); });
    t.property<C>("ConsolidatedName", [](const C& c) -> Variant { return c.ConsolidatedName(); });
    t.property<C>("SourceFileName", [](const C& c) -> Variant { return c.SourceFileName(); });
    t.property<C>("QualifiedPrefix", [](const C& c) -> Variant { return c.QualifiedPrefix(); });
    t.property<C>("SourceName", [](const C& c) -> Variant { return c.SourceName(); });
    t.property<C>("DotNetName", [](const C& c) -> Variant { return c.DotNetName(); });
    t.method<C>("FindMember",
                [](C& c, const Arguments& a) -> Variant { return c.FindMember(MemberTable::arg(a, 0).toString()); });
    return t;
  }();
  return table;
}

template <class T>
std::shared_ptr<T> Component::adopt(ItemVector<T>& list, std::shared_ptr<T> item) {
  Adopt(*item);
  list.push_back(item);
  return item;
}

void Component::Block(std::shared_ptr<kv::Block> b) {
  if (b) Adopt(*b);
  mBlock = std::move(b);
}

std::shared_ptr<kv::Block> Component::AddBlock(Atom name, BlockType type) {
  auto b = adopt(mBlocks, std::make_shared<kv::Block>(name, type));
  if (b->IsProperty()) PropertyGroup(name)->AddAccessor(b);
  return b;
}

std::shared_ptr<kv::PropertyGroup> Component::PropertyGroup(Atom name) {
  if (auto g = FindNamed(mPropertyGroups, name.str())) return g;
  return adopt(mPropertyGroups, std::make_shared<kv::PropertyGroup>(name));
}

void Component::Add(std::shared_ptr<kv::Block> block) {
  adopt(mBlocks, block);
  if (block->IsProperty()) PropertyGroup(block->Name())->AddAccessor(block);
}

void Component::Add(std::shared_ptr<Enumeration> enumeration) {
  adopt(mEnumerations, std::move(enumeration));
}

void Component::Add(std::shared_ptr<Variable> variable) {
  adopt(mVariables, std::move(variable));
}

std::shared_ptr<Enumeration> Component::AddEnumeration(Atom name) {
  return adopt(mEnumerations, std::make_shared<Enumeration>(name));
}

std::shared_ptr<UDT> Component::AddUDT(Atom name) {
  return adopt(mUDTs, std::make_shared<UDT>(name));
}

std::shared_ptr<Structure> Component::AddStructure(Atom name) {
  auto s = std::make_shared<Structure>(name);
  adopt<UDT>(mUDTs, s);
  return s;
}

std::shared_ptr<EventDeclaration> Component::AddEvent(Atom name) {
  return adopt(mEvents, std::make_shared<EventDeclaration>(name));
}

std::shared_ptr<DeclareDeclaration> Component::AddDeclaration(Atom name) {
  return adopt(mDeclarations, std::make_shared<DeclareDeclaration>(name));
}

std::shared_ptr<Variable> Component::AddVariable(Atom name, Atom typeText) {
  return adopt(mVariables, std::make_shared<Variable>(name, typeText));
}

std::shared_ptr<GenericArgument> Component::AddGenericArgument(Atom name) {
  return adopt(mGenericArguments, std::make_shared<GenericArgument>(name));
}

std::shared_ptr<BaseType> Component::AddBaseType(Atom name) {
  return adopt(mBaseTypes, std::make_shared<BaseType>(name));
}

std::shared_ptr<vbProject> Component::vbProject() const {
  return OwningProject();
}

std::string Component::DotNetName() const {
  if (!mDotNetName.empty()) return mDotNetName.str();
  std::string name = "T:";
  if (!mQualifiedPrefix.empty()) name += QualifiedPrefix() + ".";
  return name + Name();
}

ItemPtr Component::FindMember(std::string_view name) const {
  ItemPtr found;
  auto look = [&](const auto& list) {
    if (!found) found = FindNamed(list, name);
  };
  look(mBlocks);
  look(mPropertyGroups);
  look(mEvents);
  look(mDeclarations);
  look(mVariables);
  look(mEnumerations);
  look(mUDTs);
  return found;
}

bool Component::ForEachChild(const Visitor& visit) const {
  return visitAll(mBlocks, visit) && visitAll(mPropertyGroups, visit) && visitAll(mEnumerations, visit) &&
         visitAll(mUDTs, visit) && visitAll(mEvents, visit) && visitAll(mDeclarations, visit) &&
         visitAll(mVariables, visit) && visitAll(mGenericArguments, visit) && (!mBlock || visit(mBlock));
}

}  // namespace kv
