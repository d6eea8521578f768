#include "desktop/BarGeometry.h"

#include <algorithm>

namespace vorlix {

bool IsRight(const QRect& bar, const QRect& area) {
  return bar.right() == area.right();
}

QRect Inside(QRect bar, const QRect& area) {
  if (area.isEmpty()) return bar;
  bar.setSize(bar.size().boundedTo(area.size()));
  bar.moveLeft(std::clamp(bar.left(), area.left(), area.right() - bar.width() + 1));
  bar.moveTop(std::clamp(bar.top(), area.top(), area.bottom() - bar.height() + 1));
  return bar;
}

QRect Snapped(QRect bar, const QRect& area) {
  if (area.isEmpty()) return bar;
  bar = Inside(bar, area);
  if (bar.left() - area.left() < kSnap) {
    bar.moveLeft(area.left());
  } else if (area.right() - bar.right() < kSnap) {
    bar.moveRight(area.right());
  }
  if (bar.top() - area.top() < kSnap) {
    bar.moveTop(area.top());
  } else if (area.bottom() - bar.bottom() < kSnap) {
    bar.moveBottom(area.bottom());
  }
  return bar;
}

QRect Followed(QRect bar, const QRect& before, const QRect& area) {
  if (before.isEmpty() || area.isEmpty() || before == area) return bar;
  const bool isRight = IsRight(bar, before), isBelow = bar.bottom() == before.bottom();
  if (bar.left() == before.left()) {
    bar.moveLeft(area.left());
  } else if (isRight) {
    bar.moveRight(area.right());
  }
  if (bar.top() == before.top()) {
    bar.moveTop(area.top());
  } else if (isBelow) {
    bar.moveBottom(area.bottom());
  }
  return Inside(bar, area);
}

QRect WithHeight(QRect bar, int height, const QRect& area) {
  const int bottom = bar.bottom();
  const bool standsBelow = bottom == area.bottom() && bar.top() != area.top();
  bar.setHeight(height);
  if (standsBelow) bar.moveBottom(bottom);
  return Inside(bar, area);
}

QRect Sized(QRect bar, int way, int least, const QRect& area) {
  least = std::min(least, bar.width());
  if (IsRight(bar, area)) {
    bar.setLeft(std::clamp(bar.left() + way, area.left(), std::max(area.left(), bar.right() - least + 1)));
  } else {
    bar.setRight(std::clamp(bar.right() + way, bar.left() + least - 1, std::max(bar.left() + least - 1, area.right())));
  }
  return bar;
}

QRect Docked(QRect bar, Qt::Key edge, const QRect& area) {
  if (edge == Qt::Key_Left) bar.moveLeft(area.left());
  if (edge == Qt::Key_Right) bar.moveRight(area.right());
  if (edge == Qt::Key_Up) bar.moveTop(area.top());
  if (edge == Qt::Key_Down) bar.moveBottom(area.bottom());
  return bar;
}

QRect StripOf(const QRect& bar, int width, const QRect& area) {
  QRect strip = bar;
  strip.setWidth(std::min(width, bar.width()));
  if (IsRight(bar, area)) strip.moveRight(bar.right());
  return strip;
}

}  // namespace vorlix
