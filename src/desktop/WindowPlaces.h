// Where the windows were left, kept beyond the end of the program. Under Wayland a window is placed by the desktop
// alone: then only its size counts.
#pragma once

#include <optional>
#include <string>

namespace vorlix {

struct WindowPlace {
  std::string screen;                     // the monitor's name
  int left = 0, top = 0;                  // of the whole desktop, in the toolkit's points
  int leftOnScreen = 0, topOnScreen = 0;  // the same from the monitor's corner: it may have moved since
  int width = 0;
  friend bool operator==(const WindowPlace&, const WindowPlace&) = default;
};

enum class PlacedWindow { kDisplay, kMaxiDisplay };

class WindowPlaces {
 public:
  virtual ~WindowPlaces() = default;
  // Nothing when the window has never been placed.
  virtual std::optional<WindowPlace> Load(PlacedWindow window) = 0;
  virtual void Save(PlacedWindow window, const WindowPlace& place) = 0;
};

}  // namespace vorlix
