// The window in front of an X desktop, as its window manager tells. On other desktops there is none to be seen.
#pragma once

#include <QRect>
#include <functional>
#include <string>
#include <vector>

#include "desktop/XWindows.h"
#include "screens/display_ports.h"

namespace vorlix {

class X11ForegroundWindow : public ForegroundWindow {
 public:
  // The names of the libraries that a process of this machine has loaded.
  using Modules = std::function<std::vector<std::string>(std::uint32_t process)>;
  // What it looks at: null on a desktop that is none of X, and the screens in the server's own pixels.
  struct Display {
    std::function<xcb_connection_t*()> connection;
    std::function<std::vector<QRect>()> screens;
    std::function<std::optional<XcbLibrary>()> library;
  };

  explicit X11ForegroundWindow(Modules modules) : X11ForegroundWindow(ToolkitsDisplay(), std::move(modules)) {}
  X11ForegroundWindow(Display display, Modules modules) : display_(std::move(display)), modules_(std::move(modules)) {}

  State Read() override;

 private:
  static Display ToolkitsDisplay();
  bool FillsAScreen(const QRect& place) const;
  std::vector<std::string> ModulesBehind(const XWindows& windows, XWindows::Window window) const;

  Display display_;
  Modules modules_;
  std::optional<XcbLibrary> library_;  // once it was needed
};

}  // namespace vorlix
