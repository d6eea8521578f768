#include "desktop/MainBar.h"

#include <QApplication>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QShortcut>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "desktop/BarGeometry.h"
#include "desktop/icons.h"
#include "desktop/line_menu.h"
#include "desktop/placing.h"
#include "desktop/text.h"
#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {
namespace {

constexpr int kGrip = 12;
constexpr int kEdge = 4;
constexpr int kGrasp = 6;  // how near to its free end the bar is taken for making it wider
constexpr int kFirstWidth = 640, kLeastWidth = 240;

}  // namespace

MainBar::MainBar(const DisplayGestures& gestures, const std::string& iconFolder,
                 std::function<void(QMenu&)> addCommands)
    : gestures_(gestures), blockedMark_(LoadIcon(iconFolder, "blocked")), addCommands_(std::move(addCommands)) {
  setAttribute(Qt::WA_ShowWithoutActivating);
  // The tips are wanted though the bar is never the active window.
  setAttribute(Qt::WA_AlwaysShowToolTips);
  setMouseTracking(true);
  setWindowTitle(QStringLiteral("Vorlix"));
  AddKeys();
  FollowScreens();
}

// With a screen that comes or goes, the place that a person gave the bar may be there again, or be there no more.
void MainBar::FollowScreens() {
  const auto placeAgain = [this] {
    if (!isOpen_) return;
    drag_ = Drag::kNone;
    const QPoint before = wanted_.topLeft();
    TakePlace();
    wantedArea_.translate(wanted_.topLeft() - before);
    Arrange();
  };
  const auto follow = [this, placeAgain](QScreen* screen) {
    QObject::connect(screen, &QScreen::geometryChanged, this, placeAgain);
    QObject::connect(screen, &QScreen::availableGeometryChanged, this, placeAgain);
  };
  std::ranges::for_each(QGuiApplication::screens(), follow);
  QObject::connect(qApp, &QGuiApplication::screenAdded, this, follow);
  QObject::connect(qApp, &QGuiApplication::screenAdded, this, placeAgain);
  QObject::connect(qApp, &QGuiApplication::screenRemoved, this, placeAgain);
}

void MainBar::Open(WindowPlaces& places, const DisplayFont& font, bool hasTray) {
  setAccessibleName(ToQString(LoadLangKey("Display_Title_Bar", "Anrufanzeige"_ansi)));
  places_ = &places;
  SetFont(font);
  AdjustLines();
  TakePlace();
  wantedArea_ = AreaOf(screen_, wanted_.center());
  isOpen_ = true;
  SetTray(hasTray);
}

// A bar that cannot be reached by the tray's menu has to be one of the windows that the keyboard reaches.
void MainBar::SetTray(bool hasTray) {
  hasTray_ = hasTray;
  setWindowFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint |
                 (hasTray ? Qt::Tool | Qt::WindowDoesNotAcceptFocus : Qt::Window));
  Arrange();
}

void MainBar::Withdraw() {
  isOpen_ = false;
  places_ = nullptr;
  hide();
}

void MainBar::SetFont(const DisplayFont& font) {
  QFont chosen = QApplication::font();
  const QString family = ToQString(font.family);
  if (QFontDatabase::hasFamily(family)) {
    chosen = QFont(family, std::max(font.points, 1));
  } else if (font.points > chosen.pointSize()) {
    chosen.setPointSize(font.points);
  }
  chosen.setBold(font.isBold);
  setFont(chosen);
}

// Where it was left, or else the lower right corner of the first screen.
void MainBar::TakePlace() {
  const auto place = places_->Load(PlacedWindow::kDisplay);
  if (place) {
    screen_ = place->screen;
    wanted_ = QRect(CornerOf(*place), QSize(place->width > 0 ? place->width : kFirstWidth, HeightOf(1)));
    return;
  }
  screen_.clear();
  const QScreen* first = QGuiApplication::primaryScreen();
  const QRect area = first == nullptr ? QRect() : first->availableGeometry();
  wanted_ = Inside(QRect(area.bottomRight(), QSize(kFirstWidth, HeightOf(1))), area);
}

// Without the lines of the calls that are there just now.
void MainBar::Remember() {
  wantedArea_ = Area();
  wanted_ = WithHeight(home_, HeightOf(1), wantedArea_);
  const WindowPlace place = PlaceOf(wanted_);
  screen_ = place.screen;
  if (places_ != nullptr) places_->Save(PlacedWindow::kDisplay, place);
}

QRect MainBar::Area() const {
  return AreaAt(home_.center());
}

int MainBar::LineHeight() const {
  return lines_.empty() ? 0 : lines_.front()->LineHeight();
}

// Before the first content there is a line already, for the clock.
std::size_t MainBar::VisibleLines() const {
  return std::max<std::size_t>(1, content_.lines.size());
}

int MainBar::HeightOf(std::size_t lines) const {
  return static_cast<int>(lines) * LineHeight() + 2 * kEdge;
}

void MainBar::ShowLines(const DisplayContent& content) {
  content_ = content;
  AdjustLines();
  for (std::size_t i = 0; i < content_.lines.size(); ++i)
    lines_[i]->Show(content_.lines[i]);
  Arrange();
  update();
}

void MainBar::AdjustLines() {
  while (lines_.size() < VisibleLines()) {
    lines_.push_back(new BarLine(this, {gestures_, painter_, blockedMark_}, lines_.size()));
    lines_.back()->ShowSkin();
  }
}

void MainBar::ShowClock(const std::string& date, const std::string& time) {
  if (!lines_.empty()) lines_.front()->ShowClock(date, time);
}

void MainBar::ShowSkin(const Skin& skin) {
  painter_.SetSkin(skin);
  for (BarLine* line : lines_)
    line->ShowSkin();
  update();
}

void MainBar::BringToTop() {
  if (isVisible()) raise();
}

void MainBar::SetPlace(BarPlace place) {
  place_ = place;
  Arrange();
}

bool MainBar::IsInUse() {
  return drag_ != Drag::kNone || menu_ != nullptr || isActiveWindow() || (isVisible() && underMouse());
}

void MainBar::Arrange() {
  if (!isOpen_ || drag_ == Drag::kMoving || drag_ == Drag::kSizing) return;
  const QRect area = AreaOf(screen_, wanted_.center());
  home_ = WithHeight(Followed(wanted_, wantedArea_, area), HeightOf(VisibleLines()), area);
  if (place_ == BarPlace::kGone || place_ == BarPlace::kTray) return hide();
  ShowAtPlace();
  show();
}

void MainBar::ShowAtPlace() {
  const QRect place = place_ == BarPlace::kStrip ? StripOf(home_, kGrip, Area()) : home_;
  if (CanPlaceWindows()) {
    setGeometry(place);
  } else {
    resize(place.size());
  }
  PlaceLines();
}

void MainBar::resizeEvent(QResizeEvent*) {
  if (isSizedByDesktop_ && place_ == BarPlace::kShown) {
    home_.setWidth(width());
    wanted_.setWidth(width());
  }
  PlaceLines();
}

void MainBar::PlaceLines() {
  const int high = LineHeight();
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    lines_[i]->setGeometry(kGrip, kEdge + static_cast<int>(i) * high, std::max(0, width() - kGrip - kGrasp), high);
    lines_[i]->setVisible(place_ == BarPlace::kShown && i < VisibleLines());
  }
}

void MainBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter_.PaintBar(painter, rect());
  const int high = LineHeight();
  for (int top = kEdge; high > 0 && top + high <= height(); top += high)
    painter_.PaintGrip(painter, QRect(0, top, kGrip, high), content_.rejectsAll);
}

bool MainBar::event(QEvent* event) {
  if (event->type() == QEvent::ScreenChangeInternal) {
    for (BarLine* line : lines_)
      line->ShowSkin();
  }
  if (event->type() == QEvent::WindowDeactivate) {
    // The window behind the widget took the focus only for as long as a person wanted it.
    if (hasTray_) windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, true);
    if (!underMouse()) PassOn(gestures_.mouseLeft);
  }
  return QWidget::event(event);
}

void MainBar::Activate() {
  PassOn(gestures_.mouseEntered);
  if (!isVisible()) return;
  windowHandle()->setFlag(Qt::WindowDoesNotAcceptFocus, false);
  raise();
  activateWindow();
  lines_.front()->setFocus(Qt::ShortcutFocusReason);
  // A desktop may refuse this; then nothing tells that the bar may hide again.
  PassOn(gestures_.mouseLeft);
}

void MainBar::closeEvent(QCloseEvent* event) {
  event->ignore();
  PassOn(gestures_.toggle);
}

void MainBar::enterEvent(QEnterEvent*) {
  EndSizingByDesktop();
  PassOn(gestures_.mouseEntered);
}

void MainBar::leaveEvent(QEvent*) {
  PassOn(gestures_.mouseLeft);
}

bool MainBar::IsSizingAt(const QPoint& point) const {
  if (place_ != BarPlace::kShown) return false;
  return IsRight(home_, Area()) ? point.x() < kGrasp : point.x() >= width() - kGrasp;
}

void MainBar::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  EndSizingByDesktop();
  pressedAt_ = event->globalPosition().toPoint();
  homeBefore_ = home_;
  drag_ = IsSizingAt(event->position().toPoint()) ? Drag::kSizing : Drag::kPressed;
  if (drag_ != Drag::kSizing || CanPlaceWindows() || !windowHandle()->startSystemResize(Qt::RightEdge)) return;
  drag_ = Drag::kNone;
  isSizedByDesktop_ = true;
}

// The desktop keeps the mouse while it makes the bar wider: that it is back means that this is over.
void MainBar::EndSizingByDesktop() {
  if (std::exchange(isSizedByDesktop_, false)) Remember();
}

void MainBar::mouseMoveEvent(QMouseEvent* event) {
  const QPoint point = event->globalPosition().toPoint();
  if (drag_ == Drag::kNone) {
    setCursor(IsSizingAt(event->position().toPoint()) ? Qt::SizeHorCursor : Qt::ArrowCursor);
  } else if (drag_ == Drag::kPressed && (point - pressedAt_).manhattanLength() >= QApplication::startDragDistance()) {
    drag_ = !CanPlaceWindows() && windowHandle()->startSystemMove() ? Drag::kNone : Drag::kMoving;
  }
  if (drag_ == Drag::kMoving || drag_ == Drag::kSizing) DragTo(point);
}

void MainBar::DragTo(const QPoint& point) {
  const QPoint way = point - pressedAt_;
  home_ = homeBefore_;
  const QRect area = drag_ == Drag::kMoving ? AreaAt(point) : Area();
  if (area.isEmpty()) return;
  home_ = drag_ == Drag::kMoving ? Snapped(home_.translated(way), area) : Sized(home_, way.x(), kLeastWidth, area);
  ShowAtPlace();
}

void MainBar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const Drag drag = std::exchange(drag_, Drag::kNone);
  if (drag == Drag::kMoving || drag == Drag::kSizing) {
    Remember();
    return Arrange();
  }
  const QPoint point = event->position().toPoint();
  const BarLine* line = LineAt(point);
  if (drag == Drag::kPressed && line != nullptr && line->IsTimeAt(point - line->pos())) PassOn(gestures_.timeClick);
}

void MainBar::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint point = event->position().toPoint();
  const BarLine* line = LineAt(point);
  if (event->button() != Qt::LeftButton || line == nullptr || line->IsTimeAt(point - line->pos())) return;
  PassOn(gestures_.doubleClick, line->Position());
}

BarLine* MainBar::LineAt(const QPoint& point) const {
  const auto line = std::ranges::find_if(
      lines_, [&](const BarLine* one) { return one->isVisible() && one->geometry().contains(point); });
  return line == lines_.end() ? nullptr : *line;
}

void MainBar::contextMenuEvent(QContextMenuEvent* event) {
  const BarLine* line = LineAt(event->pos());
  menu_ = new QMenu(this);
  if (line != nullptr && line->Position() < content_.lines.size()) {
    AddLineCommands(*menu_, content_, line->Position(), gestures_);
  }
  addCommands_(*menu_);
  QObject::connect(menu_, &QMenu::aboutToHide, this, [this] {
    menu_->deleteLater();
    menu_.clear();
    if (!underMouse()) PassOn(gestures_.mouseLeft);
  });
  menu_->popup(event->globalPos());
}

// As shortcuts: the buttons would keep the arrows for themselves.
void MainBar::AddKeys() {
  new QShortcut(QKeySequence(Qt::Key_Escape), this, [this] { PassOn(gestures_.toggle); });
  for (const Qt::Key edge : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down})
    new QShortcut(QKeySequence(Qt::CTRL | edge), this, [this, edge] { Dock(edge); });
}

void MainBar::Dock(Qt::Key edge) {
  const QRect area = Area();
  if (!CanPlaceWindows() || area.isEmpty()) return;
  home_ = Docked(home_, edge, area);
  Remember();
  Arrange();
}

}  // namespace vorlix
