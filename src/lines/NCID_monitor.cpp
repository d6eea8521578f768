#include "lines/NCID_monitor.h"

#include "lines/raw_log.h"
#include "services/text.h"

namespace vorlix {
namespace {

// A server names no line: all its calls have one id, so there is one at a time.
constexpr std::int32_t kOnlyPLCI = 0;

void Trace(std::string_view step, std::string_view what, bool simulated = false) {
  if (!ErrorHandling().Switches.LogNCID) return;
  ErrorHandling().LogDebug_NCID("NCID Debug " + std::string(step) + " " + std::string(what) +
                                (simulated ? " Sim" : ""));
}

}  // namespace

void NCID_monitor::NCID_GetMessage(const std::string& line, bool simulated) {
  Trapped(
      "modCallFunctions_NCID.NCID_GetMessage",
      [&] {
        if (!simulated && ports_.simulation.IsOpen()) return;
        // The driver owns every incoming call.
        if (ports_.switches.Read().CallMode_CAPI) return;
        const auto call = NCID_CollectMessage(line);
        call ? Ring(*call, line, simulated) : Disconnected(simulated);
      },
      line, simulated);
}

std::shared_ptr<oDataCall> NCID_monitor::NCID_CollectMessage(const std::string& line) {
  if (line.find('*') == std::string::npos) return nullptr;
  const std::vector<std::string> fields = Split(WithoutControls(line), "*");
  auto call = std::make_shared<oDataCall>(&ports_.numbers);
  call->Active = true;
  call->NewCall = true;
  call->CallDateTime = ports_.clock.Now();
  call->PLCI = kOnlyPLCI;
  call->CIP = kSocketCIP;
  for (std::size_t i = 0; i + 1 < fields.size(); ++i) {
    const std::string key = Lower(fields[i]);
    if (key == "mesg") break;
    if (key == "line") call->MSN = fields[++i];
    if (key == "nmbr") call->DataNumber(fields[++i]);
  }
  call->Key = call->DataNumber() + "ID";
  return call;
}

void NCID_monitor::Ring(oDataCall& call, const std::string& line, bool simulated) {
  const LineOptions options = ports_.switches.Read();
  Trace("NCID_RING", "+++", simulated);
  RingActive_ = true;
  if (!simulated && ports_.prefixInput.IsAsking()) {
    Trace("NCID_RING", "EXIT by Prefix active check");
    return;
  }
  if (!simulated && options.DebugNCID)
    LogRaw(ports_.logs, ports_.clock, R"(\log\raw_ncid.txt)", line, options.LogCount);
  std::string number = PreparedNumber(call.DataNumber(), options);
  if (IsForwarded(number, call.MSN, options, ports_.ownNumbers)) {
    Trace("NCID_RING", "Forward data");
    ports_.events.CAPI_FunctionsForwarder(kSourceNCID, kEventNewCall, call.PLCI, call.CIP, number, call.MSN, simulated);
  }
  ports_.events.Tell(kSourceNCID, kEventNewCallEnd);
  Trace("NCID_RING", "---");
}

void NCID_monitor::Disconnected(bool simulated) {
  Trace("NCID_DISCONNECT", "Forward", simulated);
  RingActive_ = false;
  RingSeconds_ = 0;
  std::string none;
  ports_.events.CAPI_FunctionsForwarder(kSourceNCID, kEventCallEnd, kOnlyPLCI, kSocketCIP, none, none, simulated);
  ports_.watch.OnOver(kOnlyPLCI);
}

void NCID_monitor::TimerTick() {
  RingSeconds_ = RingActive_ ? RingSeconds_ + 1 : 0;
  if (RingSeconds_ >= kSecondsOfACall) EndRinging();
}

void NCID_monitor::EndRinging() {
  RingActive_ = false;
  NCID_GetMessage({}, ports_.simulation.IsOpen());
}

void NCID_monitor::ConnectionLost() {
  if (RingActive_) EndRinging();
}

}  // namespace vorlix
