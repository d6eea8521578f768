// An NCID server: one text line for each call, fields separated by "*", keys and values in turn. There is no line for
// the end of a call: a timer makes one, fifteen seconds after the first ring.
//
//   CID: *DATE*11022010*TIME*1941*LINE*10069*NMBR*0301234567*MESG*NONE*NAME*NO NAME*
#pragma once

#include <memory>
#include <string>

#include "core/call_events.h"
#include "core/call_watch.h"
#include "core/pipeline_ports.h"
#include "lines/line_options.h"
#include "lines/modProcMessage.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

class NCID_monitor : public SocketSource {
 public:
  struct Ports {
    const CivilClock& clock;
    LogStore& logs;
    const LineSwitches& switches;
    CallEvents& events;
    NumberAnalysis& numbers;
    OwnNumbers& ownNumbers;
    PrefixInput& prefixInput;
    SimulationWindow& simulation;
    CallWatch& watch;
  };

  static constexpr int kSecondsOfACall = 15;

  // All ports must outlive the object.
  explicit NCID_monitor(Ports ports) : ports_(ports) {}

  // Works off one line. One without a "*" ends the current call, and so does an empty one.
  void NCID_GetMessage(const std::string& line, bool simulated);

  // The new call of a line; nothing for a line that ends one.
  std::shared_ptr<oDataCall> NCID_CollectMessage(const std::string& line);

  void GetMessage(const std::string& line, bool simulated) override { NCID_GetMessage(line, simulated); }

  // What rings counts as ended, so that it stands in the journal also when the program closes meanwhile.
  void ConnectionLost() override;

  // Once a second: ends the call in time.
  void TimerTick();

 private:
  void Ring(oDataCall& call, const std::string& line, bool simulated);
  void Disconnected(bool simulated);
  void EndRinging();

  Ports ports_;
  bool RingActive_ = false;
  int RingSeconds_ = 0;
};

}  // namespace vorlix
