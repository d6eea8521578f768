#include "core/MainTimers.h"

namespace vorlix {
namespace {

using std::chrono::milliseconds;
using Member = std::unique_ptr<Timer> MainTimers::*;

struct TimerRow {
  Member timer;
  int interval;  // milliseconds
};

constexpr TimerRow kTimers[] = {
    {&MainTimers::tmCAPI, 400},
    {&MainTimers::tmSekMinHourDay, 1000},
    {&MainTimers::tmStartUp, 5000},
    {&MainTimers::tmClock, 1000},
    {&MainTimers::tmHide, 5000},
    {&MainTimers::tmDisplayAutoReset, 5000},
    {&MainTimers::tmSoundRepeat, 1000},
    {&MainTimers::tmFileWatch, 1000},
    {&MainTimers::tmServiceDDE, 1000},
    {&MainTimers::tmServiceStart, 500},
    {&MainTimers::tmServiceStatus, 1000},
    {&MainTimers::tmRunProg, 300},
    {&MainTimers::tmRunProgReversWait, 1000},
    {&MainTimers::tmRunProgReversNachsenden, 1000},
    {&MainTimers::tmMailWaitReverse, 1000},  // set at use
    {&MainTimers::tmExit, 25},
    {&MainTimers::tmModalIsOpen, 500},
    {&MainTimers::tmMultiMon, 50},
    {&MainTimers::tmMouseOver, 50},
    {&MainTimers::tmSendKeys, 50},
    {&MainTimers::tmPos, 10},
    {&MainTimers::tmWaitForKeyUp, 10},
    {&MainTimers::tmGripOver, 200},
};
constexpr milliseconds kExportInterval{100};

}  // namespace

MainTimers::MainTimers(MessageLoop& loop) {
  for (const TimerRow& row : kTimers) {
    this->*row.timer = loop.MakeTimer(milliseconds(row.interval), {});
  }
  for (auto& timer : tmExportStart) {
    timer = loop.MakeTimer(kExportInterval, {});
  }
  tmClock->SetEnabled(true);
}

void MainTimers::AllTimerStart() {
  for (const Member timer :
       {&MainTimers::tmStartUp, &MainTimers::tmGripOver, &MainTimers::tmSekMinHourDay, &MainTimers::tmServiceDDE}) {
    (this->*timer)->SetEnabled(true);
  }
}

void MainTimers::DisableAll() {
  for (const TimerRow& row : kTimers) {
    (this->*row.timer)->SetEnabled(false);
  }
  for (auto& timer : tmExportStart) {
    timer->SetEnabled(false);
  }
}

}  // namespace vorlix
