#include "screens/fDisplayMaxi.h"

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

MaxiLook LookOf(const Settings& settings) {
  const auto& maxi = settings.MaxiDisplay;
  return {maxi.Alpha, maxi.ShadowName, maxi.ShadowOther, maxi.ColorName, maxi.ColorOther};
}

}  // namespace

fDisplayMaxi::fDisplayMaxi(Ports ports)
    : ports_(ports), life_(ports_.loop.MakeTimer(std::chrono::seconds(1), [this] {
        Trapped("fDisplayMaxi.LifeTick", [this] { TakeOff(); });
      })) {}

void fDisplayMaxi::ShowCall(const oDataCall& call, const std::string& picture) {
  Trapped("fDisplayMaxi.ShowCall", [&] {
    if (!ports_.settings.General.MaxiDisplayView || ports_.games.fAnzeigeVerboten()) return;
    content_ = {.name = WithoutControls(call.Name()),
                .number = WithoutControls(call.VW_FormatedNumber()),
                .location = WithoutControls(call.VW_FormatedLocation()),
                .MSNAlias = WithoutControls(call.MSNAlias),
                .picture = picture,
                .endMark = EndMark::kNone,
                .look = {}};
    shown_ = std::make_shared<oDataCall>(call);
    isOpen_ = isVisible_ = true;
    Show();
    const auto& maxi = ports_.settings.MaxiDisplay;
    life_->SetInterval(std::chrono::seconds(maxi.HideTime));
    life_->SetEnabled(maxi.HideByTime);
  });
}

void fDisplayMaxi::Show() {
  content_.look = LookOf(ports_.settings);
  ports_.window.Show(content_);
}

void fDisplayMaxi::Closed() {
  isOpen_ = isVisible_ = false;
  life_->SetEnabled(false);
}

void fDisplayMaxi::Hide() {
  if (!GoesOn()) TakeOff();
}

void fDisplayMaxi::TakeOff() {
  life_->SetEnabled(false);
  if (!isVisible_) return;
  isVisible_ = false;
  ports_.window.Hide();
}

void fDisplayMaxi::SetEndMark(EndMark mark) {
  // One that is marked has ended before.
  if (!isVisible_ || GoesOn() || content_.endMark != EndMark::kNone) return;
  content_.endMark = mark;
  Show();
}

}  // namespace vorlix
