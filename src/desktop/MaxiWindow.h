// The large window of a call: picture, name, number, place and own number, semi-transparent and above the others. It
// never takes the keyboard focus, so it is closed by its button or from the menu of bar and tray.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "desktop/DisplayGestures.h"
#include "desktop/ElidedLabel.h"
#include "desktop/SkinPainter.h"
#include "desktop/WindowPlaces.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

class MaxiWindow : public QWidget, public MaxiDisplayWindow {
 public:
  // Both must outlive the window.
  MaxiWindow(const DisplayGestures& gestures, const SkinPainter& painter);

  // `places` must outlive the window, or be taken back with Withdraw().
  void Open(WindowPlaces& places);
  void Withdraw();
  // Where a person has moved it to.
  void KeepPlace();
  // By the user.
  void CloseByHand();

  void Show(const MaxiContent& content) override;
  void Hide() override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  ElidedLabel* AddText(QLayout* column, const char* name, int points, bool isBold);
  void ShowPicture(const std::string& path);
  void ShowTexts(const MaxiContent& content);
  void FitName();
  void MoveToItsPlace();

  const DisplayGestures& gestures_;
  const SkinPainter& painter_;
  WindowPlaces* places_ = nullptr;
  QToolButton* close_ = nullptr;
  QLabel* picture_;
  ElidedLabel* name_;
  ElidedLabel* number_;
  ElidedLabel* location_;
  ElidedLabel* alias_;
  QLabel* endMark_;
  QPoint shownAt_;
};

// The entry of the menus that closes it.
std::string CloseMaxiText();

}  // namespace vorlix
