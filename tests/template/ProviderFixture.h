// A project with one doc type whose template lives in a temporary folder (phrases, scraps and
// variable definitions of its own), and a common provider bound to that project.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "definitions/Configuration.h"
#include "kavrel/IKVProjectPlugIn.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "support/Files.h"
#include "support/Items.h"
#include "support/RecordingHost.h"
#include "support/TempFolder.h"
#include "template/CommonProvider.h"
#include "template/ParserTemplate.h"

namespace kv::test {

class ProviderFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    tmpl = std::make_shared<Template>();
    tmpl->Name = "Test";
    tmpl->Folder = folder.path("template") + "/";
    writeFile(folder.path("template/Phrases/English.xml"),
              "<Phrases Language=\"English\"><Phrase Key=\"DEFAULT_LINK_CATEGORY\">See also</Phrase>"
              "<Phrase Key=\"TITLE\">Title of %%itemname%%</Phrase><Phrase Key=\"WORD\">word</Phrase></Phrases>");
    writeFile(folder.path("template/HTMLScraps/_DESIGN_ITEM.html"), "<span class=\"design\"/>");
    writeFile(folder.path("template/HTMLScraps/box.html"), "[%%itemname%% $$WORD$$]");
    tmpl->VariableDefs.push_back({"FooterText", "Made by Kavrel", 0});
    docType = std::make_shared<KVDocType>("kv.test", std::make_shared<IKVProjectPlugIn>());
    docType->mSelectedTemplate = tmpl;
    project->DocTypes->Add(docType);
    project->CurrentDocType(docType);
    provider = std::make_shared<CommonProvider>();
    provider->KVProject(project);
  }
  void TearDown() override { project->Terminate(); }

  // Makes `item` the current item, with `type` as the caller's item type.
  void show(const ObjectPtr& item, const std::string& type = "Item", const ObjectPtr& parent = nullptr) {
    provider->SetCurrentItem(nullptr, item, type, parent);
  }
  // The layout rendered for the current item, so that the page's own expansion has run.
  std::string render(const std::string& layout) {
    ParserTemplate page;
    page.LoadText(layout);
    EXPECT_EQ(page.LoadErrors(), "");
    page.DataProvider(provider);
    return page.ParseToString();
  }

  ScopedRecordingHost host;
  TempFolder folder;
  std::shared_ptr<KVProject> project;
  std::shared_ptr<Template> tmpl;
  std::shared_ptr<KVDocType> docType;
  std::shared_ptr<CommonProvider> provider;
};

}  // namespace kv::test
