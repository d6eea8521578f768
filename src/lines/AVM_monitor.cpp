#include "lines/AVM_monitor.h"

#include <algorithm>
#include <array>
#include <utility>

#include "lines/raw_log.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

using LineType = AVM_monitor::LineType;

// A router has a dozen ids; whoever invents more is none.
constexpr std::size_t kMostOpenCalls = 256;

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
  const auto blank = std::min(field.find(' '), field.size());
  return CDateNew(field.substr(0, blank), field.substr(blank));
}

void Trace(std::string_view step, std::string_view what, bool simulated = false) {
  if (!ErrorHandling().Switches.LogAVM) return;
  ErrorHandling().LogDebug_AVM("AVM Debug " + std::string(step) + " " + std::string(what) + (simulated ? " Sim" : ""));
}

}  // namespace

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
  const LineType type = TypeOf(Field(fields, 1));
  const auto former = AVMCallList_.ItemByKeyAs<oRouterCall>(Field(fields, 2) + "ID");
  switch (type) {
    case LineType::kRing:
    case LineType::kCall:
      return {type, Opened(fields, type, line, former)};
    case LineType::kConnect:
      return {type, former && former->NewCall ? Answered(former) : nullptr};  // or this line came before
    case LineType::kDisconnect:
      return {type, former ? Closed(former, Field(fields, 3)) : nullptr};
    case LineType::kOther:
      break;
  }
  return {};
}

AVM_monitor::Call AVM_monitor::Opened(const Fields& fields, LineType type, const std::string& line,
                                      const Call& former) {
  if (former && !former->Stale && former->OpeningLine == line) return nullptr;
  if (former && former->Stale) AVMCallList_.RemoveByKeyName(former->Key);
  const bool isOpen = former && !former->Stale;
  if (!isOpen && AVMCallList_.Count() >= kMostOpenCalls) MakeRoom(line);
  const Call call = NewRecord(fields, type);
  call->OpeningLine = line;
  AVMCallList_.Add(call);  // an id that is still open keeps its first call
  return call;
}

// Calls of a lost connection hardly come to an end any more; after them the oldest counts as ended.
void AVM_monitor::MakeRoom(const std::string& line) {
  if (!std::exchange(overflowTold_, true)) {
    ErrorHandling().ErrorLogForceWrite("modCallFunctions_AVM.Opened", {line}, 0, "too many open calls");
  }
  const clsCollection open = AVMCallList_;
  for (const auto& entry : open.GetCollection()) {
    const auto call = open.ItemByKeyAs<oRouterCall>(entry.key);
    if (call && call->Stale) AVMCallList_.RemoveByKeyName(entry.key);
  }
  if (AVMCallList_.Count() < kMostOpenCalls) return;
  const auto oldest = open.ItemByKeyAs<oRouterCall>(open.GetCollection().front().key);
  AVMCallList_.RemoveByKeyName(oldest->Key);
  if (oldest->NewCall) EndUnanswered(*oldest, false);
}

AVM_monitor::Call AVM_monitor::Answered(const Call& call) {
  call->Active = false;
  call->NewCall = false;
  return call;
}

AVM_monitor::Call AVM_monitor::Closed(const Call& call, const std::string& seconds) {
  call->Active = false;
  if (IsNumeric(seconds)) call->AVMCallperiod = LeadingInteger(seconds).value_or(0);
  AVMCallList_.RemoveByKeyName(call->Key);
  return call;
}

AVM_monitor::Call AVM_monitor::NewRecord(const Fields& fields, LineType type) {
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

void AVM_monitor::Ring(oRouterCall& call, const std::string& line, bool simulated) {
  const LineOptions options = ports_.switches.Read();
  if (options.CallMode_CAPI) {  // the driver owns every incoming call, and forwards it by the same rules
    call.HasLine = IsForwarded(call.DataNumber(), call.MSN, options, ports_.ownNumbers);
    return;
  }
  Trace("AVM_RING", "+++", simulated);
  if (!simulated && ports_.prefixInput.IsAsking()) {
    Trace("AVM_RING", "EXIT by Prefix active check");
    return;
  }
  if (!simulated && options.DebugAVM) LogRaw(ports_.logs, ports_.clock, R"(\log\raw_avm.txt)", line, options.LogCount);
  call.DataNumber(PreparedNumber(call.DataNumber(), options));
  Trace("AVM_RING", "Check");
  if (IsForwarded(call.DataNumber(), call.MSN, options, ports_.ownNumbers)) Forward(call, simulated);
  ports_.events.Tell(kSourceAVM, kEventNewCallEnd);
  Trace("AVM_RING", "---");
}

void AVM_monitor::Forward(oRouterCall& call, bool simulated) {
  Trace("AVM_RING", "Forward data");
  call.HasLine = true;
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

void AVM_monitor::Connected(oRouterCall& call, bool simulated) {
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

void AVM_monitor::Disconnected(oRouterCall& call, bool simulated) {
  Trace("AVM_DISCONNECT", "+++", simulated);
  if (call.NewCall) {
    EndUnanswered(call, simulated);
  } else {
    EnterPeriod(call);
    ports_.watch.OnEnded(call);
  }
  Trace("AVM_DISCONNECT", "---");
}

// Nobody took the call: it gets its journal line now.
void AVM_monitor::EndUnanswered(oRouterCall& call, bool simulated) {
  if (call.AVMDirection == CallDirection::kIncoming) {
    EndIncoming(call, "AVM_DISCONNECT", simulated);
  } else {
    JournalOutgoing(call);
  }
  ports_.watch.OnEnded(call);
}

void AVM_monitor::EndIncoming(const oDataCall& call, std::string_view step, bool simulated) {
  if (ports_.switches.Read().CallMode_CAPI) return;
  Trace(step, "Forward");
  std::string none;
  ports_.events.CAPI_FunctionsForwarder(kSourceAVM, kEventCallEnd, call.PLCI, call.CIP, none, none, simulated);
}

// One line for each call: after a lost connection its answer or its end may still come.
void AVM_monitor::JournalOutgoing(oRouterCall& call) {
  if (call.HasLine || !ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNLogJournal)) return;
  if (!ports_.switches.Read().AVM_SaveOutgoingCalls) return;
  call.HasLine = true;
  if (ports_.journalWindow.IsOpen()) {
    ports_.journalWindow.AddItemToDataSource(call);
  } else {
    ports_.records.WriteCallDataToJournalFile(ports_.records.GetCallDataAsFileString(call));
  }
}

// A call without a line of its own must not find that of another.
void AVM_monitor::EnterPeriod(const oRouterCall& call) {
  if (!call.HasLine || call.AVMCallperiod == 0) return;
  if (!ports_.ownNumbers.IsMSNFunctionActiv(call.MSN, kMSNLogJournal)) return;
  if (ports_.journalWindow.IsOpen()) {
    ports_.journalWindow.SetCallPeriod(call);
  } else {
    ports_.records.SetCallPeriodInJournalFile(call);
  }
}

bool AVM_monitor::HasOpenCall() const {
  return std::ranges::any_of(AVMCallList_.GetCollection(), [&](const auto& entry) {
    const auto call = AVMCallList_.ItemByKeyAs<oRouterCall>(entry.key);
    return call && !call->Stale;
  });
}

void AVM_monitor::ConnectionLost() {
  Trapped("modCallFunctions_AVM.ConnectionLost", [&] {
    overflowTold_ = false;
    const clsCollection open = AVMCallList_;  // an end may let the loop run, and lines come in
    for (const auto& entry : open.GetCollection()) {
      const auto call = open.ItemByKeyAs<oRouterCall>(entry.key);
      if (!call || std::exchange(call->Stale, true)) continue;
      if (call->NewCall) EndUnanswered(*call, false);
    }
  });
}

}  // namespace vorlix
