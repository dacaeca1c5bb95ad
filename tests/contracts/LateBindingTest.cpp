// Values, objects reached by member name, creation by class name, and the keyed collection.
#include <gtest/gtest.h>

#include "kavrel/ClassRegistry.h"
#include "kavrel/Collection.h"
#include "kavrel/Failure.h"
#include "kavrel/Object.h"
#include "kavrel/Variant.h"
#include "support/Failures.h"

namespace kv {
namespace {

using test::failureNumber;

TEST(Variant, ConvertsLikeTheObjectModel) {
  EXPECT_TRUE(Variant().isEmpty());
  EXPECT_EQ(Variant().toString(), "");
  EXPECT_EQ(Variant().toInteger(), 0);
  EXPECT_EQ(Variant(true).toString(), "True");
  EXPECT_EQ(Variant(false).toString(), "False");
  EXPECT_TRUE(Variant("true").toBool());
  EXPECT_FALSE(Variant(" False ").toBool());
  EXPECT_TRUE(Variant("-1").toBool());
  EXPECT_EQ(Variant(true).toInteger(), -1);
  EXPECT_EQ(Variant("  42").toInteger(), 42);
  EXPECT_EQ(Variant("+1.5").toDouble(), 1.5);
  EXPECT_EQ(Variant("-.5").toDouble(), -0.5);
  EXPECT_EQ(Variant(2.5).toInteger(), 2);  // rounds half to even
  EXPECT_EQ(Variant(3.5).toInteger(), 4);
  EXPECT_EQ(Variant(1.25).toString(), "1.25");
  EXPECT_EQ(Variant(7.0).toString(), "7");
  EXPECT_EQ(Variant("Grüße").toString(), "Grüße");
}

TEST(Variant, RefusesWhatCannotConvert) {
  EXPECT_EQ(failureNumber([] { Variant::null().toString(); }), err::InvalidUseOfNull);
  EXPECT_EQ(failureNumber([] { Variant("maybe").toBool(); }), err::TypeMismatch);
  EXPECT_EQ(failureNumber([] { Variant("12abc").toDouble(); }), err::TypeMismatch);
  // Only a number is a number: no second sign, no infinity or not-a-number words.
  for (const char* text : {"+-5", "-+5", "nan", "inf", "-Infinity"})
    EXPECT_EQ(failureNumber([&] { Variant(text).toDouble(); }), err::TypeMismatch) << text;
  EXPECT_EQ(failureNumber([] { Variant("nan").toBool(); }), err::TypeMismatch);
  EXPECT_EQ(failureNumber([] { Variant("x").toObject(); }), err::ObjectRequired);
  EXPECT_EQ(failureNumber([] { Variant(1e300).toInteger(); }), err::Overflow);
  EXPECT_TRUE(Variant(ObjectPtr()).isNothing());
  EXPECT_EQ(Variant(ObjectPtr()).toObject(), nullptr);
}

TEST(DynamicObject, MembersIgnoreCaseAndMissingOnesFailCleanly) {
  auto item = std::make_shared<DynamicObject>("VBClass");
  int calls = 0;
  item->field("Name", "Widget")
      .property("Upper", [&] { return Variant("WIDGET"); })
      .method("Count", [&](const Arguments& args) {
        ++calls;
        return Variant(long(args.size()));
      });

  EXPECT_EQ(item->get("NAME").toString(), "Widget");
  item->set("name", "Gadget");
  EXPECT_EQ(item->get("Name").toString(), "Gadget");
  EXPECT_EQ(item->call("count", {1, 2}).toInteger(), 2);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(failureNumber([&] { item->get("Missing"); }), err::MemberNotSupported);
  EXPECT_EQ(failureNumber([&] { item->set("Upper", "x"); }), err::MemberNotSupported);  // read-only
  EXPECT_EQ(getOr(item, "Missing", "fallback").toString(), "fallback");
  EXPECT_EQ(getOr(nullptr, "Name", 5).toInteger(), 5);

  EXPECT_TRUE(TypeMatch(item, "vbclass"));
  EXPECT_TRUE(TypeMatch(Variant(item), "VBCLASS"));
  EXPECT_FALSE(TypeMatch(item, "VBClass2"));
  EXPECT_FALSE(TypeMatch(Variant("VBClass"), "VBClass"));
  EXPECT_FALSE(TypeMatch(ObjectPtr(), "VBClass"));
}

TEST(ClassRegistry, CreatesRegisteredClassesAndTreatsOthersAsNotInstalled) {
  auto& registry = ClassRegistry::instance();
  registry.add("Test.Widget", [] { return std::make_shared<DynamicObject>("Widget"); });
  registry.add("Test.Broken", []() -> ObjectPtr { throw std::runtime_error("cannot start"); });
  registry.add("Test.Nothing", [] { return ObjectPtr(); });

  EXPECT_TRUE(registry.isRegistered("test.widget"));
  EXPECT_EQ(registry.create("TEST.WIDGET")->typeName(), "Widget");
  EXPECT_NE(registry.create("Test.Widget"), registry.create("Test.Widget"));  // a new object each time
  EXPECT_EQ(failureNumber([&] { registry.create("Test.Missing"); }), err::CantCreateObject);
  EXPECT_EQ(failureNumber([&] { registry.create("Test.Broken"); }), err::CantCreateObject);
  EXPECT_EQ(registry.tryCreate("Test.Nothing"), nullptr);

  for (const char* name : {"Test.Widget", "Test.Broken", "Test.Nothing"}) registry.remove(name);
  EXPECT_FALSE(registry.isRegistered("Test.Widget"));
}

TEST(Collection, KeepsOrderAndFindsKeysIgnoringCase) {
  Collection<std::string> c;
  c.Add("b", "Second");
  c.Add("a", "First", 1L);           // before position 1
  c.Add("c", "", std::nullopt, 2L);  // after position 2, without a key
  c.Add("d", "Straße");
  ASSERT_EQ(c.Count(), 4);
  EXPECT_EQ(c.Item(1), "a");
  EXPECT_EQ(c.Item(3), "c");
  EXPECT_EQ(c.Item("second"), "b");
  EXPECT_EQ(c.Item("STRAßE"), "d");
  EXPECT_TRUE(c.Exists("FIRST"));
  EXPECT_FALSE(c.Exists(""));  // items without a key are not found by key

  EXPECT_EQ(failureNumber([&] { c.Add("x", "first"); }), err::KeyAlreadyExists);
  EXPECT_EQ(failureNumber([&] { c.Item("none"); }), err::InvalidProcedureCall);
  EXPECT_EQ(failureNumber([&] { c.Item(5); }), err::SubscriptOutOfRange);
  EXPECT_EQ(failureNumber([&] { c.Add("x", "", 9L); }), err::SubscriptOutOfRange);

  c.Remove("First");
  c.Remove(1);
  std::string order;
  for (const auto& item : c) order += item;
  EXPECT_EQ(order, "cd");
}

}  // namespace
}  // namespace kv
