// The loop of the tests: time stands still until Advance() moves it, civil and steady time together, and timers tick at
// their virtual moments. Descriptors are real and asked without waiting, so that the program's sockets run on it too.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <unistd.h>

#include "platform/Reactor.h"
#include "platform/TimerQueue.h"
#include "platform/posix/WatchList.h"

namespace vorlix {

class ManualReactor : public Reactor {
 public:
  class ManualClock : public Clock {
   public:
    DateTime Now() const override {
      return base.AddSeconds(std::chrono::floor<std::chrono::seconds>(steady - baseSteady).count());
    }
    std::chrono::milliseconds Steady() const override { return steady; }

    DateTime base = DateTime::FromCivil(2024, 3, 13, 12, 0, 0);  // a Wednesday
    std::chrono::milliseconds baseSteady{0};
    std::chrono::milliseconds steady{0};
  };

  const Clock& GetClock() const override { return clock_; }
  std::unique_ptr<Timer> MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) override {
    return queue_.MakeTimer(interval, std::move(tick));
  }
  void Post(std::function<void()> call) override { queue_.Post(std::move(call)); }
  std::unique_ptr<Watch> WatchDescriptor(int descriptor, std::function<void(Ready)> ready) override {
    return watches_.Add(descriptor, std::move(ready));
  }

  void RunPending() override {
    queue_.RunPosts();
    Turn();
  }
  // Here the time passes at once.
  void WaitPending(std::chrono::milliseconds most) override { Advance(most); }
  // Runs what is pending, without moving the time, until Quit() or until there is nothing left to do.
  void Run() override {
    bool busy = true;
    while (busy && !quit_)
      busy = Turn() || queue_.HasPosts();
    quit_ = false;
  }
  void Quit() override { quit_ = true; }

  // Lets that much time pass: what is pending runs first, then each timer at its moment. Steady time and the civil one
  // stand at the end of it afterwards.
  void Advance(std::chrono::milliseconds duration) {
    const auto end = clock_.steady + duration;
    RunPending();
    for (auto due = queue_.NextDue(); due && *due <= end; due = queue_.NextDue()) {
      clock_.steady = std::max(clock_.steady, *due);
      RunPending();
    }
    clock_.steady = std::max(clock_.steady, end);
    RunPending();
  }
  // Runs what is pending until something holds, in real time: for sockets and processes. The long limit is for a
  // machine that does other things too.
  bool RunUntil(const std::function<bool()>& holds) {
    for (int i = 0; i < 20'000; ++i) {
      if (holds()) return true;
      RunPending();
      usleep(1000);
    }
    return false;
  }
  // Sets the civil clock, as a user would; timers do not notice.
  void SetNow(const DateTime& now) {
    clock_.base = now;
    clock_.baseSteady = clock_.steady;
  }
  // Milliseconds until the next timer ticks; nothing when none will.
  std::optional<std::chrono::milliseconds> UntilNextTick() const {
    const auto due = queue_.NextDue();
    return due ? std::optional(*due - clock_.steady) : std::nullopt;
  }

 private:
  bool Turn() {
    const auto due = queue_.NextDue();
    const bool ticks = due && *due <= clock_.steady;
    const bool ready = watches_.Poll(std::chrono::milliseconds(0));
    queue_.RunDue();
    queue_.RunPosts();
    return ready || ticks;
  }

  ManualClock clock_;
  TimerQueue queue_{clock_};
  WatchList watches_;
  bool quit_ = false;
};

}  // namespace vorlix
