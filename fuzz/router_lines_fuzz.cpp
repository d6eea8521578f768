// The lines of a router, one after the other.
#include "check.h"
#include "core/null_ports.h"
#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"
#include "fakes/MemoryLogStore.h"
#include "lines/AVM_monitor.h"
#include "services/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorlix;
  fakes::Tape tape;
  FakeClock clock;
  MemoryLogStore logs;
  fakes::FixedLineSwitches switches;
  switches.options.DebugAVM = switches.options.AVM_SaveOutgoingCalls = true;
  fakes::TapedEvents events{tape};
  PlainNumbers numbers;
  fakes::FewOwnNumbers ownNumbers;
  NoPhoneBook book;
  fakes::TapedRecords records{tape};
  NoJournalWindow journalWindow;
  NoNewCallsWindow newCallsWindow;
  NoPrefixInput prefixInput;
  NoSimulationWindow simulation;
  fakes::TapedWatch watch{tape};
  AVM_monitor monitor{{clock, logs, switches, events, numbers, ownNumbers, book, records, journalWindow, newCallsWindow,
                       prefixInput, simulation, watch}};
  for (const std::string& line : Split(fuzz::Text(data, size), "\n"))
    monitor.AVM_GetMessage(line, false);
  monitor.ConnectionLost();
  for (const std::string& entry : tape)
    fuzz::Check(WithoutControls(entry) == entry, "no control character goes beyond the line");
  return 0;
}
