#include "data/modSettings.h"

#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"
#include "services/version.h"

namespace vorlix {
namespace {

constexpr std::size_t kControllers = 5;
constexpr int kMostFamily = 64;
constexpr std::string_view kVersionSection = "Vorlix-Version";

bool IsYearMonth(const std::string& text) {
  return text.size() == 6 && IsDigits(text) && text.substr(4) >= "01" && text.substr(4) <= "12";
}

bool IsFamily(const SettingRow& row) {
  return std::holds_alternative<SettingRow::Family>(row.member);
}

}  // namespace

std::string ProgramVersionText() {
  return "v" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + std::to_string(kVersionRevision);
}

void GetLanguages(modAPI_INI& ini, const std::string& file, std::string& code, std::string& name) {
  code = ini.GetSettStr("Data", "CountryID", "de", file);
  name = ini.GetSettStr("Data", "Language", "deutsch", file);
}

std::string SettingsFillBinString(const std::string& text, std::size_t length) {
  return text.size() >= length ? text : text + std::string(length - text.size(), '0');
}

int SettingsGetValueFromSettString(const std::string& text, std::size_t position, int fallback) {
  if (position < 1 || position > text.size()) return fallback;
  const char digit = text[position - 1];
  return IsDigit(digit) ? digit - '0' : fallback;
}

void modSettings::LoadSetting() {
  Trapped("modSettings.LoadSetting", [&] {
    {
      const modAPI_INI::Batch once(ports_.ini);
      for (const SettingRow& row : SettingsTable()) {
        Load(row);
      }
      if (settings_.TeleControl.AddressesMail.empty()) settings_.TeleControl.SendMails = false;
    }
    CheckVersion();
  });
}

void modSettings::LoadKeys(std::string_view section, std::string_view keyStart) {
  Trapped(
      "modSettings.LoadKeys",
      [&] {
        const modAPI_INI::Batch once(ports_.ini);
        for (const SettingRow& row : SettingsTable()) {
          if (row.section == section && row.key.starts_with(keyStart)) Load(row);
        }
      },
      section);
}

void modSettings::SaveKeys(std::string_view section, std::string_view keyStart) {
  Trapped(
      "modSettings.SaveKeys",
      [&] {
        const modAPI_INI::Batch once(ports_.ini);
        for (const SettingRow& row : SettingsTable()) {
          if (row.section == section && row.key.starts_with(keyStart)) Store(row);
        }
      },
      section);
}

void modSettings::SaveSettings_Config() {
  Trapped("modSettings.SaveSettings_Config", [&] { Save(SettingSaved::Config); });
}

void modSettings::SaveSettings_Self() {
  Trapped("modSettings.SaveSettings_Self", [&] {
    settings_.VorlixVersion.Status.clear();
    settings_.General.Init = false;
    const modAPI_INI::Batch once(ports_.ini);
    SaveVersion();
    Save(SettingSaved::Self);
  });
}

void modSettings::Save(SettingSaved saved) {
  const modAPI_INI::Batch once(ports_.ini);
  for (const SettingRow& row : SettingsTable()) {
    if (row.saved == saved) Store(row);
  }
}

void modSettings::Load(const SettingRow& row) {
  modAPI_INI& ini = ports_.ini;
  if (const auto* flag = std::get_if<SettingRow::Flag>(&row.member)) {
    (*flag)(settings_) = ini.GetSettBool(row.section, row.key, row.fallback != 0, row.file);
  } else if (const auto* number = std::get_if<SettingRow::Number>(&row.member)) {
    (*number)(settings_) =
        ini.GetSettLng(row.section, row.key, row.fallback, row.minimum, row.maximum, false, row.file);
  } else if (const auto* duration = std::get_if<SettingRow::Duration>(&row.member)) {
    (*duration)(settings_) = std::chrono::seconds(
        ini.GetSettLng(row.section, row.key, row.fallback, row.minimum, row.maximum, false, row.file));
  } else if (const auto* text = std::get_if<SettingRow::Text>(&row.member)) {
    (*text)(settings_) = UsableText(row, ini.GetSettStr(row.section, row.key, row.fallbackText, row.file));
  } else {
    SettingFamily& family = std::get<SettingRow::Family>(row.member)(settings_);
    family.clear();
    for (int index = 0; index <= kMostFamily; ++index) {
      const std::string value = ini.GetSettStr(row.section, std::string(row.key) + std::to_string(index), {}, row.file);
      if (!value.empty()) family[index] = value;
    }
  }
}

std::string modSettings::UsableText(const SettingRow& row, const std::string& stored) const {
  const std::string fallback(row.fallbackText);
  const DateTime now = ports_.clock.Now();
  switch (row.rule) {
    case SettingRule::Any:
      return stored;
    case SettingRule::NeverEmpty:
      return stored.empty() ? fallback : stored;
    case SettingRule::NeverEmptyNumeric:
    case SettingRule::Numeric:
    case SettingRule::NumericOrDash:
      return IsNumeric(stored) ? stored : fallback;
    case SettingRule::Controllers: {
      const std::string filled = SettingsFillBinString(stored, kControllers);
      return filled.find('1') == std::string::npos ? fallback : filled;
    }
    case SettingRule::MonthUpToNow: {
      const std::string month = YearMonth(now.Year(), now.Month());
      return IsYearMonth(stored) && stored <= month ? stored : month;
    }
  }
  return stored;
}

void modSettings::Store(const SettingRow& row) {
  modAPI_INI& ini = ports_.ini;
  if (IsFamily(row)) {
    for (const auto& [index, value] : std::get<SettingRow::Family>(row.member)(settings_)) {
      ini.SetSettStr(row.section, std::string(row.key) + std::to_string(index), value, row.file);
    }
    return;
  }
  std::string value;
  if (const auto* flag = std::get_if<SettingRow::Flag>(&row.member)) {
    value = (*flag)(settings_) ? "1" : "0";
  } else if (const auto* number = std::get_if<SettingRow::Number>(&row.member)) {
    value = std::to_string((*number)(settings_));
  } else if (const auto* duration = std::get_if<SettingRow::Duration>(&row.member)) {
    value = std::to_string(std::chrono::duration_cast<std::chrono::seconds>((*duration)(settings_)).count());
  } else {
    value = std::get<SettingRow::Text>(row.member)(settings_);
    if (row.rule == SettingRule::NumericOrDash && value.empty()) value = "-";
  }
  ini.SetSettStr(row.section, row.key, value, row.file);
}

void modSettings::SaveLastUpdate(int day) {
  settings_.Update.Last = day;
  SaveKeys("Update", "Last");
}

void modSettings::SaveErrorMessageCount(int count) {
  settings_.General.ErrorCount = count;
  SaveKeys("General", "ErrorCount");
}

void modSettings::SaveErrorMessageShow(bool show) {
  settings_.ErrorMessage.Show = show;
  SaveSection("ErrorMessage");
}

void modSettings::SaveJournalDate(const std::string& yearMonth) {
  settings_.Journal.Date = yearMonth;
  SaveKeys("Journal", "Date");
}

void modSettings::SaveOwnPrefix(const std::string& myVWL, const std::string& myVWO, const std::string& myVWOP) {
  settings_.General.myVWL = myVWL;
  settings_.General.myVWO = myVWO;
  settings_.General.myVWOP = myVWOP;
  SaveKeys("General", "myVW");
}

// A file that was begun anew beside the backup of lost settings is marked as such until that backup is put aside.
void modSettings::SaveVersion() {
  ports_.ini.SetSettStr(kVersionSection, "Version", ProgramVersionText());
  if (KeepsBackup()) ports_.ini.SetSettStr("FileCheck", "KeepBackup", "1");
}

std::string modSettings::GetRelativePathFromFullPath(const std::string& path) const {
  if (path.empty()) return {};
  const std::string& program = ports_.folders.ProgramFolder();
  const std::string real = Replace(path, "\\", "/");
  if (StartsWithNoCase(real, program + "/")) return "." + real.substr(program.size());
  if (path.starts_with('\\')) return "." + real;
  if (real.starts_with("./") || real.starts_with("/")) return real;
  if (real.starts_with("../")) return real.substr(1);
  return "./" + real;
}

std::string modSettings::GetFullPathFromRelativePath(const std::string& path) const {
  const std::string real = Replace(path, "\\", "/");
  // A leading "\" was written by hand for "in the program folder"; a real path of this system begins with "/".
  if (real.starts_with("/") && !path.starts_with('\\')) return real;
  const auto behindDots = real.find_first_not_of('.');
  const bool dotted = behindDots != std::string::npos && real[behindDots] == '/' && behindDots <= 2;
  const std::string rest = dotted ? real.substr(behindDots) : "/" + real;
  return ports_.folders.ProgramFolder() + rest;
}

}  // namespace vorlix
