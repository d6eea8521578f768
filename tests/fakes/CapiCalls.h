// The CAPI line on any driver, with all that it asks for.
#pragma once

#include <string>

#include "core/null_ports.h"
#include "fakes/LineFakes.h"
#include "fakes/ManualReactor.h"
#include "fakes/MemoryLogStore.h"
#include "lines/modCallFunctions_CAPI.h"

namespace vorlix::fakes {

// One incoming call in the driver's and the program's messages, and what is told of it.
constexpr const char* kCallIndication =
    "2e 00 07 00 02 82 01 80 01 01 00 00 10 00 07 81 35 35 35 30 31 32 0c 21 83 33 30 31 32 33 34 35 36 37 38 00 00 "
    "03 90 90 a3 00 02 91 81 00";
constexpr const char* kAlertRequest = "11 00 07 00 01 80 02 80 01 01 00 00 00 00 00 00 00";
constexpr const char* kAcceptResponse =
    "1b 00 07 00 02 83 00 00 01 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00";
constexpr const char* kActiveIndication = "0f 00 07 00 03 82 02 80 01 01 00 00 00 00 00";
constexpr const char* kActiveResponse = "0c 00 07 00 03 83 02 80 01 01 00 00";
constexpr const char* kHangUpRequest = "0d 00 07 00 04 80 03 80 01 01 00 00 00";
constexpr const char* kHangUpConfirmation = "0e 00 07 00 04 81 03 80 01 01 00 00 00 00";
constexpr const char* kEndIndication = "0e 00 07 00 04 82 03 80 01 01 00 00 9a 34";
constexpr const char* kEndResponse = "0c 00 07 00 04 83 03 80 01 01 00 00";
constexpr const char* kNewCall = "event 12 of 0: 03012345678 to 555012, id 257, CIP 16";
constexpr const char* kCallEnd = "event 14 of 0: id 257";

struct CapiCalls {
  CapiCalls(CapiDriver& driver, CallEvents& events, CallWatch& watch)
      : session({driver, events, switches, loop, [] { return CapiSwitches(); }, [] {}}, {}),
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
  AskingPrefix prefixInput;
  OpenSimulation simulation;
  std::string prefix, tested;  // LastPrefix, and what a test call gave
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
