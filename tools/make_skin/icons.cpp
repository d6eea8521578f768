#include "icons.h"

#include <QDir>

#include "canvas.h"
#include "shapes.h"

namespace pictures {
namespace {

const QColor kTeal("#1f6f78"), kGreen("#2e9e5b"), kRed("#d64541"), kGrey("#727c86"), kAmber("#f2b544");

// States differ in their mark too, so that they can be told apart without colours.
struct TrayLook {
  const char* name;
  QColor back;
  void (*mark)(QPainter&);
};

void NoMark(QPainter&) {}

// Cut out of what lies below, so that the mark stands apart from it.
void CutOut(QPainter& painter, const QRectF& circle) {
  painter.setCompositionMode(QPainter::CompositionMode_Clear);
  painter.setBrush(Qt::black);
  painter.drawEllipse(circle.adjusted(-4, -4, 4, 4));
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void CrossMark(QPainter& painter) {
  const QRectF place(33, 33, 30, 30);
  CutOut(painter, place);
  painter.setBrush(kRed);
  painter.drawEllipse(place);
  FillShape(painter, CrossShape(), place.adjusted(3, 3, -3, -3), Qt::white);
}

void WavesMark(QPainter& painter) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kAmber, 5, Qt::SolidLine, Qt::FlatCap));
  for (const double radius : {11.0, 20.0})
    painter.drawArc(QRectF(33 - radius, 30 - radius, 2 * radius, 2 * radius), 0, 90 * 16);
  painter.setPen(Qt::NoPen);
}

void MissedMark(QPainter& painter) {
  const QRectF place(33, 33, 30, 30);
  CutOut(painter, place);
  painter.setBrush(kAmber);
  painter.drawEllipse(place);
  painter.setBrush(QColor("#3a2c08"));
  painter.drawRoundedRect(QRectF(45.5, 38, 5, 12), 2.5, 2.5);
  painter.drawEllipse(QRectF(45, 52.5, 6, 6));
}

const TrayLook kTrayLooks[] = {{"idle", kTeal, NoMark},
                               {"line_lost", kGrey, CrossMark},
                               {"ringing", kGreen, WavesMark},
                               {"missed", kTeal, MissedMark}};

QImage Tray(const TrayLook& look, int side) {
  return Drawn(side, side, [&](QPainter& painter) {
    painter.scale(side / kField, side / kField);
    painter.setBrush(look.back);
    painter.drawRoundedRect(QRectF(2, 2, 60, 60), 14, 14);
    painter.save();
    painter.translate(31, 33);
    painter.rotate(225);
    FillShape(painter, HandsetShape(), QRectF(-23, -23, 46, 46), Qt::white);
    painter.restore();
    look.mark(painter);
  });
}

QImage Blocked(int side) {
  return Drawn(side, side, [&](QPainter& painter) {
    painter.scale(side / kField, side / kField);
    FillShape(painter, HandsetShape(), QRectF(17, 17, 30, 30), kGrey);
    QPainterPath ring;
    ring.addEllipse(QRectF(3, 3, 58, 58));
    ring.addEllipse(QRectF(11, 11, 42, 42));
    painter.fillPath(ring, kRed);
    FillShape(painter, SlashShape(), QRectF(3, 3, 58, 58), kRed);
  });
}

}  // namespace

void MakeIcons(const QString& folder, const QString& drawing) {
  QDir().mkpath(folder);
  const auto file = [&](const QString& name, int side) { return QString("%1/%2_%3.png").arg(folder, name).arg(side); };
  const auto shapes = ReadDrawing(drawing);
  for (const int side : {16, 22, 24, 32, 48, 64, 128, 256}) {
    const QImage icon = Drawn(side, side, [&](QPainter& painter) {
      for (const auto& [path, fill] : shapes)
        FillShape(painter, path, QRectF(0, 0, side, side), fill);
    });
    Save(icon, file("vorlix", side));
  }
  for (const int side : {16, 22, 24, 32, 48, 64}) {
    for (const TrayLook& look : kTrayLooks)
      Save(Tray(look, side), file(QString("tray_") + look.name, side));
  }
  for (const int side : {32, 64})
    Save(Blocked(side), file("blocked", side));
}

}  // namespace pictures
