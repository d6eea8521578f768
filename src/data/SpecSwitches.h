// The expert switches of "Vorlixspec.ini" beside the program; all keep their defaults where the file is missing.
#pragma once

#include <cstdint>

#include "data/modAPI_INI.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

// Which of the helper programs and clients keep a log of their own.
struct LogModeSwitches {
  bool Export = true;
  bool Mail = true;
  bool Inverse = true;
  bool Update = true;
  bool Send2Script = true;
  bool NTService = true;
};

// How the CAPI driver is asked for calls.
struct CapiSwitches {
  bool LoadThisValues = false;          // take the two masks in place of the fixed ones
  bool SkipVersionAndManufact = false;  // some drivers do not stand the question
  std::uint32_t InfoMask = 0;           // bits as in the driver's LISTEN_REQ, one key each in the file
  std::uint32_t CIPMask = 0;            // bit number is the CIP value
};

struct SpecSwitches {
  DebugSwitches Debug;
  LogModeSwitches LogMode;
  CapiSwitches CAPI;
};

SpecSwitches LoadSpecSwitches(modAPI_INI& ini, const Folders& folders);

}  // namespace vorlix
