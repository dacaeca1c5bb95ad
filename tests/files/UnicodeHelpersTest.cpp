#include <gtest/gtest.h>

#include <map>
#include <set>

#include "files/EscapeText.h"
#include "files/UnicodeHelpers.h"

using kv::UnicodeHelpers;

namespace {

// A keyed collection of the object model's shape: Item fails for a missing key.
struct ItemOnlyCollection {
  std::map<std::string, int> items;
  int Item(std::string_view key) const {
    auto it = items.find(std::string(key));
    if (it == items.end()) throw kv::Failure(kv::err::InvalidProcedureCall, "Invalid procedure call or argument");
    return it->second;
  }
};

struct ExistsCollection {
  bool Exists(std::string_view key) const { return key == "present"; }
};

TEST(UnicodeHelpers, CollectionHasKeyForAnyKeyedCollection) {
  const std::map<std::string, std::string> strings{{"a", "x"}};
  EXPECT_TRUE(UnicodeHelpers::CollectionHasKey(strings, "a"));
  EXPECT_FALSE(UnicodeHelpers::CollectionHasKey(strings, "b"));

  EXPECT_TRUE(UnicodeHelpers::CollectionHasKey(std::set<std::string>{"k"}, "k"));

  auto objects = std::make_shared<ItemOnlyCollection>();
  objects->items["one"] = 1;
  EXPECT_TRUE(UnicodeHelpers::CollectionHasKey(objects, "one"));
  EXPECT_FALSE(UnicodeHelpers::CollectionHasKey(objects, "two"));
  EXPECT_FALSE(UnicodeHelpers::CollectionHasKey(std::shared_ptr<ItemOnlyCollection>(), "one"));

  EXPECT_TRUE(UnicodeHelpers::CollectionHasKey(ExistsCollection{}, "present"));
  EXPECT_FALSE(UnicodeHelpers::CollectionHasKey(ExistsCollection{}, "absent"));

  // A late-bound collection answers through its Item member.
  auto late = std::make_shared<kv::DynamicObject>("Collection");
  late->method("Item", [](const kv::Arguments& args) -> kv::Variant {
    if (args.at(0).toString() != "here") throw kv::Failure(kv::err::InvalidProcedureCall, "missing");
    return kv::Variant("value");
  });
  kv::ObjectPtr asObject = late;
  EXPECT_TRUE(UnicodeHelpers::CollectionHasKey(asObject, "here"));
  EXPECT_FALSE(UnicodeHelpers::CollectionHasKey(asObject, "there"));
}

TEST(UnicodeHelpers, ColonParts) {
  EXPECT_EQ(UnicodeHelpers::PartBeforeColon("http://host/x:y"), "http");
  EXPECT_EQ(UnicodeHelpers::PartAfterColon("http://host/x:y"), "//host/x:y");
  EXPECT_EQ(UnicodeHelpers::PartBeforeColon("Target"), "Target");
  EXPECT_EQ(UnicodeHelpers::PartAfterColon("Target"), "");
  EXPECT_EQ(UnicodeHelpers::PartBeforeColon(":x"), "");
  EXPECT_EQ(UnicodeHelpers::PartAfterColon("kind:"), "");
}

TEST(UnicodeHelpers, NthFieldEdges) {
  EXPECT_EQ(UnicodeHelpers::NthField("a,b,c", ",", 1), "a");
  EXPECT_EQ(UnicodeHelpers::NthField("a,b,c", ",", 3), "c");
  EXPECT_EQ(UnicodeHelpers::NthField("a,b,c", ",", 4), "");
  EXPECT_EQ(UnicodeHelpers::NthField("a,b,c", ",", 0), "");
  EXPECT_EQ(UnicodeHelpers::NthField("a,,c", ",", 2), "");
  EXPECT_EQ(UnicodeHelpers::NthField("a,,c", ",", 3), "c");
  EXPECT_EQ(UnicodeHelpers::NthField("a,b,", ",", 3), "");
  EXPECT_EQ(UnicodeHelpers::NthField("", ",", 1), "");
  EXPECT_EQ(UnicodeHelpers::NthField("abc", ",", 1), "abc");
  EXPECT_EQ(UnicodeHelpers::NthField("abc", "", 1), "abc");
  EXPECT_EQ(UnicodeHelpers::NthField("x<>yé<>z", "<>", 2), "yé");
  EXPECT_EQ(UnicodeHelpers::NthField("a<>b", "<", 2), ">b");
}

TEST(UnicodeHelpers, AppendInPlaceAndValueText) {
  std::string text = "ab";
  for (int i = 0; i < 1000; ++i) UnicodeHelpers::AppendInPlace(text, "cd");
  EXPECT_EQ(text.size(), 2002u);
  EXPECT_EQ(text.substr(0, 6), "abcdcd");

  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant()), "");
  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant::null()), "");
  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant(kv::ObjectPtr())), "");
  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant("Größe")), "Größe");
  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant(true)), "True");
  EXPECT_EQ(UnicodeHelpers::VariantToString(kv::Variant(42)), "42");
}

TEST(UnicodeHelpers, UrlEncodingOfNonAscii) {
  EXPECT_EQ(UnicodeHelpers::URLEncode("file:///tmp/Größe & Co/a b.html"),
            "file:///tmp/Gr%C3%B6%C3%9Fe%20%26%20Co/a%20b.html");
  EXPECT_EQ(UnicodeHelpers::URLEncode("A-z_0.9~#?%+"), "A-z_0.9~%23%3F%25%2B");
  EXPECT_EQ(UnicodeHelpers::URLEncode("日"), "%E6%97%A5");

  EXPECT_EQ(UnicodeHelpers::URLDecode("Gr%C3%B6%c3%9Fe%20x+y"), "Größe x+y");
  EXPECT_EQ(UnicodeHelpers::URLDecode("caf%E9"), "café");  // an ANSI escape, read as Windows-1252
  EXPECT_EQ(UnicodeHelpers::URLDecode("100% %zz %4"), "100% %zz %4");
  const std::string mixed = "a/b:c d?é日😀";
  EXPECT_EQ(UnicodeHelpers::URLDecode(UnicodeHelpers::URLEncode(mixed)), mixed);
}

TEST(UnicodeHelpers, LocaleTable) {
  const kv::Locale us = UnicodeHelpers::LocaleFromID(1033);
  ASSERT_TRUE(us.Valid);
  EXPECT_EQ(us.Name, "en-US");
  EXPECT_EQ(us.ANSICodePage.ID, 1252);
  EXPECT_EQ(us.ANSICodePage.Charset, "windows-1252");

  struct Expected {
    long lcid;
    const char* name;
    long codePage;
    const char* charset;
  };
  for (const Expected& e : {Expected{1041, "ja-JP", 932, "shift_jis"}, Expected{2052, "zh-CN", 936, "gb2312"},
                            Expected{1028, "zh-TW", 950, "big5"}, Expected{1049, "ru-RU", 1251, "windows-1251"},
                            Expected{1054, "th-TH", 874, "windows-874"}, Expected{1045, "pl-PL", 1250, "windows-1250"},
                            Expected{1037, "he-IL", 1255, "windows-1255"}}) {
    const kv::Locale locale = UnicodeHelpers::LocaleFromID(e.lcid);
    EXPECT_EQ(locale.Name, e.name);
    EXPECT_EQ(locale.ANSICodePage.ID, e.codePage) << e.name;
    EXPECT_EQ(locale.ANSICodePage.Charset, e.charset) << e.name;
  }

  EXPECT_FALSE(UnicodeHelpers::LocaleFromID(12345).Valid);
  EXPECT_EQ(UnicodeHelpers::LocaleFromName("de-at").ID, 3079);
  EXPECT_EQ(UnicodeHelpers::CodePageFromID(65001).Charset, "utf-8");
  EXPECT_FALSE(UnicodeHelpers::CodePageFromID(4242).Valid);
}

TEST(EscapeText, WritesMarkupCharactersAsEntities) {
  EXPECT_EQ(kv::EscapeText(R"(<a href="x?a=1&b=2">Größe</a>)"),
            "&lt;a href=&quot;x?a=1&amp;b=2&quot;&gt;Größe&lt;/a&gt;");
  EXPECT_EQ(kv::EscapeText("&amp;"), "&amp;amp;");
  EXPECT_EQ(kv::EscapeText("it's"), "it's");
}

}  // namespace
