// A clock that stands where the test puts it.
#pragma once

#include "services/DateTime.h"

namespace vorlix {

class FakeClock : public CivilClock {
 public:
  DateTime Now() const override { return now_; }
  void SetNow(const DateTime& now) { now_ = now; }

 private:
  DateTime now_ = DateTime::FromCivil(2024, 3, 13, 12, 0, 0);  // a Wednesday
};

}  // namespace vorlix
