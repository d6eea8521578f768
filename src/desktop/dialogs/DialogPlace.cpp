#include "desktop/dialogs/DialogPlace.h"

#include <QGuiApplication>
#include <QScreen>

namespace vorlix {

void DialogPlace::Restore(QWidget& window) const {
  if (width <= 0 || height <= 0) return;
  const QPoint corner(left, top);
  const QScreen* screen = QGuiApplication::screenAt(corner);
  const QScreen* any = screen ? screen : window.screen();
  window.resize(any ? QSize(width, height).boundedTo(any->availableSize()) : QSize(width, height));
  if (screen) window.move(corner);
}

void DialogPlace::Keep(const QWidget* window) const {
  if (window == nullptr || !window->isVisible()) return;
  left = window->x();
  top = window->y();
  width = window->width();
  height = window->height();
}

}  // namespace vorlix
