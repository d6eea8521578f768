// A listening socket on the loop. When the system has no descriptor left for a new connection, the socket rests for a
// second: it stays ready all the time, and the loop would turn without a pause.
#pragma once

#include <functional>
#include <memory>

#include "platform/Reactor.h"
#include "platform/posix/Descriptor.h"

namespace vorlix {

class Acceptor {
 public:
  // `accepted` gets each new connection, which does not block; it may stop the object but not destroy it. The reactor
  // must outlive the object.
  Acceptor(Reactor& reactor, std::function<void(Descriptor)> accepted);

  // Takes a socket that listens and does not block, in place of the former one.
  void Start(Descriptor listening);
  void Stop();
  bool IsListening() const { return static_cast<bool>(socket_); }

  // For who polls outside the loop: what to ask for reading (-1 while there is nothing to ask), and what to do then.
  int Polled() const { return resting_->Enabled() ? -1 : socket_.Get(); }
  void Accept();

 private:
  void Rest(bool on);

  Reactor& reactor_;
  std::function<void(Descriptor)> accepted_;
  Descriptor socket_;
  std::unique_ptr<Watch> watch_;
  std::unique_ptr<Timer> resting_;
};

}  // namespace vorlix
