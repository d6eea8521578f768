// The expert switches of "Vorlixspec.ini" beside the program; all keep their defaults where the file is missing.
#pragma once

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

struct SpecSwitches {
  DebugSwitches Debug;
  LogModeSwitches LogMode;
};

SpecSwitches LoadSpecSwitches(modAPI_INI& ini, const Folders& folders);

}  // namespace vorlix
