#include "core/StartUp.h"

#include <algorithm>
#include <array>
#include <utility>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

struct PhaseRow {
  StartPhase phase;
  std::array<const char*, 2> traces;  // in front of the job; nullptr: none
  const char* after = nullptr;
};

// The order of the start. A second copy is sent away before anything is read that it would act on or tell about.
constexpr PhaseRow kPhases[] = {
    {StartPhase::kOperatingSystem, {"Check operating system", nullptr}},
    {StartPhase::kOtherCopy, {"Check other copy", nullptr}},
    {StartPhase::kPaths, {"Read paths", nullptr}},
    {StartPhase::kClosingAlready, {nullptr, nullptr}},
    {StartPhase::kFirstRunDefaults, {"First run defaults", nullptr}},
    {StartPhase::kFirstStart, {"First start", nullptr}},
    {StartPhase::kServiceLink, {"Service link", nullptr}},
    {StartPhase::kGlobalLanguage, {"GlobalLanguage", nullptr}},
    {StartPhase::kLanguage, {"Language", nullptr}},
    {StartPhase::kCheckDirectories, {"CheckDirectories", nullptr}},
    {StartPhase::kClearOldFilesAndPaths, {"ClearOldFilesAndPaths", nullptr}},
    {StartPhase::kCheckReverseOfJournal, {"CheckReverseOfJournal", nullptr}},
    {StartPhase::kDialPads, {"DialPad", nullptr}},
    {StartPhase::kLoadTAPIData, {"LoadTAPIData", nullptr}},
    {StartPhase::kMSNRead, {"MSNRead", nullptr}},
    {StartPhase::kLoadSetting, {"LoadSetting", nullptr}},
    {StartPhase::kDisplayElementsLoad, {"DisplayElementsLoad", nullptr}},
    {StartPhase::kInitArrays, {"InitArrays", nullptr}},
    {StartPhase::kInitObjects, {"InitObjects", nullptr}},
    {StartPhase::kFileBackup, {"FileBackup", nullptr}},
    {StartPhase::kMailTemplates, {"FuncMail_LoadTemplates", nullptr}},
    {StartPhase::kSetDisplayFont, {"SetDisplayFont", nullptr}},
    {StartPhase::kLoadOVW, {"loadOVW", nullptr}},
    {StartPhase::kLoadLVW, {"loadLVW", nullptr}},
    {StartPhase::kLoadProvider, {"loadProvider", nullptr}},
    {StartPhase::kSearch, {"Search", nullptr}},
    {StartPhase::kSetMultiMonPos, {"SetMultiMonPos", nullptr}},
    {StartPhase::kNumberCache, {"SpeedBuffer_OVW_Load", nullptr}},
    {StartPhase::kLoadCursorData, {"LoadCursorData", nullptr}},
    {StartPhase::kBlackList, {"FuncBlackList_ReadFileToArray", nullptr}},
    {StartPhase::kLoadFeiertage, {"LoadFeiertage", nullptr}},
    {StartPhase::kBookDataRead, {"BookData_Read", nullptr}},
    {StartPhase::kLoadVCardArray, {"LoadVCardArray", nullptr}},
    {StartPhase::kSettHotKeys, {"SettHotKeys", nullptr}},
    {StartPhase::kOpenRestore, {"OpenRestore", nullptr}},
    {StartPhase::kTimers, {"Inizialize all timers", nullptr}, "Inizialize all timers OK"},
    {StartPhase::kInitWait, {"InitWait", nullptr}},
    {StartPhase::kShowTrayIcon, {"ShowTrayIcon", nullptr}},
    {StartPhase::kLoadSettingsAVM, {"LoadSettings_AVM", nullptr}},
    {StartPhase::kLoadSettingsNCID, {"LoadSettings_NCID", nullptr}},
    {StartPhase::kRegisterCAPI, {"#### New CAPI Init ####################", "Register CAPI"}},
    {StartPhase::kRegisterAVM, {"#### New AVM Init ####################", "Register AVM"}},
    {StartPhase::kRegisterNCID, {"#### New NCID Init ####################", "Register NCID"}},
    {StartPhase::kPreload, {"Load settings a", "Load settings b"}, "Preload OK"},
    {StartPhase::kLoadNewCalls, {"Load NewCalls", nullptr}},
    {StartPhase::kLoadVCard, {"Load vCard", nullptr}},
    {StartPhase::kUnloadSplashScreen, {"Unload SplashScreen", nullptr}},
    {StartPhase::kSetSession, {"Set session", nullptr}},
    {StartPhase::kButtons, {nullptr, nullptr}},
    {StartPhase::kDisplayResize, {"DisplayResize", nullptr}, "MainLoad OK"},
};

void Trace(const char* step) {
  if (step != nullptr) ErrorHandling().LogDebug_Timing(step);
}

}  // namespace

StartUp::StartUp(MessageLoop& loop) : watch_([&loop] { return loop.GetClock().Steady(); }) {}

void StartUp::Do(StartPhase phase, std::function<void()> job) {
  On(phase, [job = std::move(job)] {
    job();
    return StartResult::kGoOn;
  });
}

bool StartUp::Run() {
  next_ = 0;
  return Continue();
}

bool StartUp::Continue() {
  while (next_ < std::size(kPhases)) {
    // A phase may let the loop run, and the program close meanwhile.
    if (isClosing_ && isClosing_()) return false;
    const StartResult result = RunPhase(next_);
    ++next_;
    if (result == StartResult::kEnd) return false;
    if (result == StartResult::kWait) return true;
  }
  watch_.StopWatchAndMsg();
  complete_ = true;
  return true;
}

bool StartUp::HasRun(StartPhase phase) const {
  return std::ranges::find(kPhases, phase, &PhaseRow::phase) < kPhases + next_;
}

StartResult StartUp::RunPhase(std::size_t index) {
  const PhaseRow& row = kPhases[index];
  if (const auto condition = conditions_.find(row.phase); condition != conditions_.end() && !condition->second()) {
    return StartResult::kGoOn;
  }
  for (const char* trace : row.traces) {
    Trace(trace);
  }
  StartResult result = StartResult::kGoOn;
  if (const auto job = jobs_.find(row.phase); job != jobs_.end()) {
    if (row.traces[0] != nullptr) watch_.AddWatch(row.traces[0], "Form_Load");
    result = Trapped("fMain.Form_Load", job->second, row.traces[0] == nullptr ? "" : row.traces[0]);
  }
  if (row.phase == StartPhase::kPaths) watch_.StartWatch("Form_Load");  // its switch was read there
  Trace(row.after);
  return result;
}

StartWait::StartWait(MessageLoop& loop, std::chrono::seconds duration, std::function<void()> then) {
  timer_ = loop.MakeTimer(duration, [this, then = std::move(then)] {
    timer_->SetEnabled(false);
    then();
  });
  timer_->SetEnabled(true);
}

}  // namespace vorlix
