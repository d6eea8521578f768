#include "platform/posix/SystemClock.h"

#include <algorithm>
#include <ctime>

namespace vorlix {

DateTime SystemClock::Now() const {
  const std::time_t now = std::time(nullptr);
  std::tm civil{};
  tzset();  // a change of the time zone is followed while the program runs
  if (localtime_r(&now, &civil) == nullptr) return {};
  const int second = std::min(civil.tm_sec, 59);  // a leap second has no place in the calendar
  return DateTime::FromCivil(civil.tm_year + 1900, civil.tm_mon + 1, civil.tm_mday, civil.tm_hour, civil.tm_min,
                             second);
}

std::chrono::milliseconds SystemClock::Steady() const {
  std::timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::chrono::milliseconds(std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1'000'000);
}

}  // namespace vorlix
