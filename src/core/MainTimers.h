// The timers of the main form, by name. Each starts with the interval of its table row; what a tick does is given by
// whoever owns the job. A timer without a job costs no wake-up even while it is enabled.
#pragma once

#include <array>
#include <memory>

#include "platform/MessageLoop.h"

namespace vorlix {

class MainTimers {
 public:
  explicit MainTimers(MessageLoop& loop);

  std::unique_ptr<Timer> tmCAPI, tmSekMinHourDay, tmStartUp, tmClock, tmHide, tmDisplayAutoReset, tmSoundRepeat,
      tmFileWatch, tmServiceDDE, tmServiceStart, tmServiceStatus, tmRunProg, tmRunProgReversWait,
      tmRunProgReversNachsenden, tmMailWaitReverse, tmExit, tmModalIsOpen, tmMultiMon, tmMouseOver, tmSendKeys, tmPos,
      tmWaitForKeyUp, tmGripOver;
  // Elements 1 to 3; element 0 is not used.
  std::array<std::unique_ptr<Timer>, 4> tmExportStart;

  // Enables tmStartUp, tmGripOver, tmSekMinHourDay and tmServiceDDE.
  void AllTimerStart();
  void DisableAll();
};

}  // namespace vorlix
