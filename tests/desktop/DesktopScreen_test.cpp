// The desktop whole: what can be opened on it, and its end while something is open.
#include "desktop/DesktopScreen.h"

#include <QMessageBox>
#include <QPointer>
#include <algorithm>
#include <clocale>

#include <gmock/gmock.h>

#include "desktop/DesktopViews.h"
#include "desktop/dialogs/dialog_parts.h"
#include "fakes/DataRoom.h"
#include "fakes/DesktopHands.h"
#include "fakes/DialogRoom.h"
#include "fakes/DisplayRoom.h"
#include "fakes/LineFakes.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/SystemClock.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class DesktopScreenTest : public testing::Test, protected DataRoom, public CallFeedView {
 protected:
  DesktopScreenTest() {
    store.AddFile("/vorlix/data/blacklist.dat", "0172||Bert\r\n");
    const auto identify = [](oDataCall&) {};
    const auto states = [] { return LineStates(); };
    const AboutFacts about;
    const auto quit = [] {};
    desktop.Open({room.screen, menu, commands, simulation, blacklist, room.settings, settingsStore, shown, identify,
                  about, states, quit});
    room.Show();
    bar.ShowLines(room.bar.content);
  }
  // As the program does before its parts go.
  ~DesktopScreenTest() override { desktop.Close(); }
  void ShowLine(const std::string&) override {}

  // Two calls, one of them on the large window.
  void Ring() {
    room.settings.General.MaxiDisplayView = true;
    room.Ring(1, "030123456", "Meier");
    room.Ring(2, "089654321");
    for (const std::size_t line : {0, 1})
      room.screen.display.ButtonEnableHangUp(static_cast<int>(line), HangUpMode::kStop, true);
    bar.ShowLines(room.bar.content);
    desktop.Views().maxi.Show(room.maxi.content);
  }
  void AskTestCall() {
    room.settings.General.CallMode_CAPI = true;
    codes.Open();
    DialogRoom::Type("Eigene Landesvorwahl ohne Nullen", "49");
    DialogRoom::Type("Eigene Ortsvorwahl ohne Null", "30");
    DialogRoom::Press("OK");
    codes.DataToPrefixCheck("0030123", "0", "0");
  }
  // What is visible and that nobody can hear of or reach, of all windows.
  static std::vector<std::string> UnreachedAnywhere() {
    std::vector<std::string> found;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (!window->isVisible()) continue;
      if (window->accessibleName().isEmpty() && window->windowTitle().isEmpty()) found.emplace_back("a window");
      for (const std::string& one : Unreached(*window))
        found.push_back(FromQString(window->windowTitle()) + ": " + one);
    }
    return found;
  }

  const TemporaryVariable platform{"QT_QPA_PLATFORM", "offscreen"};
  const TemporaryVariable bus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"};
  SystemClock systemClock;
  DesktopScreen desktop{systemClock, std::string(VORLIX_TEST_DATA) + "/../../base/icons", {}};
  modAll_MsgBox shown{desktop.Boxes()};
  DisplayRoom<RecordingBar> room;
  MainDisplayView& bar = desktop.Views().bar;
  TrayMenu menu{TrayMenu::Ports{.settings = room.settings, .isSimulationBarred = {}}};
  modSettings settingsStore{{ini, store, folders, clock, shown, {}}, room.settings};
  Blacklist blacklist{{files, folders, shown}};
  fakes::FewOwnNumbers ownNumbers;
  fSimulation simulation{{clock, room.settings, ownNumbers, [](int) {}, [](const std::string&) {},
                          [](const std::string&) {}, [] { return 0; }, [] {}, [] {}}};
  clsCollection book;
  TypedCommands commands{{*this, room.numbers, ownNumbers, room.world, room.world, simulation, [] { return false; },
                          [](std::size_t) { return TypedCommands::Calls(); },
                          [this]() -> const clsCollection& { return book; }}};
  fInputVorwahl codes{{desktop.AreaCodes(), [] { return true; }, room.settings, settingsStore, [] {}}};
};

TEST_F(DesktopScreenTest, EveryControlOfEveryWindowHasANameAndIsReachedByTheKeyboard) {
  const std::pair<const char*, std::function<void()>> windows[] = {
      {"bar", [] {}},
      {"two calls", [&] { Ring(); }},
      {"simulation", [&] { menu.Run(MenuCommand::kSimulation); }},
      {"blacklist", [&] { menu.Run(MenuCommand::kBlacklist); }},
      {"its input", [] { DialogRoom::Press("Neu"); }},
      {"about", [&] { menu.Run(MenuCommand::kAbout); }},
      {"box", [&] { shown.MsgBoxNew("Hinweis", kMsgInformation); }},
      {"codes", [&] { codes.Open(); }},
      {"test call", [&] { AskTestCall(); }},
  };
  for (const auto& [name, openIt] : windows) {
    if (std::string_view(name) != "its input") CloseDialogs();
    openIt();
    EXPECT_THAT(UnreachedAnywhere(), IsEmpty()) << name;
  }
  CloseDialogs();
  const auto lookAndClose = [] {
    EXPECT_THAT(UnreachedAnywhere(), IsEmpty());
    CloseDialogs();
  };
  DialogRoom::Then(lookAndClose);
  EXPECT_EQ(desktop.Boxes().Show("Wirklich?", kMsgYesNo, "Vorlix", true), MsgBoxAnswer::kNo);
  DialogRoom::Then(lookAndClose);
  FirstStartForm form;
  EXPECT_FALSE(desktop.FirstStart().Fill(form));
}

// The end comes from the loop that the modal box runs; what has opened the box goes on after it.
TEST_F(DesktopScreenTest, EndsUnderAModalBoxOfAWindowAndAsksNothingAfterwards) {
  menu.Run(MenuCommand::kBlacklist);
  const QPointer<QDialog> window = DialogRoom::Top();
  bool wasOpen = false;
  DialogRoom::Then([&] {
    wasOpen = std::ranges::any_of(QApplication::topLevelWidgets(), [](const QWidget* one) {
      return one->isVisible() && qobject_cast<const QMessageBox*>(one) != nullptr;
    });
    desktop.Close();
    EXPECT_TRUE(window);
    EXPECT_FALSE(DialogRoom::Top());
  });
  DialogRoom::Press("Info");
  EXPECT_TRUE(wasOpen);
  EXPECT_EQ(desktop.Boxes().Show("Noch eine Frage?", kMsgYesNo, "Vorlix", true), MsgBoxAnswer::kNo);
  desktop.Close();
  EXPECT_FALSE(window);
}

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
