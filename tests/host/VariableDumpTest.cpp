#include <gtest/gtest.h>

#include "host/VariableDump.h"
#include "kavrel/Failure.h"
#include "kavrel/Object.h"

namespace kv {
namespace {

struct Position {
  int x = 0;
};

std::string dumped(const Variables& v) {
  // Only the locals block, to keep expectations short.
  const std::string text = v.text();
  const auto start = text.find("<LocalVariables>") + 16;
  return text.substr(start, text.find("</LocalVariables>") - start);
}

TEST(VariableDump, BlocksComeInOrderWithCrLfBetween) {
  int count = 3;
  std::string mName = "n";
  bool flag = true;
  const std::string text = Variables().parameter("flag", flag).field("mName", mName).local("count", count).text();
  EXPECT_EQ(text,
            "<Variables>\r\n<LocalVariables><count>3</count></LocalVariables>\r\n"
            "<ModuleVariables><mName>n</mName></ModuleVariables>\r\n"
            "<GlobalVariables>{Disabled}</GlobalVariables>\r\n</Variables>\r\n"
            "<Parameters><flag>True</flag></Parameters>");
}

TEST(VariableDump, SpecialValues) {
  Variant empty, null = Variant::null(), nothing = ObjectPtr(), object = std::make_shared<DynamicObject>("Item");
  std::shared_ptr<Position> noRecord;
  std::optional<int> unset;
  Position position;
  EXPECT_EQ(dumped(Variables()
                       .local("e", empty)
                       .local("n", null)
                       .local("o", nothing)
                       .local("d", object)
                       .local("p", noRecord)
                       .local("u", unset)
                       .local("r", position)),
            "<e>{Empty}</e><n>{Null}</n><o>{Nothing}</o><d>{DataObject}</d><p>{Nothing}</p><u>{Empty}</u>"
            "<r>{UDT - Position}</r>");
}

TEST(VariableDump, TextIsEscapedAndCutAtTheLimit) {
  std::string markup = "<a href=\"x\">&</a>";
  std::string longText = std::string(98, 'x') + "äöü";  // 101 characters, 104 bytes
  EXPECT_EQ(dumped(Variables().local("markup", markup)), "<markup>&lt;a href=\"x\"&gt;&amp;&lt;/a&gt;</markup>");
  EXPECT_EQ(dumped(Variables().local("t", longText)),
            "<t>{Dump truncated at 99 characters}" + std::string(98, 'x') + "ä</t>");
}

TEST(VariableDump, Arrays) {
  std::vector<int> none;
  std::vector<std::string> names{"a", "<b>"};
  std::vector<std::vector<int>> grid{{1}, {}};
  std::vector<std::vector<std::vector<std::vector<int>>>> deep{{{{1}}}};
  std::vector<int> many(150, 7);
  EXPECT_EQ(dumped(Variables().local("none", none)), "<none>{UnInitialised Array}</none>");
  EXPECT_EQ(dumped(Variables().local("names", names)),
            "<names><Element Index=\"0\">a</Element><Element Index=\"1\">&lt;b&gt;</Element></names>");
  EXPECT_EQ(dumped(Variables().local("grid", grid)),
            "<grid><Element Index=\"0\"><Element Index=\"0\">1</Element></Element>"
            "<Element Index=\"1\">{UnInitialised Array Dimension 2}</Element></grid>");
  EXPECT_EQ(dumped(Variables().local("deep", deep)), "<deep>{Cannot dump arrays with 4 dimensions}</deep>");

  const std::string text = dumped(Variables().local("many", many));
  EXPECT_TRUE(text.starts_with("<many>{Dump truncated at 99 elements}<Element Index=\"0\">7</Element>")) << text;
  EXPECT_NE(text.find("Index=\"98\""), std::string::npos);
  EXPECT_EQ(text.find("Index=\"99\""), std::string::npos);
}

TEST(VariableDump, AValueThatFailsToFormatShowsTheError) {
  Variables v;
  v.add(Variables::Block::Local, "broken", [](long) -> std::string { throw Failure(err::TypeMismatch, "x"); });
  EXPECT_EQ(dumped(v), "<broken>{Error 13 formatting for output}</broken>");
}

}  // namespace
}  // namespace kv
