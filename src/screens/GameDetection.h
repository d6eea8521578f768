// Whether a game has the screen. Then nothing pops up: no balloon, no map, no large window. Calls are processed as
// usual.
#pragma once

#include "data/Settings.h"
#include "screens/display_ports.h"

namespace vorlix {

class GameDetection {
 public:
  // Both must outlive the object.
  GameDetection(const Settings& settings, ForegroundWindow& foreground)
      : settings_(settings), foreground_(foreground) {}

  // True with `NoViewGame` on, while the window in front fills its screen, is not the desktop, and its process has
  // loaded one of the libraries of the setting `Moduls`.
  bool fAnzeigeVerboten() const;

 private:
  const Settings& settings_;
  ForegroundWindow& foreground_;
};

}  // namespace vorlix
