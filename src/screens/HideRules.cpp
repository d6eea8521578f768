#include "screens/HideRules.h"

#include <algorithm>
#include <utility>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

constexpr int kShortestPause = 1;  // seconds

// A timer cannot tick after no time at all: 0 seconds mean at once.
std::chrono::milliseconds Seconds(int seconds) {
  return std::max<std::chrono::milliseconds>(std::chrono::seconds(seconds), std::chrono::milliseconds(1));
}

}  // namespace

HideRules::HideRules(Ports ports) : ports_(std::move(ports)) {
  ports_.timers.tmHide->SetTick([this] { Trapped("fMain.tmHide_Timer", [this] { HideTick(); }); });
  ports_.timers.tmDisplayAutoReset->SetTick(
      [this] { Trapped("fMain.tmDisplayAutoReset_Timer", [this] { AutoResetTick(); }); });
}

// Without a tray, a bar that is out of sight could not be brought back.
BarPlace HideRules::HiddenPlace() const {
  const auto& general = ports_.settings.General;
  if (general.HideTray && ports_.tray.IsThere()) return BarPlace::kTray;
  if (general.HideFull && ports_.tray.IsThere()) return BarPlace::kGone;
  return general.HideTray || general.HideFull || general.HideFree ? BarPlace::kStrip : BarPlace::kShown;
}

void HideRules::DisplayResize() {
  Trapped("fMain.DisplayResize", [&] {
    const bool isOut = place_ == BarPlace::kShown;
    if (!isOut && (HiddenPlace() == BarPlace::kShown || (HasActiveCalls() && PopsUp()))) MoveTo(BarPlace::kShown);
    NoteCalls();
    GoBackToIdle();
    if (!HasActiveCalls() || ports_.settings.General.HideAllw) StartHiding();
  });
}

// Over a game nothing comes out.
bool HideRules::PopsUp() const {
  const auto& general = ports_.settings.General;
  return !general.SilentMode && !general.AsBaloon && !ports_.games.fAnzeigeVerboten();
}

// Where the bar hides over calls too, its time counts from the last that came or went.
void HideRules::NoteCalls() {
  std::vector<std::pair<std::int32_t, DateTime>> now;
  for (const auto& call : ports_.calls.Read())
    now.emplace_back(call->PLCI, call->CallDateTime);
  if (now == calls_) return;
  calls_ = std::move(now);
  if (ports_.settings.General.HideAllw) ports_.timers.tmHide->SetEnabled(false);
}

// A caller on the bar stays until somebody has been there.
void HideRules::GoOn() {
  GoBackToIdle();
  if (!HasActiveCalls() && (ports_.settings.General.HideAllw || !ports_.isCallShown())) StartHiding();
}

void HideRules::MouseEntered() {
  MoveTo(BarPlace::kShown);
}

// The time counts from here, whatever of it had passed before.
void HideRules::MouseLeft() {
  ports_.timers.tmHide->SetEnabled(false);
  if (!HasActiveCalls() || ports_.settings.General.HideAllw) StartHiding();
}

void HideRules::Toggle() {
  MoveTo(place_ == BarPlace::kShown ? HiddenPlace() : BarPlace::kShown);
  MouseLeft();
}

void HideRules::TrayChanged() {
  if (place_ != BarPlace::kShown) MoveTo(HiddenPlace());
}

void HideRules::GoBackToIdle() {
  if (!HasActiveCalls()) StartAutoReset();
}

// While somebody is at the bar it asks again, but never without pause.
void HideRules::HideTick() {
  if (ports_.view.IsInUse()) {
    const auto pause = std::max(ports_.settings.General.HideTime, kShortestPause);
    return ports_.timers.tmHide->SetInterval(std::chrono::seconds(pause));
  }
  ports_.timers.tmHide->SetEnabled(false);
  GoBackToIdle();
  MoveTo(HiddenPlace());
}

void HideRules::AutoResetTick() {
  ports_.timers.tmDisplayAutoReset->SetEnabled(false);
  ports_.displayReset();
}

// A running timer goes on: what is repainted in between must not put the hiding off.
void HideRules::StartHiding() {
  if (place_ != BarPlace::kShown || HiddenPlace() == BarPlace::kShown || ports_.timers.tmHide->Enabled()) return;
  ports_.timers.tmHide->SetInterval(Seconds(ports_.settings.General.HideTime));
  ports_.timers.tmHide->SetEnabled(true);
}

void HideRules::StartAutoReset() {
  if (!ports_.settings.General.CallReset || !ports_.isCallShown() || ports_.timers.tmDisplayAutoReset->Enabled()) {
    return;
  }
  ports_.timers.tmDisplayAutoReset->SetInterval(Seconds(ports_.settings.General.CallResetTime));
  ports_.timers.tmDisplayAutoReset->SetEnabled(true);
}

void HideRules::MoveTo(BarPlace place) {
  if (place == place_) return;
  place_ = place;
  ports_.view.SetPlace(place);
  ports_.windows.MoveAlong();
}

}  // namespace vorlix
