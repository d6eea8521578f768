// The main program's side of the helper link: one clsProcMessage for each source that is on, and the way of each
// message to the source it belongs to.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "core/CallPipeline.h"
#include "lines/clsProcMessage.h"

namespace vorlix {

// A source behind a helper program.
class SocketSource {
 public:
  virtual ~SocketSource() = default;
  virtual void GetMessage(const std::string& line, bool simulated) = 0;
  // The connection is gone: ends of calls may have been missed.
  virtual void ConnectionLost() {}
};

class modProcMessage : public MessageLink::Receiver {
 public:
  struct Ports {
    MessageLink& link;  // open, with this object as its receiver
    Processes& processes;
    const FileStore& files;
    CallEvents& events;
    PipelineState& state;
  };

  // programFolder is where the helper programs lie. All ports must outlive the object.
  modProcMessage(Ports ports, std::string programFolder) : ports_(ports), programFolder_(std::move(programFolder)) {}

  // Binds the routine that takes a source's lines; it must outlive this object.
  void Bind(int source, SocketSource& receiver) { receivers_[source] = &receiver; }

  // What is done when the program is started once more.
  void OnSecondStart(std::function<void()> comeForward) { comeForward_ = std::move(comeForward); }

  // Starts the helper of a source; false when its file is missing. One that does not come up counts as lost later.
  bool Socket_Proc_Init(int source);
  // Tells every helper to end and hears none of them any more.
  void Socket_Proc_Terminate();
  // Whether the connection of that source stands.
  bool IsUp(int source) const;
  // Whether its helper was wanted and is missing.
  bool IsMissing(int source) const { return missing_.contains(source); }
  // The watchdog, once a second.
  void TimerTick();

  void OnMessage(MessageLink::Peer peer, std::uint32_t word, const std::string& text) override;
  void OnPeerGone(MessageLink::Peer peer) override;

 private:
  void Socket_Proc_Forwarder(clsProcMessage& link, HelperCommand command, const std::string& text);
  void Connected(clsProcMessage& link);
  void Lost(clsProcMessage& link);

  Ports ports_;
  std::string programFolder_;
  std::map<int, std::unique_ptr<clsProcMessage>> links_;
  std::map<int, SocketSource*> receivers_;
  std::set<int> missing_;
  std::function<void()> comeForward_;
};

}  // namespace vorlix
