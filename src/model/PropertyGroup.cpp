#include "kavrel/model/PropertyGroup.h"

#include "kavrel/Failure.h"

namespace kv {

const MemberTable& PropertyGroup::memberTable() const {
  return propertyGroupTable();
}

const MemberTable& PropertyGroup::propertyGroupTable() {
  using G = PropertyGroup;
  static const MemberTable table = [] {
    MemberTable t(componentMemberTable());
    t.property<G>("PrimaryBlock", [](const G& g) -> Variant { return g.PrimaryBlock(); });
    t.property<G>("PropertyGetBlock", [](const G& g) -> Variant { return g.PropertyGetBlock(); });
    t.property<G>("PropertyLetBlock", [](const G& g) -> Variant { return g.PropertyLetBlock(); });
    t.property<G>("PropertySetBlock", [](const G& g) -> Variant { return g.PropertySetBlock(); });
    t.property<G>("IsProperty", [](const G&) -> Variant { return true; });
    t.property<G>("ConsolidatedDescription", [](const G& g) -> Variant { return g.ConsolidatedDescription(); });
    t.method<G>("ResetConsolidatedDescriptions", [](G& g, const Arguments&) -> Variant {
      g.ResetConsolidatedDescriptions();
      return {};
    });
    return t;
  }();
  return table;
}

std::shared_ptr<Block> PropertyGroup::PrimaryBlock() const {
  if (mPrimary) return mPrimary;
  if (mGet) return mGet;
  return mLet ? mLet : mSet;
}

void PropertyGroup::AddAccessor(std::shared_ptr<Block> accessor) {
  switch (accessor->BlockType()) {
    case BlockType::PropertyGet: mGet = std::move(accessor); break;
    case BlockType::PropertyLet: mLet = std::move(accessor); break;
    case BlockType::PropertySet: mSet = std::move(accessor); break;
    default: throw Failure(err::InvalidProcedureCall, "Only property accessors join a property's group");
  }
  mConsolidated.reset();
}

const std::string& PropertyGroup::ConsolidatedDescription() const {
  if (!mConsolidated) {
    std::string text;
    for (const auto* b : {&mGet, &mLet, &mSet}) {
      if (!*b) continue;
      const std::string& d = (*b)->TaggedDescription().empty() ? (*b)->Description() : (*b)->TaggedDescription();
      if (d.empty() || text.find(d) != std::string::npos) continue;
      text += text.empty() ? d : " " + d;
    }
    mConsolidated = std::make_unique<std::string>(std::move(text));
  }
  return *mConsolidated;
}

}  // namespace kv
