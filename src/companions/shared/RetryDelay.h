// How long to wait before the next attempt: a second at first, doubled each time, a minute at most.
#pragma once

#include <algorithm>
#include <chrono>
#include <utility>

namespace vorlix {

class RetryDelay {
 public:
  static constexpr std::chrono::seconds kFirst{1};
  static constexpr std::chrono::seconds kMost{60};

  std::chrono::seconds Next() { return std::exchange(next_, std::min(next_ * 2, kMost)); }
  void Reset() { next_ = kFirst; }

 private:
  std::chrono::seconds next_ = kFirst;
};

}  // namespace vorlix
