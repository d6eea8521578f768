// Between a window's rectangle and the place that is remembered of it.
#pragma once

#include <QRect>

#include "desktop/WindowPlaces.h"

namespace vorlix {

// False under Wayland, which lets no window choose its place.
bool CanPlaceWindows();

WindowPlace PlaceOf(const QRect& window);
// The upper left corner. While the monitor that it was on is there, it counts from that one's corner.
QPoint CornerOf(const WindowPlace& place);
// What a window may cover of the screen that holds the point, or is nearest to it; empty while all screens are off.
QRect AreaAt(const QPoint& point);
// The same of the screen of that name, while it is there.
QRect AreaOf(const std::string& screen, const QPoint& point);

}  // namespace vorlix
