#include "desktop/ElidedLabel.h"

#include <QPainter>
#include <QStringList>
#include <algorithm>

namespace vorlix {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
}

void ElidedLabel::Show(const QString& text, const QColor& color) {
  QPalette colors = palette();
  if (colors.color(QPalette::WindowText) != color) {
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
  }
  setText(text);
  setAccessibleName(text);
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 4, fontMetrics().height()};
}

void ElidedLabel::SetShadow(int distance) {
  shadow_ = distance;
  const int before = std::max(0, -distance), behind = std::max(0, distance);
  setContentsMargins(before, before, behind, behind);
  update();
}

void ElidedLabel::paintEvent(QPaintEvent*) {
  const QRect place = contentsRect();
  QStringList lines = text().split(QLatin1Char('\n'));
  for (QString& line : lines)
    line = fontMetrics().elidedText(line, Qt::ElideRight, place.width());
  const QString shown = lines.join(QLatin1Char('\n'));
  QPainter painter(this);
  if (shadow_ != 0) {
    painter.setPen(QColor(0, 0, 0, 140));
    painter.drawText(place.translated(shadow_, shadow_), static_cast<int>(alignment()), shown);
  }
  painter.setPen(palette().color(QPalette::WindowText));
  painter.drawText(place, static_cast<int>(alignment()), shown);
}

}  // namespace vorlix
