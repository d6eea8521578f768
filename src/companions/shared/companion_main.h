// The main routine that the helper programs share: the objects of this system around a SocketCompanion, until the main
// program needs the helper no more.
#pragma once

#include <string_view>

#include "companions/shared/SocketCompanion.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

struct CompanionProgram {
  std::string_view name;
  std::uint32_t source = 0;
  std::string_view section;            // of the settings: where the server is
  bool DebugSwitches::*log = nullptr;  // writes what goes on to the debug log
  SocketCompanion::Translation translate;
};

// Gives the exit code. With the word "debug" on the command line the terminal too shows what goes on.
int RunCompanion(const CompanionProgram& program, int count, char** arguments);

}  // namespace vorlix
