#include "platform/posix/CallThread.h"

#include <condition_variable>
#include <csignal>
#include <deque>
#include <mutex>
#include <thread>

namespace vorlix {

struct CallThread::Shared {
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::function<void()>> calls;  // the first one is running
  bool ends = false;
};

CallThread::CallThread() : shared_(std::make_shared<Shared>()) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);  // the new thread takes it over
  std::thread([shared = shared_] { Run(shared); }).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

CallThread::~CallThread() {
  const std::lock_guard lock(shared_->mutex);
  shared_->ends = true;
  shared_->changed.notify_all();
}

void CallThread::Run(const std::shared_ptr<Shared>& shared) {
  std::unique_lock lock(shared->mutex);
  while (true) {
    shared->changed.wait(lock, [&] { return shared->ends || !shared->calls.empty(); });
    if (shared->calls.empty()) return;
    const auto call = shared->calls.front();
    lock.unlock();
    call();
    lock.lock();
    shared->calls.pop_front();
    shared->changed.notify_all();
  }
}

bool CallThread::Start(std::function<void()> call) {
  const std::lock_guard lock(shared_->mutex);
  if (!shared_->calls.empty()) return false;
  shared_->calls.push_back(std::move(call));
  shared_->changed.notify_all();
  return true;
}

bool CallThread::Wait(std::chrono::milliseconds limit) {
  std::unique_lock lock(shared_->mutex);
  return shared_->changed.wait_for(lock, limit, [this] { return shared_->calls.empty(); });
}

void CallThread::Then(std::function<void()> afterwards) {
  const std::lock_guard lock(shared_->mutex);
  shared_->calls.push_back(std::move(afterwards));
  shared_->changed.notify_all();
}

}  // namespace vorlix
