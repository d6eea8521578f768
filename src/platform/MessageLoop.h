// The program's one loop, as rooms above the platform see it: timers, deferred calls, "let the loop run".
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "services/DateTime.h"

namespace vorlix {

// The time: civil "now", and a steady count for intervals.
class Clock : public CivilClock {
 public:
  virtual std::chrono::milliseconds Steady() const = 0;
};

// A timer of the loop: it ticks every Interval while it is enabled, the first time one interval after it was enabled.
// Setting the interval or enabling it starts the interval anew. Ticks that were missed are not made up for. An interval
// of whole seconds is stretched once, by less than a second, behind its first tick: from then on such timers tick at
// the same moments, so that one wake-up serves them all. Inside its tick a timer may be changed, disabled and
// destroyed. A timer without a tick routine costs no wake-up.
class Timer {
 public:
  virtual ~Timer() = default;  // cancels it
  virtual void SetInterval(std::chrono::milliseconds interval) = 0;
  virtual std::chrono::milliseconds Interval() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;
  // Replaces the tick routine; an empty one makes the timer silent.
  virtual void SetTick(std::function<void()> tick) = 0;
};

class MessageLoop {
 public:
  virtual ~MessageLoop() = default;

  virtual const Clock& GetClock() const = 0;
  // The timer must not outlive the loop. It starts disabled.
  virtual std::unique_ptr<Timer> MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) = 0;
  // Runs `call` once from the loop, after what runs now; calls keep their order.
  virtual void Post(std::function<void()> call) = 0;
  // Lets the message loop run: everything that is due now, without waiting. May be called from inside a tick.
  virtual void RunPending() = 0;
  // The same, but sleeps up to `most` until something is due: for a routine that waits here and looks again.
  virtual void WaitPending(std::chrono::milliseconds most) = 0;
  // Runs until Quit(). A Quit() before Run() counts.
  virtual void Run() = 0;
  virtual void Quit() = 0;
};

}  // namespace vorlix
