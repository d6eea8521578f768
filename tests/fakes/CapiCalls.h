// The CAPI line on any driver, with all that it asks for.
#pragma once

#include <string>

#include "core/null_ports.h"
#include "fakes/LineFakes.h"
#include "fakes/ManualReactor.h"
#include "fakes/MemoryLogStore.h"
#include "lines/modCallFunctions_CAPI.h"

namespace vorlix::fakes {

class SwitchedPrefix : public NoPrefixInput {
 public:
  bool asking = false;
  bool IsAsking() override { return asking; }
};

class SwitchedSimulation : public NoSimulationWindow {
 public:
  bool open = false;
  bool IsOpen() override { return open; }
};

struct CapiCalls {
  CapiCalls(CapiDriver& driver, CallEvents& events, CallWatch& watch)
      : session({driver, events, switches, loop, [] { return CapiSwitches(); }, [this] { ++stateChanges; }}, {}),
        calls({session, loop.GetClock(), logs, switches, events, ownNumbers, prefixInput, simulation, watch,
               [this](const std::string& found) { prefix = found; },
               [this](const std::string& number, const std::string& infoPrefix, const std::string& zeros) {
                 tested = number + "/" + infoPrefix + "/" + zeros;
               },
               [](std::string& number, std::string& MSN, std::int32_t& PLCI) {
                 number = "0301234567";
                 MSN = "42";
                 PLCI = 5;
               }}) {}

  ManualReactor loop;
  MemoryLogStore logs;
  FixedLineSwitches switches;
  FewOwnNumbers ownNumbers;
  SwitchedPrefix prefixInput;
  SwitchedSimulation simulation;
  std::string prefix, tested;  // LastPrefix, and what a test call gave
  int stateChanges = 0;
  CAPI_session session;
  modCallFunctions_CAPI calls;
};

// The pipeline on a tape, as far as it answers the line: it refuses one caller.
class RefusingEvents : public TapedEvents {
 public:
  using TapedEvents::TapedEvents;
  CapiLine* line = nullptr;
  std::string refused;
  DateTime CAPI_FunctionsForwarder(int source, int event, std::int32_t PLCI, std::int16_t CIP, std::string& number,
                                   const std::string& MSN, bool simulated) override {
    const auto time = TapedEvents::CAPI_FunctionsForwarder(source, event, PLCI, CIP, number, MSN, simulated);
    if (event == kEventNewCall && number == refused) line->CAPIResponse(true, PLCI, simulated, 1);
    return time;
  }
};

}  // namespace vorlix::fakes
