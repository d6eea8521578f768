#include "screens/DisplayTray.h"

#include <algorithm>

#include "screens/display_texts.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {

DisplayTray::DisplayTray(Ports ports)
    : ports_(std::move(ports)), life_(ports_.loop.MakeTimer(std::chrono::seconds(1), [this] {
        Trapped("DisplayTray.LifeTick", [this] { CloseBalloon(); });
      })) {}

void DisplayTray::ShowIdle(const std::string& text) {
  idleText_ = text;
  SetTip(text);
}

void DisplayTray::ShowCall(const oDataCall& call, bool isNews) {
  Trapped("DisplayTray.ShowCall", [&] {
    std::string title, text;
    SetBaloonInfoCall(call, ports_.alertText ? ports_.alertText(call) : std::string(), title, text);
    if (!ports_.settings.General.AsBaloon || ports_.games.fAnzeigeVerboten()) return SetTip(text);
    if (!isNews) return;
    Open({title, text, ports_.settings.General.HideTimeTray,
          call.Blocked ? BalloonUrgency::kLow : BalloonUrgency::kCritical});
    balloonOf_ = std::make_shared<oDataCall>(call);
  });
}

void DisplayTray::CreateTrayInfo(const std::string& text, int seconds) {
  Trapped("fMain.CreateTrayInfo", [&] {
    if (ports_.games.fAnzeigeVerboten()) return CloseBalloon();
    Open({idleText_, WithoutControls(text), seconds, BalloonUrgency::kLow});
  });
}

// A call is over while others go on: its balloon gives way to one that still rings. Of the end of the last call the
// balloon tells itself.
void DisplayTray::FollowCalls() {
  if (!balloonOf_ || ports_.calls.IsInProgress(*balloonOf_)) return;
  if (ports_.calls.IsEmpty() && !ports_.calls.HasHidden()) return;
  const auto calls = ports_.calls.Read();
  const auto ringing = std::ranges::find_if(calls, [](const auto& call) { return call->Active; });
  CloseBalloon();
  if (ringing != calls.end()) ShowCall(**ringing, true);
}

// A desktop may keep a balloon as long as it likes: its life is counted here.
void DisplayTray::Open(const Balloon& balloon) {
  isBalloonShown_ = true;
  balloonOf_.reset();
  life_->SetInterval(std::chrono::seconds(balloon.seconds));
  life_->SetEnabled(true);
  ports_.view.ShowBalloon(balloon);
}

void DisplayTray::CloseBalloon() {
  if (!isBalloonShown_) return;
  BalloonDismissed();
  ports_.view.CloseBalloon();
}

void DisplayTray::BalloonDismissed() {
  isBalloonShown_ = false;
  balloonOf_.reset();
  life_->SetEnabled(false);
}

void DisplayTray::SetTip(const std::string& tip) {
  tip_ = tip;
  Refresh();
}

void DisplayTray::Refresh() {
  NoteRinging();
  FollowCalls();
  const std::pair now(Icon(), tip_);
  if (shown_ == now) return;
  shown_ = now;
  ports_.view.ShowIcon(now.first, now.second);
}

void DisplayTray::NoteRinging() {
  for (const auto& call : ports_.calls.Read()) {
    if (call->Active) rang_.insert(call->PLCI);
  }
}

TrayIcon DisplayTray::Icon() const {
  const auto calls = ports_.calls.Read();
  if (std::ranges::any_of(calls, [](const auto& call) { return call->Active; })) return TrayIcon::kRinging;
  if (ports_.lines.Read().IsLineLost()) return TrayIcon::kLineLost;
  return hasMissed_ ? TrayIcon::kMissed : TrayIcon::kIdle;
}

void DisplayTray::MissedSeen() {
  hasMissed_ = false;
  Refresh();
}

void DisplayTray::OnAnswered(const oDataCall& call) {
  rang_.erase(call.PLCI);
  Refresh();
}

// Only what rang here can be missed: calls that were hidden stay so.
void DisplayTray::OnEnded(const oDataCall& call) {
  const bool rang = rang_.erase(call.PLCI) > 0;
  if (rang && call.NewCall && call.AVMDirection == CallDirection::kIncoming) hasMissed_ = true;
  Refresh();
}

void DisplayTray::OnOver(std::int32_t PLCI) {
  rang_.erase(PLCI);
  Refresh();
}

}  // namespace vorlix
