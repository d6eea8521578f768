// The composition root: owns every part of the program and knows who talks to whom. Members stand in the order in which
// they depend on each other. What happens is elsewhere: the start in core/StartUp, the end in core/ShutDown, a call in
// core/CallPipeline.
#pragma once

#include <memory>
#include <string>

#include "app/CommandLine.h"
#include "app/KnownNumbers.h"
#include "app/SettingsSwitches.h"
#include "console/TerminalView.h"
#include "core/CallPipeline.h"
#include "core/ProgramClock.h"
#include "core/ShutDown.h"
#include "core/StartUp.h"
#include "core/null_ports.h"
#include "data/FileLogStore.h"
#include "data/Folders.h"
#include "data/SpecSwitches.h"
#include "data/modJournal.h"
#include "data/modSettings.h"
#include "lines/AVM_monitor.h"
#include "lines/NCID_monitor.h"
#include "lines/modProcMessage.h"
#include "platform/Processes.h"
#include "screens/ErrorMessage.h"
#include "screens/TypedCommands.h"
#include "screens/fInputVorwahl.h"
#include "screens/fSimulation.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class fMain {
 public:
  struct System {
    MessageLoop& loop;
    FileStore& files;
    MessageLink& link;
    Processes& processes;
    TerminalView& terminal;
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
  // Reads what was typed; false when nothing more will come.
  bool TakeTyped();
  // Closes the program from the loop.
  void Close(UnloadReason reason) { shutDown_.Request(reason); }

 private:
  PipelinePorts Ports();
  ClockJobs Jobs();
  void AttachStartUp();
  void AttachShutDown();

  StartResult OpenEndpoint();
  StartResult Fail(const std::string& message);
  void ReadSwitches();
  StartResult EndIfClosing() const { return state_.ExitInProgress ? StartResult::kEnd : StartResult::kGoOn; }
  StartResult FirstStartPhase();
  void AskFirstStart();
  void SaveFirstStart(const FirstStartAnswers& answers);
  void LoadLanguage();
  void LoadSettings();
  void BackupFiles();
  StartResult InitWait();
  void RegisterSource(int source, bool& mode);
  void ShowFirstState();
  TypedCommands::Calls NewestCalls(std::size_t count);
  void GiveWayToOtherCopy();

  System system_;
  bool startedByAuto_;
  bool startedByRestart_;
  int exitStatus_ = 0;

  Folders folders_;
  WriteBlocks blocks_;
  modAPI_INI ini_;
  clsFiles::Rotation rotation_;
  clsFiles files_;
  FileLogStore logs_;
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
  NoTrayBalloon balloon_;
  NoJournalWindow journalWindow_;
  NoNewCallsWindow newCallsWindow_;
  NoMaxiDisplay maxiDisplay_;
  NoCardWindow cardWindow_;
  NoSound sound_;
  NoMaps maps_;
  NoCapiLine capi_;

  modJournal journal_;
  MainTimers timers_;
  PipelineState state_;
  PipelineSettings pipelineSettings_;
  LineSettings lineSettings_;
  SourceStates sourceStates_;
  CallFeed display_;
  CallPipeline pipeline_;
  modProcMessage helpers_;
  AVM_monitor router_;
  NCID_monitor ncid_;
  fInputVorwahl prefixInput_;
  fSimulation simulation_;
  TypedCommands commands_;
  ErrorMessage errorMessage_;
  ProgramClock clock_;
  StartUp startUp_;
  std::unique_ptr<StartWait> wait_;
  ShutDown shutDown_;
};

}  // namespace vorlix
