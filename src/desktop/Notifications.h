// The balloon, by the desktop's notification service (org.freedesktop.Notifications). Every call to the service is
// asynchronous: a desktop that is slow to answer holds nothing up. What it cannot show goes to `otherwise`.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "screens/MainDisplayView.h"

class QDBusMessage;
class QDBusPendingCall;

namespace vorlix {

class Notifications : public QObject {
  Q_OBJECT

 public:
  struct Ports {
    std::function<void()> dismissed;  // it is gone, and not by Close()
    std::function<void(const Balloon&)> otherwise;
  };
  // Asked for with the first balloon: who shows none has no connection.
  using Bus = QDBusConnection (*)();

  // The icon is a real path.
  Notifications(Ports ports, QString icon, Bus bus = &QDBusConnection::sessionBus)
      : ports_(std::move(ports)), icon_(std::move(icon)), bus_(bus) {}
  ~Notifications() override;

  // Takes the place of the one before.
  void Show(const Balloon& balloon);
  void Close();

 private Q_SLOTS:
  void OnClosed(uint id, uint reason);

 private:
  void AskCapabilities();
  void Send();
  void Sent(const QDBusPendingCall& call);
  void CloseShown();

  Ports ports_;
  QString icon_;
  Bus bus_;
  std::optional<Balloon> wanted_;
  std::optional<bool> takesMarkup_;  // nothing: the service was not asked yet
  uint shown_ = 0;                   // the service's number; 0: none
  bool isWaiting_ = false;           // for an answer of the service
  bool isStale_ = false;             // what is wanted has changed meanwhile
};

}  // namespace vorlix
