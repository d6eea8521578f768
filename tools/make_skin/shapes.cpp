#include "shapes.h"

#include <QFile>
#include <QRegularExpression>
#include <QTransform>
#include <QXmlStreamReader>
#include <cstdio>
#include <cstdlib>

namespace pictures {
namespace {

double Number(const QXmlStreamAttributes& attributes, const char* name, double standard = 0) {
  const auto text = attributes.value(QLatin1String(name));
  return text.isEmpty() ? standard : text.toDouble();
}

QTransform Rotation(const QXmlStreamAttributes& attributes) {
  static const QRegularExpression kRotate("rotate\\(([-0-9.]+) ([-0-9.]+) ([-0-9.]+)\\)");
  const auto match = kRotate.match(attributes.value(QLatin1String("transform")).toString());
  if (!match.hasMatch()) return {};
  const double x = match.captured(2).toDouble(), y = match.captured(3).toDouble();
  return QTransform().translate(x, y).rotate(match.captured(1).toDouble()).translate(-x, -y);
}

QPainterPath PathOfElement(const QString& element, const QXmlStreamAttributes& attributes) {
  QPainterPath path;
  const auto number = [&](const char* name) { return Number(attributes, name); };
  if (element == "rect") {
    path.addRoundedRect(number("x"), number("y"), number("width"), number("height"), number("rx"), number("rx"));
  } else if (element == "circle") {
    path.addEllipse(QPointF(number("cx"), number("cy")), number("r"), number("r"));
  } else if (element == "path") {
    path = PathOf(attributes.value(QLatin1String("d")).toString());
  }
  return Rotation(attributes).map(path);
}

}  // namespace

QPainterPath PathOf(const QString& data) {
  static const QRegularExpression kToken("[MLCZ]|-?[0-9.]+");
  QPainterPath path;
  QChar command;
  std::vector<QPointF> points;
  std::vector<double> numbers;
  for (auto tokens = kToken.globalMatch(data); tokens.hasNext();) {
    const QString token = tokens.next().captured();
    if (token[0].isLetter()) {
      command = token[0];
      if (command == 'Z') path.closeSubpath();
      continue;
    }
    numbers.push_back(token.toDouble());
    if (numbers.size() < 2) continue;
    points.emplace_back(numbers[0], numbers[1]);
    numbers.clear();
    if (points.size() < (command == 'C' ? 3u : 1u)) continue;
    if (command == 'M') path.moveTo(points[0]);
    if (command == 'L') path.lineTo(points[0]);
    if (command == 'C') path.cubicTo(points[0], points[1], points[2]);
    points.clear();
  }
  return path;
}

QPainterPath HandsetShape() {
  return PathOf(
      "M4 41 C4 25 16 18 32 18 C48 18 60 25 60 41 L60 44.5 C60 47.5 58 48.5 55.5 48 L47 46 C44.5 45.5 43.5 44 "
      "43.5 42 L43.5 35.5 C37 33.3 27 33.3 20.5 35.5 L20.5 42 C20.5 44 19.5 45.5 17 46 L8.5 48 C6 48.5 4 47.5 4 "
      "44.5 Z");
}

QPainterPath BellShape() {
  return PathOf(
      "M32 7 C34.5 7 36 8.8 36 11 C43.5 12.8 48 19 48 27.5 C48 37.5 51 41.5 55 45 L55 49 L9 49 L9 45 C13 41.5 16 "
      "37.5 16 27.5 C16 19 20.5 12.8 28 11 C28 8.8 29.5 7 32 7 Z M24.5 52.5 L39.5 52.5 C39.5 56.5 36.5 59 32 59 "
      "C27.5 59 24.5 56.5 24.5 52.5 Z");
}

QPainterPath EraserShape() {
  return PathOf(
      "M37 8.5 C38.8 6.7 41.2 6.7 43 8.5 L56 21.5 C57.8 23.3 57.8 25.7 56 27.5 L44 39.5 L25 20.5 Z M22 23.5 L41 "
      "42.5 L34 49.5 L22 49.5 L10 37.5 C8.5 36 8.5 33.5 10 32 Z M16 54 L54 54 L54 58.5 L16 58.5 Z");
}

QPainterPath PersonShape() {
  QPainterPath path = PathOf("M8 64 C8 47 18 42 32 42 C46 42 56 47 56 64 Z");
  path.addEllipse(QPointF(32, 25), 12.5, 13.5);
  return path;
}

QPainterPath CrossShape() {
  return PathOf("M14 19 L19 14 L32 27 L45 14 L50 19 L37 32 L50 45 L45 50 L32 37 L19 50 L14 45 L27 32 Z");
}

QPainterPath SlashShape() {
  return PathOf("M10.5 16 L16 10.5 L53.5 48 L48 53.5 Z");
}

std::vector<DrawnShape> ReadDrawing(const QString& file) {
  std::vector<DrawnShape> shapes;
  QFile in(file);
  in.open(QIODevice::ReadOnly);
  QXmlStreamReader reader(&in);
  while (!reader.atEnd()) {
    if (reader.readNext() != QXmlStreamReader::StartElement) continue;
    const auto attributes = reader.attributes();
    QColor fill(attributes.value(QLatin1String("fill")).toString());
    if (!fill.isValid()) continue;
    fill.setAlphaF(static_cast<float>(Number(attributes, "opacity", 1)));
    shapes.push_back({PathOfElement(reader.name().toString(), attributes), fill});
  }
  if (reader.hasError() || shapes.empty()) {
    std::fprintf(stderr, "make_skin: read %s: %s\n", qPrintable(file), qPrintable(reader.errorString()));
    std::exit(1);
  }
  return shapes;
}

}  // namespace pictures
