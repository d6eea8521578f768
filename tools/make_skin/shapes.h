// The shapes that the pictures are put together from, on a field of 64 by 64 points.
#pragma once

#include <QColor>
#include <QPainterPath>
#include <QString>
#include <vector>

namespace pictures {

inline constexpr double kField = 64;

// A path in the letters M, L, C and Z with whole coordinates, as drawings in SVG have it.
QPainterPath PathOf(const QString& data);

QPainterPath HandsetShape();
QPainterPath BellShape();
QPainterPath EraserShape();
QPainterPath PersonShape();
QPainterPath CrossShape();
QPainterPath SlashShape();

struct DrawnShape {
  QPainterPath path;
  QColor fill;
};

// The shapes of a simple drawing; what it may hold stands in packaging/vorlix.svg. Ends the program when the file
// cannot be read.
std::vector<DrawnShape> ReadDrawing(const QString& file);

}  // namespace pictures
