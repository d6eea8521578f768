#include "desktop/DesktopViews.h"

#include <clocale>

#include <gmock/gmock.h>

#include "fakes/DesktopHands.h"
#include "fakes/DisplayRoom.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/SystemClock.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DesktopViewsTest : public testing::Test {
 protected:
  DesktopViewsTest() { desktop.Open({room.screen, menu, places}, {}); }

  std::vector<std::string> MenuNow() {
    Q_EMIT desktop.Tray().Menu().aboutToShow();
    return Entries(desktop.Tray().Menu());
  }

  const TemporaryVariable platform{"QT_QPA_PLATFORM", "offscreen"};
  const TemporaryVariable locale{"LC_ALL", "C.UTF-8"};
  SystemClock clock;
  DesktopViews desktop{clock, std::string(VORLIX_TEST_DATA) + "/../../base/icons"};
  DisplayRoom<RecordingBar> room;
  TrayMenu menu{TrayMenu::Ports{.settings = room.settings, .isSimulationBarred = {}}};
  MemoryPlaces places;
};

TEST_F(DesktopViewsTest, TheTraysMenuHasTheCallsAndAllCommandsAsTheyStand) {
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

TEST_F(DesktopViewsTest, TheLargeWindowShowsWhatItIsGivenAndIsClosedByItsButton) {
  room.settings.General.MaxiDisplayView = true;
  room.Ring(1, "030123456", "Meier");
  desktop.Maxi().Show(room.maxi.content);
  const auto text = [&](const char* part) {
    return FromQString(desktop.Maxi().findChild<QLabel*>(QLatin1String(part))->text());
  };
  EXPECT_EQ(text("name") + text("location") + text("alias") + text("endMark"), "MeierOrtPraxis");
  room.maxi.content.endMark = EndMark::kBlocked;
  desktop.Maxi().Show(room.maxi.content);
  EXPECT_EQ(text("endMark"), "Anruf abgewiesen");
  desktop.Maxi().findChild<QAbstractButton*>(QStringLiteral("close"))->click();
  EXPECT_FALSE(desktop.Maxi().isVisible() || room.screen.maxi.IsOpen());
}

TEST_F(DesktopViewsTest, TheEndOfTheSessionAsksTheProgramAndDataKeepTheirNumbers) {
  int ends = 0;
  menu.Bind(MenuCommand::kSilentMode, [] {});
  desktop.Close();  // also while the first questions stand, before the program is open
  EXPECT_FALSE(desktop.Bar().isVisible());
  EXPECT_THAT(MenuNow(), IsEmpty());
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

}  // namespace
}  // namespace vorlix
