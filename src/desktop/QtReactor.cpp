#include "desktop/QtReactor.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QWidget>
#include <utility>

namespace vorlix {
namespace {

void CloseAll(QWidget* (*next)()) {
  for (QWidget* widget = next(); widget != nullptr && widget->close() && widget != next(); widget = next()) {
  }
}

}  // namespace

QtReactor::QtReactor(const Clock& clock) : clock_(clock) {
  wake_.setSingleShot(true);
  wake_.setTimerType(Qt::PreciseTimer);
  QObject::connect(&wake_, &QTimer::timeout, &wake_, [this] {
    wakeAt_.reset();
    if (watches_.HasAlwaysReady()) watches_.Serve();
    RunQueue();
  });
  QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] {
    watches_.Serve();
    RunQueue();
  });
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &wake_,
                   [this] { Prepare(); });
}

std::unique_ptr<Timer> QtReactor::MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
  return queue_.MakeTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> QtReactor::WatchDescriptor(int descriptor, std::function<void(Ready)> ready) {
  return watches_.Add(descriptor, std::move(ready));
}

// Whoever lets a loop sleep, ours or that of a menu, is woken in time.
void QtReactor::Prepare() {
  notifier_.setEnabled(true);
  const auto now = clock_.Steady();
  const auto sleep = watches_.HasAlwaysReady() ? std::chrono::milliseconds(0) : queue_.MaySleep();
  const auto wakeAt = sleep ? std::optional(now + *sleep) : std::nullopt;
  if (wakeAt == wakeAt_) return;
  wakeAt_ = wakeAt;
  if (sleep) {
    wake_.start(*sleep);
  } else {
    wake_.stop();
  }
}

void QtReactor::RunQueue() {
  queue_.RunDue();
  queue_.RunPosts();
}

// The windows' events first, without our notifier: each watch has its turn once.
void QtReactor::RunPending() {
  queue_.RunPosts();
  notifier_.setEnabled(false);
  QCoreApplication::processEvents();
  notifier_.setEnabled(true);
  watches_.Serve();
  RunQueue();
}

void QtReactor::WaitPending(std::chrono::milliseconds most) {
  queue_.RunPosts();
  if (most.count() > 0) {
    QTimer end;
    end.setSingleShot(true);
    end.start(most);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  RunPending();
}

void QtReactor::Run() {
  if (std::exchange(quit_, false)) return;
  QEventLoop loop;
  QEventLoop* const outer = std::exchange(innermost_, &loop);
  loop.exec();
  innermost_ = outer;
  quit_ = false;
}

// A dialog or menu that is open runs a loop of its own inside ours.
void QtReactor::Quit() {
  quit_ = true;
  CloseAll(QApplication::activePopupWidget);
  CloseAll(QApplication::activeModalWidget);
  if (innermost_ != nullptr) innermost_->quit();
}

}  // namespace vorlix
