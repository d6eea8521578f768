// Where the bar stands: docked to the edges of its screen that it touches, or free. Rectangles are in the toolkit's
// points. Pure arithmetic, so that it is the same for every screen. With an empty area, that of no screen, a bar stays
// as it is.
#pragma once

#include <QRect>
#include <Qt>

namespace vorlix {

// How near to an edge a dragged bar is taken by it.
inline constexpr int kSnap = 16;

// It stands on the right edge of the area: its free end is the left one.
bool IsRight(const QRect& bar, const QRect& area);
// Wholly inside the area, its size kept as far as the area holds it.
QRect Inside(QRect bar, const QRect& area);
// An edge of the area that is near takes the bar.
QRect Snapped(QRect bar, const QRect& area);
// The same bar after its area has changed: edges that it touched are touched again.
QRect Followed(QRect bar, const QRect& before, const QRect& area);
// The same bar with another height: one that stands on the lower edge grows upwards.
QRect WithHeight(QRect bar, int height, const QRect& area);
// The same bar with its free end dragged, inside the area and not below `least`, unless it was so before.
QRect Sized(QRect bar, int way, int least, const QRect& area);
// Moved to the edge that an arrow key names.
QRect Docked(QRect bar, Qt::Key edge, const QRect& area);
// What stays of a hidden bar: its grip, at the outer side of one docked to the right, else at the left.
QRect StripOf(const QRect& bar, int width, const QRect& area);

}  // namespace vorlix
