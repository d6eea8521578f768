#include "data/SpecSwitches.h"

#include <string>

namespace vorlix {

SpecSwitches LoadSpecSwitches(modAPI_INI& ini, const Folders& folders) {
  struct DebugKey {
    const char* key;
    bool DebugSwitches::*member;
  };
  constexpr DebugKey kDebugKeys[] = {
      {"TraceMode", &DebugSwitches::TraceMode}, {"LogExport", &DebugSwitches::LogExport},
      {"LogCAPI", &DebugSwitches::LogCAPI},     {"LogAVM", &DebugSwitches::LogAVM},
      {"LogNCID", &DebugSwitches::LogNCID},     {"LogTAPI", &DebugSwitches::LogTAPI},
      {"LogOther", &DebugSwitches::LogOther},   {"LogTiming", &DebugSwitches::LogTiming},
  };
  struct LogKey {
    const char* key;
    bool LogModeSwitches::*member;
  };
  constexpr LogKey kLogKeys[] = {
      {"Export", &LogModeSwitches::Export},           {"Mail", &LogModeSwitches::Mail},
      {"Inverse", &LogModeSwitches::Inverse},         {"Update", &LogModeSwitches::Update},
      {"Send2Script", &LogModeSwitches::Send2Script}, {"NTService", &LogModeSwitches::NTService},
  };
  const std::string file = folders.ProgramFolder() + "/Vorlixspec.ini";
  const modAPI_INI::Batch once(ini);
  SpecSwitches switches;
  for (const DebugKey& row : kDebugKeys) {
    switches.Debug.*row.member = ini.GetSettBool("Debug", row.key, false, file);
  }
  for (const LogKey& row : kLogKeys) {
    switches.LogMode.*row.member = ini.GetSettBool("LogMode", row.key, true, file);
  }
  // Who follows the export wants its own log too.
  if (switches.Debug.LogExport) switches.LogMode.Export = true;
  return switches;
}

}  // namespace vorlix
