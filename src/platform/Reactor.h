// The loop with file descriptors: what sockets, the local link and child processes are written against. Rooms above the
// platform see only its MessageLoop side.
#pragma once

#include <functional>
#include <memory>

#include "platform/MessageLoop.h"

namespace vorlix {

// Calls back while the descriptor is ready (level-triggered: again on each turn until that is dealt with). An error or
// hang-up counts as ready for whatever was asked. Inside the callback the watch may be changed and destroyed.
class Watch {
 public:
  virtual ~Watch() = default;  // stops it; the descriptor stays open, it belongs to whoever opened it
  virtual void WantRead(bool on) = 0;
  virtual void WantWrite(bool on) = 0;
};

class Reactor : public MessageLoop {
 public:
  struct Ready {
    bool read = false;
    bool write = false;
  };
  // Starts with reading wanted.
  virtual std::unique_ptr<Watch> WatchDescriptor(int descriptor, std::function<void(Ready)> ready) = 0;
};

}  // namespace vorlix
