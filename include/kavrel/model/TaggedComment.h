// One authored comment of an item: a comment kind ("##SUMMARY", "##PARAM"), what it refers to
// inside the item (a parameter's name for "##PARAM"), and its text in the internal comment form.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "kavrel/Export.h"
#include "kavrel/Object.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/model/Atom.h"
#include "kavrel/model/MemberTable.h"

namespace kv {

class Item;
class TaggedComments;

// What has to happen to a comment when source is written back.
enum class CommentState : std::uint8_t { Unchanged = 0, Changed = 1, New = 2, Removed = 3 };

class KV_API TaggedComment : public Object {
 public:
  TaggedComment() = default;
  TaggedComment(Atom tagIdentifier, std::string description, Atom qualifier = {})
      : mTagIdentifier(tagIdentifier), mQualifier(qualifier), mDescription(std::move(description)) {}

  std::string typeName() const override { return "TaggedComment"; }
  Variant get(std::string_view member) const override;
  void set(std::string_view member, const Variant& value) override;
  Variant call(std::string_view member, const Arguments& args = {}) override;
  bool hasMember(std::string_view member) const override { return commentTable().has(member); }
  static const MemberTable& commentTable();

  const std::string& TagIdentifier() const { return mTagIdentifier.str(); }
  void TagIdentifier(Atom v) { mTagIdentifier = v; }
  const std::string& Qualifier() const { return mQualifier.str(); }
  void Qualifier(Atom v) { mQualifier = v; }
  const std::string& Description() const { return mDescription; }
  void Description(std::string v) { mDescription = std::move(v); }
  DateTime CommentDate() const { return mCommentDate; }
  void CommentDate(DateTime v) { mCommentDate = v; }
  // The key under which the comment stands in its collection, set when it is added.
  const std::string& Key() const { return mKey.str(); }
  void Key(Atom v) { mKey = v; }
  bool Hidden() const { return bit(kHidden); }
  void Hidden(bool v) { bit(kHidden, v); }
  kv::CommentState CommentState() const { return mState; }
  void CommentState(kv::CommentState v) { mState = v; }
  std::shared_ptr<Item> Parent() const { return mParent.lock(); }
  void Parent(const std::shared_ptr<Item>& item) { mParent = item; }

  // The definitions the comment looks its kind up in, and the definition of its kind there
  // (nullptr when there are no definitions or the kind is not defined).
  void TaggedCommentDefs(std::shared_ptr<const kv::TaggedCommentDefs> defs) { mDefs = std::move(defs); }
  const std::shared_ptr<const kv::TaggedCommentDefs>& TaggedCommentDefs() const { return mDefs; }
  std::shared_ptr<kv::TaggedCommentDef> TaggedCommentDef() const;

  // The comments from source code that this one was merged from; made on first use.
  kv::TaggedComments& SourceComments() const;
  bool HasSourceComments() const { return mSourceComments != nullptr; }
  const std::string& XMLTagName() const { return mXMLTagName.str(); }
  void XMLTagName(Atom v) { mXMLTagName = v; }
  long SourceStartLine() const { return mSourceStartLine; }
  void SourceStartLine(long v) { mSourceStartLine = std::int32_t(v); }
  long SourceLineCount() const { return mSourceLineCount; }
  void SourceLineCount(long v) { mSourceLineCount = std::int32_t(v); }
  // A comment that stands in a buffer collection while source comments are merged.
  bool BufferComment() const { return bit(kBuffer); }
  void BufferComment(bool v) { bit(kBuffer, v); }
  // Text that must not be wrapped when it is written back.
  bool NoLineWrap() const { return bit(kNoLineWrap); }
  void NoLineWrap(bool v) { bit(kNoLineWrap, v); }
  // Where an example comment was taken from by example collection ("P": already taken).
  const std::string& ExampleSourceType() const { return mExampleSourceType.str(); }
  void ExampleSourceType(Atom v) { mExampleSourceType = v; }

  // A new comment with the same content, in no collection.
  std::shared_ptr<TaggedComment> Clone() const;

 private:
  enum : std::uint8_t { kHidden = 1, kBuffer = 2, kNoLineWrap = 4 };
  bool bit(std::uint8_t b) const { return (mBits & b) != 0; }
  void bit(std::uint8_t b, bool on) { mBits = on ? std::uint8_t(mBits | b) : std::uint8_t(mBits & ~b); }

  Atom mTagIdentifier, mQualifier, mKey, mXMLTagName, mExampleSourceType;
  std::string mDescription;
  DateTime mCommentDate{};
  std::int32_t mSourceStartLine = 0, mSourceLineCount = 0;
  kv::CommentState mState = kv::CommentState::Unchanged;
  std::uint8_t mBits = 0;
  std::weak_ptr<Item> mParent;
  std::shared_ptr<const kv::TaggedCommentDefs> mDefs;
  mutable std::shared_ptr<kv::TaggedComments> mSourceComments;
};

using TaggedCommentPtr = std::shared_ptr<TaggedComment>;

// Comment definitions as a late-bound value, for writing a comment's `TaggedCommentDefs` by name.
class KV_API TaggedCommentDefsRef : public Object {
 public:
  explicit TaggedCommentDefsRef(std::shared_ptr<const kv::TaggedCommentDefs> defs) : Defs(std::move(defs)) {}
  std::string typeName() const override { return "TaggedCommentDefs"; }
  std::shared_ptr<const kv::TaggedCommentDefs> Defs;
};

}  // namespace kv
