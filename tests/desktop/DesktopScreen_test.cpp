// The desktop whole: what can be opened on it, and its end while something is open.
#include "desktop/DesktopScreen.h"

#include <QMessageBox>
#include <QPointer>
#include <algorithm>

#include <gmock/gmock.h>

#include "desktop/dialogs/dialog_parts.h"
#include "fakes/DataRoom.h"
#include "fakes/DesktopHands.h"
#include "fakes/DialogRoom.h"
#include "fakes/DisplayRoom.h"
#include "fakes/LineFakes.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/SystemClock.h"

namespace vorlix {
namespace {

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

}  // namespace
}  // namespace vorlix
