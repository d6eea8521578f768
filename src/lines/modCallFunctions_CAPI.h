// The calls of the CAPI 2.0 driver. The program never carries data: it listens, tells the network that it is there, and
// leaves a call to the other devices of the line, unless the call is refused: then it takes the call and drops it at
// once, which ends the ringing for the caller.
#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>

#include "core/call_events.h"
#include "core/call_watch.h"
#include "core/pipeline_ports.h"
#include "lines/CAPI_session.h"
#include "lines/capi_messages.h"
#include "lines/line_options.h"
#include "platform/MessageLoop.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

class modCallFunctions_CAPI : public CapiLine {
 public:
  // What a simulated message stands for.
  enum SimulatedEvent : int { kConnectInd = 0, kConnectActiveInd = 1, kDisconnectInd = 2 };

  struct Ports {
    CAPI_session& session;
    const CivilClock& clock;
    LogStore& logs;
    const LineSwitches& switches;
    CallEvents& events;
    OwnNumbers& ownNumbers;
    PrefixInput& prefixInput;
    SimulationWindow& simulation;
    CallWatch& watch;
    // What stood in front of the number of the newest call.
    std::function<void(const std::string& prefix)> setLastPrefix;
    // Gets the numbers of a test call, for whoever finds out the prefix by it.
    std::function<void(const std::string& number, const std::string& infoPrefix, const std::string& zeros)>
        DataToPrefixCheck;
    // The call that a simulated message is about.
    std::function<void(std::string& number, std::string& MSN, std::int32_t& PLCI)> GetSimulationsData;
  };

  // All ports must outlive the object.
  explicit modCallFunctions_CAPI(Ports ports) : ports_(std::move(ports)) {}

  // The tick of tmCAPI, which is that timer: one message each. It stands still meanwhile, for a call may let the loop
  // run.
  void tmCAPI_Timer(Timer& timer);

  // Works off one message: the next one of the driver, or a simulated one, which sends nothing.
  void CAPI_GetMessage(bool simulated, int simulatedEvent);

  // Takes the call, or lets it go with `reason`, the reject value.
  void CAPIResponse(bool accept, std::int32_t PLCI, bool simulated, int reason) override;
  void CAPIHangUp(std::int32_t PLCI);

  // A fresh registration after a call; not while a lost one is being tried again.
  void CAPIReset() override;
  // The same as asked for by the user too. Calls in progress are over with the former registration.
  void CAPIReset(bool afterCall, bool byUser);

  // Number and MSN out of the structures of a new call, the number with what its kind puts in front. Gives that and the
  // zeros behind it. Both may come out empty.
  std::string CAPIExtractNumbers(std::string_view structures, std::string& number, std::string& MSN);

 private:
  void Work(const CapiMessage& message);
  void NewCall(const ConnectIndication& call);
  void SimulatedCall();
  void PassOn(std::int32_t PLCI, std::int16_t CIP, const std::string& number, const std::string& MSN, bool simulated);
  void AlertNetwork(std::int32_t PLCI, const LineOptions& options);
  void CallEnd(std::int32_t PLCI, bool simulated);
  void ConnectActive(std::int32_t PLCI, bool simulated);
  void Respond(const CapiHeader& indication, std::int32_t PLCI);
  void EndOpenCalls();
  void CAPI_ExtractVWForwarder(const std::string& number, const std::string& typePrefix, const std::string& zeros);
  void LogRawMessage(const ConnectIndication& call, int maximumKB);

  Ports ports_;
  std::set<std::int32_t> openCalls_;  // PLCIs that the pipeline knows and the driver has not ended
  std::int32_t connectActivePLCI_ = 0;
  bool resetting_ = false;
};

}  // namespace vorlix
