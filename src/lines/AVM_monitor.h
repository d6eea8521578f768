// The router's call monitor: one text line for each event of a call, fields separated by ";". Incoming calls go to the
// pipeline when no driver owns them; outgoing calls are this source's own business, from line to journal.
//
//   28.08.10 10:21:37;RING;2;04066969012;1234;ISDN;        caller's number, own number
//   28.08.10 10:28:48;CALL;1;4;1234;04066969012;ISDN;      extension, own number, number dialled
//   28.08.10 10:25:40;CONNECT;2;4;04066969012;             extension, number
//   28.08.10 10:26:40;DISCONNECT;2;60;                     seconds
//
// The connection id (the third field) is all that ties the lines of a call together, and the router uses it again at
// once.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/CallPipeline.h"
#include "core/call_watch.h"
#include "lines/line_options.h"
#include "lines/modProcMessage.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

class AVM_monitor : public SocketSource {
 public:
  struct Ports {
    const CivilClock& clock;
    LogStore& logs;
    const LineSwitches& switches;
    CallEvents& events;
    NumberAnalysis& numbers;
    OwnNumbers& ownNumbers;
    PhoneBook& book;
    CallRecords& records;
    JournalWindow& journalWindow;
    NewCallsWindow& newCallsWindow;
    PrefixInput& prefixInput;
    SimulationWindow& simulation;
    CallWatch& watch;
  };

  enum class LineType { kOther, kRing, kCall, kConnect, kDisconnect };

  struct Collected {
    LineType type = LineType::kOther;
    std::shared_ptr<oDataCall> call;  // may be nothing
  };

  // All ports must outlive the object.
  explicit AVM_monitor(Ports ports) : ports_(ports) {}

  // Works off one line; anything that is no call-monitor line is ignored. Control characters in it become blanks.
  void AVM_GetMessage(const std::string& line, bool simulated);

  // Turns a line into its type and its call: a new one, or the one of that id.
  Collected AVM_CollectMessage(const std::string& line);

  void GetMessage(const std::string& line, bool simulated) override { AVM_GetMessage(line, simulated); }

  // The router's lines of the time without a connection are lost, and with them the ends of calls. What was ringing
  // counts as ended, so that it stands in the journal; every id may be given to a new call from here on.
  void ConnectionLost() override;

  const clsCollection& AVMCallList() const { return AVMCallList_; }

 private:
  class oRouterCall;
  using Fields = std::vector<std::string>;

  std::shared_ptr<oDataCall> NewRecord(const Fields& fields, LineType type);
  std::string DialledNumber(const std::string& number) const;
  void Ring(oDataCall& call, const std::string& line, bool simulated);
  void Forward(oDataCall& call, bool simulated);
  void Dialled(const oDataCall& call);
  void Connected(const oDataCall& call, bool simulated);
  void Disconnected(const oDataCall& call, bool simulated);
  void EndIncoming(const oDataCall& call, std::string_view step, bool simulated);
  void JournalOutgoing(const oDataCall& call);
  void EnterPeriod(const oDataCall& call);
  void LogRawLine(const std::string& line, int maximumKB);

  Ports ports_;
  clsCollection AVMCallList_;
};

}  // namespace vorlix
