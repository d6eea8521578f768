// The tray: what its icon and tip tell, and the balloon of a call. A missed call stays on the icon until somebody has
// seen it; the display's going back to idle by itself is not seeing.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "core/CallPipeline.h"
#include "core/call_watch.h"
#include "data/Settings.h"
#include "screens/GameDetection.h"
#include "screens/LineStates.h"
#include "screens/MainDisplayView.h"
#include "screens/ShownCalls.h"

namespace vorlix {

class DisplayTray : public TrayBalloon, public CallWatch {
 public:
  struct Ports {
    TrayView& view;
    MessageLoop& loop;
    const Settings& settings;
    const ShownCalls& calls;
    const LineStateSource& lines;
    const GameDetection& games;
    std::function<std::string(const oDataCall&)> alertText;  // the caller's dates that are due; may be empty
  };

  // All ports must outlive the object.
  explicit DisplayTray(Ports ports);

  // The idle text is the tray's tip.
  void ShowIdle(const std::string& text);
  // Makes the call's text the tray's tip, or opens its balloon with `AsBaloon`: once, when it is news.
  void ShowCall(const oDataCall& call, bool isNews);
  // The icon anew, after the calls or lines changed.
  void Refresh();

  // The user has looked at the missed calls.
  void MissedSeen();
  // The user closed the balloon.
  void BalloonDismissed();

  bool IsShown() override { return isBalloonShown_; }
  // The balloon that tells of the end of the last call.
  void CreateTrayInfo(const std::string& text, int seconds) override;

  void OnDialled(const oDataCall&) override {}
  void OnAnswered(const oDataCall& call) override;
  void OnEnded(const oDataCall& call) override;
  void OnOver(std::int32_t PLCI) override;

 private:
  TrayIcon Icon() const;
  void NoteRinging();
  void SetTip(const std::string& tip);
  void FollowCalls();
  void Open(const Balloon& balloon);
  void CloseBalloon();

  Ports ports_;
  std::unique_ptr<Timer> life_;
  std::string tip_, idleText_;
  std::optional<std::pair<TrayIcon, std::string>> shown_;  // what the view has
  std::set<std::int32_t> rang_;                            // calls that rang and were not refused
  bool hasMissed_ = false;
  bool isBalloonShown_ = false;
  std::shared_ptr<const oDataCall> balloonOf_;  // the call that it shows; none when it tells of an end
};

}  // namespace vorlix
