// What the caller display shows, ready to draw, and the views that draw it: the bar, the tray with its balloon, the
// large window. A view draws and passes gestures on to DisplayClicks, DisplayTray and HideRules; it decides nothing.
// All texts are free of control characters, but for CR LF in tips, balloons and the idle line.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/pipeline_ports.h"
#include "screens/Skin.h"
#include "services/DateTime.h"

namespace vorlix {

// One visible line of the bar.
struct DisplayLine {
  std::string date;  // empty where only the time is shown
  std::string time;  // empty on an idle line: the clock's place
  std::string text;
  std::string tip;
  Rgb background = 0;
  Rgb textColor = 0;
  std::string logo;            // real path of the picture; empty: none
  bool isBlockMarked = false;  // the picture of a blocked call stands in place of the logo
  std::string blockReason;     // of a refused call: the tip of the picture; else empty
  bool bellEnabled = false;
  HangUpMode hangUp = HangUpMode::kNone;
  bool hangUpEnabled = false;

  // The call behind the texts.
  bool isCall = false;    // false: an idle text
  bool isActive = false;  // in progress; a call stays in the display beyond its end
  bool isRefused = false;
  std::int32_t PLCI = 0;
  DateTime rang;
  std::string caller;     // "Name (number with place)", or the number alone
  std::string ownNumber;  // "Alias (number)", or the number alone

  friend bool operator==(const DisplayLine&, const DisplayLine&) = default;
};

struct DisplayContent {
  std::vector<DisplayLine> lines;  // never empty
  std::string lineState;           // how the sources stand, also while calls are shown
  bool rejectsAll = false;         // a switch that rejects all calls is on

  friend bool operator==(const DisplayContent&, const DisplayContent&) = default;
};

// Where the bar is.
enum class BarPlace {
  kShown,
  kStrip,  // hidden at its free end, a strip stays; with the mouse on it the bar returns
  kGone,   // out of the screen altogether
  kTray,   // in the tray: its icon or menu brings the bar back
};

class MainDisplayView {
 public:
  virtual ~MainDisplayView() = default;
  // All lines anew; the bar grows by one line height for each line after the first.
  virtual void ShowLines(const DisplayContent& content) = 0;
  // The time field of the idle line, once a second.
  virtual void ShowClock(const std::string& date, const std::string& time) = 0;
  // Never takes the keyboard focus.
  virtual void BringToTop() = 0;
  virtual void SetPlace(BarPlace place) = 0;
  // The mouse is on the bar, or the bar is being moved.
  virtual bool IsInUse() = 0;
  virtual void ShowSkin(const Skin& skin) = 0;
};

enum class TrayIcon { kIdle, kLineLost, kRinging, kMissed };

enum class BalloonUrgency { kLow, kNormal, kCritical };

struct Balloon {
  std::string title;
  std::string text;  // lines end with CR LF; plain text, the view escapes it
  int seconds = 0;   // its life; DisplayTray closes it then
  BalloonUrgency urgency = BalloonUrgency::kNormal;
};

// Tells DisplayTray::BalloonDismissed() when the user closes a balloon.
class TrayView {
 public:
  virtual ~TrayView() = default;
  // False on a desktop without a tray.
  virtual bool IsThere() = 0;
  virtual void ShowIcon(TrayIcon icon, const std::string& tip) = 0;
  // Takes the place of the one before.
  virtual void ShowBalloon(const Balloon& balloon) = 0;
  virtual void CloseBalloon() = 0;
};

// How the large window looks, from its settings.
struct MaxiLook {
  int alpha = 220;  // 100 to 250
  int shadowName = 6, shadowOther = 4;
  int colorName = 0, colorOther = 4;
  friend bool operator==(const MaxiLook&, const MaxiLook&) = default;
};

struct MaxiContent {
  std::string name, number, location, MSNAlias;
  std::string picture;  // real path; empty: none
  EndMark endMark = EndMark::kNone;
  MaxiLook look;
};

// The large, semi-transparent window. Tells fDisplayMaxi::Closed() when the user closes it.
class MaxiDisplayWindow {
 public:
  virtual ~MaxiDisplayWindow() = default;
  // Opens the window, or shows other content in it.
  virtual void Show(const MaxiContent& content) = 0;
  virtual void Hide() = 0;
};

}  // namespace vorlix
