#include "kavrel/model/Example.h"

#include "kavrel/Failure.h"

namespace kv {

Variant Example::get(std::string_view member) const {
  return exampleTable().get(*this, member);
}
void Example::set(std::string_view member, const Variant& value) {
  exampleTable().set(*this, member, value);
}

const MemberTable& Example::exampleTable() {
  using E = Example;
  static const MemberTable table = [] {
    MemberTable t;
    // The text fields, by name.
    t.property<E>(
        "FileName", [](const E& e) -> Variant { return e.FileName; },
        [](E& e, const Variant& v) { e.FileName = v.toString(); });
    t.property<E>(
        "Code", [](const E& e) -> Variant { return e.Code; }, [](E& e, const Variant& v) { e.Code = v.toString(); });
    t.property<E>(
        "Language", [](const E& e) -> Variant { return e.Language; },
        [](E& e, const Variant& v) { e.Language = v.toString(); });
    t.property<E>(
        "Title", [](const E& e) -> Variant { return e.Title; }, [](E& e, const Variant& v) { e.Title = v.toString(); });
    t.property<E>(
        "Caption", [](const E& e) -> Variant { return e.Caption; },
        [](E& e, const Variant& v) { e.Caption = v.toString(); });
    t.property<E>(
        "Item", [](const E& e) -> Variant { return e.Item; }, [](E& e, const Variant& v) { e.Item = v.toString(); });
    t.property<E>(
        "TaggedCommentID", [](const E& e) -> Variant { return e.TaggedCommentID; },
        [](E& e, const Variant& v) { e.TaggedCommentID = v.toString(); });
    t.property<E>(
        "BaseFolder", [](const E& e) -> Variant { return e.BaseFolder; },
        [](E& e, const Variant& v) { e.BaseFolder = v.toString(); });
    t.property<E>(
        "FromComment", [](const E& e) -> Variant { return e.FromComment; },
        [](E& e, const Variant& v) { e.FromComment = v.toBool(); });
    t.property<E>(
        "Highlight", [](const E& e) -> Variant { return e.Highlight; },
        [](E& e, const Variant& v) { e.Highlight = v.toBool(); });
    return t;
  }();
  return table;
}

const std::shared_ptr<Example>& Examples::Item(long index) const {
  if (index < 1 || index > Count()) throw Failure(err::SubscriptOutOfRange, "Subscript out of range");
  return mItems[size_t(index - 1)];
}

Variant Examples::get(std::string_view member) const {
  return examplesTable().get(*this, member);
}
Variant Examples::call(std::string_view member, const Arguments& args) {
  return examplesTable().call(*this, member, args);
}

const MemberTable& Examples::examplesTable() {
  using E = Examples;
  static const MemberTable table = [] {
    MemberTable t;
    t.property<E>("Count", [](const E& e) -> Variant { return e.Count(); });
    t.method<E>("Item",
                [](E& e, const Arguments& a) -> Variant { return e.Item(long(MemberTable::arg(a, 0).toInteger())); });
    t.method<E>("Add", [](E& e, const Arguments& a) -> Variant {
      auto example = std::dynamic_pointer_cast<Example>(MemberTable::arg(a, 0).toObject());
      if (!example) throw Failure(err::TypeMismatch, "Type mismatch");
      e.Add(example);
      return {};
    });
    return t;
  }();
  return table;
}

}  // namespace kv
