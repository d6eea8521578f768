#include "data/Settings.h"

namespace vorlix {
namespace {

#define SECTION(name, text, file)               \
  namespace name##Place {                       \
    constexpr std::string_view kSection = text; \
    constexpr std::string_view kFile = file;    \
  }
#define FLAG(...)
#define NUMBER(...)
#define SECONDS(...)
#define TEXT(...)
#define FAMILY(...)
#define END_SECTION(name)
#include "data/settings_keys.inc"
#undef SECTION
#undef FLAG
#undef NUMBER
#undef SECONDS
#undef TEXT
#undef FAMILY
#undef END_SECTION

#define PLACE(section, key) section##Place::kSection, section##Place::kFile, #key
#define SECTION(name, text, file)
#define FLAG(section, key, fallback, saved)                                  \
  {PLACE(section, key),                                                      \
   SettingRow::Flag([](Settings& all) -> bool& { return all.section.key; }), \
   {},                                                                       \
   fallback,                                                                 \
   0,                                                                        \
   1,                                                                        \
   SettingSaved::saved,                                                      \
   SettingRule::Any},
#define NUMBER(section, key, fallback, minimum, maximum, saved)               \
  {PLACE(section, key),                                                       \
   SettingRow::Number([](Settings& all) -> int& { return all.section.key; }), \
   {},                                                                        \
   fallback,                                                                  \
   minimum,                                                                   \
   maximum,                                                                   \
   SettingSaved::saved,                                                       \
   SettingRule::Any},
#define SECONDS(section, key, fallback, minimum, maximum, saved)                                      \
  {PLACE(section, key),                                                                               \
   SettingRow::Duration([](Settings& all) -> std::chrono::milliseconds& { return all.section.key; }), \
   {},                                                                                                \
   fallback,                                                                                          \
   minimum,                                                                                           \
   maximum,                                                                                           \
   SettingSaved::saved,                                                                               \
   SettingRule::Any},
#define TEXT(section, key, fallback, saved, rule)                                   \
  {PLACE(section, key),                                                             \
   SettingRow::Text([](Settings& all) -> std::string& { return all.section.key; }), \
   fallback,                                                                        \
   0,                                                                               \
   0,                                                                               \
   0,                                                                               \
   SettingSaved::saved,                                                             \
   SettingRule::rule},
#define FAMILY(section, key, saved)                                                     \
  {PLACE(section, key),                                                                 \
   SettingRow::Family([](Settings& all) -> SettingFamily& { return all.section.key; }), \
   {},                                                                                  \
   0,                                                                                   \
   0,                                                                                   \
   0,                                                                                   \
   SettingSaved::saved,                                                                 \
   SettingRule::Any},
#define END_SECTION(name)

constexpr SettingRow kRows[] = {
#include "data/settings_keys.inc"
};

}  // namespace

std::span<const SettingRow> SettingsTable() {
  return kRows;
}

}  // namespace vorlix
