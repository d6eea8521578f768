// When the bar hides and when it comes back, and when a call that is over leaves it. Takes the ticks of tmHide and
// tmDisplayAutoReset.
#pragma once

#include <functional>

#include "core/CallPipeline.h"
#include "core/MainTimers.h"
#include "data/Settings.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

class HideRules {
 public:
  struct Ports {
    MainDisplayView& view;
    TrayView& tray;
    const Settings& settings;
    const PipelineState& state;
    MainTimers& timers;
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

  BarPlace Place() const { return place_; }

 private:
  bool HasActiveCalls() const { return ports_.state.ActiveCallList.Count() > 0; }
  BarPlace HiddenPlace() const;
  void HideTick();
  void AutoResetTick();
  void StartHiding();
  void StartAutoReset();
  void MoveTo(BarPlace place);

  Ports ports_;
  BarPlace place_ = BarPlace::kShown;
};

}  // namespace vorlix
