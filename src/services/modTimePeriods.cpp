#include "services/modTimePeriods.h"

#include <cstdlib>
#include <ctime>
#include <locale.h>
#include <optional>
#include <vector>

#include "services/text.h"

namespace vorlix {
namespace {

constexpr char kDefaultLimiter = '.';

// The user's locale for dates by the rule of the environment; the system's own locale "C" says nothing about the user,
// and a terminal without a locale must not change the separator of the journal.
std::string UserLocale() {
  for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
    const char* name = std::getenv(variable);
    if (name == nullptr || *name == 0) continue;
    const std::string_view text = name;
    return text == "C" || text == "POSIX" || text.starts_with("C.") ? std::string() : std::string(text);
  }
  return {};
}

char FindLimiter() {
  const std::string name = UserLocale();
  const locale_t locale = name.empty() ? nullptr : newlocale(LC_TIME_MASK, name.c_str(), nullptr);
  if (locale == nullptr) return kDefaultLimiter;
  std::tm date{};
  date.tm_year = 110;
  date.tm_mon = 7;
  date.tm_mday = 28;
  char text[64] = "";
  strftime_l(text, sizeof text, "%x", &date, locale);
  freelocale(locale);
  const std::string_view shown = text;
  const auto behind = shown.find_first_not_of("0123456789");
  if (behind == std::string_view::npos) return kDefaultLimiter;
  return shown[behind] == '/' || shown[behind] == '-' ? shown[behind] : kDefaultLimiter;
}

// The numbers of a text like "28-08-2010" or "10:21:37"; nothing when it holds anything else.
std::optional<std::vector<int>> NumbersOf(std::string_view text, std::string_view separator, std::size_t most) {
  std::vector<int> numbers;
  for (const std::string& part : Split(text, separator)) {
    if (!IsDigits(part) || part.size() > 4 || numbers.size() == most) return std::nullopt;
    numbers.push_back(std::stoi(part));
  }
  return numbers;
}

int FullYear(int year) {
  if (year >= 100) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

// A date with "-" between its parts, day first or, with four digits in front, year first.
DateTime DayOf(const std::string& date) {
  const auto numbers = NumbersOf(date, "-", 3);
  if (!numbers || numbers->size() != 3) return {};
  const auto& part = *numbers;
  const bool yearFirst = date.find('-') == 4;
  return yearFirst ? DateTime::FromCivil(part[0], part[1], part[2])
                   : DateTime::FromCivil(FullYear(part[2]), part[1], part[0]);
}

DateTime WithTime(const DateTime& day, std::string_view time) {
  if (time.empty()) return day;
  auto numbers = NumbersOf(time, ":", 3);
  if (!numbers || numbers->size() < 2) return {};
  numbers->resize(3);
  const auto& part = *numbers;
  return DateTime::FromCivil(day.Year(), day.Month(), day.Day(), part[0], part[1], part[2]);
}

std::string DashesFor(std::string_view date) {
  return Replace(Replace(date, ".", "-"), "/", "-");
}

}  // namespace

char GetLimiter() {
  static const char limiter = FindLimiter();
  return limiter;
}

std::string GetFormatedDateByDate(const DateTime& date, char limiter, bool yearFirst, bool noYear) {
  if (!date) return {};
  const std::string between(1, limiter == 0 ? GetLimiter() : limiter);
  const std::string day = Padded(date.Day(), 2);
  const std::string month = Padded(date.Month(), 2);
  const std::string year = Padded(date.Year(), 4);
  if (yearFirst) return year + between + month + between + day;
  return day + between + month + between + (noYear ? std::string() : year);
}

std::string GetFormatedDateByString(std::string_view date, const CivilClock& clock, char limiter, bool yearFirst,
                                    bool noYear) {
  const DateTime value = date.empty() ? clock.Now() : CDateNew(date, {});
  return GetFormatedDateByDate(value, limiter, yearFirst, noYear);
}

std::string GetFormatedTime(const DateTime& time) {
  return Padded(time.Hour(), 2) + ":" + Padded(time.Minute(), 2) + ":" + Padded(time.Second(), 2);
}

std::string GetFormatedTimeNow(const CivilClock& clock) {
  return GetFormatedTime(clock.Now());
}

bool IsDateNew(std::string_view text) {
  return DayOf(DashesFor(Trim(text))).IsDate();
}

std::string DateClean(std::string_view text) {
  if (!text.empty() && !IsDigit(text.front())) {
    const auto first = text.find_first_of("0123456789");
    text = first == std::string_view::npos ? std::string_view() : text.substr(first);
  }
  if (!text.empty() && !IsDigit(text.back())) text = text.substr(0, text.find_last_of("0123456789") + 1);
  return std::string(text);
}

DateTime CDateNew(std::string_view date, std::string_view time) {
  const DateTime day = DayOf(DateClean(DashesFor(Trim(date))));
  if (!day) return {};
  return WithTime(day, Replace(Trim(time), ".", ":"));
}

std::string YearMonth(int year, int month) {
  return Padded(year, 4) + Padded(month, 2);
}

std::string LogDatePrefix(const DateTime& now) {
  return GetFormatedDateByDate(now, '/', true) + "  " + GetFormatedTime(now) + "  ";
}

}  // namespace vorlix
