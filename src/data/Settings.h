// The settings as the program works with them: one member for each key, grouped by section. Members hold the default
// until LoadSetting has run.
#pragma once

#include <chrono>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vorlix {

// Numbered texts of one key, by their number.
using SettingFamily = std::map<int, std::string>;

struct Settings {
#define SECTION(name, text, file) struct name##Section {
#define FLAG(section, key, fallback, saved) bool key = fallback;
#define NUMBER(section, key, fallback, minimum, maximum, saved) int key = fallback;
#define SECONDS(section, key, fallback, minimum, maximum, saved) \
  std::chrono::milliseconds key = std::chrono::seconds(fallback);
#define TEXT(section, key, fallback, saved, rule) std::string key = fallback;
#define FAMILY(section, key, saved) SettingFamily key;
#define END_SECTION(name) \
  }                       \
  name;
#include "data/settings_keys.inc"
#undef SECTION
#undef FLAG
#undef NUMBER
#undef SECONDS
#undef TEXT
#undef FAMILY
#undef END_SECTION
};

// Who writes a setting back.
enum class SettingSaved {
  Config,  // the settings dialog, when it closes with OK
  Self,    // the program, when it ends
  Source,  // the dialog of that line source
  Never,   // a routine of its own
};

// What a text that cannot be used gives.
enum class SettingRule {
  Any,
  NeverEmpty,         // an empty text gives the default
  NeverEmptyNumeric,  // and so does one that is no number
  Numeric,            // a text that is no number gives the default
  NumericOrDash,      // the same; empty is stored as "-"
  Controllers,        // five digits 0 or 1, at least one of them 1
  MonthUpToNow,       // "yyyymm"; empty or later than today gives today's
};

// One row of the table: where a setting stands, what it may be, and the member it fills.
struct SettingRow {
  using Flag = bool& (*)(Settings&);
  using Number = int& (*)(Settings&);
  using Duration = std::chrono::milliseconds& (*)(Settings&);
  using Text = std::string& (*)(Settings&);
  using Family = SettingFamily& (*)(Settings&);

  std::string_view section;
  std::string_view file;
  std::string_view key;
  std::variant<Flag, Number, Duration, Text, Family> member;
  std::string_view fallbackText;
  int fallback = 0;
  int minimum = 0;
  int maximum = 0;
  SettingSaved saved = SettingSaved::Config;
  SettingRule rule = SettingRule::Any;
};

// All rows, in the order of the sections.
std::span<const SettingRow> SettingsTable();

}  // namespace vorlix
