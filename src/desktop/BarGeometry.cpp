#include "desktop/BarGeometry.h"

#include <algorithm>

namespace vorlix {

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
  const bool isRight = bar.right() == before.right(), isBelow = bar.bottom() == before.bottom();
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

QRect StripOf(const QRect& bar, int width, const QRect& area) {
  QRect strip = bar;
  strip.setWidth(std::min(width, bar.width()));
  if (bar.right() == area.right()) strip.moveRight(bar.right());
  return strip;
}

}  // namespace vorlix
