// The wishes of the system that this program end, as calls from the loop: SIGTERM, SIGINT, SIGHUP. Besides, as long as
// it lives, a broken pipe or a full file quota is an error of the write and not the end of the program. One exists in a
// process, made before anything is written or sent.
#pragma once

#include <csignal>
#include <functional>
#include <memory>

#include "platform/Reactor.h"
#include "platform/posix/Descriptor.h"

namespace vorlix {

class SignalWatch {
 public:
  // The reactor must outlive it. A signal that our starter had ignored, as for a program in the background, stays so.
  SignalWatch(Reactor& reactor, std::function<void(int signal)> onSignal);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  void OnReadable();

  std::function<void(int)> onSignal_;
  sigset_t formerMask_;
  void (*formerPipe_)(int);
  void (*formerQuota_)(int);
  Descriptor signals_;
  std::unique_ptr<Watch> watch_;
};

}  // namespace vorlix
