#include "platform/TimerQueue.h"

#include <algorithm>

#include "platform/RunCallback.h"

namespace vorlix {
namespace {

constexpr int kMostPostsInOneTurn = 1000;
constexpr TimerQueue::Milliseconds kBeat = std::chrono::seconds(1);

// Due moments that repeat each second or less often share the wake-ups of one beat, whenever their timers began. It is
// that of the steady clock, and so the same in all programs of this machine.
TimerQueue::Milliseconds OnTheBeat(TimerQueue::Milliseconds due, TimerQueue::Milliseconds interval) {
  return interval % kBeat == TimerQueue::Milliseconds(0) ? std::chrono::ceil<std::chrono::seconds>(due) : due;
}

}  // namespace

class TimerQueue::QueueTimer : public Timer {
 public:
  QueueTimer(TimerQueue& queue, std::shared_ptr<Entry> entry) : queue_(queue), entry_(std::move(entry)) {
    queue_.entries_.push_back(entry_);
  }
  ~QueueTimer() override {
    entry_->enabled = false;
    std::erase(queue_.entries_, entry_);
  }
  QueueTimer(const QueueTimer&) = delete;
  QueueTimer& operator=(const QueueTimer&) = delete;

  void SetInterval(std::chrono::milliseconds interval) override {
    entry_->interval = interval;
    queue_.Restart(*entry_);
  }
  std::chrono::milliseconds Interval() const override { return entry_->interval; }
  void SetEnabled(bool enabled) override {
    entry_->enabled = enabled;
    queue_.Restart(*entry_);
  }
  bool Enabled() const override { return entry_->enabled; }
  void SetTick(std::function<void()> tick) override {
    entry_->tick = tick ? std::make_shared<const std::function<void()>>(std::move(tick)) : nullptr;
  }

 private:
  TimerQueue& queue_;
  std::shared_ptr<Entry> entry_;
};

std::unique_ptr<Timer> TimerQueue::MakeTimer(Milliseconds interval, std::function<void()> tick) {
  auto entry = std::make_shared<Entry>();
  entry->interval = interval;
  auto timer = std::make_unique<QueueTimer>(*this, std::move(entry));
  timer->SetTick(std::move(tick));
  return timer;
}

void TimerQueue::Restart(Entry& entry) {
  entry.due = clock_.Steady() + entry.interval;
  entry.order = ++lastOrder_;
}

std::optional<TimerQueue::Milliseconds> TimerQueue::NextDue() const {
  std::optional<Milliseconds> next;
  for (const auto& entry : entries_) {
    if (entry->Ticks() && (!next || entry->due < *next)) next = entry->due;
  }
  return next;
}

std::optional<TimerQueue::Milliseconds> TimerQueue::NextWake() const {
  const auto next = NextDue();
  if (!next) return next;
  Milliseconds wake = *next;
  for (const auto& entry : entries_) {
    if (entry->Ticks() && entry->due <= *next + kTogether) wake = std::max(wake, entry->due);
  }
  return wake;
}

std::optional<TimerQueue::Milliseconds> TimerQueue::MaySleep() const {
  if (HasPosts()) return Milliseconds(0);
  const auto wake = NextWake();
  if (!wake) return wake;
  return std::max(Milliseconds(0), *wake - clock_.Steady());
}

void TimerQueue::RunPosts() {
  for (int i = 0; i < kMostPostsInOneTurn && !posts_.empty(); ++i) {
    const auto call = std::move(posts_.front());
    posts_.pop_front();
    RunCallback("TimerQueue_Post", call);
  }
}

std::shared_ptr<TimerQueue::Entry> TimerQueue::NextEntry(Milliseconds now) const {
  std::shared_ptr<Entry> next;
  for (const auto& entry : entries_) {
    if (!entry->Ticks() || entry->due > now) continue;
    if (!next || std::pair(entry->due, entry->order) < std::pair(next->due, next->order)) next = entry;
  }
  return next;
}

void TimerQueue::RunDue() {
  const Milliseconds now = clock_.Steady();
  while (const auto entry = NextEntry(now))
    Tick(entry, now);
}

void TimerQueue::Tick(const std::shared_ptr<Entry>& entry, Milliseconds now) {
  // The beat is kept, so that a tick each second does not drift; beats that lie in the past are left out.
  const Milliseconds next = entry->due + entry->interval * ((now - entry->due) / entry->interval + 1);
  entry->due = OnTheBeat(next, entry->interval);
  entry->running = true;
  const auto tick = entry->tick;
  RunCallback("TimerQueue_Tick", *tick);
  entry->running = false;
}

}  // namespace vorlix
