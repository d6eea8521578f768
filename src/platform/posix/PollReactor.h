// The loop on poll(): for the terminal program, the companions and the tests of the platform.
#pragma once

#include "platform/Reactor.h"
#include "platform/TimerQueue.h"
#include "platform/posix/SystemClock.h"
#include "platform/posix/WatchList.h"

namespace vorlix {

class PollReactor : public Reactor {
 public:
  const Clock& GetClock() const override { return clock_; }
  std::unique_ptr<Timer> MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
  void Post(std::function<void()> call) override { queue_.Post(std::move(call)); }
  void RunPending() override { WaitPending(std::chrono::milliseconds(0)); }
  void WaitPending(std::chrono::milliseconds most) override;
  void Run() override;
  // One Quit() ends one Run(), the innermost.
  void Quit() override { quit_ = true; }
  std::unique_ptr<Watch> WatchDescriptor(int descriptor, std::function<void(Ready)> ready) override;

 private:
  void Turn(std::optional<std::chrono::milliseconds> wait);

  SystemClock clock_;
  TimerQueue queue_{clock_};
  WatchList watches_;
  bool quit_ = false;
};

}  // namespace vorlix
