// What a person can do on the bar, the tray icon, the menus and the large window: where a view passes it on to. A view
// keeps a reference to these and asks for nothing else; a gesture that nobody takes is lost.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "platform/RunCallback.h"
#include "screens/TrayMenu.h"

namespace vorlix {

struct DisplayGestures {
  // With the position of the line.
  std::function<void(std::size_t)> doubleClick, hangUp, blacklist;
  std::function<void()> timeClick, bell;
  std::function<void()> mouseEntered, mouseLeft, toggle;
  std::function<void()> trayClick, balloonDismissed;
  std::function<void()> trayChanged;  // it came or went
  std::function<void()> maxiClosed;
  // The menu as it stands, and its commands.
  std::function<std::vector<MenuItem>()> menuItems;
  std::function<void(MenuCommand)> runCommand;
};

// Nothing thrown gets into the toolkit.
template <class Gesture, class... Values>
void PassOn(const Gesture& gesture, Values... values) {
  if (!gesture) return;
  // A gesture may be disconnected while it runs.
  const Gesture kept = gesture;
  RunCallback("desktop.PassOn", [&] { kept(values...); });
}

}  // namespace vorlix
