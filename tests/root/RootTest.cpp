#include <gtest/gtest.h>

#include "host/Settings.h"
#include "root/Root.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

class RootTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Root::releaseGlobal();
    ASSERT_EQ(Root::instanceCount(), 0);
    Root::setLayoutRefresh([this](const std::string& name) { refreshed.push_back(name); });
  }
  void TearDown() override {
    Root::setLayoutRefresh(nullptr);
    Root::releaseGlobal();
  }

  test::TempFolder folder;
  test::ScopedEnvironment dir{"KAVREL_SETTINGS_DIR", folder.path()};
  std::vector<std::string> refreshed;
};

TEST_F(RootTest, OnlyTheFirstInstanceRefreshesLayouts) {
  {
    Root first;
    EXPECT_EQ(Root::instanceCount(), 1);
    Root second;
    EXPECT_EQ(Root::instanceCount(), 2);
    EXPECT_EQ(refreshed, (std::vector<std::string>{"", "KV2008"}));
  }
  EXPECT_EQ(Root::instanceCount(), 0);
  Root again;  // a new first instance after all had gone
  EXPECT_EQ(refreshed.size(), 4u);
}

TEST_F(RootTest, TheLastInstanceReleasesStateAndUnloadsFormsLastFirst) {
  std::vector<std::string> events;
  auto first = std::make_unique<Root>();
  auto second = std::make_unique<Root>();
  HostForms::Open("Main", [&] { events.push_back("Main"); });
  const auto closed = HostForms::Open("Closed", [&] { events.push_back("Closed"); });
  HostForms::Open("Failing", [&] {
    events.push_back("Failing");
    throw std::runtime_error("ignored");
  });
  HostForms::Open("Options", [&] { events.push_back("Options"); });
  HostForms::Close(closed);
  static int releases = 0;
  releases = 0;
  Root::addRelease([] { ++releases; });

  first.reset();
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(HostForms::Count(), 3u);
  second.reset();
  EXPECT_EQ(events, (std::vector<std::string>{"Options", "Failing", "Main"}));
  EXPECT_EQ(HostForms::Count(), 0u);
  EXPECT_EQ(releases, 1);
}

TEST_F(RootTest, GlobalInstanceLivesUntilReleased) {
  Root& global = Root::global();
  EXPECT_EQ(&global, &Root::global());
  EXPECT_EQ(Root::instanceCount(), 1);
  EXPECT_EQ(global.ColorToWebHex(0xFFFFFF), "#FFFFFF");
  Root::releaseGlobal();
  EXPECT_EQ(Root::instanceCount(), 0);
}

TEST_F(RootTest, EditableSpansComeFromTheMachineSettings) {
  machineSettings().setValue("Software\\Velmora\\Kavrel5", "EditableSpanPrefix", "<span class=\"e\">");
  Root root;
  EXPECT_EQ(root.EditableSpanPrefix, "<span class=\"e\">");
  EXPECT_EQ(root.EditableSpanSuffix, "");
}

}  // namespace
}  // namespace kv
