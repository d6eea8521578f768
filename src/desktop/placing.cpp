#include "desktop/placing.h"

#include <QGuiApplication>
#include <QScreen>

#include "desktop/text.h"

namespace vorlix {

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
  for (const QScreen* screen : QGuiApplication::screens()) {
    if (screen->name() != ToQString(place.screen)) continue;
    return screen->geometry().topLeft() + QPoint(place.leftOnScreen, place.topOnScreen);
  }
  return {place.left, place.top};
}

QRect AreaAt(const QPoint& point) {
  const QScreen* screen = QGuiApplication::screenAt(point);
  if (screen == nullptr) screen = QGuiApplication::primaryScreen();
  return screen == nullptr ? QRect() : screen->availableGeometry();
}

}  // namespace vorlix
