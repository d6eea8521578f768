// The watched descriptors of a loop that waits with poll(). A callback that is running is not started again by a loop
// that it runs itself.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

#include "platform/Reactor.h"

namespace vorlix {

class WatchList {
 public:
  WatchList();
  ~WatchList();
  WatchList(const WatchList&) = delete;
  WatchList& operator=(const WatchList&) = delete;

  // The watch must not outlive the list.
  std::unique_ptr<Watch> Add(int descriptor, std::function<void(Reactor::Ready)> ready);
  // Waits until a descriptor is ready or the time is over (without one: for ever) and calls back for each that is
  // ready. False when none was.
  bool Poll(std::optional<std::chrono::milliseconds> wait);

 private:
  struct Entry;
  class ListedWatch;
  struct Round;

  void FillRound(Round& round) const;
  static void Serve(Entry& entry, short events);

  std::vector<std::shared_ptr<Entry>> entries_;
  std::vector<std::unique_ptr<Round>> spareRounds_;  // memory for the next Poll(); a nested one takes another
};

}  // namespace vorlix
