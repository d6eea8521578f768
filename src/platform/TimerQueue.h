// The part of a loop that knows no descriptors: timers and deferred calls. A loop owns one, asks it how long it may
// sleep, and lets it run what is due; the time comes from the clock given, so that it may be a virtual one. A routine
// that throws costs a line in the error log and nothing else.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/MessageLoop.h"

namespace vorlix {

class TimerQueue {
 public:
  using Milliseconds = std::chrono::milliseconds;

  // Timers that become due no further apart than this are served by one wake-up.
  static constexpr Milliseconds kTogether{5};

  // The clock must outlive the queue, the queue its timers.
  explicit TimerQueue(const Clock& clock) : clock_(clock) {}
  TimerQueue(const TimerQueue&) = delete;
  TimerQueue& operator=(const TimerQueue&) = delete;

  // A timer whose interval is not above 0 never ticks.
  std::unique_ptr<Timer> MakeTimer(Milliseconds interval, std::function<void()> tick);
  void Post(std::function<void()> call) { posts_.push_back(std::move(call)); }

  bool HasPosts() const { return !posts_.empty(); }
  // The steady moment of the next tick; nothing when no timer will tick. A timer inside its tick does not count.
  std::optional<Milliseconds> NextDue() const;
  // The moment to wake up at: as NextDue(), but late enough to serve those that follow closely.
  std::optional<Milliseconds> NextWake() const;
  // How long the loop may sleep from now: 0 when something is to be done, nothing when there is no end to it.
  std::optional<Milliseconds> MaySleep() const;

  // Runs the deferred calls, those included that they post, up to a number that lets timers and descriptors have their
  // turn.
  void RunPosts();
  // Ticks what is due, in the order of the due moments. A timer does not tick inside its own tick.
  void RunDue();

 private:
  class QueueTimer;
  struct Entry {
    std::shared_ptr<const std::function<void()>> tick;  // a tick may replace itself while it runs
    Milliseconds interval{0};
    Milliseconds due{0};
    std::uint64_t order = 0;  // timers that are due at the same moment tick in the order of their start
    bool enabled = false;
    bool running = false;
    bool Ticks() const { return enabled && !running && tick != nullptr && interval.count() > 0; }
  };

  void Restart(Entry& entry);
  std::shared_ptr<Entry> NextEntry(Milliseconds now) const;
  void Tick(const std::shared_ptr<Entry>& entry, Milliseconds now);

  const Clock& clock_;
  std::vector<std::shared_ptr<Entry>> entries_;
  std::deque<std::function<void()>> posts_;
  std::uint64_t lastOrder_ = 0;
};

}  // namespace vorlix
