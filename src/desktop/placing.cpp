#include "desktop/placing.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "desktop/text.h"

namespace vorlix {
namespace {

int DistanceTo(const QRect& area, const QPoint& point) {
  const QPoint inside(std::clamp(point.x(), area.left(), std::max(area.left(), area.right())),
                      std::clamp(point.y(), area.top(), std::max(area.top(), area.bottom())));
  return (point - inside).manhattanLength();
}

const QScreen* ScreenOf(const std::string& name) {
  const auto screens = QGuiApplication::screens();
  const auto screen = std::ranges::find_if(screens, [&](const QScreen* one) { return one->name() == ToQString(name); });
  return screen == screens.end() ? nullptr : *screen;
}

}  // namespace

bool CanPlaceWindows() {
  return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

WindowPlace PlaceOf(const QRect& window) {
  const QScreen* screen = QGuiApplication::screenAt(window.center());
  const QPoint corner = screen == nullptr ? QPoint() : screen->geometry().topLeft();
  return {.screen = screen == nullptr ? "0" : FromQString(screen->name()),
          .left = window.left(),
          .top = window.top(),
          .leftOnScreen = window.left() - corner.x(),
          .topOnScreen = window.top() - corner.y(),
          .width = window.width()};
}

QPoint CornerOf(const WindowPlace& place) {
  const QScreen* screen = ScreenOf(place.screen);
  if (screen == nullptr) return {place.left, place.top};
  return screen->geometry().topLeft() + QPoint(place.leftOnScreen, place.topOnScreen);
}

QRect AreaAt(const QPoint& point) {
  const auto screens = QGuiApplication::screens();
  const auto nearest = std::ranges::min_element(
      screens, {}, [&](const QScreen* screen) { return DistanceTo(screen->geometry(), point); });
  return nearest == screens.end() ? QRect() : (*nearest)->availableGeometry();
}

QRect AreaOf(const std::string& screen, const QPoint& point) {
  const QScreen* named = ScreenOf(screen);
  return named == nullptr ? AreaAt(point) : named->availableGeometry();
}

}  // namespace vorlix
