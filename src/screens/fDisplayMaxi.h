// The large window of a call: what stands in it, when it opens and when it closes. That it closes at the end of a call
// (`HideByCall`) is the pipeline's to say; here it closes by its time.
#pragma once

#include <memory>

#include "core/CallPipeline.h"
#include "data/Settings.h"
#include "screens/GameDetection.h"
#include "screens/MainDisplayView.h"
#include "screens/ShownCalls.h"

namespace vorlix {

class fDisplayMaxi : public MaxiDisplay {
 public:
  struct Ports {
    MaxiDisplayWindow& window;
    MessageLoop& loop;
    const Settings& settings;
    const GameDetection& games;
    const ShownCalls& calls;
  };

  // All ports must outlive the object.
  explicit fDisplayMaxi(Ports ports);

  // Opens for a call, with `MaxiDisplayView` on and no game on the screen.
  void ShowCall(const oDataCall& call, const std::string& picture);
  // The user closed the window.
  void Closed();

  // It was opened once; hidden, it keeps its content.
  bool IsOpen() override { return isOpen_; }
  bool IsVisible() override { return isVisible_; }
  // By the end of a call; when another is in the window and goes on, nothing happens.
  void Hide() override;
  void SetEndMark(EndMark mark) override;

 private:
  void Show();
  void TakeOff();
  bool GoesOn() const { return shown_ && ports_.calls.IsInProgress(*shown_); }

  Ports ports_;
  std::unique_ptr<Timer> life_;
  MaxiContent content_;
  std::shared_ptr<const oDataCall> shown_;
  bool isOpen_ = false;
  bool isVisible_ = false;
};

}  // namespace vorlix
