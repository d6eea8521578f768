// A thread for calls into a library that may not come back for a long time: one call at a time, and whoever asked waits
// only as long as it wants to. All signals are blocked in the thread, so that a write to a dead connection fails
// instead of ending the program. A call must own or share everything it touches: it may outlive this object.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace vorlix {

class CallThread {
 public:
  CallThread();
  // Waits for nothing: a call that has not come back is left to itself.
  ~CallThread();
  CallThread(const CallThread&) = delete;
  CallThread& operator=(const CallThread&) = delete;

  // False while an earlier call is on its way; then nothing happens.
  bool Start(std::function<void()> call);
  // True when no call is on its way any more.
  bool Wait(std::chrono::milliseconds limit);
  // Runs `afterwards` in the thread once the call has come back, with no other call in between.
  void Then(std::function<void()> afterwards);

 private:
  struct Shared;
  static void Run(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;
};

}  // namespace vorlix
