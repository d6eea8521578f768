#include "desktop/MaxiWindow.h"

#include <QBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QWindow>
#include <algorithm>
#include <array>

#include "desktop/BarGeometry.h"
#include "desktop/placing.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

constexpr QSize kSize(640, 190);
constexpr QSize kPicture(128, 128);
constexpr int kNamePoints = 22, kLeastNamePoints = 13;
constexpr int kBesideTexts = 96;
// The settings name a text's colour by its number: 0 to 2 for the caller's name, 3 to 5 for the others.
constexpr std::array<Rgb, 6> kColors = {0xFFFFFF, 0xFFD75E, 0x7FD1FF, 0xFFFFFF, 0xD5DBE1, 0x9BE39B};
constexpr Rgb kBack = 0x2C333A, kBorder = 0x5A6570;
constexpr const char* kEndMarkStyle =
    "background:%1; color:white; border-radius:4px; padding:2px 8px; font-weight:bold";

QColor ColorAt(int number) {
  return ToQColor(kColors.at(static_cast<std::size_t>(std::clamp(number, 0, static_cast<int>(kColors.size()) - 1))));
}

std::string EndMarkText(EndMark mark) {
  switch (mark) {
    case EndMark::kEnded:
      return LoadLangKey("MaxiDisplay_Label_Ended", "Anruf beendet"_ansi);
    case EndMark::kBlocked:
      return LoadLangKey("MaxiDisplay_Label_Blocked", "Anruf abgewiesen"_ansi);
    default:
      return {};
  }
}

}  // namespace

std::string CloseMaxiText() {
  return LoadLangKey("MaxiDisplay_Menu_Close", "Großanzeige schließen"_ansi);
}

MaxiWindow::MaxiWindow(const DisplayGestures& gestures, const SkinPainter& painter)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus),
      gestures_(gestures),
      painter_(painter),
      picture_(new QLabel(this)),
      endMark_(new QLabel(this)) {
  setAttribute(Qt::WA_ShowWithoutActivating);
  setWindowTitle(QStringLiteral("Vorlix"));
  resize(kSize);
  picture_->setObjectName(QStringLiteral("picture"));
  picture_->setFixedSize(kPicture);
  picture_->setAlignment(Qt::AlignCenter);
  endMark_->setObjectName(QStringLiteral("endMark"));
  auto* texts = new QVBoxLayout;
  name_ = AddText(texts, "name", kNamePoints, true);
  number_ = AddText(texts, "number", 16, false);
  location_ = AddText(texts, "location", 12, false);
  alias_ = AddText(texts, "alias", 12, false);
  texts->addWidget(endMark_, 0, Qt::AlignLeft);
  texts->addStretch();
  close_ = new QToolButton(this);
  close_->setObjectName(QStringLiteral("close"));
  close_->setAutoRaise(true);
  close_->setText(QString(QChar(0x2715)));
  close_->setStyleSheet(QStringLiteral("color:white; font-size:14pt"));
  QObject::connect(close_, &QToolButton::clicked, this, [this] { CloseByHand(); });
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(16, 12, 8, 12);
  row->setSpacing(16);
  row->addWidget(picture_);
  row->addLayout(texts, 1);
  row->addWidget(close_, 0, Qt::AlignTop);
}

// The program's language is known by now.
void MaxiWindow::Open(WindowPlaces& places) {
  places_ = &places;
  setAccessibleName(ToQString(LoadLangKey("MaxiDisplay_Title_Window", "Großanzeige"_ansi)));
  close_->setToolTip(ToTip(CloseMaxiText()));
  close_->setAccessibleName(ToQString(CloseMaxiText()));
}

ElidedLabel* MaxiWindow::AddText(QLayout* column, const char* name, int points, bool isBold) {
  auto* label = new ElidedLabel(this);
  label->setObjectName(QLatin1String(name));
  QFont font = label->font();
  font.setPointSize(points);
  font.setBold(isBold);
  label->setFont(font);
  label->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
  column->addWidget(label);
  return label;
}

void MaxiWindow::ShowTexts(const MaxiContent& content) {
  const MaxiLook& look = content.look;
  const auto show = [](ElidedLabel* label, const std::string& text, int shadow, int color) {
    label->SetShadow(shadow / 2);
    label->Show(ToQString(text).simplified(), ColorAt(color));
    label->setVisible(!text.empty());
  };
  show(name_, content.name, look.shadowName, look.colorName);
  show(number_, content.number, look.shadowOther, look.colorOther);
  show(location_, content.location, look.shadowOther, look.colorOther);
  show(alias_, content.MSNAlias, look.shadowOther, look.colorOther);
}

// A long name is shown smaller before it is cut.
void MaxiWindow::FitName() {
  const int space = width() - (picture_->isHidden() ? 0 : kPicture.width()) - kBesideTexts;
  QFont font = name_->font();
  for (int points = kNamePoints; points >= kLeastNamePoints; --points) {
    font.setPointSize(points);
    if (QFontMetrics(font).horizontalAdvance(name_->text()) <= space) break;
  }
  name_->setFont(font);
}

void MaxiWindow::ShowPicture(const std::string& path) {
  QPixmap picture = LoadPicture(path, kPicture, devicePixelRatioF());
  if (picture.isNull()) picture = LoadPicture(painter_.Current().Picture("nobody"), kPicture, devicePixelRatioF());
  picture_->setPixmap(picture);
  picture_->setVisible(!picture.isNull());
}

void MaxiWindow::Show(const MaxiContent& content) {
  ShowTexts(content);
  ShowPicture(content.picture);
  FitName();
  picture_->setAccessibleName(ToQString(content.name.empty() ? content.number : content.name));
  const std::string mark = EndMarkText(content.endMark);
  endMark_->setText(ToQString(mark));
  endMark_->setAccessibleName(ToQString(mark));
  endMark_->setVisible(!mark.empty());
  endMark_->setStyleSheet(
      QLatin1String(kEndMarkStyle)
          .toString()
          .arg(content.endMark == EndMark::kBlocked ? QLatin1String("#B3261E") : QLatin1String("#4A5763")));
  setWindowOpacity(content.look.alpha / 255.0);
  if (isVisible()) return;
  MoveToItsPlace();
  show();
}

void MaxiWindow::MoveToItsPlace() {
  if (!CanPlaceWindows()) return;
  const auto place = places_ == nullptr ? std::nullopt : places_->Load(PlacedWindow::kMaxiDisplay);
  const QRect first = AreaAt(QPoint());
  const QPoint corner =
      place ? CornerOf(*place) : QPoint(first.center().x() - width() / 2, first.top() + first.height() / 5);
  shownAt_ = Inside(QRect(corner, size()), AreaAt(corner)).topLeft();
  move(shownAt_);
}

void MaxiWindow::Hide() {
  if (!isVisible()) return;
  KeepPlace();
  hide();
}

void MaxiWindow::KeepPlace() {
  if (!isVisible() || places_ == nullptr || !CanPlaceWindows() || pos() == shownAt_) return;
  places_->Save(PlacedWindow::kMaxiDisplay, PlaceOf(geometry()));
}

void MaxiWindow::Withdraw() {
  Hide();
  places_ = nullptr;
}

void MaxiWindow::CloseByHand() {
  Hide();
  PassOn(gestures_.maxiClosed);
}

void MaxiWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  CloseByHand();
}

void MaxiWindow::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) windowHandle()->startSystemMove();
}

void MaxiWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), ToQColor(kBack));
  painter.setPen(ToQColor(kBorder));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace vorlix
