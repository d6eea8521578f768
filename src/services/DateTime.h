// A date and time of day in local civil time, to the second, or "no date" (the system's 0). No time zone is kept and
// none is asked: the difference of two values is that of the calendar, whatever daylight saving did between them.
#pragma once

#include <compare>
#include <cstdint>

namespace vorlix {

class DateTime {
 public:
  // No date.
  constexpr DateTime() = default;

  // Year 100 to 9999; a day or time of day that does not exist gives "no date".
  static DateTime FromCivil(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

  bool IsDate() const { return seconds_ != kNoDate; }
  explicit operator bool() const { return IsDate(); }

  // The parts; all 0 for "no date".
  int Year() const;
  int Month() const;
  int Day() const;
  int Hour() const;
  int Minute() const;
  int Second() const;
  // 1 for Monday to 7 for Sunday; 0 for "no date".
  int WeekDay() const;

  // The same day at 00:00:00.
  DateTime DateOnly() const;

  // "No date" stays "no date".
  DateTime AddDays(int days) const;
  DateTime AddSeconds(std::int64_t seconds) const;

  // Days since 30 December 1899, with the time of day as fraction: the number that the data files know. "No date" is 0.
  double AsNumber() const;

  // Days from other to this, with fraction; "no date" counts as the number 0.
  double DaysSince(const DateTime& other) const;

  friend constexpr auto operator<=>(const DateTime&, const DateTime&) = default;

 private:
  static constexpr std::int64_t kNoDate = INT64_MIN;
  std::int64_t seconds_ = kNoDate;  // since 1970-01-01 00:00:00 of the civil calendar
};

// Where "now" comes from; the platform's clock is one, a test's clock another.
class CivilClock {
 public:
  virtual ~CivilClock() = default;
  virtual DateTime Now() const = 0;
};

}  // namespace vorlix
