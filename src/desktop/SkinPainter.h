// Draws the bar in its skin. Skin pictures are made for screens of double density and stretched to their place; where
// one is missing or cannot be read, a colour or the desktop's own picture stands for it.
#pragma once

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <map>
#include <string>

#include "screens/Skin.h"

namespace vorlix {

QColor ToQColor(Rgb color);

// The picture of a file, its size in the toolkit's points; one larger than the space is scaled down. Null for what is
// no picture.
QPixmap LoadPicture(const std::string& path, QSize space, double density);

class SkinPainter {
 public:
  void SetSkin(const Skin& skin);
  const Skin& Current() const { return skin_; }

  void PaintBar(QPainter& painter, const QRect& bar) const;
  // The other colour says that all calls are refused.
  void PaintGrip(QPainter& painter, const QRect& grip, bool rejectsAll) const;
  // The field behind time and text; `background` is the skin's own or that of an own number.
  void PaintField(QPainter& painter, const QRect& field, bool isCall, Rgb background) const;
  // "button_stop" and the like.
  QIcon Button(std::string_view picture, QStyle::StandardPixmap otherwise) const;

 private:
  const QPixmap& Picture(std::string_view name) const;
  const QPixmap& Glass(Rgb color) const;

  Skin skin_;
  QPixmap none_;
  std::map<std::string, QPixmap, std::less<>> pictures_;
  mutable std::map<Rgb, QPixmap> glasses_;  // the grey glass in the colours met so far
};

}  // namespace vorlix
