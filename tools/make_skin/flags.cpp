#include "flags.h"

#include <QDir>
#include <QFont>
#include <QStringList>

#include "canvas.h"

namespace pictures {
namespace {

constexpr int kWidth = 48, kHeight = 32;

// Colours by letter; a flag's stripes are a word of them, a repeated letter makes a stripe broader.
QColor Color(char letter) {
  switch (letter) {
    case 'r':
      return "#cf2233";
    case 'w':
      return "#ffffff";
    case 'b':
      return "#1d4a9c";
    case 'l':
      return "#4c9cd8";
    case 'g':
      return "#168a4a";
    case 'y':
      return "#f7cc1f";
    case 'o':
      return "#f08a24";
    default:
      return "#14171a";
  }
}

// kind: 'h' stripes one below the other, 'v' side by side, '+' a cross on the ground, with its inner cross when there
// is a third letter, 'o' a disc, 'c' a short cross in the middle.
struct Flag {
  const char* file;
  char kind;
  const char* colors;
};

const Flag kFlags[] = {
    {"de", 'h', "kry"},  {"at", 'h', "rwr"},    {"nl", 'h', "rwb"}, {"lu", 'h', "rwl"},   {"hu", 'h', "rwg"},
    {"bg", 'h', "wgr"},  {"ee", 'h', "lkw"},    {"lt", 'h', "ygr"}, {"lv", 'h', "rrwrr"}, {"pl", 'h', "wr"},
    {"ua", 'h', "by"},   {"mc", 'h', "rw"},     {"id", 'h', "rw"},  {"ru", 'h', "wbr"},   {"am", 'h', "rbo"},
    {"co", 'h', "yybr"}, {"th", 'h', "rwbbwr"}, {"ye", 'h', "rwk"}, {"ga", 'h', "gyb"},   {"sl", 'h', "gwb"},
    {"mu", 'h', "rbyg"}, {"es", 'h', "ryyr"},   {"fr", 'v', "bwr"}, {"it", 'v', "gwr"},   {"be", 'v', "kyr"},
    {"ro", 'v', "byr"},  {"ie", 'v', "gwo"},    {"ng", 'v', "gwg"}, {"pe", 'v', "rwr"},   {"ml", 'v', "gyr"},
    {"td", 'v', "byr"},  {"gn", 'v', "ryg"},    {"ci", 'v', "owg"}, {"dk", '+', "rw"},    {"se", '+', "by"},
    {"fi", '+', "wb"},   {"no", '+', "rwb"},    {"is", '+', "bwr"}, {"ch", 'c', "rw"},    {"jp", 'o', "wr"},
    {"bd", 'o', "gr"},
};

void DrawStripes(QPainter& painter, const QByteArray& colors, bool isSideBySide) {
  const auto edge = [&](qsizetype i) {
    return static_cast<int>(i * (isSideBySide ? kWidth : kHeight) / colors.size());
  };
  for (qsizetype i = 0; i < colors.size(); ++i) {
    const int from = edge(i), length = edge(i + 1) - from;
    const QRect stripe = isSideBySide ? QRect(from, 0, length, kHeight) : QRect(0, from, kWidth, length);
    painter.fillRect(stripe, Color(colors[i]));
  }
}

void DrawCross(QPainter& painter, const QByteArray& colors) {
  painter.fillRect(0, 0, kWidth, kHeight, Color(colors[0]));
  for (int i = 1; i < colors.size(); ++i) {
    const double half = colors.size() == 3 && i == 1 ? 4 : colors.size() == 3 ? 2 : 3;
    painter.fillRect(QRectF(17 - half, 0, 2 * half, kHeight), Color(colors[i]));
    painter.fillRect(QRectF(0, kHeight / 2. - half, kWidth, 2 * half), Color(colors[i]));
  }
}

void DrawFlag(QPainter& painter, const Flag& flag) {
  const QByteArray colors(flag.colors);
  if (flag.kind == 'h' || flag.kind == 'v') return DrawStripes(painter, colors, flag.kind == 'v');
  if (flag.kind == '+') return DrawCross(painter, colors);
  painter.fillRect(0, 0, kWidth, kHeight, Color(colors[0]));
  painter.setBrush(Color(colors[1]));
  if (flag.kind == 'o') {
    painter.drawEllipse(QPointF(kWidth / 2., kHeight / 2.), 9.6, 9.6);
  } else {
    painter.drawRect(QRectF(21, 6, 6, 20));
    painter.drawRect(QRectF(14, 13, 20, 6));
  }
}

// A flag that is white at its edge must stand out on a white ground too.
void DrawOutline(QPainter& painter, double radius) {
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(QColor(0, 0, 0, 90), 1));
  painter.drawRoundedRect(QRectF(0.5, 0.5, kWidth - 1, kHeight - 1), radius, radius);
}

const char* const kNetworks[] = {"1&1",  "A1",    "Drei",    "HoT",      "Lycamobile", "Magenta", "o2",
                                 "Salt", "spusu", "Sunrise", "Swisscom", "Telekom",    "Vodafone"};

QImage Label(const QString& name) {
  return Drawn(2 * kWidth, kHeight, [&](QPainter& painter) {
    painter.setBrush(QColor("#e6eaee"));
    painter.drawRoundedRect(QRectF(0, 0, 2 * kWidth, kHeight), 6, 6);
    QFont font("DejaVu Sans");
    font.setPixelSize(14);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor("#2c333a"));
    painter.drawText(QRectF(0, 0, 2 * kWidth, kHeight), Qt::AlignCenter, name);
  });
}

}  // namespace

void MakeFlags(const QString& folder) {
  QDir().mkpath(folder);
  for (const Flag& flag : kFlags) {
    const QImage image = Drawn(kWidth, kHeight, [&](QPainter& painter) {
      DrawFlag(painter, flag);
      DrawOutline(painter, 0);
    });
    Save(image, folder + "/" + flag.file + ".png");
  }
}

void MakeNetworkLabels(const QString& folder) {
  QDir().mkpath(folder);
  for (const QString name : kNetworks)
    Save(Label(name), folder + "/" + name.toLower().replace("&", "und") + ".png");
}

}  // namespace pictures
