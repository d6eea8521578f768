// The tray icon with its menu and the balloon. On a desktop without a tray only the balloon is there.
#pragma once

#include <QMenu>
#include <QSystemTrayIcon>
#include <array>
#include <functional>

#include "desktop/DisplayGestures.h"
#include "desktop/Notifications.h"
#include "screens/MainDisplayView.h"

namespace vorlix {

class SystemTray : public TrayView {
 public:
  // The gestures must outlive the tray; a folder with the program's icons, as a real path. `fill` makes the menu
  // whenever it opens.
  SystemTray(const DisplayGestures& gestures, const std::string& iconFolder, std::function<void(QMenu&)> fill);

  void Open() { icon_.show(); }
  // After a tray has come or gone.
  void Renew();
  void Withdraw();
  QMenu& Menu() { return menu_; }

  bool IsThere() override { return QSystemTrayIcon::isSystemTrayAvailable(); }
  void ShowIcon(TrayIcon icon, const std::string& tip) override;
  void ShowBalloon(const Balloon& balloon) override;
  void CloseBalloon() override;

 private:
  void ShowMessage(const Balloon& balloon);

  const DisplayGestures& gestures_;
  std::array<QIcon, 4> icons_;  // by TrayIcon
  QMenu menu_;
  QSystemTrayIcon icon_;
  Notifications notifications_;
  bool isMessageShown_ = false;
};

}  // namespace vorlix
