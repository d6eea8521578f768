// The holidays of the user's country for the current year. They stand in "\data\holidays\holiday_##.ini", ## being the
// own country code; a country's file that the program brings along is copied there when it is first needed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "data/Settings.h"
#include "data/modAPI_INI.h"
#include "services/DateTime.h"

namespace vorlix {

struct Holiday {
  std::string Date;  // "dd.mm.", empty when the rule gives no date
  std::string Name;
  bool Observed = false;  // such a day counts as one of the weekend
  std::string Source;     // "rule;name;" as in the file; empty in a row that the file leaves empty
};

class Holidays {
 public:
  // All must outlive the object.
  struct Ports {
    modAPI_INI& ini;
    FileStore& files;
    const Folders& folders;
    const Settings& settings;
    const CivilClock& clock;
  };

  explicit Holidays(Ports ports) : ports_(ports) {}

  // Fills the table for the current year; at the start, and when the country code or the year has changed. Changes that
  // are not saved are lost.
  void LoadFeiertage();
  // Writes a table that was changed to the file it came from.
  void SaveFeiertage();

  const std::vector<Holiday>& Rows() const { return rows_; }
  void SetObserved(std::size_t row, bool observed);
  // True for an observed holiday on that day, "dd.mm.".
  bool IsHoliday(std::string_view dayText) const;

 private:
  void ProvideFile() const;

  Ports ports_;
  std::vector<Holiday> rows_;
  std::string file_;  // the logical name of the file that the table came from
  bool changed_ = false;
};

// Easter Sunday of the Gregorian calendar, and the last Sunday before Christmas. "No date" for a year below 100.
DateTime GetOstersonntag(int year);
DateTime GetViertenAdvent(int year);

}  // namespace vorlix
