#include "desktop/DesktopScreen.h"

#include <arpa/inet.h>
#include <clocale>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DesktopHands.h"
#include "fakes/DisplayRoom.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/SystemClock.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DesktopAvailableTest, TellsWithoutEndingTheProgram) {
  const TemporaryVariable noX("DISPLAY", ""), noWayland("WAYLAND_DISPLAY", "");
  for (const auto& [platform, expected] :
       {std::pair("", false), std::pair("offscreen", true), std::pair("no-such-platform", false)}) {
    const TemporaryVariable variable("QT_QPA_PLATFORM", platform);
    EXPECT_EQ(DesktopScreen::IsAvailable(), expected) << platform;
  }
  const TemporaryVariable platform("QT_QPA_PLATFORM", ""), nobody("DISPLAY", ":65000");
  EXPECT_FALSE(DesktopScreen::IsAvailable());
}

// Another computer's display that takes the connection and never answers.
TEST(DesktopAvailableTest, GivesADeadDisplayUp) {
  const int listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), size), 0);
  ASSERT_EQ(listen(listener, 1), 0);
  getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size);
  const int kFirstDisplayPort = 6000;
  const std::string display = "127.0.0.1:" + std::to_string(ntohs(address.sin_port) - kFirstDisplayPort);
  const TemporaryVariable platform("QT_QPA_PLATFORM", "xcb"), dead("DISPLAY", display);
  EXPECT_FALSE(DesktopScreen::IsAvailable(std::chrono::seconds(1)));
  pollfd asked{listener, POLLIN, 0};
  EXPECT_EQ(poll(&asked, 1, 0), 1);  // it was tried
  close(listener);
}

class DesktopScreenTest : public testing::Test {
 protected:
  std::vector<std::string> MenuNow() {
    Q_EMIT desktop.Tray().Menu().aboutToShow();
    return Entries(desktop.Tray().Menu());
  }

  const TemporaryVariable platform{"QT_QPA_PLATFORM", "offscreen"};
  const TemporaryVariable locale{"LC_ALL", "C.UTF-8"};
  SystemClock clock;
  DesktopScreen desktop{clock, std::string(VORLIX_TEST_DATA) + "/../../base/icons"};
  DisplayRoom<RecordingBar> room;
  TrayMenu menu{TrayMenu::Ports{.settings = room.settings, .isSimulationBarred = {}}};
  MemoryPlaces places;
  std::unique_ptr<DesktopScreen::Connection> connection = desktop.Open({room.screen, menu, places}, {});
};

TEST_F(DesktopScreenTest, TheTraysMenuHasTheCallsAndAllCommandsAsTheyStand) {
  const std::string reset("Anzeige zurücksetzen"_ansi), closeMaxi("Großanzeige schließen"_ansi);
  int resets = 0;
  menu.Bind(MenuCommand::kSilentMode, [&] { room.settings.General.SilentMode = true; });
  menu.Bind(MenuCommand::kResetDisplay, [&] { ++resets; });
  EXPECT_THAT(MenuNow(), ElementsAre("Ruhemodus", reset));
  Choose(desktop.Tray().Menu(), reset);
  EXPECT_EQ(resets, 1);
  Choose(desktop.Tray().Menu(), "Ruhemodus");
  room.Ring(1, "030123456", "Meier");
  desktop.Bar().ShowLines(room.bar.content);
  desktop.Bar().SetPlace(BarPlace::kGone);
  desktop.Maxi().Show({.name = "Meier", .number = {}, .location = {}, .MSNAlias = {}, .picture = {}, .look = {}});
  EXPECT_THAT(MenuNow(),
              ElementsAre("Meier", ">Nummer auf die Sperrliste", "Anzeige einblenden", closeMaxi, "Ruhemodus", reset));
  EXPECT_TRUE(desktop.Tray().Menu().actions().at(4)->isChecked());
  Choose(desktop.Tray().Menu(), closeMaxi);
  EXPECT_FALSE(desktop.Maxi().isVisible());
}

TEST_F(DesktopScreenTest, TheLargeWindowShowsWhatItIsGivenAndIsClosedByItsButton) {
  room.settings.General.MaxiDisplayView = true;
  room.Ring(1, "030123456", "Meier");
  desktop.Maxi().Show(room.maxi.content);
  EXPECT_THAT(Unreached(desktop.Maxi()), IsEmpty());
  const auto text = [&](const char* part) {
    return FromQString(desktop.Maxi().findChild<QLabel*>(QLatin1String(part))->text());
  };
  EXPECT_EQ(text("name") + text("location") + text("alias") + text("endMark"), "MeierOrtPraxis");
  room.state.ActiveCallList.RemoveByKeyName("1");
  room.screen.maxi.SetEndMark(2);
  desktop.Maxi().Show(room.maxi.content);
  EXPECT_EQ(text("endMark"), "Anruf abgewiesen");
  desktop.Maxi().findChild<QAbstractButton*>(QStringLiteral("close"))->click();
  EXPECT_FALSE(desktop.Maxi().isVisible());
  EXPECT_FALSE(room.screen.maxi.IsOpen());
}

TEST_F(DesktopScreenTest, TheEndOfTheSessionAsksTheProgramAndDataKeepTheirNumbers) {
  int ends = 0;
  connection.reset();  // also while the first questions stand, before the program is open
  desktop.OnSessionEnd([&] { ++ends; });
  desktop.Loop().Post([&] {
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(qApp, &quit);
    desktop.Loop().Post([&] { desktop.Loop().Quit(); });
  });
  desktop.Loop().Run();
  EXPECT_EQ(ends, 1);
  EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
  EXPECT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C.UTF-8");
}

TEST_F(DesktopScreenTest, WithoutTheProgramNothingIsShownAndGesturesAreLost) {
  menu.Bind(MenuCommand::kSilentMode, [] {});
  EXPECT_TRUE(desktop.Bar().isVisible());
  EXPECT_THAT(MenuNow(), ElementsAre("Ruhemodus"));
  connection.reset();
  EXPECT_FALSE(desktop.Bar().isVisible());
  EXPECT_THAT(MenuNow(), IsEmpty());
}

}  // namespace
}  // namespace vorlix
