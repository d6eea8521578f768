#include "services/DateTime.h"

#include <chrono>

namespace vorlix {
namespace {

constexpr std::int64_t kDay = 86400;
constexpr std::int64_t kDaysToEpoch = 25569;  // from 30 December 1899 to 1 January 1970

std::int64_t DayOf(std::int64_t seconds) {
  return (seconds >= 0 ? seconds : seconds - (kDay - 1)) / kDay;
}

std::chrono::year_month_day CivilOf(std::int64_t seconds) {
  return std::chrono::sys_days(std::chrono::days(DayOf(seconds)));
}

int SecondOfDay(std::int64_t seconds) {
  return static_cast<int>(seconds - DayOf(seconds) * kDay);
}

}  // namespace

DateTime DateTime::FromCivil(int year, int month, int day, int hour, int minute, int second) {
  if (year < 100 || year > 9999 || month < 1 || day < 1) return {};
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                         std::chrono::day(static_cast<unsigned>(day))};
  const bool timeExists = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
  if (!date.ok() || !timeExists) return {};
  DateTime value;
  value.seconds_ = std::chrono::sys_days(date).time_since_epoch().count() * kDay + hour * 3600 + minute * 60 + second;
  return value;
}

int DateTime::Year() const {
  return IsDate() ? static_cast<int>(CivilOf(seconds_).year()) : 0;
}

int DateTime::Month() const {
  return IsDate() ? static_cast<int>(static_cast<unsigned>(CivilOf(seconds_).month())) : 0;
}

int DateTime::Day() const {
  return IsDate() ? static_cast<int>(static_cast<unsigned>(CivilOf(seconds_).day())) : 0;
}

int DateTime::Hour() const {
  return IsDate() ? SecondOfDay(seconds_) / 3600 : 0;
}

int DateTime::Minute() const {
  return IsDate() ? SecondOfDay(seconds_) / 60 % 60 : 0;
}

int DateTime::Second() const {
  return IsDate() ? SecondOfDay(seconds_) % 60 : 0;
}

int DateTime::WeekDay() const {
  if (!IsDate()) return 0;
  const std::chrono::weekday day{std::chrono::sys_days(std::chrono::days(DayOf(seconds_)))};
  return static_cast<int>(day.iso_encoding());
}

DateTime DateTime::DateOnly() const {
  if (!IsDate()) return {};
  return AddSeconds(-SecondOfDay(seconds_));
}

DateTime DateTime::AddDays(int days) const {
  return AddSeconds(days * kDay);
}

DateTime DateTime::AddSeconds(std::int64_t seconds) const {
  DateTime value = *this;
  if (value.IsDate()) value.seconds_ += seconds;
  return value;
}

double DateTime::AsNumber() const {
  if (!IsDate()) return 0;
  return static_cast<double>(seconds_) / static_cast<double>(kDay) + static_cast<double>(kDaysToEpoch);
}

double DateTime::DaysSince(const DateTime& other) const {
  return AsNumber() - other.AsNumber();
}

}  // namespace vorlix
