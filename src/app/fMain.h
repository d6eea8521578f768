// The composition root: owns every part of the program and knows who talks to whom. Members stand in the order in which
// they depend on each other; where two need each other, the earlier keeps a reference to the later and uses it only
// once the program runs. What happens is elsewhere: the start in core/StartUp, the end in core/ShutDown, a call in
// core/CallPipeline. Its own routines are the steps of the start that no part could take alone.
#pragma once

#include <memory>
#include <string>

#include "app/CommandLine.h"
#include "app/KnownNumbers.h"
#include "app/LineSources.h"
#include "app/SettingsSwitches.h"
#include "app/SingleCopy.h"
#include "core/CallPipeline.h"
#include "core/CallWatchers.h"
#include "core/ProgramClock.h"
#include "core/ShutDown.h"
#include "core/StartUp.h"
#include "core/null_ports.h"
#include "data/FileLogStore.h"
#include "data/Folders.h"
#include "data/SpecSwitches.h"
#include "data/modJournal.h"
#include "data/modSettings.h"
#include "platform/Processes.h"
#include "platform/SoundDevice.h"
#include "reactions/BlacklistCommand.h"
#include "reactions/SoundPlayer.h"
#include "screens/ErrorMessage.h"
#include "screens/LogoFiles.h"
#include "screens/Screen.h"
#include "screens/SkinLoader.h"
#include "screens/TypedCommands.h"
#include "screens/null_views.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class fMain {
 public:
  struct System {
    MessageLoop& loop;
    FileStore& files;
    MessageLink& link;
    MessageLink& serviceLink;
    Processes& processes;
    CapiDriver& driver;
    SoundDevice& sound;
    Screen& screen;
    CallFeedView& lines;  // what typed commands answer on
    // Makes the program start with the system, or not; empty where that is not this copy's to say.
    std::function<void(bool wanted)> setAutostart;
  };

  // The system's parts must outlive the object.
  fMain(System system, const CommandLine& line, Folders::Surroundings surroundings);
  ~fMain();
  fMain(const fMain&) = delete;
  fMain& operator=(const fMain&) = delete;

  const std::string& DataFolder() const { return folders_.ProgramData(); }

  // Brings everything up; false when the program is to end at once.
  bool Form_Load() { return startUp_.Run(); }
  // What the process ends with: 1 when the start failed. A second copy that gives way has not failed.
  int ExitStatus() const { return exitStatus_; }
  // Closes the program from the loop.
  void Close(UnloadReason reason) { shutDown_.Request(reason); }

 private:
  PipelinePorts Ports();
  ClockJobs Jobs();
  LineSources::System LineParts();
  CallerDisplay::Ports DisplayPorts();
  std::vector<CallWatch*> Watchers();
  TypedCommands::Ports CommandPorts();
  void AttachStartUp();
  void AttachShutDown();
  void BindMenu();

  StartResult OpenEndpoint();
  StartResult Fail(const std::string& message);
  void ReadSwitches();
  StartResult EndIfClosing() const { return state_.ExitInProgress ? StartResult::kEnd : StartResult::kGoOn; }
  StartResult CheckFolders();
  StartResult FirstStartPhase();
  void LoadLanguage();
  void LoadSettings();
  void BackupFiles();
  StartResult InitWait();
  void OpenScreen();
  void ShowFirstState();
  void GiveWayToOtherCopy();
  bool HasRealCall() const;
  TypedCommands::Calls NewestCalls(std::size_t count);

  System system_;
  bool startedByAuto_;
  bool startedByRestart_;
  int exitStatus_ = 0;

  Folders folders_;
  SingleCopy singleCopy_;
  WriteBlocks blocks_;
  modAPI_INI ini_;
  clsFiles::Rotation rotation_;
  clsFiles files_;
  FileLogStore logs_;
  SpecSwitches spec_;
  modAll_MsgBox messages_;
  Settings settings_;
  modSettings settingsStore_;
  std::string checkWritten_;

  KnownNumbers known_;
  NoTeleControl teleControl_;
  NoCallCopy copy_;
  NoExportStarter exports_;
  NoMailQueue mail_;
  NoProgramStarter programs_;
  NoReverseSearch search_;
  NoJournalWindow journalWindow_;
  NoNewCallsWindow newCallsWindow_;
  NoCardWindow cardWindow_;
  NoMaps maps_;
  NoAutomaticSearch automaticSearch_;
  NoCallerWindows callerWindows_;
  NoDisplayWindows displayWindows_;

  modJournal journal_;
  MainTimers timers_;
  PipelineState state_;
  PipelineSettings pipelineSettings_;
  SoundPlayer sound_;
  BlacklistCommand blacklistCommand_;
  LogoFiles logos_;
  SourceStates sourceStates_;
  CallerDisplay display_;
  CallWatchers watchers_;
  CallPipeline pipeline_;
  fInputVorwahl prefixInput_;
  LineSources lines_;
  TypedCommands commands_;
  TrayMenu menu_;
  ErrorMessage errorMessage_;
  ProgramClock clock_;
  StartUp startUp_;
  std::unique_ptr<StartWait> wait_;
  ShutDown shutDown_;
};

}  // namespace vorlix
