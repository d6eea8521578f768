#include "core/ProgramClock.h"

#include <algorithm>
#include <array>
#include <utility>

#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

template <class Job, class... Arguments>
void Do(const Job& job, const Arguments&... arguments) {
  if (job) job(arguments...);
}

bool Ask(const std::function<bool()>& question) {
  return question && question();
}

int QuarterOf(int month) {
  return (month + 2) / 3;
}

}  // namespace

std::optional<std::string> PeriodToArchive(JournalPeriod backup, const std::string& lastDate, const DateTime& now) {
  const int year = now.Year();
  const int month = now.Month();
  if (YearMonth(year, month) <= lastDate || lastDate.size() != 6 || !IsDigits(lastDate)) return std::nullopt;
  const int lastYear = std::stoi(lastDate.substr(0, 4));
  const int lastMonth = std::stoi(lastDate.substr(4));
  const std::string yearEnd = YearMonth(year - 1, 12);
  const int quarter = QuarterOf(month);
  switch (backup) {
    case JournalPeriod::kMonth:
      return month == 1 ? yearEnd : YearMonth(year, month - 1);
    case JournalPeriod::kQuarter:
      if (year * 10 + quarter <= lastYear * 10 + QuarterOf(lastMonth)) return std::nullopt;
      return quarter == 1 ? yearEnd : YearMonth(year, 3 * quarter - 3);
    case JournalPeriod::kYear:
      if (year <= lastYear) return std::nullopt;
      return yearEnd;
    case JournalPeriod::kNone:
      break;
  }
  return std::nullopt;
}

bool IsUpdateDue(int days, double last, const DateTime& now) {
  constexpr std::array<int, 4> kIntervals{1, 3, 7, 14};
  const auto index = static_cast<std::size_t>(std::clamp(days, 0, static_cast<int>(kIntervals.size()) - 1));
  return last == 0 || now.AsNumber() >= last + kIntervals[index];
}

ProgramClock::ProgramClock(const Clock& clock, MainTimers& timers, ClockJobs jobs)
    : clock_(clock), timers_(timers), jobs_(std::move(jobs)), year_(clock.Now().Year()) {
  timers_.tmSekMinHourDay->SetTick([this] { Tick(); });
  timers_.tmStartUp->SetTick([this] { Trapped("fMain.tmStartUp_Timer", [this] { StartUpTick(); }); });
}

void ProgramClock::Tick() {
  ++seconds_;
  for (const auto& job : jobs_.everySecond) {
    Trapped("fMain.tmSekMinHourDay_Timer", job);
  }
  if (seconds_ >= 60) {
    seconds_ = 0;
    ++minutes_;
    ++hourMinutes_;
    Trapped("fMain.ActionMinute", [this] { ActionMinute(); });
  }
  if (minutes_ >= 60) {
    minutes_ = 0;
    ++hours_;
    Trapped("fMain.ActionStunde", [this] { ActionStunde(); });
  }
  // An hour and a minute after the last: the alerts stay clear of the hourly work.
  if (hourMinutes_ >= 61) {
    hourMinutes_ = 0;
    Trapped("fMain.ActionStundeAlert", [this] { ActionStundeAlert(); });
  }
  if (hours_ >= 24) {
    hours_ = 0;
    Trapped("fMain.Action24Stunden", [this] { Action24Stunden(); });
  }
}

void ProgramClock::ActionMinute() {
  const ClockOptions options = jobs_.options ? jobs_.options() : ClockOptions{};
  const DateTime now = clock_.Now();
  if (options.UpdateAuto && !Ask(jobs_.isSettingsInUse) && IsUpdateDue(options.UpdateDays, options.UpdateLast, now)) {
    Do(jobs_.checkForUpdate);
  }
  if (std::exchange(year_, now.Year()) != now.Year()) Do(jobs_.loadFeiertage);
  if (!Ask(jobs_.isJournalLoading)) RollJournal(options);
  if (!options.mnuNoFunctionMail) Do(jobs_.sendMailByClock);
}

// The date is stored first, so that an archiving that fails is not tried again all through the period.
void ProgramClock::RollJournal(const ClockOptions& options) {
  const DateTime now = clock_.Now();
  const auto period = PeriodToArchive(options.Backup, options.JournalDate, now);
  if (!period) return;
  Do(jobs_.storeJournalDate, YearMonth(now.Year(), now.Month()));
  Do(jobs_.archiveJournal, *period);
}

void ProgramClock::ActionStunde() {
  const ClockOptions options = jobs_.options ? jobs_.options() : ClockOptions{};
  if (options.ErrorMessageShow) Do(jobs_.checkErrorReport);
  if (options.Max12) Do(jobs_.clearOldArchives);
}

void ProgramClock::ActionStundeAlert() {
  Do(jobs_.alertCheck);
}

void ProgramClock::Action24Stunden() {
  // The trap has left its trace; nothing is due once a day.
}

void ProgramClock::StartUpTick() {
  timers_.tmStartUp->SetEnabled(false);
  Do(jobs_.alertCheck);
  timers_.tmServiceStatus->SetEnabled(true);
  const bool watched = Ask(jobs_.isBookWatched);
  // A watched book stands as it was read: taking its state anew would pass over what was edited since.
  if (!watched) Do(jobs_.takeBookFileState);
  timers_.tmFileWatch->SetEnabled(watched);
}

}  // namespace vorlix
