// When the bar hides and when it comes back, and when a call that is over leaves it. Takes the ticks of tmHide and
// tmDisplayAutoReset.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "core/MainTimers.h"
#include "core/call_watch.h"
#include "data/Settings.h"
#include "screens/GameDetection.h"
#include "screens/MainDisplayView.h"
#include "screens/ShownCalls.h"

namespace vorlix {

class HideRules : public CallWatch {
 public:
  struct Ports {
    MainDisplayView& view;
    TrayView& tray;
    const Settings& settings;
    const ShownCalls& calls;
    const GameDetection& games;
    MainTimers& timers;
    CallerWindows& windows;              // they go where the bar goes
    std::function<bool()> isCallShown;   // line 0 shows a call, not an idle text
    std::function<void()> displayReset;  // the way back to idle, by itself
  };

  // All ports must outlive the object.
  explicit HideRules(Ports ports);

  // Works out where the bar is to be: out while a call is in progress; otherwise its hiding is begun.
  void DisplayResize();
  // The mouse came onto the bar, its strip or the tray icon; the bar comes out.
  void MouseEntered();
  // The mouse left the bar: it hides after its time.
  void MouseLeft();
  // By command: brings the bar out, or hides it as the settings say.
  void Toggle();

  // A hidden bar goes to where it can be brought back from.
  void TrayChanged();

  BarPlace Place() const { return place_; }

  // A call that was hidden had stopped hiding and the way back to idle as every call does.
  void OnDialled(const oDataCall&) override {}
  void OnAnswered(const oDataCall&) override {}
  void OnEnded(const oDataCall&) override { GoOn(); }
  void OnOver(std::int32_t) override { GoOn(); }

 private:
  bool HasActiveCalls() const { return !ports_.calls.IsEmpty(); }
  bool PopsUp() const;
  void GoOn();
  void NoteCalls();
  void GoBackToIdle();
  BarPlace HiddenPlace() const;
  void HideTick();
  void AutoResetTick();
  void StartHiding();
  void StartAutoReset();
  void MoveTo(BarPlace place);

  Ports ports_;
  std::vector<std::pair<std::int32_t, DateTime>> calls_;  // that were shown last: id and time
  BarPlace place_ = BarPlace::kShown;
};

}  // namespace vorlix
