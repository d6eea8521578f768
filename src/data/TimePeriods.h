// Named weekly schedules that switch a reaction on: a block, a program start, a sound. The settings hold them as texts
// in section TimeControl; here they are read, asked and written back. "Today" and "now" are the clock's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/pipeline_ports.h"
#include "data/Holidays.h"
#include "data/Settings.h"
#include "data/modSettings.h"
#include "services/DateTime.h"

namespace vorlix {

// The first frame stands for working days, the second for weekends and holidays. Times are "hh:mm", "00:00" in both
// means the whole day; days are digits in any order, 1 for Monday to 7 for Sunday.
struct TimePeriod {
  bool Active = false;
  std::string DisplayName;
  std::string Name;  // by which other settings refer to the period
  std::string FirstFrom, FirstTo, FirstDays;
  std::string SecondFrom, SecondTo, SecondDays;
};

class TimePeriods : public Schedules {
 public:
  // All must outlive the object.
  struct Ports {
    Settings& settings;
    modSettings& store;
    modAPI_INI& ini;
    const Holidays& holidays;
    const CivilClock& clock;
  };

  explicit TimePeriods(Ports ports) : ports_(ports) {}

  // Fills the array from the loaded settings. Empty items are left out.
  void LoadTimeSettings();
  // Puts the array into the settings and writes their section. A ";" in a field becomes ",".
  void SaveTimeSettings();

  // The array, for the settings dialog too.
  std::vector<TimePeriod>& Periods() { return periods_; }
  // Fills the record of that index, from 0; the array grows as needed.
  void MakeTimePeriodArrayFromSettings(std::size_t index, std::string_view itemText);

  bool IsTimePeriodActiv(std::string_view name, bool fallback) override;
  // The same; a true result through an active period turns the block functions 1 to 4 into 7 to 10.
  bool IsTimePeriodActiv(std::string_view name, bool fallback, std::uint8_t& blockFunction);

  bool GetTimePeriodWochentag(std::string_view days) const;
  // An observed holiday, where holidays are to be taken into account at all.
  bool IsFeiertag() const;

 private:
  bool IsInside(const TimePeriod& period) const;

  Ports ports_;
  std::vector<TimePeriod> periods_;
};

// The first index with that name, or -1.
int GetTimePeriodArrayIndexByName(std::string_view name, const std::vector<TimePeriod>& periods);
// 0 no such period, 1 active, 2 not active.
int TimePeriod_Found(std::string_view name, const std::vector<TimePeriod>& periods);
// The period for the user, or why there is none.
std::string TimePeriod_GetTimes(std::string_view name, const std::vector<TimePeriod>& periods);

// To the minute, both ends included; a frame whose end lies before its beginning crosses midnight. False for "no date"
// and for texts that are no times.
bool IsTimeInFrame(std::string_view from, std::string_view to, const DateTime& now);

// Whether today lies around a yearly date ("dd.mm."), by the days before and after that the settings of the cards give.
bool fAlertDateCheck(std::string_view date, const Settings& settings, const CivilClock& clock);

}  // namespace vorlix
