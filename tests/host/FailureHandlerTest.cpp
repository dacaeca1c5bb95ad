#include <gtest/gtest.h>

#include "host/FailureHandler.h"
#include "host/VariableDump.h"
#include "kavrel/ClassRegistry.h"
#include "kavrel/Failure.h"
#include "support/RecordingHost.h"

namespace kv {
namespace {

int failingProcedure(const std::string& fileName) {
  int step = 1;
  return guard<int>("modTest", Variables().local("step", step).parameter("fileName", fileName), [&]() -> int {
    step = 2;
    throw Failure(err::FileNotFound, "File not found");
  });
}

TEST(FailureHandler, PlainMessageNamesModuleProcedureAndLine) {
  test::ScopedRecordingHost host;
  const unsigned line = __LINE__ + 1;
  const int result = guard<int>("modTest", []() -> int { throw Failure(err::PathNotFound, "Path not found"); });
  EXPECT_EQ(result, 0);
  ASSERT_EQ(host.messages().size(), 1u);
  const auto& m = host.messages()[0];
  EXPECT_EQ(m.title, "Application Error");
  EXPECT_EQ(m.buttons, mb::OKOnly + mb::Critical);
  EXPECT_TRUE(
      m.text.starts_with("KVObjects5 has encountered a problem. We are sorry for the inconvenience.\r\n\r\nModule: "
                         "modTest\r\nProcedure: "))
      << m.text;
  EXPECT_TRUE(m.text.ends_with("\r\nLine Number: " + std::to_string(line) + "\r\n\r\nPath not found (76)")) << m.text;
}

TEST(FailureHandler, ReportObjectGetsTheVariablesAndDecidesWhetherTheFailureGoesOn) {
  test::ScopedRecordingHost host;
  auto reporter = std::make_shared<DynamicObject>("Error");
  int shown = 0;
  for (const char* name :
       {"Product", "Version", "Module", "Procedure", "Line", "Number", "Description", "Variables", "Action"})
    reporter->field(name);
  reporter->method("Show", [&](const Arguments&) {
    ++shown;
    return Variant();
  });
  ClassRegistry::instance().add("VelmoError.Error", [&] { return reporter; });

  EXPECT_EQ(failingProcedure("a&b.kvp"), 0);  // no action: an ordinary return
  EXPECT_EQ(shown, 1);
  EXPECT_TRUE(host.messages().empty());
  EXPECT_EQ(reporter->get("Product").toString(), "KVObjects5");
  EXPECT_EQ(reporter->get("Module").toString(), "modTest");
  EXPECT_EQ(reporter->get("Number").toInteger(), err::FileNotFound);
  EXPECT_EQ(reporter->get("Variables").toString(),
            "<Variables>\r\n<LocalVariables><step>2</step></LocalVariables>\r\n<ModuleVariables></ModuleVariables>\r\n"
            "<GlobalVariables>{Disabled}</GlobalVariables>\r\n</Variables>\r\n"
            "<Parameters><fileName>a&amp;b.kvp</fileName></Parameters>");

  reporter->set("Action", "Raise");
  EXPECT_THROW(failingProcedure("x"), Failure);
  ClassRegistry::instance().remove("VelmoError.Error");
}

}  // namespace
}  // namespace kv
