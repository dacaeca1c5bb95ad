#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/MessageBox.h"
#include "kavrel/ClassRegistry.h"
#include "project/KVDocTypes.h"
#include "project/KVProject.h"
#include "support/FileSizeLimit.h"
#include "support/Files.h"
#include "support/TempFolder.h"

namespace kv {
namespace {

struct RecordingEvents : KVProjectEvents {
  int changes = 0, dirtyChanges = 0;
  std::vector<std::string> postStatus, buildErrors;
  std::vector<KVErrorLevel> levels;
  bool answerBoxes = false;
  int answer = 0;
  void Change() override { ++changes; }
  void DirtyStateChanged() override { ++dirtyChanges; }
  void ProgressPostBuildStatus(std::string& s) override { postStatus.push_back(s); }
  void BuildError(const std::string& t, KVErrorLevel l) override {
    buildErrors.push_back(t);
    levels.push_back(l);
  }
  void MessageBox(const std::string&, int, const std::string&, int& result, bool& cancelDefault) override {
    if (!answerBoxes) return;
    result = answer;
    cancelDefault = true;
  }
};

struct CountingPlugIn : IKVProjectPlugIn {
  int changed = 0, terminated = 0;
  bool populated = true;
  long sources = 0;
  void ProjectChanged() override { ++changed; }
  void Terminate() override { ++terminated; }
  bool SomethingToDocument() override { return populated; }
  long RootItemTypeCount(const std::string& kind) override { return kind == "source" ? sources : 0; }
};

struct RecordingHost : MessageHandler {
  std::vector<std::string> messages, titles;
  std::vector<int> buttons;
  int answer = mb::OK;
  int show(const std::string& m, int b, const std::string& t) override {
    messages.push_back(m);
    buttons.push_back(b);
    titles.push_back(t);
    return answer;
  }
};

class ProjectTest : public ::testing::Test {
 protected:
  void SetUp() override {
    project = KVProject::New();
    events = std::make_shared<RecordingEvents>();
    project->Subscribe(events);
    host = std::make_shared<RecordingHost>();
    setMessageHandler(host);
  }
  void TearDown() override {
    setMessageHandler(nullptr);
    project->Terminate();
  }
  std::shared_ptr<CountingPlugIn> addPlugIn(const std::string& name) {
    auto plugIn = std::make_shared<CountingPlugIn>();
    project->DocTypes->Add(std::make_shared<KVDocType>(name, plugIn));
    return plugIn;
  }

  std::shared_ptr<KVProject> project;
  std::shared_ptr<RecordingEvents> events;
  std::shared_ptr<RecordingHost> host;
};

TEST_F(ProjectTest, NewProjectIsCleanUntilHelpVersionIsFirstRead) {
  EXPECT_FALSE(project->Dirty());

  EXPECT_EQ(project->HTMLHelpVersion(), "1");
  EXPECT_TRUE(project->Dirty());
  EXPECT_EQ(events->changes, 1);
  project->Dirty(false);
  EXPECT_EQ(project->HTMLHelpVersion(), "1");  // stored now: no second change
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectTest, SettersMarkChangesOnlyWhenTheValueDiffers) {
  auto plugIn = addPlugIn("kv.test");
  project->CompileHelpFile(true);
  project->Language("English");
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(plugIn->changed, 0);

  project->Language("Deutsch");
  project->PageNestingLevels(5);
  EXPECT_TRUE(project->Dirty());
  EXPECT_EQ(events->changes, 2);
  EXPECT_EQ(events->dirtyChanges, 1);  // dirty once, however many changes follow
  EXPECT_EQ(plugIn->changed, 2);
}

TEST_F(ProjectTest, PausedEventsAndUntrackedSettingsLeaveTheProjectClean) {
  auto plugIn = addPlugIn("kv.test");
  project->PauseEvents = true;
  project->Language("Français");
  project->Changed();
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(plugIn->changed, 0);
  project->PauseEvents = false;

  project->ProjectFileName("/x/help.hhp");
  project->DefaultTopic("index.html");
  project->CurrentDocType(project->DocTypes->Item(1));
  EXPECT_FALSE(project->Dirty());
  EXPECT_EQ(project->DefaultTopic(), "index.html");
  EXPECT_EQ(events->changes, 0);
}

TEST_F(ProjectTest, HelpVersionSetterStoresIntegersAndNeverZero) {
  project->HTMLHelpVersion("2");
  EXPECT_EQ(project->HTMLHelpVersion(), "2");
  project->Dirty(false);
  project->HTMLHelpVersion("2.0");
  EXPECT_FALSE(project->Dirty());
  // A text without a number reads as 0, differs from 2, and is stored as 1 with a change mark.
  project->HTMLHelpVersion("none");
  EXPECT_EQ(project->HTMLHelpVersion(), "1");
  EXPECT_TRUE(project->Dirty());
}

TEST_F(ProjectTest, DirtyAndChangeEventsCountAsHostsExpect) {
  project->Dirty(true);
  project->Dirty(true);
  EXPECT_EQ(events->dirtyChanges, 1);
  project->Changed();
  project->Changed();
  EXPECT_EQ(events->changes, 2);
  project->Dirty(false);
  EXPECT_EQ(events->dirtyChanges, 2);
}

TEST_F(ProjectTest, OutputNamesAreDerivedFromFoldersAndNames) {
  EXPECT_EQ(project->OutputFolder(), "");
  project->OutputFolder("/tmp/out");
  EXPECT_EQ(project->OutputFolder(), "/tmp/out/");
  project->OutputFolder("/tmp/out2/");
  EXPECT_EQ(project->OutputFolder(), "/tmp/out2/");

  project->ProjectGroupName("My Great Help");
  EXPECT_EQ(project->ProjectFileNameNoPathOrExtension(), "MyGreatHelp");
  EXPECT_EQ(project->ProjectFileName(), "/tmp/out2/MyGreatHelp.hhp");
  project->HTMLHelpVersion("2");
  EXPECT_EQ(project->ProjectFileName(), "/tmp/out2/MyGreatHelp.hxc");

  project->KVProjectFileName->FileName("/p/Größe Projekt.kvp");
  EXPECT_EQ(project->ProjectFileNameNoPathOrExtension(), "GrößeProjekt");
  project->ProjectFileName("/else/where/Named.hhp");
  EXPECT_EQ(project->ProjectFileNameNoPathOrExtension(), "Named");
  EXPECT_EQ(project->ProjectFileName(), "/else/where/Named.hhp");
}

TEST_F(ProjectTest, GroupNameFallsBackOnTheProjectFile) {
  EXPECT_EQ(project->ProjectGroupName(), "");
  project->KVProjectFileName->FileName("/p/Sample.kvp");
  EXPECT_EQ(project->ProjectGroupName(), "Sample");
  project->ProjectGroupName("Named");
  EXPECT_EQ(project->ProjectGroupName(), "Named");
}

TEST_F(ProjectTest, LocaleIsThatOfTheLocaleIdAndNoneForZero) {
  EXPECT_FALSE(project->Locale().has_value());
  project->LocaleID(1031);
  ASSERT_TRUE(project->Locale().has_value());
  EXPECT_EQ(project->Locale()->Name, "de-DE");
}

TEST_F(ProjectTest, SilentMessageBoxesAnswerWithoutAskingAndReportTheText) {
  project->Silent = true;
  EXPECT_EQ(project->ShowMessageBox("Replace?", mb::YesNo, "t"), mb::No);
  EXPECT_EQ(project->ShowMessageBox("Go on?", mb::OKCancel, "t"), mb::Cancel);
  EXPECT_EQ(project->ShowMessageBox("Save?", mb::YesNoCancel + mb::Question, "t"), mb::Cancel);
  EXPECT_EQ(project->ShowMessageBox("Retry?", mb::RetryCancel, "t"), mb::Cancel);
  EXPECT_EQ(project->ShowMessageBox("Note", mb::OKOnly + mb::Information, "t"), 0);
  EXPECT_EQ(project->InternalShowMessageBox("Keep?", mb::YesNo, "t", mb::Yes), mb::Yes);
  EXPECT_TRUE(host->messages.empty());
  EXPECT_EQ(events->postStatus, (std::vector<std::string>{"Replace?", "Go on?", "Save?", "Retry?", "Note", "Keep?"}));
}

TEST_F(ProjectTest, MessageBoxHandlerWinsOverSilentAndHost) {
  events->answerBoxes = true;
  events->answer = mb::Retry;
  project->Silent = true;
  EXPECT_EQ(project->ShowMessageBox("Try again?", mb::RetryCancel, "t"), mb::Retry);
  project->Silent = false;
  EXPECT_EQ(project->ShowMessageBox("Try again?", mb::RetryCancel, "t"), mb::Retry);
  EXPECT_TRUE(events->postStatus.empty());
  EXPECT_TRUE(host->messages.empty());

  events->answerBoxes = false;
  host->answer = mb::Yes;
  EXPECT_EQ(project->ShowMessageBox("Real?", mb::YesNo, "Title"), mb::Yes);
  ASSERT_EQ(host->messages.size(), 1u);
  EXPECT_EQ(host->titles[0], "Title");
}

TEST_F(ProjectTest, LoadErrorsRaiseBuildErrorAndShowAWarningOrStopBox) {
  project->RaiseLoadError("odd value");
  project->RaiseLoadError("broken", KVError);
  EXPECT_EQ(events->buildErrors, (std::vector<std::string>{"odd value", "broken"}));
  EXPECT_EQ(events->levels, (std::vector<KVErrorLevel>{KVWarning, KVError}));
  EXPECT_EQ(host->titles, (std::vector<std::string>{"Kavrel Load Error", "Kavrel Load Error"}));
  EXPECT_EQ(host->buttons, (std::vector<int>{mb::Exclamation, mb::Critical}));
}

TEST_F(ProjectTest, MissingProjectFileIsALoadErrorThatChangesNothing) {
  project->Silent = true;
  project->LoadFromFile("/no/such/folder/missing.kvp");
  ASSERT_EQ(events->buildErrors.size(), 1u);
  EXPECT_EQ(events->buildErrors[0], "File '/no/such/folder/missing.kvp' could not be found");
  EXPECT_EQ(events->levels[0], KVError);
  EXPECT_EQ(project->KVProjectFileName->FileName(), "");
  EXPECT_FALSE(project->LoadedFromFile);
  EXPECT_FALSE(project->Dirty());
}

TEST_F(ProjectTest, SavingToANewNameBacksUpTheOldFileAndKeepsTheProjectsOwnName) {
  test::TempFolder temp;
  const std::string own = temp.path("own.kvp");
  std::ofstream(own) << "<KavrelProject Version=\"5.0\"/>";
  project->KVProjectFileName->FileName(own);
  project->Language("Deutsch");
  ASSERT_TRUE(project->Dirty());

  const std::string other = temp.path("sub/other.kvp");
  project->SaveToFile(other);
  EXPECT_TRUE(std::filesystem::exists(other));
  EXPECT_TRUE(std::filesystem::exists(own + ".bak"));
  EXPECT_EQ(project->KVProjectFileName->FileName(), own);
  EXPECT_TRUE(project->Dirty());
  EXPECT_EQ(project->FileVersion, "5.0");

  EXPECT_TRUE(project->SaveToDisk());
  project->KVProjectFileName->FileName(temp.path("file-as-folder.kvp/x.kvp"));
  std::ofstream(temp.path("file-as-folder.kvp")) << "not a folder";
  EXPECT_FALSE(project->SaveToDisk());
}

TEST_F(ProjectTest, ASaveKilledOrFailingHalfWayLeavesThePreviousProjectFile) {
  test::TempFolder temp;
  const std::string own = temp.path("own.kvp");
  project->KVProjectFileName->FileName(own);
  ASSERT_TRUE(project->SaveToDisk());
  const std::string previous = test::readFile(own);
  project->ProjectGroupName(std::string(previous.size() * 4, 'x'));
  const rlim_t limit = rlim_t(previous.size() * 2);  // room for the backup, not for the new file

  const int killed = test::saveLimitedTo(limit, false, [&] { return project->SaveToDisk(); });
  ASSERT_TRUE(WIFSIGNALED(killed) && WTERMSIG(killed) == SIGXFSZ);  // died inside the write
  EXPECT_EQ(test::readFile(own), previous);

  const int failed = test::saveLimitedTo(limit, true, [&] { return project->SaveToDisk(); });
  ASSERT_TRUE(WIFEXITED(failed));
  EXPECT_EQ(WEXITSTATUS(failed), 1);
  EXPECT_EQ(test::readFile(own), previous);
}

TEST_F(ProjectTest, CancelTellsTheHostAndIsReadAtCancelPoints) {
  int polls = 0;
  project->DoEvents = [&] {
    if (++polls == 2) project->Cancel(true);
  };
  EXPECT_FALSE(project->Cancelled());
  EXPECT_TRUE(project->Cancelled());
  EXPECT_EQ(events->postStatus, (std::vector<std::string>{"Cancelling, please wait .."}));
}

TEST_F(ProjectTest, PopulatedDocTypesDecideWhatThereIsToDocument) {
  EXPECT_FALSE(project->SomethingToDocument());
  auto a = addPlugIn("kv.lumidesklite");
  a->sources = 2;
  auto b = addPlugIn("kv.other");
  b->populated = false;
  b->sources = 3;
  EXPECT_TRUE(project->SomethingToDocument());
  EXPECT_EQ(project->SourceItemCount(), 5);
  EXPECT_TRUE(project->IsLumideskLite());
  EXPECT_FALSE(project->IsLumidesk());
  EXPECT_TRUE(project->IsLumideskDocType(*project->DocTypes->Item(1)));
  EXPECT_FALSE(project->IsLumideskDocType(*project->DocTypes->Item(2)));
}

TEST_F(ProjectTest, PlugInDataIsCreatedByClassNameOnceAndKnowsItsProject) {
  ClassRegistry::instance().add("KVDB5.dbConnections", [] {
    auto o = std::make_shared<DynamicObject>("dbConnections");
    o->field("KVProject");
    return o;
  });
  ObjectPtr first = project->dbConnections();
  EXPECT_EQ(first, project->dbConnections());
  EXPECT_EQ(first->get("KVProject").toObject().get(), project.get());
  EXPECT_THROW(project->XSDSchemas(), Failure);  // a class that is not installed
  ClassRegistry::instance().remove("KVDB5.dbConnections");
}

TEST(ProjectLifetime, TerminateEndsPlugInsAndReleasesTheProject) {
  const long before = KVProject::InstanceCount();
  auto plugIn = std::make_shared<CountingPlugIn>();
  {
    auto project = KVProject::New();
    EXPECT_EQ(KVProject::InstanceCount(), before + 1);
    project->DocTypes->Add(std::make_shared<KVDocType>("kv.test", plugIn));
    project->Terminate();
    EXPECT_EQ(plugIn->terminated, 1);
    EXPECT_EQ(project->DocTypes, nullptr);
    project->Changed();  // still safe after the end
  }
  EXPECT_EQ(KVProject::InstanceCount(), before);
}

}  // namespace
}  // namespace kv
