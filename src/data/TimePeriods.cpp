#include "data/TimePeriods.h"

#include <algorithm>
#include <optional>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr int kMostPeriods = 1000;
constexpr std::size_t kFields = 8;

struct SystemPeriod {
  std::string_view name;
  std::string_view oldName;  // of versions that had no angle brackets; may be empty
  std::string_view key;
  std::string_view text;
};
constexpr SystemPeriod kSystemPeriods[] = {
    {"<BlockAll>", "!BlockAlle", "Settings_Label_TimesRejectAll", "Alle abweisen"_ansi},
    {"<BlockUnknown>", "!BlockUnbekannt", "Settings_Label_TimesRejectNoNum", "Abweisen ohne Rufnummer"_ansi},
    {"<BlockNoEntry>", "!BlockKeinEintrag", "Settings_Label_TimesRejectNoName", "Abweisen ohne Namen"_ansi},
    {"<BlockBlackList>", "", "Settings_Label_TimesBlacklist", "Abweisen nach Blackliste"_ansi},
    {"<RunProgBatch>", "!BatchStart", "Settings_Label_TimesRunProg", "Programmstart"_ansi},
    {"<MailSend>", "", "Settings_Label_TimesMailSend", "E-Mail-Versand"_ansi},
    {"<SoundByCall>", "!SoundAnruf", "Settings_Label_TimesSoundByCall", "Klang bei Anruf"_ansi},
    {"<SoundByBlock>", "!SoundBlock", "Settings_Label_TimesSoundByBlock", "Klang bei Abweisung"_ansi},
    {"<SoundByTerm>", "!SoundTermin", "Settings_Label_TimesSoundByTerm", "Klang bei Termin"_ansi},
};

std::string CurrentName(const std::string& stored) {
  for (const SystemPeriod& period : kSystemPeriods) {
    if (!period.oldName.empty() && stored == period.oldName) return std::string(period.name);
  }
  return stored;
}

std::string DisplayNameOf(const std::string& name) {
  for (const SystemPeriod& period : kSystemPeriods) {
    if (name == period.name) return LoadLangKey(period.key, period.text);
  }
  return name;
}

std::string ItemText(const TimePeriod& period) {
  std::vector<std::string> fields{period.Name,       period.FirstFrom, period.FirstTo,    period.FirstDays,
                                  period.SecondFrom, period.SecondTo,  period.SecondDays, period.Active ? "1" : "0"};
  for (std::string& field : fields) {
    field = Replace(field, ";", ",");
  }
  return Join(fields, ";");
}

// The minute of the day that a text names.
std::optional<int> MinuteOf(std::string_view time) {
  if (time.empty()) return std::nullopt;
  const DateTime moment = CDateNew("01.01.2000", time);
  if (!moment) return std::nullopt;
  return moment.Hour() * 60 + moment.Minute();
}

bool IsWholeDay(std::string_view from, std::string_view to) {
  return MinuteOf(from) == 0 && MinuteOf(to) == 0;
}

bool IsFrameOn(std::string_view from, std::string_view to, const DateTime& now) {
  return IsWholeDay(from, to) || IsTimeInFrame(from, to, now);
}

std::string FrameText(const std::string& label, const std::string& from, const std::string& to) {
  const std::string times =
      IsWholeDay(from, to) ? LoadLangKey("Settings_Info_AllDay", "ganztägig"_ansi) : from + "-" + to;
  return label + " (" + times + ")";
}

}  // namespace

void TimePeriods::LoadTimeSettings() {
  Trapped("modTimePeriods.LoadTimeSettings", [&] {
    const auto& stored = ports_.settings.TimeControl;
    const modAPI_INI::Batch once(ports_.ini);
    periods_.clear();
    for (int number = 1; number <= std::min(stored.count, kMostPeriods); ++number) {
      const auto known = stored.Item_.find(number);
      // The settings keep no more than their numbered texts may have; the file may hold more.
      const std::string item = known != stored.Item_.end()
                                   ? known->second
                                   : ports_.ini.GetSettStr("TimeControl", "Item_" + std::to_string(number), {});
      if (!item.empty()) MakeTimePeriodArrayFromSettings(periods_.size(), item);
    }
  });
}

void TimePeriods::SaveTimeSettings() {
  Trapped("modTimePeriods.SaveTimeSettings", [&] {
    auto& stored = ports_.settings.TimeControl;
    stored.count = static_cast<int>(periods_.size());
    stored.Item_.clear();
    for (int number = 1; number <= stored.count; ++number) {
      stored.Item_[number] = ItemText(periods_[static_cast<std::size_t>(number) - 1]);
    }
    ports_.store.SaveTimeSettings();
  });
}

void TimePeriods::MakeTimePeriodArrayFromSettings(std::size_t index, std::string_view itemText) {
  Trapped(
      "modTimePeriods.MakeTimePeriodArrayFromSettings",
      [&] {
        std::vector<std::string> fields = Split(itemText, ";");
        // Older versions wrote no switch: their periods were always active.
        if (fields.size() == kFields - 1) fields.emplace_back("1");
        fields.resize(std::max(fields.size(), kFields));
        for (std::string& field : fields) {
          field = std::string(Trim(field));
        }
        const std::string name = CurrentName(fields[0]);
        if (index >= periods_.size()) periods_.resize(index + 1);
        periods_[index] = {.Active = fields[7] == "1",
                           .DisplayName = DisplayNameOf(name),
                           .Name = name,
                           .FirstFrom = fields[1],
                           .FirstTo = fields[2],
                           .FirstDays = fields[3],
                           .SecondFrom = fields[4],
                           .SecondTo = fields[5],
                           .SecondDays = fields[6]};
      },
      index, itemText);
}

bool TimePeriods::IsTimePeriodActiv(std::string_view name, bool fallback) {
  std::uint8_t unused = 0;
  return IsTimePeriodActiv(name, fallback, unused);
}

bool TimePeriods::IsTimePeriodActiv(std::string_view name, bool fallback, std::uint8_t& blockFunction) {
  return Trapped(
      "modTimePeriods.IsTimePeriodActiv",
      [&] {
        const int index = GetTimePeriodArrayIndexByName(name, periods_);
        if (index < 0 || !periods_[static_cast<std::size_t>(index)].Active) return fallback;
        if (!IsInside(periods_[static_cast<std::size_t>(index)])) return false;
        if (blockFunction >= 1 && blockFunction <= 4) blockFunction = static_cast<std::uint8_t>(blockFunction + 6);
        return true;
      },
      name, fallback, blockFunction);
}

// A holiday counts as a day of the second frame, whatever its week day.
bool TimePeriods::IsInside(const TimePeriod& period) const {
  const DateTime now = ports_.clock.Now();
  const bool isHoliday = IsFeiertag();
  const bool first = GetTimePeriodWochentag(period.FirstDays) && !isHoliday;
  const bool second = GetTimePeriodWochentag(period.SecondDays) || isHoliday;
  return (first && IsFrameOn(period.FirstFrom, period.FirstTo, now)) ||
         (second && IsFrameOn(period.SecondFrom, period.SecondTo, now));
}

bool TimePeriods::GetTimePeriodWochentag(std::string_view days) const {
  return days.find(std::to_string(ports_.clock.Now().WeekDay())) != std::string_view::npos;
}

bool TimePeriods::IsFeiertag() const {
  return ports_.settings.TimeControl.FDays &&
         ports_.holidays.IsHoliday(GetFormatedDateByDate(ports_.clock.Now(), '.', false, true));
}

int GetTimePeriodArrayIndexByName(std::string_view name, const std::vector<TimePeriod>& periods) {
  const auto found =
      std::find_if(periods.begin(), periods.end(), [&](const TimePeriod& period) { return period.Name == name; });
  return found == periods.end() ? -1 : static_cast<int>(found - periods.begin());
}

int TimePeriod_Found(std::string_view name, const std::vector<TimePeriod>& periods) {
  const int index = GetTimePeriodArrayIndexByName(name, periods);
  if (index < 0) return 0;
  return periods[static_cast<std::size_t>(index)].Active ? 1 : 2;
}

std::string TimePeriod_GetTimes(std::string_view name, const std::vector<TimePeriod>& periods) {
  return Trapped(
      "modTimePeriods.TimePeriod_GetTimes",
      [&]() -> std::string {
        const int index = GetTimePeriodArrayIndexByName(name, periods);
        if (index < 0) return LoadLangKey("Settings_Info_ScheduleFail", "kein Zeitplan"_ansi);
        const TimePeriod& period = periods[static_cast<std::size_t>(index)];
        if (!period.Active) return LoadLangKey("Settings_Info_ScheduleInactive", "Zeitplan nicht aktiv"_ansi);
        return FrameText(LoadLangKey("Settings_Info_ScheduleWorkDays", "Werktage"_ansi), period.FirstFrom,
                         period.FirstTo) +
               " " +
               FrameText(LoadLangKey("Settings_Info_ScheduleFreeDays", "Wochenende/Feiertage"_ansi), period.SecondFrom,
                         period.SecondTo);
      },
      name);
}

bool IsTimeInFrame(std::string_view from, std::string_view to, const DateTime& now) {
  return Trapped(
      "modTimePeriods.IsTimeInFrame",
      [&] {
        const auto begin = MinuteOf(from), end = MinuteOf(to);
        if (!now || !begin || !end) return false;
        const int minute = now.Hour() * 60 + now.Minute();
        return *begin <= *end ? *begin <= minute && minute <= *end : *begin <= minute || minute <= *end;
      },
      from, to);
}

bool fAlertDateCheck(std::string_view date, const Settings& settings, const CivilClock& clock) {
  return Trapped(
      "modTimePeriods.fAlertDateCheck",
      [&] {
        const DateTime today = clock.Now().DateOnly();
        const DateTime term = CDateNew(std::string(date) + Padded(today.Year(), 4), {});
        return term && today >= term.AddDays(-settings.vCards.before) && today <= term.AddDays(settings.vCards.after);
      },
      date);
}

}  // namespace vorlix
