#include "canvas.h"

#include <QImageWriter>
#include <QTransform>
#include <cstdio>
#include <cstdlib>

#include "shapes.h"

namespace pictures {

QImage Drawn(int width, int height, const std::function<void(QPainter&)>& draw) {
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  draw(painter);
  return image;
}

void FillShape(QPainter& painter, const QPainterPath& shape, QRectF place, const QColor& color) {
  const auto toPlace =
      QTransform().translate(place.left(), place.top()).scale(place.width() / kField, place.height() / kField);
  painter.fillPath(toPlace.map(shape), color);
}

void Save(const QImage& image, const QString& file) {
  QImageWriter writer(file);
  const bool isPhoto = file.endsWith(".jpg");
  if (isPhoto) writer.setQuality(95);
  if (writer.write(isPhoto ? image.convertToFormat(QImage::Format_RGB32)
                           : image.convertToFormat(QImage::Format_ARGB32))) {
    return;
  }
  std::fprintf(stderr, "make_skin: write %s: %s\n", qPrintable(file), qPrintable(writer.errorString()));
  std::exit(1);
}

}  // namespace pictures
