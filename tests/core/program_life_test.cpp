// The program's life: its start, its clock, its end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/CommandLineWords.h"
#include "core/ProgramClock.h"
#include "core/ShutDown.h"
#include "core/StartUp.h"
#include "fakes/ManualReactor.h"
#include "fakes/MemoryLogStore.h"
#include "services/text.h"

namespace vorlix {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;

// The lines of the timing log while the object lives.
class TimingLog {
 public:
  explicit TimingLog(const CivilClock& clock) {
    ErrorHandling().Attach(logs_, clock, "PRG");
    ErrorHandling().Switches.LogTiming = true;
  }
  ~TimingLog() {
    ErrorHandling().Switches = {};
    ErrorHandling().Detach();
  }
  std::string Debug() const { return logs_.Text(R"(\log\debug.log)"); }
  std::string Errors() const { return logs_.Text(R"(\log\error.log)"); }

 private:
  MemoryLogStore logs_;
};

TEST(StartUp, RunsTheJobsInTheOrderOfThePhasesWhateverOrderTheyCameIn) {
  ManualReactor loop;
  TimingLog log(loop.GetClock());
  StartUp start(loop);
  std::string jobs;
  start.Do(StartPhase::kSetSession, [&] { jobs += "session "; });
  start.Do(StartPhase::kLoadSetting, [&] { jobs += "settings "; });
  start.Do(StartPhase::kCheckDirectories, [&] { throw Fault(75, "no folder"); });
  start.Do(StartPhase::kRegisterAVM, [&] { jobs += "AVM "; });
  start.Do(StartPhase::kRegisterNCID, [&] { jobs += "NCID "; });
  start.When(StartPhase::kRegisterNCID, [] { return false; });
  EXPECT_TRUE(start.Run());
  EXPECT_TRUE(start.IsComplete());
  EXPECT_EQ(jobs, "settings AVM session ");
  EXPECT_THAT(log.Errors(), HasSubstr("fMain.Form_Load + 75 + no folder"));
  EXPECT_THAT(log.Debug(), HasSubstr("GlobalLanguage\nLanguage\nCheckDirectories\nClearOldFilesAndPaths\n"
                                     "CheckReverseOfJournal\n"));
  EXPECT_THAT(log.Debug(), HasSubstr("Inizialize all timers\nInizialize all timers OK\nInitWait\n"));
  EXPECT_THAT(log.Debug(), HasSubstr("#### New AVM Init ####################\nRegister AVM\nLoad settings a\n"));
  EXPECT_THAT(log.Debug(), HasSubstr("DisplayResize\nMainLoad OK\n"));
  EXPECT_THAT(log.Debug(), HasSubstr("Over all: "));
}

TEST(StartUp, APhaseMayEndTheProgramOrWaitWithoutHoldingTheLoop) {
  ManualReactor loop;
  StartUp ending(loop);
  bool later = false;
  ending.On(StartPhase::kOtherCopy, [] { return StartResult::kEnd; });
  ending.Do(StartPhase::kPaths, [&] { later = true; });  // a second copy reads no switches and tells nothing
  EXPECT_FALSE(ending.Run());
  EXPECT_FALSE(later);

  StartUp waiting(loop);
  std::unique_ptr<StartWait> wait;
  waiting.On(StartPhase::kInitWait, [&] {
    wait = std::make_unique<StartWait>(loop, seconds(30), [&] { waiting.Continue(); });
    return StartResult::kWait;
  });
  EXPECT_TRUE(waiting.Run());
  loop.Advance(seconds(29));
  EXPECT_FALSE(waiting.IsComplete());
  loop.Advance(seconds(2));
  EXPECT_TRUE(waiting.IsComplete());
}

TEST(CommandLineWords, AreFoundAnywhereInAWord) {
  EXPECT_TRUE(HasWord({"x", "/autostart"}, "auto"));
  EXPECT_FALSE(HasWord({"x"}, "auto"));
}

TEST(ShutDown, RunsItsStepsInOrderOnceAndBehindAPendingBook) {
  ManualReactor loop;
  TimingLog log(loop.GetClock());
  MainTimers timers(loop);
  PipelineState state;
  ShutDown end(timers, state);
  std::string steps;
  end.SetPendingBook([&] {
    steps += "book ";
    return true;
  });
  end.On(UnloadStep::kEndSession, [&](UnloadReason) { steps += "session "; });
  end.On(UnloadStep::kTerminateHelpers, [&](UnloadReason) { steps += "helpers "; });
  end.On(UnloadStep::kReleaseCAPI,
         [&](UnloadReason why) { steps += why == UnloadReason::kSystem ? "system " : "user "; });
  end.On(UnloadStep::kSaveSettings, [&](UnloadReason) { throw Fault(70, "disk"); });
  end.Request(UnloadReason::kSystem);
  EXPECT_TRUE(state.ExitInProgress);
  EXPECT_EQ(steps, "");
  loop.Advance(seconds(1));
  end.Request(UnloadReason::kUser);
  loop.Advance(seconds(1));
  EXPECT_EQ(steps, "book system helpers session ");
  EXPECT_EQ(log.Debug(),
            "Unloading by system\nUnloading ok\nUnload save area buffer\nUnload save settings\nUnload CAPI release\n"
            "Unload AVM callback\nUnload stop timers\nUnload remove hotkeys\nUnload forms\nUnload remove tray\n"
            "Unload session\nUnload classes\nUnload complete\n");
}

TEST(MainTimers, StartAsTheirTableSays) {
  ManualReactor loop;
  MainTimers timers(loop);
  EXPECT_TRUE(timers.tmClock->Enabled());
  EXPECT_FALSE(timers.tmSekMinHourDay->Enabled());
  timers.AllTimerStart();
  for (const Timer* timer :
       {timers.tmStartUp.get(), timers.tmGripOver.get(), timers.tmSekMinHourDay.get(), timers.tmServiceDDE.get()}) {
    EXPECT_TRUE(timer->Enabled());
  }
  EXPECT_FALSE(timers.tmCAPI->Enabled());
  EXPECT_EQ(timers.tmCAPI->Interval(), std::chrono::milliseconds(400));
  EXPECT_EQ(loop.UntilNextTick(), std::nullopt);  // a timer without a job costs no wake-up
  timers.DisableAll();
  EXPECT_FALSE(timers.tmClock->Enabled());
}

TEST(ProgramClock, CountsMinutesHoursAlertsAndTheFirstFiveSeconds) {
  ManualReactor loop;
  MainTimers timers(loop);
  std::map<std::string, int> done;
  ClockJobs jobs;
  jobs.everySecond.emplace_back([&] { ++done["second"]; });
  jobs.everySecond.emplace_back([&] {
    if (done["second"] == 1) throw Fault(5, "a job that fails stops no other");
  });
  jobs.everySecond.emplace_back([&] { ++done["last"]; });
  jobs.sendMailByClock = [&] { ++done["minute"]; };
  jobs.checkErrorReport = [&] { ++done["hour"]; };
  jobs.alertCheck = [&] { ++done["alert"]; };
  jobs.loadFeiertage = [&] { ++done["year"]; };
  jobs.isBookWatched = [] { return true; };
  loop.SetNow(DateTime::FromCivil(2026, 12, 31, 23, 0, 0));
  const ProgramClock clock(loop.GetClock(), timers, jobs);
  MemoryLogStore logs;
  ErrorHandling().Attach(logs, loop.GetClock(), "PRG");
  timers.AllTimerStart();
  loop.Advance(seconds(6));
  EXPECT_EQ(done["alert"], 1);
  EXPECT_TRUE(timers.tmServiceStatus->Enabled());
  EXPECT_TRUE(timers.tmFileWatch->Enabled());
  loop.Advance(minutes(60) - seconds(6));
  EXPECT_EQ(done["hour"], 1);
  EXPECT_EQ(done["alert"], 1);
  loop.Advance(minutes(1));
  EXPECT_EQ(done["alert"], 2);  // an hour and a minute after the start
  EXPECT_EQ(done["minute"], 61);
  EXPECT_EQ(done["second"], 61 * 60);
  EXPECT_EQ(done["last"], 61 * 60);
  EXPECT_EQ(done["year"], 1);
  loop.Advance(hours(2));
  EXPECT_EQ(done["hour"], 3);
  EXPECT_EQ(done["alert"], 3);
  EXPECT_EQ(done["year"], 1);
  ErrorHandling().Detach();
}

TEST(ProgramClock, TheJournalIsArchivedWhenItsPeriodHasChanged) {
  struct Row {
    JournalPeriod backup;
    const char* last;
    int year, month;
    const char* period;  // empty: nothing is archived
  };
  const Row rows[] = {
      {JournalPeriod::kNone, "202001", 2026, 11, ""},
      {JournalPeriod::kMonth, "202610", 2026, 11, "202610"},
      {JournalPeriod::kMonth, "202611", 2026, 11, ""},
      {JournalPeriod::kMonth, "202512", 2026, 1, "202512"},
      {JournalPeriod::kMonth, "202612", 2026, 11, ""},
      {JournalPeriod::kQuarter, "202610", 2026, 11, ""},
      {JournalPeriod::kQuarter, "202609", 2026, 11, "202609"},
      {JournalPeriod::kQuarter, "202510", 2026, 2, "202512"},
      {JournalPeriod::kQuarter, "202511", 2026, 10, "202609"},
      {JournalPeriod::kYear, "202601", 2026, 12, ""},
      {JournalPeriod::kYear, "202512", 2026, 1, "202512"},
      {JournalPeriod::kMonth, "", 2026, 1, ""},
      {JournalPeriod::kMonth, "abc", 2026, 1, ""},
  };
  for (const Row& row : rows) {
    const auto period = PeriodToArchive(row.backup, row.last, DateTime::FromCivil(row.year, row.month, 15));
    EXPECT_EQ(period.value_or(""), row.period) << row.last << " " << row.year << row.month;
  }
}

TEST(ProgramClock, StoresTheJournalsDateBeforeItArchivesAndLooksForUpdatesWhenDue) {
  ManualReactor loop;
  MainTimers timers(loop);
  loop.SetNow(DateTime::FromCivil(2026, 11, 21));
  std::string done;
  bool loading = true;
  ClockOptions options{.UpdateAuto = true, .Backup = JournalPeriod::kMonth, .JournalDate = "202610"};
  ClockJobs jobs;
  jobs.options = [&] { return options; };
  jobs.isJournalLoading = [&] { return loading; };
  jobs.checkForUpdate = [&] { done += "update "; };
  jobs.storeJournalDate = [&](const std::string& date) { done += "store " + (options.JournalDate = date) + " "; };
  jobs.archiveJournal = [&](const std::string& period) { done += "archive " + period + " "; };
  const ProgramClock clock(loop.GetClock(), timers, jobs);
  timers.AllTimerStart();
  loop.Advance(minutes(1));
  EXPECT_EQ(done, "update ");
  loading = false;
  options.UpdateAuto = false;
  loop.Advance(minutes(2));
  EXPECT_EQ(done, "update store 202611 archive 202610 ");

  const DateTime now = DateTime::FromCivil(2026, 11, 21);
  EXPECT_TRUE(IsUpdateDue(0, 0, now));
  EXPECT_FALSE(IsUpdateDue(2, now.AsNumber() - 6, now));
  EXPECT_TRUE(IsUpdateDue(2, now.AsNumber() - 7, now));
  EXPECT_TRUE(IsUpdateDue(99, now.AsNumber() - 14, now));
}

}  // namespace
}  // namespace vorlix
