// A picture while it is drawn, and its way into a file.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QString>
#include <functional>

namespace pictures {

// A transparent picture; draw() gets a smooth painter in points of the picture.
QImage Drawn(int width, int height, const std::function<void(QPainter&)>& draw);

// The shape, drawn on the field of shapes.h, so that the field fills `place`.
void FillShape(QPainter& painter, const QPainterPath& shape, QRectF place, const QColor& color);

// Writes the picture in the kind that the file's name says, ".jpg" on black. Ends the program when that fails.
void Save(const QImage& image, const QString& file);

}  // namespace pictures
