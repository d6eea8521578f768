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

// Holds those signals back, in this thread and in all that begin while it lives: made before the first of these, for a
// signal that one of them takes ends the process on the spot. A signal that our starter had ignored, as for a program
// in the background, stays so.
class SignalBlock {
 public:
  SignalBlock();
  ~SignalBlock() { Lift(); }
  SignalBlock(const SignalBlock&) = delete;
  SignalBlock& operator=(const SignalBlock&) = delete;

  const sigset_t& Signals() const { return signals_; }
  // In this thread; more than once does no harm.
  void Lift() const;

 private:
  sigset_t signals_;
  sigset_t formerMask_;
};

class SignalWatch {
 public:
  // Both must outlive it. The block is lifted at its end: then a signal ends the process as any other.
  SignalWatch(Reactor& reactor, const SignalBlock& block, std::function<void(int signal)> onSignal);
  ~SignalWatch();
  SignalWatch(const SignalWatch&) = delete;
  SignalWatch& operator=(const SignalWatch&) = delete;

 private:
  void OnReadable();

  const SignalBlock& block_;
  std::function<void(int)> onSignal_;
  void (*formerPipe_)(int);
  void (*formerQuota_)(int);
  Descriptor signals_;
  std::unique_ptr<Watch> watch_;
};

}  // namespace vorlix
