// The machine's time: civil time in the user's time zone, and a steady count that no setting of the clock disturbs.
#pragma once

#include "platform/MessageLoop.h"

namespace vorlix {

class SystemClock : public Clock {
 public:
  DateTime Now() const override;
  std::chrono::milliseconds Steady() const override;
};

}  // namespace vorlix
