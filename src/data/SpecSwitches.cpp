#include "data/SpecSwitches.h"

#include <span>
#include <string>

namespace vorlix {
namespace {

template <class Switches>
struct FlagKey {
  const char* key;
  bool Switches::*member;
};

constexpr FlagKey<DebugSwitches> kDebugKeys[] = {
    {"TraceMode", &DebugSwitches::TraceMode}, {"LogExport", &DebugSwitches::LogExport},
    {"LogCAPI", &DebugSwitches::LogCAPI},     {"LogAVM", &DebugSwitches::LogAVM},
    {"LogNCID", &DebugSwitches::LogNCID},     {"LogTAPI", &DebugSwitches::LogTAPI},
    {"LogOther", &DebugSwitches::LogOther},   {"LogTiming", &DebugSwitches::LogTiming},
};

constexpr FlagKey<LogModeSwitches> kLogKeys[] = {
    {"Export", &LogModeSwitches::Export},           {"Mail", &LogModeSwitches::Mail},
    {"Inverse", &LogModeSwitches::Inverse},         {"Update", &LogModeSwitches::Update},
    {"Send2Script", &LogModeSwitches::Send2Script}, {"NTService", &LogModeSwitches::NTService},
};

constexpr FlagKey<CapiSwitches> kCapiKeys[] = {
    {"LoadThisValues", &CapiSwitches::LoadThisValues},
    {"SkipVersionAndManufact", &CapiSwitches::SkipVersionAndManufact},
};

struct BitKey {
  const char* key;
  int bit;
};

constexpr BitKey kInfoBits[] = {
    {"InfoMask_CAUSE", 0},          {"InfoMask_DATETIME", 1},     {"InfoMask_DISPLAY", 2},
    {"InfoMask_USERUSER", 3},       {"InfoMask_CALLPROGRESS", 4}, {"InfoMask_FACILITY", 5},
    {"InfoMask_CHARGING", 6},       {"InfoMask_CALLEDPARTY", 7},  {"InfoMask_CHANNEL", 8},
    {"InfoMask_EARLYB3CONNECT", 9}, {"InfoMask_REDIRECT", 10},    {"InfoMask_SENDCOMPLET", 11},
};

constexpr BitKey kCipBits[] = {
    {"CIPMask_ANYMATCH", 0},
    {"CIPMask_SPEECH", 1},
    {"CIPMask_UNRESTRICTEDDIGITAL", 2},
    {"CIPMask_RESTRICTEDDIGITAL", 3},
    {"CIPMask_31KHZAUDIO", 4},
    {"CIPMask_7KHZAUDIO", 5},
    {"CIPMask_VIDEO", 6},
    {"CIPMask_PACKETMODE", 7},
    {"CIPMask_56KBIT", 8},
    {"CIPMask_UNRESTRICTEDDIGITAL2", 9},
    {"CIPMask_TELEPHONY", 16},
    {"CIPMask_FAXG3", 17},
    {"CIPMask_FAXG4", 18},
    {"CIPMask_TELETEXBASICMIXED", 19},
    {"CIPMask_TELETEXBASICPROCESSABLE", 20},
    {"CIPMask_TELETEXBASIC", 21},
    {"CIPMask_VIDEOTEX", 22},
    {"CIPMask_TELEX", 23},
    {"CIPMask_X400", 24},
    {"CIPMask_OSIX200", 25},
    {"CIPMask_7KHZTELEPHONY", 26},
    {"CIPMask_VIDEOTELEPHONY_FIRST", 27},
    {"CIPMask_VIDEOTELEPHONY_SECOND", 28},
};

// The sections of one file.
class SpecFile {
 public:
  SpecFile(modAPI_INI& ini, const Folders& folders) : ini_(ini), path_(folders.ProgramFolder() + "/Vorlixspec.ini") {}

  template <class Switches, std::size_t count>
  void Read(const char* section, const FlagKey<Switches> (&keys)[count], Switches& switches) {
    for (const auto& row : keys) {
      switches.*row.member = ini_.GetSettBool(section, row.key, switches.*row.member, path_);
    }
  }

  std::uint32_t ReadMask(const char* section, std::span<const BitKey> keys) {
    std::uint32_t mask = 0;
    for (const BitKey& row : keys) {
      if (ini_.GetSettBool(section, row.key, false, path_)) mask |= std::uint32_t{1} << row.bit;
    }
    return mask;
  }

 private:
  modAPI_INI& ini_;
  std::string path_;
};

}  // namespace

SpecSwitches LoadSpecSwitches(modAPI_INI& ini, const Folders& folders) {
  return Trapped("modSettings.LoadSpecSwitches", [&] {
    const modAPI_INI::Batch once(ini);
    SpecFile file(ini, folders);
    SpecSwitches switches;
    file.Read("Debug", kDebugKeys, switches.Debug);
    file.Read("LogMode", kLogKeys, switches.LogMode);
    // Who follows the export wants its own log too.
    if (switches.Debug.LogExport) switches.LogMode.Export = true;
    file.Read("CAPI", kCapiKeys, switches.CAPI);
    switches.CAPI.InfoMask = file.ReadMask("CAPI", kInfoBits);
    switches.CAPI.CIPMask = file.ReadMask("CAPI", kCipBits);
    return switches;
  });
}

}  // namespace vorlix
