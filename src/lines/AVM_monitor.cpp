#include "lines/AVM_monitor.h"

#include <array>
#include <utility>

#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

using LineType = AVM_monitor::LineType;

// Every call of a socket source has this bearer service.
constexpr std::int16_t kSocketCIP = 16;

constexpr std::array<std::pair<std::string_view, LineType>, 4> kLineTypes{{
    {"RING", LineType::kRing},
    {"CALL", LineType::kCall},
    {"CONNECT", LineType::kConnect},
    {"DISCONNECT", LineType::kDisconnect},
}};

LineType TypeOf(const std::string& text) {
  for (const auto& [name, type] : kLineTypes) {
    if (text == name) return type;
  }
  return LineType::kOther;
}

std::string Field(const std::vector<std::string>& fields, std::size_t index) {
  return index < fields.size() ? fields[index] : std::string();
}

// The time stamp of a line: date and time, separated by a blank.
DateTime StampOf(const std::string& field) {
  const auto blank = field.find(' ');
  if (blank == std::string::npos) return CDateNew(field, {});
  return CDateNew(std::string_view(field).substr(0, blank), std::string_view(field).substr(blank + 1));
}

void Trace(std::string_view step, std::string_view what, bool simulated = false) {
  if (!ErrorHandling().Switches.LogAVM) return;
  ErrorHandling().LogDebug_AVM("AVM Debug " + std::string(step) + " " + std::string(what) + (simulated ? " Sim" : ""));
}

}  // namespace

// A call of the router, with what only this source knows of it.
class AVM_monitor::oRouterCall : public oDataCall {
 public:
  using oDataCall::oDataCall;
  bool Stale = false;  // the connection was lost since: its end may have been missed
};

void AVM_monitor::AVM_GetMessage(const std::string& line, bool simulated) {
  Trapped(
      "modCallFunctions_AVM.AVM_GetMessage",
      [&] {
        if (!simulated && ports_.simulation.IsOpen()) return;
        const auto [type, call] = AVM_CollectMessage(line);
        if (!call) return;
        switch (type) {
          case LineType::kRing:
            return Ring(*call, line, simulated);
          case LineType::kCall:
            return Dialled(*call);
          case LineType::kConnect:
            return Connected(*call, simulated);
          case LineType::kDisconnect:
            return Disconnected(*call, simulated);
          case LineType::kOther:
            return;
        }
      },
      line, simulated);
}

AVM_monitor::Collected AVM_monitor::AVM_CollectMessage(const std::string& line) {
  if (line.find(';') == std::string::npos) return {};
  const Fields fields = Split(WithoutControls(line), ";");
  Collected result;
  result.type = TypeOf(Field(fields, 1));
  const std::string key = Field(fields, 2) + "ID";
  switch (result.type) {
    case LineType::kRing:
    case LineType::kCall: {
      result.call = NewRecord(fields, result.type);
      const auto former = AVMCallList_.ItemByKeyAs<oRouterCall>(key);
      if (former && former->Stale) AVMCallList_.RemoveByKeyName(key);
      AVMCallList_.Add(result.call);  // an id that is still open keeps its first call
      break;
    }
    case LineType::kConnect:
    case LineType::kDisconnect:
      result.call = AVMCallList_.ItemByKeyAs<oDataCall>(key);
      if (!result.call) break;
      result.call->Active = false;
      if (result.type == LineType::kConnect) {
        result.call->NewCall = false;
      } else {
        if (IsDigits(Field(fields, 3))) result.call->AVMCallperiod = LeadingInteger(fields[3]).value_or(0);
        AVMCallList_.RemoveByKeyName(key);
      }
      break;
    case LineType::kOther:
      break;
  }
  return result;
}

std::shared_ptr<oDataCall> AVM_monitor::NewRecord(const Fields& fields, LineType type) {
  auto call = std::make_shared<oRouterCall>(&ports_.numbers);
  const std::string id = Field(fields, 2);
  call->Active = true;
  call->NewCall = true;
  call->Key = id + "ID";
  call->CallDateTime = StampOf(fields[0]);
  // A journal line needs a date: a stamp that is none gives way to the moment at which the line came.
  if (!call->CallDateTime) call->CallDateTime = ports_.clock.Now();
  call->PLCI = LeadingInteger(id).value_or(0);
  call->CIP = kSocketCIP;
  call->MSN = Field(fields, 4);
  if (type == LineType::kCall) {
    call->AVMDirection = CallDirection::kOutgoing;
    call->DataNumber(DialledNumber(Field(fields, 5)));
  } else {
    call->DataNumber(Field(fields, 3));
  }
  return call;
}

// A number without a leading 0 was dialled locally.
std::string AVM_monitor::DialledNumber(const std::string& number) const {
  if (!number.empty() && number.front() == '0') return number;
  return "0" + ports_.switches.Read().myVWO + number;
}

void AVM_monitor::Ring(oDataCall& call, const std::string& line, bool simulated) {
  const LineOptions options = ports_.switches.Read();
  if (options.CallMode_CAPI) return;  // the driver owns every incoming call
  Trace("AVM_RING", "+++", simulated);
  if (!simulated && ports_.prefixInput.IsAsking()) {
    Trace("AVM_RING", "EXIT by Prefix active check");
    return;
  }
  if (!simulated && options.DebugAVM) LogRawLine(line, options.LogCount);
  call.DataNumber(PreparedNumber(call.DataNumber(), options));
  Trace("AVM_RING", "Check");
  if (IsForwarded(call.DataNumber(), call.MSN, options, ports_.ownNumbers)) Forward(call, simulated);
  ports_.events.Tell(kSourceAVM, kEventNewCallEnd);
  Trace("AVM_RING", "---");
}

void AVM_monitor::Forward(oDataCall& call, bool simulated) {
  Trace("AVM_RING", "Forward data");
  std::string number = call.DataNumber();
  const DateTime rang = ports_.events.CAPI_FunctionsForwarder(kSourceAVM, kEventNewCall, call.PLCI, call.CIP, number,
                                                              call.MSN, simulated);
  if (rang) call.CallDateTime = rang;
  // The journal knows the call by its normal form: with it the duration finds its line later.
  call.DataNumber(number);
  Trace("AVM_RING", "Forward end");
}

void AVM_monitor::Dialled(const oDataCall& call) {
  ports_.book.CountDialled(call.DataNumber());
  ports_.watch.OnDialled(call);
}

void AVM_monitor::Connected(const oDataCall& call, bool simulated) {
  Trace("AVM_CONNECT", "+++", simulated);
  if (call.AVMDirection == CallDirection::kIncoming) {
    EndIncoming(call, "AVM_CONNECT", simulated);
  } else {
    JournalOutgoing(call);
    if (ports_.newCallsWindow.IsOpen()) ports_.newCallsWindow.AddItemToDataSource(call);
  }
  ports_.watch.OnAnswered(call);
  Trace("AVM_CONNECT", "---");
}

void AVM_monitor::Disconnected(const oDataCall& call, bool simulated) {
  Trace("AVM_DISCONNECT", "+++", simulated);
  if (!call.NewCall) {
    EnterPeriod(call);
  } else if (call.AVMDirection == CallDirection::kIncoming) {
    EndIncoming(call, "AVM_DISCONNECT", simulated);
  } else {
    JournalOutgoing(call);
  }
  ports_.watch.OnEnded(call);
  Trace("AVM_DISCONNECT", "---");
}

void AVM_monitor::EndIncoming(const oDataCall& call, std::string_view step, bool simulated) {
  if (ports_.switches.Read().CallMode_CAPI) return;
  Trace(step, "Forward");
  std::string none;
  ports_.events.CAPI_FunctionsForwarder(kSourceAVM, kEventCallEnd, call.PLCI, call.CIP, none, none, simulated);
}

void AVM_monitor::JournalOutgoing(const oDataCall& call) {
  if (!ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNLogJournal)) return;
  if (!ports_.switches.Read().AVM_SaveOutgoingCalls) return;
  if (ports_.journalWindow.IsOpen()) {
    ports_.journalWindow.AddItemToDataSource(call);
  } else {
    ports_.records.WriteCallDataToJournalFile(ports_.records.GetCallDataAsFileString(call));
  }
}

void AVM_monitor::EnterPeriod(const oDataCall& call) {
  if (call.AVMCallperiod == 0 || !ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNLogJournal)) return;
  if (ports_.journalWindow.IsOpen()) {
    ports_.journalWindow.SetCallPeriod(call);
  } else {
    ports_.records.SetCallPeriodInJournalFile(call);
  }
}

void AVM_monitor::LogRawLine(const std::string& line, int maximumKB) {
  const DateTime now = ports_.clock.Now();
  ports_.logs.FileWrite_Log(R"(\log\raw_avm.txt)",
                            GetFormatedDateByDate(now) + " " + GetFormatedTime(now) + "|" + WithoutControls(line),
                            maximumKB);
}

void AVM_monitor::ConnectionLost() {
  Trapped("modCallFunctions_AVM.ConnectionLost", [&] {
    const clsCollection open = AVMCallList_;  // an end may let the loop run, and lines come in
    for (const auto& entry : open.GetCollection()) {
      const auto call = open.ItemByKeyAs<oRouterCall>(entry.key);
      if (!call || std::exchange(call->Stale, true)) continue;
      const bool ringing = call->NewCall && call->AVMDirection == CallDirection::kIncoming;
      if (!ringing) continue;
      EndIncoming(*call, "AVM_DISCONNECT", false);
      ports_.watch.OnEnded(*call);
    }
  });
}

}  // namespace vorlix
