#include "kavrel/model/Enumeration.h"

namespace kv {

const MemberTable& MemberList::memberTable() const {
  return memberListTable();
}

const MemberTable& MemberList::memberListTable() {
  using L = MemberList;
  static const MemberTable table = [] {
    MemberTable t(componentMemberTable());
    t.property<L>("Members", [](const L& l) -> Variant { return ItemListView::Of("Members", l, l.Members()); });
    return t;
  }();
  return table;
}

std::shared_ptr<Variable> MemberList::AddMember(Atom name) {
  auto v = std::make_shared<Variable>(name);
  Add(v);
  return v;
}

void MemberList::Add(std::shared_ptr<Variable> member) {
  Adopt(*member);
  mMembers.push_back(std::move(member));
}

bool MemberList::ForEachChild(const Visitor& visit) const {
  for (const auto& m : mMembers)
    if (!visit(m)) return false;
  return true;
}

}  // namespace kv
