// Procedures and everything else with a parameter list: blocks (procedures, methods, property
// accessors), events and external declarations.
#pragma once

#include <cstdint>

#include "kavrel/Export.h"
#include "kavrel/model/ComponentMember.h"
#include "kavrel/model/ItemList.h"
#include "kavrel/model/Parameter.h"

namespace kv {

// A member with parameters and generic arguments.
class KV_API Signature : public ComponentMember {
 public:
  using ComponentMember::ComponentMember;
  const MemberTable& memberTable() const override;
  static const MemberTable& signatureTable();

  const ItemVector<Parameter>& Parameters() const { return mParameters; }
  std::shared_ptr<Parameter> AddParameter(Atom name, Atom typeText = {});
  void Add(std::shared_ptr<Parameter> parameter);
  bool HasParameters() const { return !mParameters.empty(); }

  const ItemVector<GenericArgument>& GenericArguments() const { return mGenericArguments; }
  std::shared_ptr<GenericArgument> AddGenericArgument(Atom name);
  bool HasGenericArguments() const { return !mGenericArguments.empty(); }

  // The type of the value returned, as the source spells it; empty for none.
  const std::string& ReturnType() const { return mReturnType.str(); }
  void ReturnType(Atom v) { mReturnType = v; }

  bool ForEachChild(const Visitor& visit) const override;

 private:
  ItemVector<Parameter> mParameters;
  ItemVector<GenericArgument> mGenericArguments;
  Atom mReturnType;
};

enum class BlockType : std::uint8_t {
  Unknown = 0,
  Sub = 1,
  Function = 2,
  PropertyGet = 3,
  PropertyLet = 4,
  PropertySet = 5,
  Constructor = 6,
  Declarations = 7,  // the declarations section of a module: not a procedure
  Operator = 8,
};

class KV_API Block : public Signature {
 public:
  Block(Atom name = {}, kv::BlockType type = kv::BlockType::Sub) : Signature(name), mType(type) {}
  std::string typeName() const override { return "Block"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& blockTable();

  kv::BlockType BlockType() const { return mType; }
  void BlockType(kv::BlockType v) { mType = v; }
  bool IsProperty() const {
    return mType == kv::BlockType::PropertyGet || mType == kv::BlockType::PropertyLet ||
           mType == kv::BlockType::PropertySet;
  }
  bool IsDelegate() const { return flag(kDelegate); }
  void IsDelegate(bool v) { flag(kDelegate, v); }
  // Kept out of pages by the source (a hidden-member attribute, say), besides `ExcludeFlag`.
  bool HiddenFlag() const { return flag(kHidden); }
  void HiddenFlag(bool v) { flag(kHidden, v); }
  // Why the block is excluded, when a rule of the doc type excludes it.
  const std::string& ExclusionText() const { return mExclusionText.str(); }
  void ExclusionText(Atom v) { mExclusionText = v; }
  // The block's source text.
  const std::string& SourceText() const { return mSourceText; }
  void SourceText(std::string v) { mSourceText = std::move(v); }

 private:
  enum : std::uint32_t { kDelegate = kFirstKindFlag, kHidden = kFirstKindFlag << 1 };
  kv::BlockType mType;
  Atom mExclusionText;
  std::string mSourceText;
};

class KV_API EventDeclaration : public Signature {
 public:
  using Signature::Signature;
  std::string typeName() const override { return "EventDeclaration"; }
};

// A declaration of a procedure in an external library.
class KV_API DeclareDeclaration : public Signature {
 public:
  using Signature::Signature;
  std::string typeName() const override { return "DeclareDeclaration"; }
  const MemberTable& memberTable() const override;
  static const MemberTable& declareDeclarationTable();

  const std::string& LibraryName() const { return mLibrary.str(); }
  void LibraryName(Atom v) { mLibrary = v; }
  const std::string& Alias() const { return mAlias.str(); }
  void Alias(Atom v) { mAlias = v; }

 private:
  Atom mLibrary, mAlias;
};

}  // namespace kv
