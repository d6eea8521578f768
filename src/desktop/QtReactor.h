// The program's loop on the toolkit's: timers, deferred calls and descriptors run wherever the toolkit's loop runs,
// also in that of an open dialog or menu. One timer and one notifier of the toolkit stand for all of the program's, set
// anew before the loop goes to sleep; an idle program is not woken by them.
#pragma once

#include <QEventLoop>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <optional>

#include "desktop/EpollWatches.h"
#include "platform/Reactor.h"
#include "platform/TimerQueue.h"

namespace vorlix {

class QtReactor : public Reactor {
 public:
  // Needs the application object; the clock must outlive the loop.
  explicit QtReactor(const Clock& clock);

  const Clock& GetClock() const override { return clock_; }
  std::unique_ptr<Timer> MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) override;
  void Post(std::function<void()> call) override { queue_.Post(std::move(call)); }
  void RunPending() override;
  void WaitPending(std::chrono::milliseconds most) override;
  void Run() override;
  // One Quit() ends one Run(), the innermost.
  void Quit() override;
  std::unique_ptr<Watch> WatchDescriptor(int descriptor, std::function<void(Ready)> ready) override;

 private:
  void Prepare();
  void RunQueue();

  const Clock& clock_;
  TimerQueue queue_{clock_};
  EpollWatches watches_;
  QTimer wake_;
  QSocketNotifier notifier_{watches_.Descriptor(), QSocketNotifier::Read};
  std::optional<std::chrono::milliseconds> wakeAt_;  // what the toolkit's timer is set to
  QEventLoop* innermost_ = nullptr;
  bool quit_ = false;
};

}  // namespace vorlix
