// The log of the whole program, in memory while the object lives.
#pragma once

#include <string>

#include "fakes/MemoryLogStore.h"

namespace vorlix {

class AttachedLog {
 public:
  explicit AttachedLog(const CivilClock& clock, bool DebugSwitches::*on = nullptr) {
    ErrorHandling().Attach(logs_, clock, "PRG");
    if (on != nullptr) ErrorHandling().Switches.*on = true;
  }
  ~AttachedLog() {
    ErrorHandling().Switches = {};
    ErrorHandling().Detach();
  }
  AttachedLog(const AttachedLog&) = delete;
  AttachedLog& operator=(const AttachedLog&) = delete;

  std::string Debug() const { return logs_.Text(R"(\log\debug.log)"); }
  std::string Errors() const { return logs_.Text(R"(\log\error.log)"); }
  std::string Language() const { return logs_.Text(R"(\log\language.log)"); }

 private:
  MemoryLogStore logs_;
};

}  // namespace vorlix
