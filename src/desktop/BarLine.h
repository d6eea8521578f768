// One line of the bar: time, text, logo, bell and hang-up button. It can be reached by the Tab key; Enter does what a
// double click does, Delete and Space press its two buttons, the menu key opens its menu.
#pragma once

#include <QToolButton>
#include <QWidget>
#include <string>

#include "desktop/DisplayGestures.h"
#include "desktop/ElidedLabel.h"
#include "desktop/SkinPainter.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

class BarLine : public QWidget {
 public:
  // What the bar shares with its lines; all must outlive them.
  struct Surroundings {
    const DisplayGestures& gestures;
    const SkinPainter& painter;
    const QIcon& blockedMark;
  };

  BarLine(QWidget* parent, const Surroundings& surroundings, std::size_t position);

  void Show(const DisplayLine& line);
  void ShowClock(const std::string& date, const std::string& time);
  // Buttons and logo anew, after the skin or the density of the screen changed.
  void ShowSkin();
  // The height that a line takes in its font.
  int LineHeight() const;

  bool IsTimeAt(const QPoint& point) const { return time_->geometry().contains(point); }
  std::size_t Position() const { return position_; }
  const DisplayLine& Shown() const { return shown_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  QToolButton* MakeButton(const char* name, const std::string& text, std::function<void()> pressed);
  void ShowTime();
  void ShowLogo();
  void ShowButtons();
  void Announce(const std::string& before);
  void PlaceParts();
  // A call without the one button keeps its place free: those of all lines stand below each other.
  bool HasPlace(const QToolButton& button) const;

  Surroundings surroundings_;
  std::size_t position_;
  DisplayLine shown_;
  ElidedLabel* time_;
  ElidedLabel* text_;
  QLabel* logo_;
  QToolButton* bell_;
  QToolButton* hangUp_;
};

}  // namespace vorlix
