#include "kavrel/model/TaggedComment.h"

#include "kavrel/Failure.h"
#include "kavrel/TaggedCommentDef.h"
#include "kavrel/model/Item.h"
#include "kavrel/model/TaggedComments.h"

namespace kv {

namespace {

// The definition as late binding sees it: the fields comment services read.
ObjectPtr definitionObject(const TaggedCommentDef& def) {
  auto o = std::make_shared<DynamicObject>("TaggedCommentDef");
  o->field("TagIdentifier", def.TagIdentifier)
      .field("Caption", def.Caption)
      .field("AppendToDescription", def.AppendToDescription)
      .field("WrapType", def.WrapType)
      .field("CommentFlags", def.CommentFlags)
      .field("MergeInBuffer", def.MergeInBuffer)
      .field("UpgradedTagIdentifier", def.UpgradedTagIdentifier)
      .field("UpgradeStop", def.UpgradeStop)
      .field("XMLTagNames", def.XMLTagNames);
  return o;
}

}  // namespace

Variant TaggedComment::get(std::string_view member) const {
  return commentTable().get(*this, member);
}
void TaggedComment::set(std::string_view member, const Variant& value) {
  commentTable().set(*this, member, value);
}
Variant TaggedComment::call(std::string_view member, const Arguments& args) {
  return commentTable().call(*this, member, args);
}

const MemberTable& TaggedComment::commentTable() {
  using C = TaggedComment;
  static const MemberTable table = [] {
    MemberTable t;
    t.property<C>(
        "TagIdentifier", [](const C& c) -> Variant { return c.TagIdentifier(); },
        [](C& c, const Variant& v) { c.TagIdentifier(v.toString()); });
    t.property<C>(
        "Qualifier", [](const C& c) -> Variant { return c.Qualifier(); },
        [](C& c, const Variant& v) { c.Qualifier(v.toString()); });
    t.property<C>(
        "Description", [](const C& c) -> Variant { return c.Description(); },
        [](C& c, const Variant& v) { c.Description(v.toString()); });
    t.property<C>(
        "CommentDate", [](const C& c) -> Variant { return c.CommentDate(); },
        [](C& c, const Variant& v) { c.CommentDate(v.toDate()); });
    t.property<C>(
        "Key", [](const C& c) -> Variant { return c.Key(); }, [](C& c, const Variant& v) { c.Key(v.toString()); });
    t.property<C>(
        "Hidden", [](const C& c) -> Variant { return c.Hidden(); },
        [](C& c, const Variant& v) { c.Hidden(v.toBool()); });
    t.property<C>(
        "CommentState", [](const C& c) -> Variant { return long(c.CommentState()); },
        [](C& c, const Variant& v) {
          const auto state = v.toInteger();
          if (state < 0 || state > 3) throw Failure(err::InvalidProcedureCall, "Invalid procedure call or argument");
          c.CommentState(kv::CommentState(state));
        });
    t.property<C>(
        "Parent", [](const C& c) -> Variant { return c.Parent(); },
        [](C& c, const Variant& v) { c.Parent(std::dynamic_pointer_cast<Item>(v.toObject())); });
    t.property<C>("TaggedCommentDef", [](const C& c) -> Variant {
      const auto def = c.TaggedCommentDef();
      return def ? definitionObject(*def) : ObjectPtr();
    });
    t.writeOnly<C>("TaggedCommentDefs", [](C& c, const Variant& v) {
      const ObjectPtr o = v.toObject();
      auto ref = std::dynamic_pointer_cast<TaggedCommentDefsRef>(o);
      if (o && !ref) throw Failure(err::TypeMismatch, "Type mismatch");
      c.TaggedCommentDefs(ref ? ref->Defs : nullptr);
    });
    t.property<C>("SourceComments", [](const C& c) -> Variant {
      c.SourceComments();
      return c.mSourceComments;
    });
    t.property<C>(
        "XMLTagName", [](const C& c) -> Variant { return c.XMLTagName(); },
        [](C& c, const Variant& v) { c.XMLTagName(v.toString()); });
    t.property<C>(
        "SourceStartLine", [](const C& c) -> Variant { return c.SourceStartLine(); },
        [](C& c, const Variant& v) { c.SourceStartLine(long(v.toInteger())); });
    t.property<C>(
        "SourceLineCount", [](const C& c) -> Variant { return c.SourceLineCount(); },
        [](C& c, const Variant& v) { c.SourceLineCount(long(v.toInteger())); });
    t.property<C>(
        "BufferComment", [](const C& c) -> Variant { return c.BufferComment(); },
        [](C& c, const Variant& v) { c.BufferComment(v.toBool()); });
    t.property<C>(
        "NoLineWrap", [](const C& c) -> Variant { return c.NoLineWrap(); },
        [](C& c, const Variant& v) { c.NoLineWrap(v.toBool()); });
    t.property<C>(
        "ExampleSourceType", [](const C& c) -> Variant { return c.ExampleSourceType(); },
        [](C& c, const Variant& v) { c.ExampleSourceType(v.toString()); });
    t.method<C>("Clone", [](C& c, const Arguments&) -> Variant { return c.Clone(); });
    return t;
  }();
  return table;
}

std::shared_ptr<TaggedCommentDef> TaggedComment::TaggedCommentDef() const {
  if (!mDefs || mTagIdentifier.empty()) return nullptr;
  const auto* def = mDefs->Find(TagIdentifier());
  return def ? *def : nullptr;
}

kv::TaggedComments& TaggedComment::SourceComments() const {
  if (!mSourceComments) mSourceComments = std::make_shared<kv::TaggedComments>(Parent());
  return *mSourceComments;
}

std::shared_ptr<TaggedComment> TaggedComment::Clone() const {
  auto copy = std::make_shared<TaggedComment>();
  copy->mTagIdentifier = mTagIdentifier;
  copy->mQualifier = mQualifier;
  copy->mDescription = mDescription;
  copy->mCommentDate = mCommentDate;
  copy->mXMLTagName = mXMLTagName;
  copy->mExampleSourceType = mExampleSourceType;
  copy->mSourceStartLine = mSourceStartLine;
  copy->mSourceLineCount = mSourceLineCount;
  copy->mState = mState;
  copy->mBits = mBits;
  copy->mDefs = mDefs;
  if (mSourceComments) {
    copy->SourceComments();
    for (const auto& c : *mSourceComments) copy->mSourceComments->Add(c->Clone(), c->Key());
  }
  return copy;
}

}  // namespace kv
