#include "desktop/Notifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <utility>

#include "desktop/text.h"
#include "platform/RunCallback.h"

namespace vorlix {
namespace {

const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");

QDBusMessage Call(const char* method) {
  return QDBusMessage::createMethodCall(kService, kPath, kService, QLatin1String(method));
}

// Only where the service reads markup is it escaped: others would show "&amp;".
QString BodyOf(const Balloon& balloon, bool takesMarkup) {
  QString text = ToQString(balloon.text).remove(QLatin1Char('\r')).trimmed();
  if (!takesMarkup) return text;
  return text.replace(QLatin1Char('&'), QLatin1String("&amp;"))
      .replace(QLatin1Char('<'), QLatin1String("&lt;"))
      .replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

template <class Done>
void WhenDone(QObject* owner, const QDBusPendingCall& call, Done done) {
  auto* const watcher = new QDBusPendingCallWatcher(call, owner);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner, [watcher, done] {
    watcher->deleteLater();
    RunCallback("Notifications.WhenDone", [&] { done(*watcher); });
  });
}

}  // namespace

Notifications::~Notifications() {
  CloseShown();
}

void Notifications::Show(const Balloon& balloon) {
  wanted_ = balloon;
  if (isWaiting_) {
    isStale_ = true;
  } else if (!bus_().isConnected()) {
    ports_.otherwise(balloon);
  } else if (!takesMarkup_) {
    AskCapabilities();
  } else {
    Send();
  }
}

void Notifications::AskCapabilities() {
  isWaiting_ = true;
  QDBusConnection bus = bus_();
  bus.connect(kService, kPath, kService, QStringLiteral("NotificationClosed"), this, SLOT(OnClosed(uint, uint)));
  WhenDone(this, bus.asyncCall(Call("GetCapabilities")), [this](const QDBusPendingCall& call) {
    const QDBusPendingReply<QStringList> reply = call;
    isWaiting_ = isStale_ = false;
    if (reply.isValid()) takesMarkup_ = reply.value().contains(QLatin1String("body-markup"));
    if (!wanted_) return;
    if (reply.isValid()) return Send();
    ports_.otherwise(*wanted_);
  });
}

void Notifications::Send() {
  isWaiting_ = true;
  isStale_ = false;
  QDBusMessage call = Call("Notify");
  const QVariantMap hints{
      {QStringLiteral("urgency"), QVariant::fromValue(static_cast<uchar>(wanted_->urgency))},
      {QStringLiteral("desktop-entry"), QStringLiteral("vorlix")},
  };
  call << QStringLiteral("Vorlix") << shown_ << icon_ << ToQString(wanted_->title)
       << BodyOf(*wanted_, takesMarkup_.value_or(false)) << QStringList() << hints << wanted_->seconds * 1000;
  WhenDone(this, bus_().asyncCall(call), [this](const QDBusPendingCall& answer) { Sent(answer); });
}

void Notifications::Sent(const QDBusPendingCall& call) {
  const QDBusPendingReply<uint> reply = call;
  isWaiting_ = false;
  shown_ = reply.isValid() ? reply.value() : 0;
  if (!wanted_) return CloseShown();
  if (!reply.isValid()) return ports_.otherwise(*wanted_);
  if (isStale_) Send();
}

void Notifications::Close() {
  wanted_.reset();
  if (!isWaiting_) CloseShown();
}

void Notifications::CloseShown() {
  if (shown_ == 0) return;
  QDBusMessage call = Call("CloseNotification");
  call << std::exchange(shown_, 0);
  bus_().send(call);
}

void Notifications::OnClosed(uint id, uint) {
  if (id != shown_ || isWaiting_) return;
  shown_ = 0;
  wanted_.reset();
  RunCallback("Notifications.OnClosed", [this] { ports_.dismissed(); });
}

}  // namespace vorlix
