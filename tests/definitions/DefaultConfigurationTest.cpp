// The configuration that is installed with the program.
#include <gtest/gtest.h>

#include <filesystem>

#include "definitions/Configuration.h"
#include "support/ScopedEnvironment.h"

namespace kv {
namespace {

TEST(DefaultConfiguration, IsCompleteAndReadsWithoutProblems) {
  test::ScopedEnvironment environment("KAVREL_CONFIG_DIR", KV_SOURCE_CONFIG_DIR);
  auto& root = ConfigurationRoot::instance();
  root.Reset();
  EXPECT_TRUE(root.LoadErrors().empty()) << root.LoadErrors().front();
  ASSERT_GE(root.DocTypeDefs().size(), 1u);
  const auto& tmpl = root.Templates().Item("Standard");
  EXPECT_TRUE(tmpl->ServesDocType(root.DocTypeDefs()[0].get()));
  EXPECT_GE(tmpl->NamespaceDefs.Count(), 1);
  EXPECT_FALSE(tmpl->NamespaceDefs.Item(1)->Handler.empty());

  bool itemPages = false, generalFiles = false;
  for (const auto& layout : tmpl->PageLayouts) {
    EXPECT_TRUE(std::filesystem::exists(tmpl->Folder + layout->TemplateFileName)) << layout->TemplateFileName;
    (layout->NamespaceList.empty() ? generalFiles : itemPages) = true;
  }
  EXPECT_TRUE(itemPages);
  EXPECT_TRUE(generalFiles);
  EXPECT_TRUE(tmpl->TOCDefinitions.Exists(tmpl->SingleItemTOCName));
  EXPECT_TRUE(tmpl->TOCDefinitions.Exists(tmpl->MultipleItemTOCName));
  EXPECT_EQ(tmpl->Phrase("OVERVIEW"), "Overview");
  EXPECT_EQ(tmpl->Scrap("banner").rfind("!MISSING", 0), std::string::npos);
  root.Reset();
}

}  // namespace
}  // namespace kv
