#include "desktop/SkinPainter.h"

#include <QApplication>
#include <QImageReader>

#include "desktop/text.h"
#include "screens/LogoSize.h"

namespace vorlix {
namespace {

// Own numbers have a handful of colours; a settings file with hundreds shall not fill the memory.
constexpr std::size_t kMostGlasses = 32;
constexpr int kEdge = 4;

void Stretch(QPainter& painter, const QRect& place, const QPixmap& picture, Rgb otherwise) {
  if (picture.isNull()) {
    painter.fillRect(place, ToQColor(otherwise));
  } else {
    painter.drawPixmap(place, picture);
  }
}

QPixmap Tinted(const QPixmap& grey, Rgb color) {
  QPixmap tinted = grey;
  QPainter painter(&tinted);
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  painter.fillRect(tinted.rect(), ToQColor(color));
  return tinted;
}

}  // namespace

QColor ToQColor(Rgb color) {
  return QColor::fromRgb(color & 0xFFFFFFu);
}

QPixmap LoadPicture(const std::string& path, QSize space, double density) {
  if (path.empty()) return {};
  QImageReader reader(ToQString(path));
  reader.setDecideFormatFromContent(true);
  const QSize own = reader.size();
  if (!own.isValid()) return {};
  const PictureSize shown = LogoSize({own.width(), own.height()}, {space.width(), space.height()});
  const QSize inPixels = (QSizeF(shown.width, shown.height) * density).toSize();
  // More pixels than it has make no picture better.
  if (inPixels.width() < own.width()) reader.setScaledSize(inPixels);
  QPixmap picture = QPixmap::fromImageReader(&reader);
  if (!picture.isNull() && shown.width > 0) picture.setDevicePixelRatio(double(picture.width()) / shown.width);
  return picture;
}

void SkinPainter::SetSkin(const Skin& skin) {
  skin_ = skin;
  pictures_.clear();
  glasses_.clear();
  for (const auto& [name, path] : skin.pictures)
    pictures_.emplace(name, QPixmap(ToQString(path)));
}

const QPixmap& SkinPainter::Picture(std::string_view name) const {
  const auto found = pictures_.find(name);
  return found == pictures_.end() ? none_ : found->second;
}

void SkinPainter::PaintBar(QPainter& painter, const QRect& bar) const {
  if (skin_.isClassic || skin_.isNeutral) {
    return Stretch(painter, bar, Picture("classic_background"), skin_.colorMainBack);
  }
  const Rgb color = skin_.colorMainBack;
  Stretch(painter, QRect(bar.left(), bar.top(), bar.width(), kEdge), Picture("background_top"), color);
  Stretch(painter, bar.adjusted(0, kEdge, 0, -kEdge), Picture("background_mid"), color);
  Stretch(painter, QRect(bar.left(), bar.bottom() - kEdge + 1, bar.width(), kEdge), Picture("background_bot"), color);
}

void SkinPainter::PaintGrip(QPainter& painter, const QRect& grip, bool rejectsAll) const {
  const QPixmap& picture = Picture(rejectsAll ? "display_grip_color" : "display_grip");
  if (!picture.isNull()) return painter.drawPixmap(grip, picture);
  painter.setPen(rejectsAll ? QPen(Qt::red, 2) : QPen(ToQColor(skin_.colorText), 1, Qt::DotLine));
  for (const int x : {grip.center().x() - 2, grip.center().x() + 2})
    painter.drawLine(x, grip.top() + 6, x, grip.bottom() - 6);
}

void SkinPainter::PaintField(QPainter& painter, const QRect& field, bool isCall, Rgb background) const {
  const bool isOwnColor = background != skin_.colorTextBack;
  Stretch(painter, field,
          isOwnColor ? Glass(background)
          : isCall   ? Picture("display_glass")
                     : Picture("display_background"),
          background);
}

const QPixmap& SkinPainter::Glass(Rgb color) const {
  const QPixmap& grey = Picture("display_glass_color");
  if (grey.isNull()) return grey;
  if (glasses_.size() >= kMostGlasses) glasses_.clear();
  const auto [glass, isNew] = glasses_.try_emplace(color);
  if (isNew) glass->second = Tinted(grey, color);
  return glass->second;
}

QIcon SkinPainter::Button(std::string_view picture, QStyle::StandardPixmap otherwise) const {
  const QPixmap& own = Picture(picture);
  return own.isNull() ? QApplication::style()->standardIcon(otherwise) : QIcon(own);
}

}  // namespace vorlix
