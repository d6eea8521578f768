#include "skins.h"

#include <QDir>
#include <QFile>
#include <QLinearGradient>
#include <functional>
#include <vector>

#include "canvas.h"
#include "shapes.h"

namespace pictures {
namespace {

struct Look {
  const char* name;
  bool isClassic;
  QColor text, mainBack, textBack;
};

const Look kDefault{"Default", false, "#f1f4f6", "#2c333a", "#14191e"};
const Look kClassic{"Klassik", true, "#1a2026", "#d9dee3", "#ffffff"};

const QColor kRed("#d64541"), kAmber("#f2b544"), kGrip("#8b97a3");

// Pictures are drawn for a screen of double density: a line of the bar is 64 points high here, 32 on a plain screen.
constexpr int kLine = 64;
constexpr int kEdge = 8;
constexpr int kGripWidth = 24;

QImage Fall(int width, int height, const QColor& top, const QColor& bottom) {
  return Drawn(width, height, [&](QPainter& painter) {
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.fillRect(0, 0, width, height, gradient);
  });
}

// The frame's end: a thin line marks the bar off from what lies behind it.
QImage Edge(const QColor& color, const QColor& line, int lineTop) {
  return Drawn(kLine, kEdge, [&](QPainter& painter) {
    painter.fillRect(0, 0, kLine, kEdge, color);
    painter.fillRect(0, lineTop, kLine, 2, line);
  });
}

// A field with a soft light on its upper half.
QImage Glass(const QColor& color, int light) {
  QImage glass = Fall(kLine, kLine, color.lighter(light), color);
  QPainter(&glass).fillRect(0, kLine / 2, kLine, kLine / 2, color);
  return glass;
}

QImage Grip(const QColor& back, const QColor& dot) {
  return Drawn(kGripWidth, kLine, [&](QPainter& painter) {
    painter.fillRect(0, 0, kGripWidth, kLine, back);
    painter.setBrush(dot);
    for (int row = 0; row < 4; ++row) {
      for (const int x : {8, 16})
        painter.drawEllipse(QPointF(x, 17 + row * 10), 2.4, 2.4);
    }
  });
}

QImage Nobody(const Look& look) {
  constexpr int kSide = 256;
  const QColor back = look.isClassic ? look.mainBack : look.mainBack.lighter(125);
  const QColor person = look.isClassic ? look.mainBack.darker(145) : look.mainBack.lighter(230);
  QImage picture = Fall(kSide, kSide, back.lighter(112), back);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  FillShape(painter, PersonShape(), QRectF(20, 40, 216, 216), person);
  return picture;
}

QImage Button(const QPainterPath& shape, const QColor& color) {
  return Drawn(kLine, kLine, [&](QPainter& painter) { FillShape(painter, shape, QRectF(8, 8, 48, 48), color); });
}

QImage StopButton() {
  return Drawn(kLine, kLine, [](QPainter& painter) {
    painter.setBrush(kRed);
    painter.drawEllipse(QRectF(4, 4, 56, 56));
    FillShape(painter, HandsetShape(), QRectF(13, 12, 38, 38), Qt::white);
  });
}

void DrawImageKind(const Look& look, const std::function<void(const QImage&, const char*)>& save) {
  const QColor main = look.mainBack, field = look.textBack;
  save(Fall(kLine, kLine, field.darker(115), field), "display_background.jpg");
  save(Edge(main.lighter(112), main.lighter(170), 0), "background_top.jpg");
  save(Fall(kLine, kLine, main.lighter(112), main.darker(108)), "background_mid.jpg");
  save(Edge(main.darker(108), main.darker(180), kEdge - 2), "background_bot.jpg");
  save(Glass(field, 145), "display_glass.jpg");
  save(Glass("#d2d2d2", 110), "display_glass_color.jpg");
  save(Fall(320, 480, main, field), "newslist_background.jpg");
  save(Fall(480, 320, main.lighter(112), main.darker(115)), "vcard_background.jpg");
}

void DrawSkin(const Look& look, const QString& folder) {
  const auto save = [&](const QImage& image, const char* name) { Save(image, folder + "/" + name); };
  if (look.isClassic) {
    save(Fall(kLine, kLine, look.mainBack.lighter(108), look.mainBack.darker(106)), "classic_background.jpg");
  } else {
    DrawImageKind(look, save);
  }
  save(Grip(look.mainBack, kGrip), "display_grip.jpg");
  save(Grip(kRed, "#ffffff"), "display_grip_color.jpg");
  save(Nobody(look), "nobody.jpg");
  save(StopButton(), "button_stop.png");
  save(Button(BellShape(), look.isClassic ? kAmber.darker(170) : kAmber), "button_bell.png");
  save(Button(EraserShape(), look.isClassic ? look.text.lighter(220) : kGrip.lighter(135)), "button_eraser.png");
}

void WriteIni(const Look& look, const QString& file) {
  const auto digits = [](const QColor& color) { return color.name().mid(1).toUpper().toLatin1(); };
  QFile out(file);
  out.open(QIODevice::WriteOnly);
  out.write("[skin]\r\nmode=" + QByteArray(look.isClassic ? "classic" : "") + "\r\ncolorText=" + digits(look.text) +
            "\r\ncolorMainBack=" + digits(look.mainBack) + "\r\ncolorTextBack=" + digits(look.textBack) + "\r\n");
}

}  // namespace

void MakeSkins(const QString& designs) {
  for (const Look& look : {kDefault, kClassic}) {
    const QString folder = designs + "/" + look.name;
    QDir().mkpath(folder);
    DrawSkin(look, folder);
    WriteIni(look, folder + "/skin_" + look.name + ".ini");
  }
}

}  // namespace pictures
