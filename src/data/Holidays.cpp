#include "data/Holidays.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "data/paths.h"
#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kSection = "Feiertage";
constexpr int kMostRows = 99;  // the keys have two digits
constexpr int kMostOffset = 366;
constexpr std::size_t kDayTextLength = 6;

std::string HolidayFile(const std::string& folder, const std::string& countryCode) {
  return folder + R"(\holidays\holiday_)" + countryCode + ".ini";
}

std::string DayText(const DateTime& day) {
  return GetFormatedDateByDate(day, '.', false, true);
}

// The day so many days from `sunday`; an offset beyond a year is a slip and names no day.
std::string MovableDay(const DateTime& sunday, std::string_view offset) {
  const int days = LeadingInteger(offset).value_or(0);
  return std::abs(static_cast<long long>(days)) > kMostOffset ? std::string() : DayText(sunday.AddDays(days));
}

// "1.5." is "01.05.".
std::string FixedDay(const std::string& rule) {
  if (rule.size() == kDayTextLength) return rule;
  const std::vector<std::string> parts = Split(rule, ".");
  if (parts.size() < 2 || !IsDigits(parts[0]) || !IsDigits(parts[1])) return {};
  return Padded(LeadingInteger(parts[0]).value_or(0), 2) + "." + Padded(LeadingInteger(parts[1]).value_or(0), 2) + ".";
}

std::string DayOfRule(const std::string& rule, int year) {
  if (rule.starts_with("OS")) return MovableDay(GetOstersonntag(year), rule.substr(2));
  if (rule.starts_with("4A")) return MovableDay(GetViertenAdvent(year), rule.substr(2));
  return FixedDay(rule);
}

Holiday RowOf(const std::string& stored, int year) {
  if (stored.empty()) return {};
  std::vector<std::string> fields = Split(stored, ";");
  fields.resize(std::max<std::size_t>(fields.size(), 3));
  return {.Date = DayOfRule(std::string(Trim(fields[0])), year),
          .Name = fields[1],
          .Observed = fields[2].starts_with('1'),
          .Source = fields[0] + ";" + fields[1] + ";"};
}

}  // namespace

DateTime GetOstersonntag(int year) {
  const int a = year % 19, b = year % 4, c = year % 7;
  const int k = year / 100;
  const int p = (8 * k + 13) / 25, q = year / 400;
  const int M = (15 + k - p - q) % 30, N = (4 + k - q) % 7;
  int d = (19 * a + M) % 30;
  if (d == 29) {
    d = 28;
  } else if (d == 28 && a > 10) {
    d = 27;
  }
  const int e = (2 * b + 4 * c + 6 * d + N) % 7;
  return DateTime::FromCivil(year, 3, 21).AddDays(d + e + 1);
}

DateTime GetViertenAdvent(int year) {
  const DateTime eve = DateTime::FromCivil(year, 12, 24);
  return eve.AddDays(-(eve.WeekDay() % 7));
}

void Holidays::LoadFeiertage() {
  Trapped("modTimePeriods.LoadFeiertage", [&] {
    rows_.clear();
    file_.clear();
    changed_ = false;
    const std::string& countryCode = ports_.settings.General.myVWL;
    // It becomes part of a path.
    if (!IsDigits(countryCode)) return;
    file_ = HolidayFile(R"(\data)", countryCode);
    ProvideFile();
    const modAPI_INI::Batch once(ports_.ini);
    const int count = std::min(ports_.ini.GetSettLng(kSection, "count", 0, 0, 0, false, file_), kMostRows);
    const int year = ports_.clock.Now().Year();
    for (int row = 1; row <= count; ++row) {
      rows_.push_back(RowOf(ports_.ini.GetSettStr(kSection, Padded(row, 2), {}, file_), year));
    }
  });
}

// A file of the user's is never replaced.
void Holidays::ProvideFile() const {
  const std::string target = ports_.folders.GetMainPath(file_);
  const std::string shipped = ports_.folders.GetMainPath(HolidayFile(R"(\base)", ports_.settings.General.myVWL));
  if (ports_.files.Stat(target).kind != FileInfo::Kind::kMissing || !ports_.files.Stat(shipped).IsFile()) return;
  MakeDirectory(ports_.files, fSplitPath(target).path);
  const IoResult copied = ports_.files.Copy(shipped, target, false);
  if (!copied) ErrorHandling().ErrorLogForceWrite("modTimePeriods.LoadFeiertage", {}, copied.error, copied.text);
}

void Holidays::SaveFeiertage() {
  Trapped("modTimePeriods.SaveFeiertage", [&] {
    if (!changed_) return;
    const modAPI_INI::Batch once(ports_.ini);
    for (std::size_t row = 0; row < rows_.size(); ++row) {
      const Holiday& holiday = rows_[row];
      if (holiday.Source.empty()) continue;
      ports_.ini.SetSettStr(kSection, Padded(static_cast<int>(row) + 1, 2),
                            holiday.Source + (holiday.Observed ? "1" : "0"), file_);
    }
    changed_ = false;
  });
}

void Holidays::SetObserved(std::size_t row, bool observed) {
  if (row >= rows_.size() || rows_[row].Observed == observed) return;
  rows_[row].Observed = observed;
  changed_ = true;
}

bool Holidays::IsHoliday(std::string_view dayText) const {
  return std::any_of(rows_.begin(), rows_.end(),
                     [&](const Holiday& holiday) { return holiday.Observed && holiday.Date == dayText; });
}

}  // namespace vorlix
