#include "app/fMain.h"

#include <algorithm>
#include <utility>

#include "app/FirstRun.h"
#include "core/CommandLineWords.h"
#include "data/modDirectories.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

std::string WaitText() {
  return LoadLangKey("Display_Msg_InitWait", "Bitte warten"_ansi);
}

}  // namespace

fMain::fMain(System system, const CommandLine& line, Folders::Surroundings surroundings)
    : system_(system),
      startedByAuto_(HasWord(line.words, "auto")),
      startedByRestart_(HasWord(line.words, "restart")),
      folders_(system.files, std::move(surroundings)),
      singleCopy_(system.link, folders_),
      ini_(system.files, folders_, blocks_),
      rotation_{0, [this] { return settings_.General.BackupCountStep; }},
      files_(system.files, ini_, system.loop.GetClock(), rotation_),
      logs_(files_, folders_),
      spec_(LoadSpecSwitches(ini_, folders_)),
      messages_(system.screen.Boxes()),
      settingsStore_({ini_, system.files, folders_, system.loop.GetClock(), messages_,
                      [this](const std::string& path) { files_.FileMakeBackup(path, 1); }},
                     settings_),
      known_({system.loop, system.files, files_, folders_, ini_, blocks_, settings_, settingsStore_, messages_,
              lines_.simulation, system.screen.DoubleItems(),
              [this](const std::string& number) { return sound_.HaveCallerSoundFile(number); }}),
      journal_({files_, folders_, blocks_, system.loop.GetClock(), known_.numbers, known_.archive, known_.journalNames,
                [this] { return settings_.General.BackupCount; }}),
      timers_(system.loop),
      pipelineSettings_(settings_, folders_.BookRefresh(), startedByAuto_),
      sound_({system.sound, system.files, folders_, state_,
              [this](const std::string& path) { return settingsStore_.GetFullPathFromRelativePath(path); },
              [this](const std::string& number) { return known_.IsKnownPerson(number); }}),
      blacklistCommand_(known_.blacklist, known_.book),
      logos_({system.files, folders_,
              [this](const std::string& number) { return known_.numbers.Get_ProviderFile(number); },
              [this](const std::string& number) { return known_.numbers.Get_StateFlagFile(number); }}),
      sourceStates_(settings_, lines_.helpers, lines_.capiSession),
      display_(system.screen.Views(), DisplayPorts()),
      watchers_(Watchers()),
      pipeline_(Ports(), state_),
      prefixInput_({system.screen.AreaCodes(), [this] { return system_.screen.CanAsk(); }, settings_, settingsStore_,
                    [this] { known_.ReloadTables(); }}),
      lines_(LineParts()),
      commands_(CommandPorts()),
      menu_({settings_, [this] { return lines_.simulation.IsOpen() || HasRealCall(); }}),
      errorMessage_({files_, folders_, settings_, settingsStore_, messages_,
                     [this](const std::string& file, const std::string& argument) {
                       return static_cast<bool>(system_.processes.Start(file, {argument}));
                     },
                     [this] { return lines_.capiSession.DriverText(); }}),
      clock_(system.loop.GetClock(), timers_, Jobs()),
      startUp_(system.loop),
      shutDown_(timers_, state_) {
  ErrorHandling().Attach(logs_, system_.loop.GetClock(), "PRG");
  ErrorHandling().SetShowMessage([this](std::string_view text, int style, std::string_view title) {
    messages_.MsgBoxForward(text, style, title);
  });
  ErrorHandling().TraceInfoMessage(true);
  timers_.tmFileWatch->SetTick([this] {
    if (known_.book.tmFileWatch_Timer()) display_.display.DisplayCallerUpdateWithBook();
  });
  system_.screen.WaitWith([this] {
    system_.loop.WaitPending(std::chrono::seconds(1));
    return !state_.ExitInProgress;
  });
  lines_.helpers.OnSecondStart([this] { system_.screen.ComeForward(); });
  system_.screen.OnSessionEnd([this] { Close(UnloadReason::kSystem); });
  system_.screen.OnDisplayLost([this] { shutDown_.Run(UnloadReason::kSystem); });
  BindMenu();
  AttachStartUp();
  AttachShutDown();
}

fMain::~fMain() {
  system_.screen.Close();
  system_.screen.WaitWith({});
  system_.screen.OnSessionEnd({});
  system_.screen.OnDisplayLost({});
  ErrorHandling().Detach();
}

PipelinePorts fMain::Ports() {
  return {system_.loop,
          timers_,
          pipelineSettings_,
          messages_,
          known_.numbers,
          known_.ownNumbers,
          known_.book,
          teleControl_,
          known_.blocking,
          known_.schedules,
          copy_,
          journal_,
          exports_,
          mail_,
          programs_,
          search_,
          display_.display,
          display_.tray,
          journalWindow_,
          newCallsWindow_,
          display_.maxi,
          cardWindow_,
          sound_,
          maps_,
          lines_.capi,
          prefixInput_,
          lines_.simulation};
}

LineSources::System fMain::LineParts() {
  return {system_.loop,
          system_.link,
          system_.serviceLink,
          system_.processes,
          system_.files,
          system_.driver,
          logs_,
          folders_,
          ini_,
          settings_,
          settingsStore_,
          spec_,
          timers_,
          state_,
          messages_,
          known_,
          pipeline_,
          journal_,
          journalWindow_,
          newCallsWindow_,
          prefixInput_,
          display_.display,
          watchers_,
          [this] { display_.commands.mnuReset_Click(); }};
}

CallerDisplay::Ports fMain::DisplayPorts() {
  return {system_.loop,
          timers_,
          settings_,
          state_,
          known_.ownNumbers,
          sourceStates_,
          known_.book,
          known_.blocking,
          messages_,
          lines_.capi,
          lines_.simulation,
          blacklistCommand_,
          logos_,
          automaticSearch_,
          callerWindows_,
          displayWindows_,
          [this] { sound_.Stop(); },
          [this] { lines_.capi.CAPIReset(false, true); },
          {},
          {}};
}

std::vector<CallWatch*> fMain::Watchers() {
  std::vector<CallWatch*> watchers = system_.screen.Watchers();
  watchers.push_back(&display_.tray);
  watchers.push_back(&display_.hiding);
  return watchers;
}

TypedCommands::Ports fMain::CommandPorts() {
  return {system_.lines,
          known_.numbers,
          known_.ownNumbers,
          known_.book,
          known_.blocking,
          lines_.simulation,
          [this] { return HasRealCall(); },
          [this](std::size_t count) { return NewestCalls(count); },
          [this]() -> const clsCollection& { return known_.book.BookCollection(); }};
}

ClockJobs fMain::Jobs() {
  ClockJobs jobs;
  jobs.options = [this] { return ClockSettings(settings_); };
  lines_.Attach(jobs);
  jobs.everySecond.emplace_back([this] { commands_.TimerTick(); });
  jobs.everySecond.emplace_back([this] { GiveWayToOtherCopy(); });
  jobs.everySecond.emplace_back([this] { system_.screen.Tick(); });
  jobs.storeJournalDate = [this](const std::string& date) { settingsStore_.SaveJournalDate(date); };
  known_.Attach(jobs);
  jobs.checkErrorReport = [this] { errorMessage_.Check(); };
  jobs.isBookWatched = [this] { return folders_.BookRefresh(); };
  return jobs;
}

void fMain::BindMenu() {
  DisplayCommands& commands = display_.commands;
  menu_.Bind(MenuCommand::kBlockAll, [&commands] { commands.mnuBlockAll_Click(); });
  menu_.Bind(MenuCommand::kBlockAllByTime, [&commands] { commands.mnuBlockAllByTime_Click(); });
  menu_.Bind(MenuCommand::kSilentMode, [&commands] { commands.mnuSilentMode_Click(); });
  menu_.Bind(MenuCommand::kCapiReset, [&commands] { commands.mnuCAPIReset_Click(); });
  menu_.Bind(MenuCommand::kResetDisplay, [&commands] { commands.mnuReset_Click(); });
}

void fMain::AttachStartUp() {
  startUp_.EndWhen([this] { return state_.ExitInProgress; });
  known_.Attach(startUp_);
  lines_.Attach(startUp_);
  startUp_.On(StartPhase::kOtherCopy, [this] { return OpenEndpoint(); });
  startUp_.Do(StartPhase::kPaths, [this] { ReadSwitches(); });
  startUp_.On(StartPhase::kClosingAlready, [this] { return EndIfClosing(); });
  startUp_.Do(StartPhase::kGlobalLanguage, [this] { LoadLanguage(); });
  startUp_.On(StartPhase::kCheckDirectories, [this] { return CheckFolders(); });
  startUp_.When(StartPhase::kFirstStart, [this] { return settingsStore_.IsFirstStart(); });
  startUp_.On(StartPhase::kFirstStart, [this] { return FirstStartPhase(); });
  startUp_.Do(StartPhase::kCheckReverseOfJournal, [this] {
    settingsStore_.LoadBackupSettings();
    journal_.CheckReverseOfJournal();
  });
  startUp_.Do(StartPhase::kLoadTAPIData, [this] { settingsStore_.LoadTAPIData(); });
  startUp_.Do(StartPhase::kLoadSetting, [this] { LoadSettings(); });
  startUp_.Do(StartPhase::kDisplayElementsLoad, [this] { display_.display.DisplayElementsLoad(); });
  startUp_.Do(StartPhase::kFileBackup, [this] { BackupFiles(); });
  startUp_.Do(StartPhase::kTimers, [this] { timers_.AllTimerStart(); });
  startUp_.On(StartPhase::kInitWait, [this] {
    OpenScreen();  // what it waits for is to be seen
    return InitWait();
  });
  startUp_.Do(StartPhase::kShowTrayIcon, [this] { ShowFirstState(); });
  startUp_.Do(StartPhase::kLoadSettingsAVM, [this] { settingsStore_.LoadSettings_AVM(); });
  startUp_.Do(StartPhase::kLoadSettingsNCID, [this] { settingsStore_.LoadSettings_NCID(); });
  startUp_.Do(StartPhase::kSetSession, [this] { files_.SetSession(true); });
  startUp_.Do(StartPhase::kDisplayResize, [this] { display_.display.DisplayResize(); });
}

void fMain::AttachShutDown() {
  shutDown_.On(UnloadStep::kSaveAreaBuffer, [this](UnloadReason) { known_.numbers.SpeedBuffer_OVW_Save(); });
  shutDown_.On(UnloadStep::kSaveSettings, [this](UnloadReason) {
    system_.screen.KeepPlaces();
    settingsStore_.SaveSettings_Self();
  });
  lines_.Attach(shutDown_);
  shutDown_.On(UnloadStep::kStopTimers, [this](UnloadReason) { timers_.DisableAll(); });
  shutDown_.On(UnloadStep::kUnloadForms, [this](UnloadReason) { system_.screen.Close(); });
  shutDown_.On(UnloadStep::kEndSession, [this](UnloadReason) { files_.SetSession(false); });
  shutDown_.On(UnloadStep::kUnloadClasses, [this](UnloadReason) {
    system_.link.Close();
    system_.serviceLink.Close();
    system_.loop.Quit();
  });
  // What the start has not loaded is not to be saved: an end during the first questions leaves nothing behind.
  for (const auto& [step, phase] : {std::pair{UnloadStep::kSaveAreaBuffer, StartPhase::kNumberCache},
                                    {UnloadStep::kSaveSettings, StartPhase::kLoadSetting},
                                    {UnloadStep::kEndSession, StartPhase::kSetSession}}) {
    shutDown_.When(step, [this, begun = phase] { return startUp_.HasRun(begun); });
  }
}

StartResult fMain::OpenEndpoint() {
  const auto manner = startedByRestart_ ? SingleCopy::Manner::kTakeOver
                      : startedByAuto_  ? SingleCopy::Manner::kGiveWay
                                        : SingleCopy::Manner::kBringToFront;
  switch (singleCopy_.Take(lines_.helpers, manner)) {
    case SingleCopy::Outcome::kTaken:
      return StartResult::kGoOn;
    case SingleCopy::Outcome::kOtherRuns:
      return StartResult::kEnd;
    default:
      return Fail(singleCopy_.Fault());
  }
}

StartResult fMain::Fail(const std::string& message) {
  exitStatus_ = 1;
  messages_.MsgBoxForward(message, kMsgError);
  return StartResult::kEnd;
}

void fMain::ReadSwitches() {
  ErrorHandling().Switches = spec_.Debug;
  if (!folders_.Notice().empty()) messages_.MsgBoxForward(folders_.Notice(), kMsgWarning);
}

// A copy started with "restart" has taken this one's place.
void fMain::GiveWayToOtherCopy() {
  if (state_.ExitInProgress || !singleCopy_.IsSuperseded()) return;
  ErrorHandling().LogDebug_Temp("Another copy has taken over, this one ends");
  Close(UnloadReason::kUser);
}

// Without a folder nothing could be kept. The user has been told.
StartResult fMain::CheckFolders() {
  if (!CheckDirectories(system_.files, folders_, messages_)) {
    exitStatus_ = 1;
    return StartResult::kEnd;
  }
  checkWritten_ = settingsStore_.WriteCheck();
  return StartResult::kGoOn;
}

StartResult fMain::FirstStartPhase() {
  FirstRun({system_.screen, settings_, settingsStore_, ini_, folders_, messages_, state_}).Ask();
  return EndIfClosing();
}

void fMain::LoadLanguage() {
  modLanguage::LanguageInit(ini_.GetSettStr("General", "Language", modLanguage::CurrentCode(), {}, true),
                            [this](std::string_view name) -> std::optional<std::string> {
                              std::string text;
                              if (!system_.files.Read(folders_.GetMainPath(name), text)) return std::nullopt;
                              return text;
                            });
}

void fMain::LoadSettings() {
  settingsStore_.LoadSetting();
  known_.schedules.LoadTimeSettings();
  if (system_.setAutostart) system_.setAutostart(settings_.General.AutoRun);
  settingsStore_.CheckConfigFile(checkWritten_, settings_.FileCheck.Check);
  SkinLoader({system_.files, folders_, messages_}).SkinData(settings_.Skin.Path, display_.skin, false);
}

void fMain::BackupFiles() {
  if (!settings_.General.BackupAtStartUp) return;
  for (const char* file : {"Vorlixbook.txt", "Vorlixjournal.txt"}) {
    const std::string path = folders_.BookPath() + file;
    // A file that has lost its content would push one good generation out at each start.
    if (!files_.IsPoorerThanBackup(path)) files_.FileMakeBackup(path, settings_.General.BackupCount);
  }
}

StartResult fMain::InitWait() {
  if (!startedByAuto_) {
    ErrorHandling().LogDebug_Timing("Vorlix start user");
    return StartResult::kGoOn;
  }
  const int delay = settings_.General.AutoRunDelay;
  if (delay == 0) return StartResult::kGoOn;
  display_.display.ChangeDisplayData(WaitText() + " " + std::to_string(delay) + " sek");
  wait_ = std::make_unique<StartWait>(system_.loop, std::chrono::seconds(delay), [this] { startUp_.Continue(); });
  return StartResult::kWait;
}

void fMain::OpenScreen() {
  system_.screen.Open({display_,
                       menu_,
                       commands_,
                       lines_.simulation,
                       known_.blacklist,
                       settings_,
                       settingsStore_,
                       messages_,
                       [this](oDataCall& call) { known_.Identify(call); },
                       {.version = VersionText(), .dataFolder = folders_.ProgramData(), .lines = {}, .toolkit = {}},
                       [this] { return sourceStates_.Read(); },
                       [this] { Close(UnloadReason::kUser); }});
  if (system_.screen.HasClock()) display_.display.RunClock();
}

// A simulation that begins now would take its end away.
bool fMain::HasRealCall() const {
  return state_.ActiveCallList.Count() > 0 || lines_.router.HasOpenCall();
}

TypedCommands::Calls fMain::NewestCalls(std::size_t count) {
  auto calls = journal_.ReadJournal(journal_.JournalPath(), true).value_or(TypedCommands::Calls());
  calls.resize(std::min(calls.size(), count));
  for (const auto& call : calls) {
    known_.journalNames.Fill(*call);
  }
  return calls;
}

// Before the sources begin, which tell how they stand themselves: a driver at once, a helper when it runs.
void fMain::ShowFirstState() {
  system_.screen.Tell(VersionText() + ", " + LoadLangKey("Console_Label_DataFolder", "Datenordner"_ansi) + " " +
                      folders_.ProgramData());
  const auto& general = settings_.General;
  if (!general.CallMode_CAPI && (general.CallMode_AVM || general.CallMode_NCID)) {
    display_.display.ChangeDisplayData(WaitText());
  } else {
    display_.display.DisplayUpdate(false);
  }
}

}  // namespace vorlix
