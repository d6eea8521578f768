#include "desktop/X11ForegroundWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <climits>
#include <cmath>
#include <unistd.h>

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

xcb_connection_t* ToolkitsConnection() {
#if QT_CONFIG(xcb)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 == nullptr ? nullptr : x11->connection();
#else
  return nullptr;
#endif
}

// The toolkit leaves a screen's corner as it is and rounds its scaled size: at most half a point is missing.
int InPixels(int points, qreal scale) {
  return scale == 1 ? points : static_cast<int>(std::floor((points - 0.5) * scale));
}

std::vector<QRect> ToolkitsScreens() {
  std::vector<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect points = screen->geometry();
    const qreal scale = screen->devicePixelRatio();
    screens.emplace_back(points.left(), points.top(), InPixels(points.width(), scale),
                         InPixels(points.height(), scale));
  }
  return screens;
}

// A process number means something on its own machine only. Of two names one may be with its domain.
bool IsThisMachine(const std::string& name) {
  char own[HOST_NAME_MAX + 1] = {};
  gethostname(own, HOST_NAME_MAX);
  return EqualNoCase(Split(name, ".").front(), Split(own, ".").front());
}

}  // namespace

X11ForegroundWindow::Display X11ForegroundWindow::ToolkitsDisplay() {
  return {ToolkitsConnection, ToolkitsScreens, XcbLibrary::Load};
}

ForegroundWindow::State X11ForegroundWindow::Read() {
  return Trapped("X11ForegroundWindow.Read", [&]() -> State {
    xcb_connection_t* const connection = display_.connection();
    if (connection == nullptr) return {};
    if (!library_) library_ = display_.library();
    if (!library_) return {};
    const XWindows windows(*library_, connection);
    const auto active = windows.Numbers(windows.Root(), "_NET_ACTIVE_WINDOW", XWindows::kWindow);
    if (active.empty()) return {};
    const XWindows::Window window = active.front();
    const auto place = windows.Place(window);
    if (!place || !FillsAScreen(*place)) return {};
    State state{.fillsScreen = true, .isDesktop = false, .modules = {}};
    const XWindows::Atom desktop = windows.Find("_NET_WM_WINDOW_TYPE_DESKTOP");
    const auto types = windows.Numbers(window, "_NET_WM_WINDOW_TYPE", XWindows::kAtom);
    state.isDesktop = desktop != 0 && std::ranges::count(types, desktop) > 0;
    if (!state.isDesktop) state.modules = ModulesBehind(windows, window);
    return state;
  });
}

bool X11ForegroundWindow::FillsAScreen(const QRect& place) const {
  return std::ranges::any_of(display_.screens(), [&](const QRect& screen) { return place.contains(screen); });
}

std::vector<std::string> X11ForegroundWindow::ModulesBehind(const XWindows& windows, XWindows::Window window) const {
  const auto process = windows.Numbers(window, "_NET_WM_PID", XWindows::kCardinal);
  if (process.empty() || process.front() == 0) return {};
  const std::string machine = windows.Text(window, "WM_CLIENT_MACHINE");
  if (!machine.empty() && !IsThisMachine(machine)) return {};
  return modules_(process.front());
}

}  // namespace vorlix
