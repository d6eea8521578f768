#include "desktop/SystemTray.h"

#include "desktop/icons.h"
#include "desktop/text.h"

namespace vorlix {

SystemTray::SystemTray(const DisplayGestures& gestures, const std::string& iconFolder, std::function<void(QMenu&)> fill)
    : gestures_(gestures),
      icons_{LoadIcon(iconFolder, "tray_idle"), LoadIcon(iconFolder, "tray_line_lost"),
             LoadIcon(iconFolder, "tray_ringing"), LoadIcon(iconFolder, "tray_missed")},
      notifications_({[this] { PassOn(gestures_.balloonDismissed); }, [this](const Balloon& one) { ShowMessage(one); }},
                     ToQString(iconFolder + "/vorlix_64.png")) {
  icon_.setIcon(icons_.front());
  icon_.setContextMenu(&menu_);
  QObject::connect(&menu_, &QMenu::aboutToShow, &menu_, [this, fill = std::move(fill)] {
    menu_.clear();
    fill(menu_);
  });
  // Some desktops ask for the menu only when it has entries.
  menu_.addAction(QStringLiteral("Vorlix"));
  QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_, [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::Trigger) PassOn(gestures_.trayClick);
  });
}

void SystemTray::Renew() {
  icon_.hide();
  icon_.show();
}

void SystemTray::Withdraw() {
  icon_.hide();
  CloseBalloon();
}

// A tip takes "<" for markup on some desktops and "&lt;" for text on others: neither gets any.
void SystemTray::ShowIcon(TrayIcon icon, const std::string& tip) {
  icon_.setIcon(icons_.at(static_cast<std::size_t>(icon)));
  icon_.setToolTip(ToQString(tip).remove(QLatin1Char('\r')).replace(QLatin1Char('<'), QChar(0x2039)));
}

void SystemTray::ShowBalloon(const Balloon& balloon) {
  notifications_.Show(balloon);
}

void SystemTray::CloseBalloon() {
  notifications_.Close();
  // The toolkit's own message goes with its icon only.
  if (std::exchange(isMessageShown_, false) && icon_.isVisible()) Renew();
}

void SystemTray::ShowMessage(const Balloon& balloon) {
  isMessageShown_ = true;
  icon_.showMessage(ToQString(balloon.title), ToQString(balloon.text).remove(QLatin1Char('\r')).trimmed(), icon_.icon(),
                    balloon.seconds * 1000);
}

}  // namespace vorlix
