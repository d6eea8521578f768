#include "lines/modCallFunctions_CAPI.h"

#include <algorithm>
#include <utility>

#include "lines/modCAPI.h"
#include "lines/raw_log.h"
#include "services/text.h"

namespace vorlix {
namespace {

// The bearer service of a call that has none.
constexpr std::int16_t kSimulatedCIP = -1;
// Of a logged message so many bytes are enough.
constexpr std::size_t kMostLogged = 49;

void Trace(std::string_view text, bool simulated = false) {
  if (!ErrorHandling().Switches.LogCAPI) return;
  ErrorHandling().LogDebug_CAPI("CAPI Debug " + std::string(text) + (simulated ? " Sim" : ""));
}

std::string DigitsOf(std::string_view text) {
  std::string digits;
  std::copy_if(text.begin(), text.end(), std::back_inserter(digits), IsDigit);
  return digits;
}

// The digits behind the last byte that is neither digit nor blank: so the kind of number in front falls away.
std::string CalledNumber(std::string_view structure) {
  const auto isOther = [](char byte) { return byte != ' ' && !IsDigit(byte); };
  const auto begin = std::find_if(structure.rbegin(), structure.rend(), isOther).base();
  return DigitsOf({begin, structure.end()});
}

std::string LeadingZeros(const std::string& number) {
  return std::string(std::min(number.find_first_not_of('0'), number.size()), '0');
}

void TraceCallingNumber(std::uint8_t type, std::uint8_t presentation) {
  if (!ErrorHandling().Switches.LogCAPI) return;
  for (const std::string_view text : {Decode_CallingPartyNumPlan(type), Decode_CallingPartyPresInd(presentation),
                                      Decode_CallingPartyScrInd(presentation)}) {
    Trace("CallingPartyNumber " + std::string(text));
  }
}

// What a call is about.
struct CallData {
  std::string number;
  std::string MSN;
  std::int32_t PLCI = 0;
};

// The section of a new call: the pipeline holds back what else would come between, until it is told of its end.
class NewCallSection {
 public:
  explicit NewCallSection(CallEvents& events) : events_(events) { events_.Tell(kSourceCAPI, kEventLock); }
  ~NewCallSection() { events_.Tell(kSourceCAPI, kEventNewCallEnd); }
  NewCallSection(const NewCallSection&) = delete;
  NewCallSection& operator=(const NewCallSection&) = delete;

 private:
  CallEvents& events_;
};

}  // namespace

void modCallFunctions_CAPI::tmCAPI_Timer(Timer& timer) {
  timer.SetEnabled(false);
  CAPI_GetMessage(false, 0);
  timer.SetEnabled(true);
}

void modCallFunctions_CAPI::CAPI_GetMessage(bool simulated, int simulatedEvent) {
  Trapped(
      "modCallFunctions_CAPI.CAPI_GetMessage",
      [&] {
        if (simulated && simulatedEvent == kConnectInd) return SimulatedCall();
        if (simulated && simulatedEvent == kConnectActiveInd) return ConnectActive(connectActivePLCI_, true);
        if (simulated) {
          CallData data;
          ports_.GetSimulationsData(data.number, data.MSN, data.PLCI);
          return CallEnd(data.PLCI, true);
        }
        if (ports_.simulation.IsOpen()) return;
        std::string bytes;
        const auto reading = ports_.session.GetMessage(bytes);
        if (reading == CAPI_session::Reading::kLost) return EndOpenCalls();
        if (reading == CAPI_session::Reading::kNothing) return;
        if (const auto message = ReadCapiMessage(bytes)) Work(*message);
      },
      simulated, simulatedEvent);
}

// Everything that is no indication is only an answer to us.
void modCallFunctions_CAPI::Work(const CapiMessage& message) {
  const auto PLCI = ReadPLCI(message.body);
  if (message.header.subcommand != kCapiInd || !PLCI) return;
  switch (message.header.command) {
    case kCapiConnect:
      if (const auto call = ReadConnectIndication(message.body)) NewCall(*call);
      return;
    case kCapiConnectActive:
      Respond(message.header, *PLCI);
      return ConnectActive(*PLCI, false);
    case kCapiDisconnect:
      Respond(message.header, *PLCI);
      return CallEnd(*PLCI, false);
    case kCapiInfo:
      Respond(message.header, *PLCI);
      return Trace("Call CAPIInfoReceived");
    default:
      return;
  }
}

void modCallFunctions_CAPI::NewCall(const ConnectIndication& call) {
  const NewCallSection section(ports_.events);
  CallData data;
  ports_.setLastPrefix(CAPIExtractNumbers(call.structures, data.number, data.MSN));
  if (ports_.prefixInput.IsAsking()) return Trace("EXIT by Prefix active check");
  const LineOptions options = ports_.switches.Read();
  if (options.Debug) LogRawMessage(call, options.LogCount);
  PassOn(call.PLCI, call.CIP, data.number, data.MSN, false);
}

void modCallFunctions_CAPI::SimulatedCall() {
  const NewCallSection section(ports_.events);
  CallData data;
  ports_.GetSimulationsData(data.number, data.MSN, data.PLCI);
  PassOn(data.PLCI, kSimulatedCIP, data.number, data.MSN, true);
}

void modCallFunctions_CAPI::PassOn(std::int32_t PLCI, std::int16_t CIP, const std::string& number,
                                   const std::string& MSN, bool simulated) {
  const LineOptions options = ports_.switches.Read();
  std::string prepared = PreparedNumber(number, options);
  if (!IsForwarded(prepared, MSN, options, ports_.ownNumbers)) {
    return CAPIResponse(false, PLCI, simulated, kCapiIgnore);
  }
  if (!simulated) {
    AlertNetwork(PLCI, options);
    openCalls_.insert(PLCI);
  }
  ports_.events.CAPI_FunctionsForwarder(kSourceCAPI, kEventNewCall, PLCI, CIP, prepared, MSN, simulated);
}

// Without it the network takes the line for unused when nothing else answers.
void modCallFunctions_CAPI::AlertNetwork(std::int32_t PLCI, const LineOptions& options) {
  if (options.BusyOnBusy) return Trace("No AlertREQ (BusyOnBusy");
  Trace("AlertREQ");
  ports_.session.PutMessage(AlertRequest(ports_.session.ApplicationId(), ports_.session.IncMsgNum(), PLCI));
}

void modCallFunctions_CAPI::CallEnd(std::int32_t PLCI, bool simulated) {
  if (!simulated) openCalls_.erase(PLCI);
  std::string none;
  ports_.events.CAPI_FunctionsForwarder(kSourceCAPI, kEventCallEnd, PLCI, 0, none, none, simulated);
  ports_.watch.OnOver(PLCI);
}

// The pipeline marks the refused call first, then the line is dropped.
void modCallFunctions_CAPI::ConnectActive(std::int32_t PLCI, bool simulated) {
  std::string none;
  ports_.events.CAPI_FunctionsForwarder(kSourceCAPI, kEventConnectActive, PLCI, 0, none, none, simulated);
  if (!simulated) CAPIHangUp(PLCI);
}

void modCallFunctions_CAPI::Respond(const CapiHeader& indication, std::int32_t PLCI) {
  ports_.session.PutMessage(PlainResponse(ports_.session.ApplicationId(), indication, PLCI));
}

void modCallFunctions_CAPI::CAPIResponse(bool accept, std::int32_t PLCI, bool simulated, int reason) {
  Trapped(
      "modCallFunctions_CAPI.CAPIResponse",
      [&] {
        if (!simulated) {
          const auto reject = accept ? kCapiAccept : static_cast<std::uint16_t>(reason);
          ports_.session.PutMessage(ConnectResponse(ports_.session.ApplicationId(), PLCI, reject));
        } else if (accept) {
          connectActivePLCI_ = PLCI;
          CAPI_GetMessage(true, kConnectActiveInd);
        }
      },
      accept, PLCI, simulated, reason);
}

void modCallFunctions_CAPI::CAPIHangUp(std::int32_t PLCI) {
  Trapped(
      "modCallFunctions_CAPI.CAPIHangUp",
      [&] {
        Trace("CAPIHangUp PLCI=" + std::to_string(PLCI));
        ports_.session.PutMessage(DisconnectRequest(ports_.session.ApplicationId(), ports_.session.IncMsgNum(), PLCI));
      },
      PLCI);
}

void modCallFunctions_CAPI::CAPIReset(bool afterCall, bool byUser) {
  Trapped(
      "modCallFunctions_CAPI.CAPIReset",
      [&] {
        // The end of the last call may ask for a reset of its own.
        if (std::exchange(resetting_, true)) return;
        EndOpenCalls();
        resetting_ = false;
        ports_.session.CAPIReset(afterCall, byUser);
      },
      afterCall, byUser);
}

void modCallFunctions_CAPI::CAPIReset() {
  if (!ports_.session.IsWaiting()) CAPIReset(true, false);
}

// Of calls of a former registration the driver says nothing more.
void modCallFunctions_CAPI::EndOpenCalls() {
  for (const std::int32_t PLCI : std::exchange(openCalls_, {}))
    CallEnd(PLCI, false);
}

std::string modCallFunctions_CAPI::CAPIExtractNumbers(std::string_view structures, std::string& number,
                                                      std::string& MSN) {
  CapiReader reader(structures);
  MSN = CalledNumber(reader.Structure());
  const std::string_view caller = reader.Structure();
  number.clear();
  CapiReader octets(caller);
  const std::uint8_t type = octets.Byte();
  if (!caller.empty()) TraceCallingNumber(type, octets.Byte());
  // Without digits the number is withheld. An octet of presentation is no digit, and where it is left out a digit
  // stands in its place.
  if (caller.size() >= 3) number = DigitsOf(caller.substr(1));
  std::string typePrefix(number.empty() ? std::string_view() : Decode_CallingPartyNumType(type));
  const std::string zeros = LeadingZeros(number);
  const LineOptions options = ports_.switches.Read();
  const bool isLocal = typePrefix.empty() && zeros.empty() && static_cast<int>(number.size()) > options.TKnum;
  if (options.SpezialAddAreaCodeIfHide && !options.myVWOP.empty() && isLocal) {
    number = options.myVWO + number;
    typePrefix = options.myVWOP;
  }
  CAPI_ExtractVWForwarder(number, typePrefix, zeros);
  number = typePrefix + number;
  return typePrefix + zeros;
}

// The user calls his own line to see what the network sends.
void modCallFunctions_CAPI::CAPI_ExtractVWForwarder(const std::string& number, const std::string& typePrefix,
                                                    const std::string& zeros) {
  if (ports_.prefixInput.IsAsking()) ports_.DataToPrefixCheck(number, typePrefix, zeros);
}

void modCallFunctions_CAPI::LogRawMessage(const ConnectIndication& call, int maximumKB) {
  LogRaw(ports_.logs, ports_.clock, R"(\log\raw_capi.txt)",
         std::string(call.structures.substr(0, kMostLogged)) + " PLCI=" + std::to_string(call.PLCI) +
             " CIP=" + std::to_string(call.CIP),
         maximumKB);
}

}  // namespace vorlix
