// The loss of the display: when its X server or Wayland compositor has gone, as at many a logout, the toolkit ends the
// process by itself, without unwinding. The line that it logs just before is the only sign of it.
#pragma once

#include <functional>

namespace vorlix {

class DisplayLoss {
 public:
  // One at a time. `lost` runs at most once, in the program's thread; the process ends when it returns, or after three
  // seconds, so it can neither use the loop nor the screen.
  explicit DisplayLoss(std::function<void()> lost);
  ~DisplayLoss();
  DisplayLoss(const DisplayLoss&) = delete;
  DisplayLoss& operator=(const DisplayLoss&) = delete;
};

}  // namespace vorlix
