// What the program does by the clock. The counters run from the program's start, not by the wall clock.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/MainTimers.h"
#include "platform/MessageLoop.h"

namespace vorlix {

// How often the journal is archived; the values of the setting `Backup`.
enum class JournalPeriod : int { kNone = 0, kMonth = 1, kQuarter = 2, kYear = 3 };

// The period just ended, as "yyyymm", when the journal is to be archived now; nothing otherwise. `lastDate` is the
// "yyyymm" of the last archiving.
std::optional<std::string> PeriodToArchive(JournalPeriod backup, const std::string& lastDate, const DateTime& now);

// True when the automatic check for updates is due. `days` is an index into the intervals 1, 3, 7 and 14 days; `last`
// is the day of the last check as a number, 0 for never.
bool IsUpdateDue(int days, double last, const DateTime& now);

// The settings that the clock's decisions read.
struct ClockOptions {
  bool UpdateAuto = false;
  int UpdateDays = 0;
  double UpdateLast = 0;
  JournalPeriod Backup = JournalPeriod::kNone;
  std::string JournalDate;
  bool Max12 = false;
  bool ErrorMessageShow = true;
  bool mnuNoFunctionMail = false;
};

// What is done by the clock; a job that is not set is not done.
struct ClockJobs {
  std::function<ClockOptions()> options;
  std::vector<std::function<void()>> everySecond;  // in this order
  std::function<bool()> isSettingsInUse;
  std::function<void()> checkForUpdate;  // quietly
  std::function<void()> loadFeiertage;
  std::function<bool()> isJournalLoading;
  std::function<void(const std::string& date)> storeJournalDate;
  std::function<void(const std::string& period)> archiveJournal;
  std::function<void()> sendMailByClock;
  std::function<void()> checkErrorReport;
  std::function<void()> clearOldArchives;
  std::function<void()> alertCheck;
  // Once, five seconds after the start, behind the first alert check; for a book that is not watched.
  std::function<void()> takeBookFileState;
  std::function<bool()> isBookWatched;
};

class ProgramClock {
 public:
  // The loop and timers must outlive the object. Takes the ticks of tmSekMinHourDay and tmStartUp.
  ProgramClock(const Clock& clock, MainTimers& timers, ClockJobs jobs);

  void Tick();

 private:
  void ActionMinute();
  void ActionStunde();
  void ActionStundeAlert();
  void Action24Stunden();
  void StartUpTick();
  void RollJournal(const ClockOptions& options);

  const Clock& clock_;
  MainTimers& timers_;
  ClockJobs jobs_;
  int year_;
  std::int16_t seconds_ = 0;
  std::int16_t minutes_ = 0;
  std::int16_t hourMinutes_ = 0;
  std::int16_t hours_ = 0;
};

}  // namespace vorlix
