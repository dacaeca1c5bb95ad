// Runs one complete build of a project: generation and help compilation around a busy dialog,
// a line-by-line output, an HTML result log, timing, a result sound, the results dialog with its
// retry loop, and a last-resort report of a failure during the build.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "build/BuildSteps.h"
#include "build/BusyDialog.h"
#include "build/ResultsDialog.h"
#include "kavrel/Enums.h"
#include "kavrel/Variant.h"
#include "services/Subscribers.h"

namespace kv {

class KVProject;

// The events of a build, in the order hosts know them. ErrorMessage and WarningMessage belong to
// the interface but the driver itself never raises them.
class KVProjectBuildEvents {
 public:
  virtual ~KVProjectBuildEvents() = default;
  virtual void GenericProgressMessage(const std::string& /*Text*/) {}
  virtual void ErrorMessage(const std::string& /*Text*/) {}
  virtual void WarningMessage(const std::string& /*Text*/) {}
  // A handler that sets CancelCompile while a busy dialog is up ends the build at once.
  virtual void GenerateComplete(KVBuildResultEnum /*BuildResult*/, bool& /*CancelCompile*/) {}
  virtual void BuildComplete(KVBuildResultEnum /*BuildResult*/) {}
};

class KVProjectBuild {
 public:
  KVProjectBuild();
  ~KVProjectBuild();
  KVProjectBuild(const KVProjectBuild&) = delete;
  KVProjectBuild& operator=(const KVProjectBuild&) = delete;

  void Subscribe(std::weak_ptr<KVProjectBuildEvents> subscriber);
  void Unsubscribe(const KVProjectBuildEvents* subscriber);

  // Loads the project file into a project of its own, builds it and ends it.
  KVBuildResultEnum BuildFile(const std::string& FileName, bool ShowBusyDialog = false, bool ShowResultsDialog = false);
  // Builds a loaded project. A compile that fails still completes the build: read
  // HelpCompileResult for the compile's outcome.
  KVBuildResultEnum Build(const std::shared_ptr<kv::KVProject>& KVProject, bool ShowBusyDialog = false,
                          bool ShowResultsDialog = false);
  // Releases the project.
  void Terminate();

  std::shared_ptr<kv::KVProject> KVProject() const { return mKVProject; }
  // The file name of the sound for the outcome of the last build.
  std::string ResultSound() const { return SoundName; }
  // The result log of the last build, rows of an HTML table.
  std::string BuildResultsHTML() const { return mBuildLog; }

  // Adds a row to the result log. A Graphic holding "ok" also shows what was generated.
  void AddToLog(const std::string& Text, const std::string& Graphic = "ok.bmp");

  DateTime BuildStartTime{}, BuildEndTime{}, CompileStartTime{}, CompileEndTime{};
  KVHelpCompileResultEnum HelpCompileResult = HelpCompileOK;
  std::string mBuildResults;

  // What generates and compiles; DefaultBuildSteps unless replaced.
  std::shared_ptr<BuildSteps> Steps;
  // The host's dialogs. Without a factory the build runs without that dialog.
  std::function<std::shared_ptr<BusyDialog>()> BusyDialogFactory;
  std::function<std::shared_ptr<ResultsDialog>()> ResultsDialogFactory;

 private:
  class Sink;
  friend class Sink;

  void SetProject(std::shared_ptr<kv::KVProject> project);
  // The build's steps up to BuildComplete; false when a GenerateComplete handler ended the build.
  bool RunBuild(bool ShowBusyDialog, bool ShowResultsDialog, KVBuildResultEnum& result);
  // From the compile decision to the log of the compile's outcome.
  void CompileAndLog(bool ShowResultsDialog);
  void InitBusyDialog();
  void TerminateBusyDialog();
  void LogToOutput(const std::string& Text);
  void AddNoteToLog(const std::string& Text, const std::string& Icon);
  std::string ConfigPath();
  std::string LogLinks();
  ResultsDialog* Results();
  void UnloadResults();

  // Reactions to the project's events and the busy dialog's Cancel button.
  void mKVProject_BuildError(const std::string& Text, KVErrorLevel Level);
  void mKVProject_CancelAvailabilityChanged(bool Available);
  void mKVProject_InitialiseStatus(long Index, long MaxValue);
  void mKVProject_UpdateStatusByIndex(long Index, const std::string& Caption, long Progress);
  void mKVProject_ProgressStatus(const std::string& Status);
  void mKVProject_StatusAnimChange(const std::string& StatusAnimFileName);
  void mBusy_BeforeCancel(bool& Cancel);

  Subscribers<KVProjectBuildEvents> mSubscribers;
  std::shared_ptr<Sink> mSink;
  std::shared_ptr<kv::KVProject> mKVProject;
  std::shared_ptr<BusyDialog> mBusy;
  std::shared_ptr<ResultsDialog> mResults;
  std::string mCurrentAVI;
  std::string SoundName;
  std::string mBuildLog;
  std::string mCompilerLog;
  bool mTerminateKVProject = false;
  std::string mConfigPath;
};

}  // namespace kv
