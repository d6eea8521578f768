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

#include <memory>
#include <string>
#include <vector>

#include "core/call_events.h"
#include "core/call_watch.h"
#include "core/pipeline_ports.h"
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

  // A call of the router, with what only this source knows of it.
  class oRouterCall : public oDataCall {
   public:
    using oDataCall::oDataCall;
    std::string OpeningLine;  // as it came: the router may send it again
    bool HasLine = false;     // it stands in the journal, or will as soon as the pipeline ends it
    bool Stale = false;       // the connection was lost since: its end may have been missed
  };
  using Call = std::shared_ptr<oRouterCall>;

  struct Collected {
    LineType type = LineType::kOther;
    Call call;  // may be nothing
  };

  // All ports must outlive the object.
  explicit AVM_monitor(Ports ports) : ports_(ports) {}

  // Works off one line; anything that is no call-monitor line is ignored. Control characters in it become blanks.
  void AVM_GetMessage(const std::string& line, bool simulated);

  // Turns a line into its type and its call: a new one, which enters AVMCallList, or the one of that id, which a
  // DISCONNECT takes out of it. No call for an unknown id, and none for a line that came before.
  Collected AVM_CollectMessage(const std::string& line);

  void GetMessage(const std::string& line, bool simulated) override { AVM_GetMessage(line, simulated); }

  // The router's lines of the time without a connection are lost, and with them the ends of calls. What was ringing
  // or was dialled counts as ended, so that it stands in the journal; every id may be given to a new call from here on.
  void ConnectionLost() override;

  const clsCollection& AVMCallList() const { return AVMCallList_; }
  // Whether a call is under way, as far as the router has told since the connection stands.
  bool HasOpenCall() const;

 private:
  using Fields = std::vector<std::string>;

  Call Opened(const Fields& fields, LineType type, const std::string& line, const Call& former);
  void MakeRoom(const std::string& line);
  static Call Answered(const Call& call);
  Call Closed(const Call& call, const std::string& seconds);
  Call NewRecord(const Fields& fields, LineType type);
  std::string DialledNumber(const std::string& number) const;
  void Ring(oRouterCall& call, const std::string& line, bool simulated);
  void Forward(oRouterCall& call, bool simulated);
  void Dialled(const oDataCall& call);
  void Connected(oRouterCall& call, bool simulated);
  void Disconnected(oRouterCall& call, bool simulated);
  void EndUnanswered(oRouterCall& call, bool simulated);
  void EndIncoming(const oDataCall& call, std::string_view step, bool simulated);
  void JournalOutgoing(oRouterCall& call);
  void EnterPeriod(const oRouterCall& call);

  Ports ports_;
  clsCollection AVMCallList_;
  bool overflowTold_ = false;  // since the connection stands
};

}  // namespace vorlix
