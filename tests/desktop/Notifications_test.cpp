#include "desktop/Notifications.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <memory>

#include <gmock/gmock.h>

#include "desktop/text.h"
#include "fakes/OffscreenApplication.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

const char* const kService = "org.freedesktop.Notifications";
const char* const kPath = "/org/freedesktop/Notifications";
const char* const kProgramsBus = "program";

// A notification service that writes down what it is asked, and answers a balloon when it is told to.
class NotificationService : public QDBusVirtualObject {
 public:
  QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
    const QVariantList given = message.arguments();
    if (message.member() == "GetCapabilities") {
      bus.send(message.createReply(markup ? QStringList{"body", "body-markup"} : QStringList{"body"}));
    } else if (message.member() == "CloseNotification") {
      asked.push_back("close " + std::to_string(given.at(0).toUInt()));
    } else {
      const uint id = given.at(1).toUInt() != 0 ? given.at(1).toUInt() : ++lastId;
      asked.push_back(FromQString(given.at(3).toString() + ": " + given.at(4).toString()));
      hints = qdbus_cast<QVariantMap>(given.at(6));
      seconds = given.at(7).toInt() / 1000;
      unanswered = std::make_unique<QDBusMessage>(message.createReply(id));
      if (answers) Answer(bus);
    }
    return true;
  }
  void Answer(const QDBusConnection& bus) { bus.send(*std::exchange(unanswered, nullptr)); }

  bool markup = true, answers = true;
  std::vector<std::string> asked;
  QVariantMap hints;
  int seconds = 0;
  uint lastId = 0;
  std::unique_ptr<QDBusMessage> unanswered;
};

class NotificationsTest : public testing::Test, protected OffscreenApplication {
 protected:
  NotificationsTest() {
    daemon.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
    EXPECT_TRUE(daemon.waitForStarted() && daemon.waitForReadyRead());
    const QString address = QString::fromLatin1(daemon.readLine().trimmed());
    QDBusConnection::connectToBus(address, kProgramsBus);
    desktop = QDBusConnection::connectToBus(address, "desktop");
    EXPECT_TRUE(desktop.registerVirtualObject(kPath, &service));
    EXPECT_TRUE(desktop.registerService(kService));
  }
  ~NotificationsTest() override {
    QDBusConnection::disconnectFromBus(kProgramsBus);
    QDBusConnection::disconnectFromBus("desktop");
    daemon.kill();
    daemon.waitForFinished();
  }

  template <class Condition>
  static bool Await(Condition isThere) {
    QElapsedTimer patience;
    for (patience.start(); !isThere() && patience.elapsed() < 5000;)
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return isThere();
  }
  bool AwaitAsked(std::size_t count) {
    return Await([&] { return service.asked.size() >= count; });
  }

  QProcess daemon;
  NotificationService service;
  QDBusConnection desktop{QString()};
  std::vector<std::string> told;
  Notifications balloons{{[this] { told.emplace_back("dismissed"); },
                          [this](const Balloon& balloon) { told.push_back("otherwise " + balloon.title); }},
                         "/icon.png",
                         [] { return QDBusConnection(kProgramsBus); }};
};

TEST_F(NotificationsTest, ATextIsEscapedWhereTheServiceReadsMarkup) {
  balloons.Show({"Anruf", "<b>Meier & Co\r\n", 60, BalloonUrgency::kCritical});
  ASSERT_TRUE(AwaitAsked(1));
  EXPECT_EQ(service.asked.back(), "Anruf: &lt;b&gt;Meier &amp; Co");
  EXPECT_EQ(service.hints.value("urgency").toInt(), 2);
  EXPECT_EQ(service.seconds, 60);
}

TEST_F(NotificationsTest, ATextStaysAsItIsWhereTheServiceReadsNone) {
  service.markup = false;
  balloons.Show({"Anruf", "<b>Meier & Co", 60});
  ASSERT_TRUE(AwaitAsked(1));
  EXPECT_EQ(service.asked.back(), "Anruf: <b>Meier & Co");
}

TEST_F(NotificationsTest, WhatChangesBeforeTheAnswerIsMadeUpForAfterIt) {
  service.answers = false;
  balloons.Show({"A", "1", 60});
  ASSERT_TRUE(AwaitAsked(1));
  balloons.Show({"B", "2", 60});
  balloons.Show({"C", "3", 60});
  service.Answer(desktop);
  ASSERT_TRUE(AwaitAsked(2));
  balloons.Close();
  service.Answer(desktop);
  ASSERT_TRUE(AwaitAsked(3));
  EXPECT_THAT(service.asked, ElementsAre("A: 1", "C: 3", "close 1"));
}

TEST_F(NotificationsTest, OnlyWhatTheUserClosesIsDismissed) {
  const auto isClosed = [&](uint id) {
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kService, "NotificationClosed");
    signal << id << 2U;
    desktop.send(signal);
    return Await([&] { return !told.empty(); });
  };
  balloons.Show({"A", "1", 60});
  ASSERT_TRUE(AwaitAsked(1));
  EXPECT_TRUE(isClosed(1));
  EXPECT_THAT(told, ElementsAre("dismissed"));
  balloons.Close();
  balloons.Show({"B", "2", 60});
  ASSERT_TRUE(AwaitAsked(2));
  EXPECT_THAT(service.asked, ElementsAre("A: 1", "B: 2"));
}

TEST_F(NotificationsTest, WithoutAServiceTheBalloonIsShownOtherwise) {
  desktop.unregisterService(kService);
  balloons.Show({"A", "1", 60});
  EXPECT_TRUE(Await([&] { return !told.empty(); }));
  EXPECT_THAT(told, ElementsAre("otherwise A"));
}

}  // namespace
}  // namespace vorlix
