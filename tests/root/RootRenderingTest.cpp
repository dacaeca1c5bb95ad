// Root's page-piece services take what they need from Root and the project: the wrap width and
// the project file's folder as the base of examples.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "kavrel/Model.h"
#include "project/KVProject.h"
#include "root/Root.h"
#include "support/Files.h"
#include "support/ScopedEnvironment.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

class RootRenderingTest : public ::testing::Test {
 protected:
  test::TempFolder folder;
  test::ScopedEnvironment settings{"KAVREL_SETTINGS_DIR", folder.path("settings")};
  std::shared_ptr<KVProject> project = KVProject::New();
};

TEST_F(RootRenderingTest, ExamplesReadFilesBesideTheProjectFile) {
  test::writeFile(folder.path("help/samples/a.c"), "int x;");
  project->KVProjectFileName->FileName(folder.path("help/tools.kvp"));
  Root root;
  Example e;
  e.FileName = "samples/a.c";
  e.Highlight = false;
  const std::string code = "<pre class=\"kvcode\">int x;</pre>";
  EXPECT_EQ(root.ExampleCode2(e, *project, false), code);
  EXPECT_EQ(root.ExampleCodeEx(e, *project),
            "<div class=\"kvexample\"><table class=\"kvexample\"><tr><th>a.c</th></tr><tr><td>" + code +
                "</td></tr></table></div>");
  EXPECT_EQ(root.ExampleCode2(e, *project, true), root.ExampleCodeEx(e, *project));
  // Without the project a relative name is taken from the working folder.
  const std::string cwdName = (std::filesystem::current_path() / "samples/a.c").string();
  EXPECT_THAT(root.ExampleCode(e), ::testing::HasSubstr("!EXAMPLE FILE NOT FOUND '" + cwdName + "'!"));

  auto block = std::make_shared<Block>("Run");
  block->TaggedComments().Add(std::make_shared<TaggedComment>("##EXAMPLECODE", "x"), "##EXAMPLECODE");
  const auto examples = root.GetExamples(block, *project);
  ASSERT_EQ(examples->Count(), 1);
  EXPECT_EQ(examples->Item(1)->BaseFolder, folder.path("help") + "/");
}

TEST_F(RootRenderingTest, CodeWrapsAtTheDefaultWrapLength) {
  auto block = std::make_shared<Block>("Run");
  block->SourceText("alpha beta gamma");
  Root root;
  root.DefaultWrapLength = 10;
  EXPECT_EQ(root.SourceCode(block), "<pre class=\"kvcode\">alpha beta\ngamma</pre>");
}

}  // namespace
}  // namespace kv
