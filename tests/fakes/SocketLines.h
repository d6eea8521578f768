// The lines of the helper programs, each with all that it asks for and a tape of what it told.
#pragma once

#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"
#include "fakes/MemoryLogStore.h"
#include "lines/AVM_monitor.h"
#include "lines/NCID_monitor.h"

namespace vorlix::fakes {

struct SocketLine {
  Tape tape;
  FakeClock clock;
  MemoryLogStore logs;
  FixedLineSwitches switches;
  TapedEvents events{tape};
  PlainNumbers numbers;
  FewOwnNumbers ownNumbers;
  AskingPrefix prefixInput;
  OpenSimulation simulation;
  TapedWatch watch{tape};
};

class CountingBook : public NoPhoneBook {
 public:
  std::string counted;
  void CountDialled(const std::string& number) override { counted = number; }
};

struct RouterLine : SocketLine {
  CountingBook book;
  TapedRecords records{tape};
  NoJournalWindow journalWindow;
  NoNewCallsWindow newCallsWindow;
  AVM_monitor monitor{{clock, logs, switches, events, numbers, ownNumbers, book, records, journalWindow, newCallsWindow,
                       prefixInput, simulation, watch}};
};

struct NcidLine : SocketLine {
  NCID_monitor monitor{{clock, logs, switches, events, numbers, ownNumbers, prefixInput, simulation, watch}};
};

}  // namespace vorlix::fakes
