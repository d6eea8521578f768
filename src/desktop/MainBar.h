// The bar: a frameless window above the others, with a line for each call. It is dragged by its grip or by any place
// without a button, is taken by screen edges, and is made wider at its free end. It never takes the keyboard focus by
// itself; once a person activates it, Tab, Enter, Space, Delete and the menu key reach everything, Ctrl with an arrow
// docks it to that edge, Escape hides it.
//
// Under Wayland a window can neither be placed nor kept above others: the desktop decides both, the bar is moved by the
// desktop's own dragging, and hiding leaves the grip where the bar is.
#pragma once

#include <QMenu>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <vector>

#include "desktop/BarLine.h"
#include "desktop/WindowPlaces.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

// The font of the settings. A family that this machine has not got gives the desktop's font, at least in its own size.
struct DisplayFont {
  std::string family;
  int points = 0;
  bool isBold = false;
};

class MainBar : public QWidget, public MainDisplayView {
 public:
  // The gestures must outlive the bar; a folder with the program's icons, as a real path; what its menu has besides the
  // commands of a line.
  MainBar(const DisplayGestures& gestures, const std::string& iconFolder, std::function<void(QMenu&)> addCommands);

  // Comes onto the screen where it was left. `places` must outlive the bar, or be taken back with Withdraw().
  void Open(WindowPlaces& places, const DisplayFont& font, bool hasTray);
  // With a tray it is no window among the others; without one it can be activated like them. The bar must not be in
  // use.
  void SetTray(bool hasTray);
  void Withdraw();
  // By a person's command: brings the keyboard to the bar.
  void Activate();

  const DisplayContent& Content() const { return content_; }
  BarPlace Place() const { return place_; }
  const SkinPainter& Painter() const { return painter_; }

  void ShowLines(const DisplayContent& content) override;
  void ShowClock(const std::string& date, const std::string& time) override;
  void BringToTop() override;
  void SetPlace(BarPlace place) override;
  bool IsInUse() override;
  void ShowSkin(const Skin& skin) override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  enum class Drag { kNone, kPressed, kMoving, kSizing };

  void SetFont(const DisplayFont& font);
  void AdjustLines();
  void FollowScreens();
  void Arrange();
  void ShowAtPlace();
  void PlaceLines();
  void EndSizingByDesktop();
  int LineHeight() const;
  std::size_t VisibleLines() const;
  int HeightOf(std::size_t lines) const;
  QRect Area() const;
  void TakePlace();
  void Remember();
  bool IsSizingAt(const QPoint& point) const;
  void DragTo(const QPoint& point);
  BarLine* LineAt(const QPoint& point) const;
  void AddKeys();
  void Dock(Qt::Key edge);

  const DisplayGestures& gestures_;
  QIcon blockedMark_;
  std::function<void(QMenu&)> addCommands_;
  SkinPainter painter_;
  std::vector<BarLine*> lines_;  // as many as were ever needed: one may go while its button is being pressed
  DisplayContent content_;
  WindowPlaces* places_ = nullptr;
  BarPlace place_ = BarPlace::kShown;
  std::string screen_;  // the name of the monitor that a person has left it on; empty before that
  QRect wanted_;        // where it was left there, with one line
  QRect wantedArea_;    // what it could cover then
  QRect home_;          // where the whole bar stands now, hidden or not
  Drag drag_ = Drag::kNone;
  QPoint pressedAt_;
  QRect homeBefore_;
  QPointer<QMenu> menu_;
  bool isOpen_ = false;
  bool hasTray_ = false;
  bool isSizedByDesktop_ = false;
};

}  // namespace vorlix
