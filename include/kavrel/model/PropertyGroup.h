// The accessors of one property, seen together. The accessors themselves are blocks of the
// component; the group only refers to them.
#pragma once

#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/model/Block.h"

namespace kv {

class KV_API PropertyGroup : public ComponentMember {
 public:
  using ComponentMember::ComponentMember;
  std::string typeName() const override { return "PropertyGroup"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& propertyGroupTable();

  // The accessor that speaks for the property: the one set as primary, else the first of Get,
  // Let and Set that exists.
  std::shared_ptr<Block> PrimaryBlock() const;
  void PrimaryBlock(std::shared_ptr<Block> b) { mPrimary = std::move(b); }
  const std::shared_ptr<Block>& PropertyGetBlock() const { return mGet; }
  const std::shared_ptr<Block>& PropertyLetBlock() const { return mLet; }
  const std::shared_ptr<Block>& PropertySetBlock() const { return mSet; }
  // Files an accessor under its block type; other blocks are refused with a failure.
  void AddAccessor(std::shared_ptr<Block> accessor);

  // The descriptions of the accessors joined, kept until reset.
  const std::string& ConsolidatedDescription() const;
  void ResetConsolidatedDescriptions() { mConsolidated.reset(); }

 private:
  std::shared_ptr<Block> mPrimary, mGet, mLet, mSet;
  mutable std::unique_ptr<std::string> mConsolidated;
};

}  // namespace kv
