#include "platform/posix/WatchList.h"

#include <algorithm>
#include <climits>
#include <poll.h>

#include "platform/RunCallback.h"

namespace vorlix {

struct WatchList::Entry {
  int descriptor;
  std::function<void(Reactor::Ready)> ready;
  bool wantRead = true;
  bool wantWrite = false;
  bool running = false;
  bool stopped = false;
};

class WatchList::ListedWatch : public Watch {
 public:
  ListedWatch(WatchList& list, std::shared_ptr<Entry> entry) : list_(list), entry_(std::move(entry)) {
    list_.entries_.push_back(entry_);
  }
  ~ListedWatch() override {
    entry_->stopped = true;
    std::erase(list_.entries_, entry_);
  }
  ListedWatch(const ListedWatch&) = delete;
  ListedWatch& operator=(const ListedWatch&) = delete;

  void WantRead(bool on) override { entry_->wantRead = on; }
  void WantWrite(bool on) override { entry_->wantWrite = on; }

 private:
  WatchList& list_;
  std::shared_ptr<Entry> entry_;
};

struct WatchList::Round {
  std::vector<pollfd> descriptors;
  std::vector<std::shared_ptr<Entry>> entries;  // keeps those alive that go during the round
};

WatchList::WatchList() = default;
WatchList::~WatchList() = default;

std::unique_ptr<Watch> WatchList::Add(int descriptor, std::function<void(Reactor::Ready)> ready) {
  auto entry = std::make_shared<Entry>();
  entry->descriptor = descriptor;
  entry->ready = std::move(ready);
  return std::make_unique<ListedWatch>(*this, std::move(entry));
}

void WatchList::FillRound(Round& round) const {
  for (const auto& entry : entries_) {
    const int events = (entry->wantRead ? POLLIN : 0) | (entry->wantWrite ? POLLOUT : 0);
    // Without a wish a hang-up would be reported again and again to nobody.
    if (events == 0 || entry->running) continue;
    round.descriptors.push_back({entry->descriptor, static_cast<short>(events), 0});
    round.entries.push_back(entry);
  }
}

bool WatchList::Poll(std::optional<std::chrono::milliseconds> wait) {
  std::unique_ptr<Round> round;
  if (spareRounds_.empty()) {
    round = std::make_unique<Round>();
  } else {
    round = std::move(spareRounds_.back());
    spareRounds_.pop_back();
  }
  FillRound(*round);
  const int timeout = wait ? static_cast<int>(std::clamp<std::int64_t>(wait->count(), 0, INT_MAX)) : -1;
  const bool any = poll(round->descriptors.data(), round->descriptors.size(), timeout) > 0;
  for (std::size_t i = 0; any && i < round->entries.size(); ++i) {
    if (round->descriptors[i].revents != 0) Serve(*round->entries[i], round->descriptors[i].revents);
  }
  round->descriptors.clear();
  round->entries.clear();
  spareRounds_.push_back(std::move(round));
  return any;
}

void WatchList::Serve(Entry& entry, short events) {
  const bool broken = (events & (POLLERR | POLLHUP | POLLNVAL)) != 0;
  const Reactor::Ready ready{entry.wantRead && (broken || (events & POLLIN) != 0),
                             entry.wantWrite && (broken || (events & POLLOUT) != 0)};
  // An earlier callback of this round may have stopped the watch, or may be the one that runs this round.
  if (entry.stopped || entry.running || (!ready.read && !ready.write)) return;
  entry.running = true;
  RunCallback("WatchList_Ready", [&] { entry.ready(ready); });
  entry.running = false;
}

}  // namespace vorlix
