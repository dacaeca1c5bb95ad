#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project/AdditionalFiles.h"
#include "project/DocumentServices.h"
#include "project/KVProject.h"

namespace kv {
namespace {

using ::testing::HasSubstr;

class DocumentServicesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    project->OutputFolder("/help/out put/");
    auto logo = std::make_shared<AdditionalFile>();
    logo->FileName = "/art/Logo.png";
    project->AdditionalFiles->Add(logo);
  }
  void TearDown() override { project->Terminate(); }

  std::shared_ptr<KVProject> project;
};

TEST_F(DocumentServicesTest, ImagesOfAdditionalFilesPointToTheirCopyInTheOutput) {
  DocumentServices services(*project);
  const struct {
    const char* text;
    const char* expected;  // nullptr: the text comes back unchanged
  } cases[] = {
      {"<p>Größe <img src=\"file:///art/logo.png\"></p>", "<p>Größe <img src=\"logo.png\"></p>"},
      {"<img src=\"C:\\art\\Logo.png\" alt=\"x\">", "<img src=\"Logo.png\" alt=\"x\">"},
      {"<img src=\"Logo.png\"> <b>unchanged</b>", nullptr},
      {"<img src=\"other.png\"><img>", nullptr},
      {"no images at all", nullptr},
  };
  for (const auto& c : cases) EXPECT_EQ(services.VerifyIMGTags(c.text), c.expected ? c.expected : c.text) << c.text;
}

TEST_F(DocumentServicesTest, NewDocumentsHaveTheOutputFolderAsBaseAndAreReused) {
  DocumentServices services(*project);
  auto first = services.NewDOM("<p>One</p>");
  EXPECT_EQ(first->BodyInnerHTML(), "<p>One</p>");
  const auto bases = first->ElementsByTagName("BASE");
  ASSERT_EQ(bases.size(), 1u);
  EXPECT_EQ(bases[0].Attribute("href"), "file:///help/out%20put/");

  HtmlDocument* kept = first.get();
  services.RecycleDOM(std::move(first));
  const auto second = services.NewDOM("<p>Two</p>");
  EXPECT_EQ(second.get(), kept);
  EXPECT_EQ(second->BodyInnerHTML(), "<p>Two</p>");
  EXPECT_THAT(services.CreateDOM("<html><body><i>page</i></body></html>")->BodyInnerHTML(), HasSubstr("<i>page</i>"));
}

}  // namespace
}  // namespace kv
