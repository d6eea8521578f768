#include "platform/posix/PollReactor.h"

#include <algorithm>

namespace vorlix {

std::unique_ptr<Timer> PollReactor::MakeTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
  return queue_.MakeTimer(interval, std::move(tick));
}

std::unique_ptr<Watch> PollReactor::WatchDescriptor(int descriptor, std::function<void(Ready)> ready) {
  return watches_.Add(descriptor, std::move(ready));
}

void PollReactor::Turn(std::optional<std::chrono::milliseconds> wait) {
  watches_.Poll(wait);
  queue_.RunDue();
  queue_.RunPosts();
}

void PollReactor::WaitPending(std::chrono::milliseconds most) {
  queue_.RunPosts();
  Turn(std::min(queue_.MaySleep().value_or(most), most));
}

void PollReactor::Run() {
  while (!quit_)
    Turn(queue_.MaySleep());
  quit_ = false;
}

}  // namespace vorlix
