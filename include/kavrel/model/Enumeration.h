// Enumerations and user-defined types: named lists of members.
#pragma once

#include "kavrel/Export.h"
#include "kavrel/model/ComponentMember.h"
#include "kavrel/model/ItemList.h"

namespace kv {

class KV_API MemberList : public ComponentMember {
 public:
  using ComponentMember::ComponentMember;
  const MemberTable& memberTable() const override;
  static const MemberTable& memberListTable();

  const ItemVector<Variable>& Members() const { return mMembers; }
  std::shared_ptr<Variable> AddMember(Atom name);
  void Add(std::shared_ptr<Variable> member);
  bool ForEachChild(const Visitor& visit) const override;

 private:
  ItemVector<Variable> mMembers;
};

// Members of an enumeration carry their value in `Value`.
class KV_API Enumeration : public MemberList {
 public:
  using MemberList::MemberList;
  std::string typeName() const override { return "Enumeration"; }
};

// A user-defined type; members carry their type in `TypeText`.
class KV_API UDT : public MemberList {
 public:
  using MemberList::MemberList;
  std::string typeName() const override { return "UDT"; }
};

// A structure of a .NET language: a user-defined type under another name.
class KV_API Structure : public UDT {
 public:
  using UDT::UDT;
  std::string typeName() const override { return "Structure"; }
};

}  // namespace kv
