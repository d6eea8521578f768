#include "desktop/BarLine.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

#include "desktop/line_menu.h"
#include "desktop/text.h"

namespace vorlix {
namespace {

constexpr int kGap = 6;
constexpr int kButton = 28;
constexpr int kRounding = 2;  // the parts of a point that a text's width is short of
constexpr int kPlainHeight = 32;
constexpr QSize kLogoSpace(72, 28);
// Below this many letters of width, date and time stand in two rows.
constexpr int kNarrow = 56;

// As wide as it gets: the digits of a clock shall not make the text beside it jump.
int WidestOf(const QFontMetrics& metrics, QString text) {
  std::ranges::replace_if(
      text, [](QChar letter) { return letter.isDigit(); }, QLatin1Char('0'));
  int widest = 0;
  for (const QString& row : text.split(QLatin1Char('\n')))
    widest = std::max(widest, metrics.horizontalAdvance(row));
  return widest + kRounding;
}

}  // namespace

BarLine::BarLine(QWidget* parent, const Surroundings& surroundings, std::size_t position)
    : QWidget(parent),
      surroundings_(surroundings),
      position_(position),
      time_(new ElidedLabel(this)),
      text_(new ElidedLabel(this)),
      logo_(new QLabel(this)),
      bell_(MakeButton("bell", BellText(), [this] { PassOn(surroundings_.gestures.bell); })),
      hangUp_(MakeButton("hangUp", {}, [this] { PassOn(surroundings_.gestures.hangUp, position_); })) {
  setFocusPolicy(Qt::TabFocus);
  time_->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
  text_->setAlignment(Qt::AlignVCenter | Qt::AlignLeft);
  text_->setObjectName(QStringLiteral("text"));
  time_->setObjectName(QStringLiteral("time"));
  logo_->setObjectName(QStringLiteral("logo"));
  logo_->setAlignment(Qt::AlignCenter);
}

QToolButton* BarLine::MakeButton(const char* name, const std::string& text, std::function<void()> pressed) {
  auto* button = new QToolButton(this);
  button->setObjectName(QLatin1String(name));
  button->setAutoRaise(true);
  button->setIconSize(QSize(kButton - 8, kButton - 8));
  button->setToolTip(ToTip(text));
  button->setAccessibleName(ToQString(text));
  QObject::connect(button, &QToolButton::clicked, button, [pressed = std::move(pressed)] { pressed(); });
  return button;
}

int BarLine::LineHeight() const {
  return std::max(kPlainHeight, 2 * fontMetrics().lineSpacing() + 2);
}

void BarLine::Show(const DisplayLine& line) {
  const std::string before = shown_.text;
  const bool hasNewLogo = shown_.logo != line.logo || shown_.isBlockMarked != line.isBlockMarked;
  shown_ = line;
  ShowTime();
  text_->Show(ToQString(line.text).simplified(), ToQColor(line.textColor));
  // A state that is cut off can be read in the tip.
  setToolTip(ToTip(line.tip.empty() ? line.text : line.tip));
  setAccessibleName(ToQString(line.time.empty() ? line.text : line.time + " " + line.text));
  setAccessibleDescription(ToQString(line.tip));
  if (hasNewLogo) ShowLogo();
  logo_->setToolTip(line.isBlockMarked ? ToTip(line.blockReason) : QString());
  logo_->setAccessibleName(ToQString(line.isBlockMarked ? line.blockReason : line.caller));
  ShowButtons();
  PlaceParts();
  update();
  Announce(before);
}

void BarLine::ShowButtons() {
  const std::string text = HangUpText(shown_.hangUp);
  hangUp_->setVisible(shown_.hangUp != HangUpMode::kNone);
  hangUp_->setEnabled(shown_.hangUpEnabled);
  hangUp_->setIcon(shown_.hangUp == HangUpMode::kEraser
                       ? surroundings_.painter.Button("button_eraser", QStyle::SP_DialogResetButton)
                       : surroundings_.painter.Button("button_stop", QStyle::SP_DialogCancelButton));
  hangUp_->setToolTip(ToTip(text));
  hangUp_->setAccessibleName(ToQString(text));
  bell_->setVisible(shown_.isCall);
  bell_->setEnabled(shown_.bellEnabled);
}

// A screen reader tells of a caller though the bar has not the focus.
void BarLine::Announce(const std::string& before) {
  if (!shown_.isCall || before == shown_.text || !QAccessible::isActive()) return;
  QAccessibleEvent event(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void BarLine::ShowClock(const std::string& date, const std::string& time) {
  if (shown_.isCall) return;
  shown_.date = date;
  shown_.time = time;
  const int before = time_->width();
  ShowTime();
  if (WidestOf(fontMetrics(), time_->text()) != before) PlaceParts();
}

void BarLine::ShowTime() {
  const bool isNarrow = width() < kNarrow * fontMetrics().averageCharWidth();
  const std::string_view between = shown_.date.empty() || shown_.time.empty() ? "" : isNarrow ? "\n" : "  ";
  const QString text = ToQString(shown_.date + std::string(between) + shown_.time);
  time_->Show(text, ToQColor(shown_.textColor));
}

void BarLine::ShowSkin() {
  bell_->setIcon(surroundings_.painter.Button("button_bell", QStyle::SP_MediaVolume));
  ShowButtons();
  ShowLogo();
  PlaceParts();
}

void BarLine::ShowLogo() {
  logo_->setPixmap(shown_.isBlockMarked
                       ? surroundings_.blockedMark.pixmap(QSize(kButton - 4, kButton - 4), devicePixelRatioF())
                       : LoadPicture(shown_.logo, kLogoSpace, devicePixelRatioF()));
}

bool BarLine::HasPlace(const QToolButton& button) const {
  return shown_.isCall || !button.isHidden();
}

void BarLine::PlaceParts() {
  int right = width();
  for (QToolButton* button : {hangUp_, bell_}) {
    if (!HasPlace(*button)) continue;
    right -= kButton + 2;
    button->setGeometry(right + 2, (height() - kButton) / 2, kButton, kButton);
  }
  right -= kGap;
  logo_->setVisible(!logo_->pixmap().isNull());
  if (!logo_->isHidden()) {
    right -= kLogoSpace.width();
    logo_->setGeometry(right, 0, kLogoSpace.width(), height());  // which centres the picture
    right -= kGap;
  }
  // Beside a long time a little of the text stays to be read.
  const int wide = time_->text().isEmpty() ? 0 : std::min(WidestOf(fontMetrics(), time_->text()), (right - kGap) / 2);
  time_->setGeometry(kGap, 0, wide, height());
  const int left = wide > 0 ? 3 * kGap + wide : kGap;
  text_->setGeometry(left, 0, std::max(0, right - left), height());
}

void BarLine::resizeEvent(QResizeEvent*) {
  ShowTime();
  PlaceParts();
}

void BarLine::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int buttons = (HasPlace(*hangUp_) ? kButton + 2 : 0) + (HasPlace(*bell_) ? kButton + 2 : 0);
  const QRect field = rect().adjusted(0, 1, -buttons, -1);
  surroundings_.painter.PaintField(painter, field, shown_.isCall, shown_.background);
  if (!hasFocus()) return;
  painter.setPen(QPen(ToQColor(shown_.textColor), 1, Qt::DotLine));
  painter.drawRect(field.adjusted(1, 1, -2, -2));
}

void BarLine::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return PassOn(surroundings_.gestures.doubleClick, position_);
    case Qt::Key_Delete:
      return hangUp_->click();
    case Qt::Key_Space:
      return bell_->click();
    default:
      QWidget::keyPressEvent(event);
  }
}

void BarLine::focusInEvent(QFocusEvent*) {
  update();
}

void BarLine::focusOutEvent(QFocusEvent*) {
  update();
}

}  // namespace vorlix
