#include "desktop/EpollWatches.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/epoll.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/RunCallback.h"

namespace vorlix {

class EpollWatches::Entry {
 public:
  Entry(int set, int descriptor, std::uint64_t key, std::function<void(Reactor::Ready)> ready)
      : set_(set), descriptor_(descriptor), key_(key), ready_(std::move(ready)) {
    Apply();
  }
  ~Entry() {
    if (copy_ >= 0) close(copy_);
  }
  Entry(const Entry&) = delete;
  Entry& operator=(const Entry&) = delete;

  void Want(std::uint32_t event, bool on) {
    wanted_ = on ? wanted_ | event : wanted_ & ~event;
    Apply();
  }
  void Stop() {
    wanted_ = 0;
    Apply();
  }
  bool IsAlwaysReady() const { return isPlainFile_ && !isRunning_ && wanted_ != 0; }

  void Serve(std::uint32_t events) {
    if (isRunning_) return Suspend(true);
    const bool broken = (events & (EPOLLERR | EPOLLHUP)) != 0;
    const auto is = [&](std::uint32_t event) { return (wanted_ & event) != 0 && (broken || (events & event) != 0); };
    const Reactor::Ready ready{is(EPOLLIN), is(EPOLLOUT)};
    // An earlier callback of this round may have changed what is wanted.
    if (!ready.read && !ready.write) return;
    isRunning_ = true;
    RunCallback("EpollWatches_Ready", [&] { ready_(ready); });
    isRunning_ = false;
    Suspend(false);
  }

 private:
  // A loop inside the callback would be woken for nothing, again and again.
  void Suspend(bool on) {
    if (std::exchange(isSuspended_, on) != on) Apply();
  }

  // Without a wish it leaves the set: a hang-up would be reported all the same.
  void Apply() {
    const std::uint32_t events = isSuspended_ ? 0 : wanted_;
    if (isPlainFile_ || events == applied_) return;
    epoll_event event{};
    event.events = events;
    event.data.u64 = key_;
    const int change = events == 0 ? EPOLL_CTL_DEL : applied_ == 0 ? EPOLL_CTL_ADD : EPOLL_CTL_MOD;
    applied_ = events;
    if (epoll_ctl(set_, change, Descriptor(), &event) == 0 || change != EPOLL_CTL_ADD) return;
    if (errno == EPERM) isPlainFile_ = true;
    // Watched twice: the set tells them apart by another number of the same file.
    if (errno == EEXIST && copy_ < 0) {
      copy_ = fcntl(descriptor_, F_DUPFD_CLOEXEC, 0);
      epoll_ctl(set_, EPOLL_CTL_ADD, Descriptor(), &event);
    }
  }
  int Descriptor() const { return copy_ >= 0 ? copy_ : descriptor_; }

  int set_, descriptor_, copy_ = -1;
  std::uint64_t key_;
  std::function<void(Reactor::Ready)> ready_;
  std::uint32_t wanted_ = EPOLLIN;
  std::uint32_t applied_ = 0;
  bool isRunning_ = false, isSuspended_ = false, isPlainFile_ = false;
};

class EpollWatches::EpollWatch : public Watch {
 public:
  EpollWatch(EpollWatches& watches, std::uint64_t key, std::shared_ptr<Entry> entry)
      : watches_(watches), key_(key), entry_(std::move(entry)) {
    watches_.entries_.emplace(key_, entry_);
  }
  ~EpollWatch() override {
    entry_->Stop();
    watches_.entries_.erase(key_);
  }
  EpollWatch(const EpollWatch&) = delete;
  EpollWatch& operator=(const EpollWatch&) = delete;

  void WantRead(bool on) override { entry_->Want(EPOLLIN, on); }
  void WantWrite(bool on) override { entry_->Want(EPOLLOUT, on); }

 private:
  EpollWatches& watches_;
  std::uint64_t key_;
  std::shared_ptr<Entry> entry_;
};

EpollWatches::EpollWatches() : set_(epoll_create1(EPOLL_CLOEXEC)) {
  if (set_ < 0) throw Fault(errno, "epoll_create1 failed");
}

EpollWatches::~EpollWatches() {
  close(set_);
}

std::unique_ptr<Watch> EpollWatches::Add(int descriptor, std::function<void(Reactor::Ready)> ready) {
  const std::uint64_t key = ++lastKey_;
  return std::make_unique<EpollWatch>(*this, key, std::make_shared<Entry>(set_, descriptor, key, std::move(ready)));
}

bool EpollWatches::HasAlwaysReady() const {
  for (const auto& [key, entry] : entries_) {
    if (entry->IsAlwaysReady()) return true;
  }
  return false;
}

void EpollWatches::Serve() {
  std::array<epoll_event, 32> events;
  const int count = epoll_wait(set_, events.data(), static_cast<int>(events.size()), 0);
  for (int i = 0; i < count; ++i)
    ServeOne(events[static_cast<std::size_t>(i)].data.u64, events[static_cast<std::size_t>(i)].events);
  std::vector<std::uint64_t> plain;
  for (const auto& [key, entry] : entries_) {
    if (entry->IsAlwaysReady()) plain.push_back(key);
  }
  for (const std::uint64_t key : plain)
    ServeOne(key, EPOLLIN | EPOLLOUT);
}

// The copy keeps an entry that goes in its own callback; one that went in an earlier one is not there any more.
void EpollWatches::ServeOne(std::uint64_t key, std::uint32_t events) {
  const auto found = entries_.find(key);
  if (found == entries_.end()) return;
  const std::shared_ptr<Entry> entry = found->second;
  entry->Serve(events);
}

}  // namespace vorlix
