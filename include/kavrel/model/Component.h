// A module, class or type: the unit that pages are made for, with its members.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/model/BaseType.h"
#include "kavrel/model/Block.h"
#include "kavrel/model/Enumeration.h"
#include "kavrel/model/ItemList.h"
#include "kavrel/model/PropertyGroup.h"

namespace kv {

class vbProject;

class KV_API Component : public DocumentedItem {
 public:
  using DocumentedItem::DocumentedItem;
  std::string typeName() const override { return "Component"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& componentTable();

  // What kind of component the source declares ("Class", "Module", "Interface", "Struct").
  const std::string& ComponentKind() const { return mKind.str(); }
  void ComponentKind(Atom v) { mKind = v; }

  const ItemVector<kv::Block>& Blocks() const { return mBlocks; }
  const ItemVector<kv::PropertyGroup>& PropertyGroups() const { return mPropertyGroups; }
  const ItemVector<Enumeration>& Enumerations() const { return mEnumerations; }
  const ItemVector<UDT>& UDTs() const { return mUDTs; }
  const ItemVector<EventDeclaration>& Events() const { return mEvents; }
  const ItemVector<DeclareDeclaration>& Declarations() const { return mDeclarations; }
  const ItemVector<Variable>& Variables() const { return mVariables; }
  const ItemVector<GenericArgument>& GenericArguments() const { return mGenericArguments; }
  bool HasGenericArguments() const { return !mGenericArguments.empty(); }
  // The types this component derives from, in declaration order. They are references, not
  // members: pages do not list them among the children.
  const ItemVector<BaseType>& BaseTypes() const { return mBaseTypes; }
  bool HasBaseTypes() const { return !mBaseTypes.empty(); }
  // A delegate's signature, when the component is a delegate.
  const std::shared_ptr<kv::Block>& Block() const { return mBlock; }
  void Block(std::shared_ptr<kv::Block> b);

  std::shared_ptr<kv::Block> AddBlock(Atom name, BlockType type = BlockType::Sub);
  // The group of the property `name`, made when there is none; accessors added with AddBlock and
  // a property block type join it.
  std::shared_ptr<kv::PropertyGroup> PropertyGroup(Atom name);
  std::shared_ptr<Enumeration> AddEnumeration(Atom name);
  std::shared_ptr<UDT> AddUDT(Atom name);
  std::shared_ptr<Structure> AddStructure(Atom name);
  std::shared_ptr<EventDeclaration> AddEvent(Atom name);
  std::shared_ptr<DeclareDeclaration> AddDeclaration(Atom name);
  std::shared_ptr<Variable> AddVariable(Atom name, Atom typeText = {});
  std::shared_ptr<GenericArgument> AddGenericArgument(Atom name);
  std::shared_ptr<BaseType> AddBaseType(Atom name);
  // Adopts a member made elsewhere: a plug-in's own kind derived from one of these.
  void Add(std::shared_ptr<kv::Block> block);
  void Add(std::shared_ptr<Enumeration> enumeration);
  void Add(std::shared_ptr<Variable> variable);

  std::shared_ptr<kv::vbProject> vbProject() const;
  // A component that is a collection class.
  bool ModuleIsCollection() const { return flag(kCollection); }
  void ModuleIsCollection(bool v) { flag(kCollection, v); }
  // Where the comments of properties come from ("Get", "Let", "Set"; empty for the default).
  const std::string& PropertyCommentsFrom() const { return mPropertyCommentsFrom.str(); }
  void PropertyCommentsFrom(Atom v) { mPropertyCommentsFrom = v; }
  // The filter of comment kinds this component copies from another item, when it does.
  const std::string& FilteredCopyFrom() const { return mFilteredCopyFrom.str(); }
  void FilteredCopyFrom(Atom v) { mFilteredCopyFrom = v; }
  // The name over all parts of a component declared in several places; the name by default.
  const std::string& ConsolidatedName() const { return mConsolidatedName.empty() ? Name() : mConsolidatedName.str(); }
  void ConsolidatedName(Atom v) { mConsolidatedName = v; }
  const std::string& SourceFileName() const { return mSourceFileName.str(); }
  void SourceFileName(Atom v) { mSourceFileName = v; }
  // The two name forms qualified names are rewritten with: the prefix before the component's own
  // name in qualified names (a namespace, say), and the name as the source writes it.
  const std::string& QualifiedPrefix() const { return mQualifiedPrefix.str(); }
  void QualifiedPrefix(Atom v) { mQualifiedPrefix = v; }
  const std::string& SourceName() const { return mSourceName.empty() ? Name() : mSourceName.str(); }
  void SourceName(Atom v) { mSourceName = v; }
  // The full .NET name with its kind and ":" ("T:Acme.Tools.Widget"): as set, or "T:" and the
  // qualified prefix and name joined by ".".
  std::string DotNetName() const;
  void DotNetName(Atom v) { mDotNetName = v; }

  // The member named `name` (ignoring case) among blocks, properties, events, declarations,
  // variables, enumerations and types, in that order.
  ItemPtr FindMember(std::string_view name) const;
  bool ForEachChild(const Visitor& visit) const override;

 private:
  enum : std::uint32_t { kCollection = kFirstKindFlag };
  template <class T>
  std::shared_ptr<T> adopt(ItemVector<T>& list, std::shared_ptr<T> item);

  Atom mKind, mPropertyCommentsFrom, mFilteredCopyFrom, mConsolidatedName, mSourceFileName, mQualifiedPrefix,
      mSourceName, mDotNetName;
  ItemVector<kv::Block> mBlocks;
  ItemVector<kv::PropertyGroup> mPropertyGroups;
  ItemVector<Enumeration> mEnumerations;
  ItemVector<UDT> mUDTs;
  ItemVector<EventDeclaration> mEvents;
  ItemVector<DeclareDeclaration> mDeclarations;
  ItemVector<Variable> mVariables;
  ItemVector<GenericArgument> mGenericArguments;
  ItemVector<BaseType> mBaseTypes;
  std::shared_ptr<kv::Block> mBlock;
};

}  // namespace kv
