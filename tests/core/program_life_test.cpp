// The program's life: its start, its clock, its end.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/ProgramClock.h"
#include "core/ShutDown.h"
#include "core/StartUp.h"
#include "fakes/AttachedLog.h"
#include "fakes/ManualReactor.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(StartUp, RunsTheJobsInTheOrderOfThePhasesWhateverOrderTheyCameIn) {
  ManualReactor loop;
  const AttachedLog log(loop.GetClock(), &DebugSwitches::LogTiming);
  StartUp start(loop);
  std::string jobs;
  start.Do(StartPhase::kSetSession, [&] { jobs += "session "; });
  start.Do(StartPhase::kLoadSetting, [&] { jobs += "settings "; });
  start.Do(StartPhase::kCheckDirectories, [&] { throw Fault(75, "no folder"); });
  start.Do(StartPhase::kRegisterAVM, [&] { jobs += "AVM "; });
  start.Do(StartPhase::kRegisterNCID, [&] { jobs += "NCID "; });
  start.When(StartPhase::kRegisterNCID, [] { return false; });
  EXPECT_TRUE(start.Run() && start.IsComplete());
  EXPECT_EQ(jobs, "settings AVM session ");
  EXPECT_THAT(log.Errors(), HasSubstr("fMain.Form_Load + 75 + no folder"));
  EXPECT_THAT(log.Debug(), AllOf(HasSubstr("CheckDirectories\nClearOldFilesAndPaths\nCheckReverseOfJournal\n"),
                                 HasSubstr("Register AVM\nLoad settings a\n")));
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
    EXPECT_TRUE(waiting.HasRun(StartPhase::kTimers) && !waiting.HasRun(StartPhase::kInitWait));
    wait = std::make_unique<StartWait>(loop, seconds(30), [&] { waiting.Continue(); });
    return StartResult::kWait;
  });
  EXPECT_TRUE(waiting.Run());
  loop.Advance(seconds(29));
  EXPECT_FALSE(waiting.IsComplete() || waiting.HasRun(StartPhase::kShowTrayIcon));
  loop.Advance(seconds(2));
  EXPECT_TRUE(waiting.IsComplete() && waiting.HasRun(StartPhase::kDisplayResize));
}

TEST(ShutDown, RunsItsStepsInOrderOnceAndBehindAPendingBook) {
  ManualReactor loop;
  const AttachedLog log(loop.GetClock(), &DebugSwitches::LogTiming);
  MainTimers timers(loop);
  PipelineState state;
  ShutDown end(timers, state);
  std::string steps;
  end.SetPendingBook([&] { return !(steps += "book ").empty(); });
  end.On(UnloadStep::kEndSession, [&](UnloadReason) { steps += "session "; });
  end.On(UnloadStep::kTerminateHelpers, [&](UnloadReason) { steps += "helpers "; });
  end.On(UnloadStep::kReleaseCAPI,
         [&](UnloadReason why) { steps += why == UnloadReason::kSystem ? "CAPI " : "user "; });
  end.On(UnloadStep::kSaveSettings, [&](UnloadReason) { throw Fault(70, "disk"); });
  end.On(UnloadStep::kSaveAreaBuffer, [&](UnloadReason) { steps += "buffer "; });
  end.When(UnloadStep::kSaveAreaBuffer, [] { return false; });
  end.When(UnloadStep::kEndSession, [] { return true; });
  end.Request(UnloadReason::kSystem);
  EXPECT_TRUE(state.ExitInProgress);
  EXPECT_EQ(steps, "");
  loop.Advance(seconds(1));
  end.Request(UnloadReason::kUser);
  loop.Advance(seconds(1));
  EXPECT_EQ(steps, "book CAPI helpers session ");
  EXPECT_THAT(log.Debug(), HasSubstr("Unload save settings\nUnload CAPI release\n"));
}

TEST(ProgramClock, CountsMinutesHoursAlertsAndTheFirstFiveSeconds) {
  ManualReactor loop;
  MainTimers timers(loop);
  EXPECT_EQ(loop.UntilNextTick(), std::nullopt);  // a timer without a job costs no wake-up
  std::map<std::string, int> done;
  bool isWatched = true;
  ClockJobs jobs;
  jobs.everySecond.emplace_back([&] {
    if (++done["second"] == 1) throw Fault(5, "a job that fails stops no other");
  });
  jobs.everySecond.emplace_back([&] { ++done["last"]; });
  jobs.sendMailByClock = [&] { ++done["minute"]; };
  jobs.checkErrorReport = [&] { ++done["hour"]; };
  jobs.alertCheck = [&] { ++done["alert"]; };
  jobs.loadFeiertage = [&] { ++done["year"]; };
  jobs.takeBookFileState = [&] { ++done["taken"]; };
  jobs.isBookWatched = [&] { return isWatched; };
  loop.SetNow(DateTime::FromCivil(2026, 12, 31, 23, 0, 0));
  const ProgramClock clock(loop.GetClock(), timers, jobs);
  const AttachedLog log(loop.GetClock());
  timers.AllTimerStart();
  loop.Advance(seconds(6));
  EXPECT_EQ(done["alert"], 1);
  EXPECT_TRUE(timers.tmServiceStatus->Enabled() && timers.tmFileWatch->Enabled());
  loop.Advance(minutes(60) - seconds(6));
  EXPECT_EQ(done["hour"] * 10 + done["alert"], 11);
  loop.Advance(minutes(1));
  EXPECT_EQ(done["alert"], 2);  // an hour and a minute after the start
  EXPECT_EQ(done["minute"], 61);
  EXPECT_EQ(done["second"], 61 * 60);
  EXPECT_EQ(done["last"], 61 * 60);
  loop.Advance(hours(2));
  EXPECT_EQ(done["hour"] * 10 + done["alert"], 33);
  EXPECT_EQ(done["year"] * 10 + done["taken"], 10);

  timers.DisableAll();
  isWatched = false;
  const ProgramClock unwatched(loop.GetClock(), timers, jobs);
  timers.AllTimerStart();
  loop.Advance(seconds(6));
  EXPECT_EQ(done["taken"], 1) << "where the book is not watched, an edit of the first seconds is still to be read";
  EXPECT_FALSE(timers.tmFileWatch->Enabled());
}

TEST(ProgramClock, TheJournalIsArchivedWhenItsPeriodHasChanged) {
  using Row = std::tuple<JournalPeriod, const char*, const char*, const char*>;
  for (const auto& [backup, last, today, archived] :
       {Row{JournalPeriod::kNone, "202001", "11.2026", ""}, Row{JournalPeriod::kMonth, "202610", "11.2026", "202610"},
        Row{JournalPeriod::kMonth, "202611", "11.2026", ""}, Row{JournalPeriod::kMonth, "202512", "1.2026", "202512"},
        Row{JournalPeriod::kMonth, "202612", "11.2026", ""}, Row{JournalPeriod::kMonth, "abc", "1.2026", ""},
        Row{JournalPeriod::kQuarter, "202610", "11.2026", ""},
        Row{JournalPeriod::kQuarter, "202609", "11.2026", "202609"},
        Row{JournalPeriod::kQuarter, "202510", "2.2026", "202512"},
        Row{JournalPeriod::kQuarter, "202511", "10.2026", "202609"}, Row{JournalPeriod::kYear, "202601", "12.2026", ""},
        Row{JournalPeriod::kYear, "202512", "1.2026", "202512"}})
    EXPECT_EQ(PeriodToArchive(backup, last, CDateNew(std::string("15.") + today, "")).value_or(""), archived)
        << last << " " << today;
}

TEST(ProgramClock, StoresTheJournalsDateBeforeItArchivesAndLooksForUpdatesWhenDue) {
  ManualReactor loop;
  MainTimers timers(loop);
  const DateTime now = DateTime::FromCivil(2026, 11, 21);
  loop.SetNow(now);
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
  loading = options.UpdateAuto = false;
  loop.Advance(minutes(2));
  EXPECT_EQ(done, "update store 202611 archive 202610 ");
  EXPECT_TRUE(IsUpdateDue(0, 0, now) && IsUpdateDue(2, now.AsNumber() - 7, now));
  EXPECT_FALSE(IsUpdateDue(2, now.AsNumber() - 6, now));
}

}  // namespace
}  // namespace vorlix
