// The ways of showing a call beside the bar: tray icon and balloon, large window.
#include "screens/DisplayTray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"
#include "screens/LogoSize.h"
#include "screens/display_texts.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using std::chrono::seconds;
using testing::HasSubstr;

class DisplayTrayTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  void PutGameInFront() {
    settings.General.NoViewGame = true;
    world.foreground = {.fillsScreen = true, .isDesktop = false, .modules = {"C:\\windows\\D3D9.dll"}};
  }
};

TEST_F(DisplayTrayTest, TheBalloonTellsWhoCallsWhichNumber) {
  struct Row {
    const char* name;
    const char* address;
    const char* alias;
    const char* title;
    const char* end;
  };
  const Row rows[] = {
      {"Meier", "Berlin", "Praxis", "Anruf für 1234 (Praxis)", "Meier\r\nBerlin"},
      {"Meier", "", "1234", "Anruf für 1234", "Meier"},
      {"", "Berlin", "", "Anruf für 1234", "Berlin"},
      {"", "", "", "Anruf für 1234", ""},
  };
  for (const Row& row : rows) {
    const auto call = Take(1, "0171555", row.name);
    state.ActiveCallList.Clear();
    call->Address(row.address);
    call->MSNAlias = row.alias;
    std::string title, text;
    SetBaloonInfoCall(*call, "", title, text);
    EXPECT_EQ(ToUtf8(title), row.title);
    EXPECT_EQ(text, "13.03.2024 12:00:00\r\n\r\nAnrufer:\r\n0171555 Ort\r\n\r\n" + std::string(row.end));
  }
}

TEST_F(DisplayTrayTest, WithoutBalloonsTheTextIsTheTip) {
  Ring(1, "0171555", "Meier");
  EXPECT_TRUE(tray.balloons.empty());
  EXPECT_EQ(tray.tip, "13.03.2024 12:00:00\r\n\r\nAnrufer:\r\n0171555 Ort\r\n\r\nMeier");
}

TEST_F(DisplayTrayTest, ABalloonComesOnceForEachCallAndAgainWithItsName) {
  settings.General.AsBaloon = true;
  Show();
  Ring(1, "0171555");
  Ring(2, "0301234");
  Show();
  ASSERT_EQ(tray.balloons.size(), 2U);
  EXPECT_EQ(tray.balloons[0].urgency, BalloonUrgency::kCritical);
  EXPECT_EQ(tray.balloons[0].seconds, 60);
  screen.display.DisplayCallerUpdateByNumber("0301234", "Meier", "", true);
  EXPECT_EQ(tray.balloons.size(), 3U);
  Take(3, "0190")->Blocked = true;
  Show();
  EXPECT_EQ(tray.balloons.back().urgency, BalloonUrgency::kLow);
  state.ActiveCallList.Clear();
  screen.tray.CreateTrayInfo("Ruf nicht mehr aktiv!", 60);
  EXPECT_EQ(tray.balloons.back().title, "AVM OK");
  EXPECT_EQ(tray.balloons.back().urgency, BalloonUrgency::kLow);
}

TEST_F(DisplayTrayTest, ABalloonLivesAsLongAsTheSettingsSayOrUntilItIsDismissed) {
  settings.General.AsBaloon = true;
  settings.General.HideTimeTray = 15;
  Ring(1, "0171555");
  loop.Advance(seconds(14));
  EXPECT_TRUE(tray.isOpen && screen.tray.IsShown());
  loop.Advance(seconds(1));
  EXPECT_FALSE(tray.isOpen || screen.tray.IsShown());
  Ring(2, "0301234");
  screen.tray.BalloonDismissed();
  EXPECT_FALSE(screen.tray.IsShown());
  EXPECT_FALSE(loop.UntilNextTick() == std::optional(std::chrono::milliseconds(15000)));
}

TEST_F(DisplayTrayTest, TheIconTellsWhatMattersMost) {
  Show();
  EXPECT_EQ(tray.icon, TrayIcon::kIdle);
  const auto missed = Ring(1, "0171555");
  EXPECT_EQ(tray.icon, TrayIcon::kRinging);
  End(*missed);
  screen.tray.OnEnded(*missed);
  EXPECT_EQ(tray.icon, TrayIcon::kMissed);
  world.states.AVM.up = false;
  Show();
  EXPECT_EQ(tray.icon, TrayIcon::kLineLost);
  world.states.AVM.up = true;
  screen.display.DisplayReset(false);
  world.isWindowThere = false;
  screen.clicks.TrayClick();
  EXPECT_EQ(tray.icon, TrayIcon::kMissed);  // nothing was there to look at
  screen.clicks.ResetClick();
  EXPECT_EQ(tray.icon, TrayIcon::kIdle);
}

TEST_F(DisplayTrayTest, TheTipIsOfTheCallThatGoesOn) {
  Ring(1, "0171555");
  const auto second = Ring(2, "0301234");
  EXPECT_THAT(tray.tip, HasSubstr("0301234"));
  End(*second);
  EXPECT_THAT(tray.tip, HasSubstr("0171555"));
}

TEST_F(DisplayTrayTest, NothingOpensForACallThatIsOver) {
  settings.General.AsBaloon = settings.General.MaxiDisplayView = true;
  End(*Ring(1, "0171555"));
  screen.maxi.Hide();
  tray.balloons.clear();
  screen.display.DisplayCallerUpdateByNumber("0171555", "Meier", "", true);
  EXPECT_TRUE(tray.balloons.empty() && !maxi.isOpen);
}

TEST_F(DisplayTrayTest, OnlyACallThatRangAndNobodyTookIsMissed) {
  const auto answered = Ring(1, "0171555");
  End(*answered);
  answered->NewCall = false;
  screen.tray.OnAnswered(*answered);
  screen.tray.OnEnded(*answered);
  const auto refused = Take(2, "0190");
  refused->Active = false;
  Show();
  End(*refused);
  screen.tray.OnEnded(*refused);
  // Nor does what was hidden.
  screen.tray.OnEnded(*Take(9, "0900"));
  state.ActiveCallList.Clear();
  const auto untold = Ring(3, "0171");
  End(*untold);
  screen.tray.OnOver(3);
  EXPECT_EQ(tray.icon, TrayIcon::kIdle);
}

TEST_F(DisplayTrayTest, AGameKeepsBalloonAndLargeWindowAway) {
  settings.General.AsBaloon = settings.General.MaxiDisplayView = true;
  PutGameInFront();
  Ring(1, "0171555");
  EXPECT_TRUE(tray.balloons.empty());
  EXPECT_FALSE(maxi.isOpen);
}

TEST_F(DisplayTrayTest, OnlyAFullScreenProgramWithAGamesLibraryIsAGame) {
  PutGameInFront();
  EXPECT_TRUE(screen.games.fAnzeigeVerboten());
  const auto game = world.foreground;
  const auto isGame = [&](auto change) {
    world.foreground = game;
    change();
    return screen.games.fAnzeigeVerboten();
  };
  EXPECT_FALSE(isGame([&] { world.foreground.fillsScreen = false; }));
  EXPECT_FALSE(isGame([&] { world.foreground.isDesktop = true; }));
  EXPECT_FALSE(isGame([&] { world.foreground.modules = {"/usr/lib/libm.so", "xd3d9.dll", ""}; }));
  EXPECT_TRUE(isGame([&] { settings.DirectX.Moduls = "a.so; D3D9.dll ;"; }));
  EXPECT_FALSE(isGame([&] { settings.General.NoViewGame = false; }));
}

TEST_F(DisplayTrayTest, TheLargeWindowShowsTheCallAndItsEnd) {
  settings.General.MaxiDisplayView = true;
  settings.MaxiDisplay.Alpha = 150;
  world.pictures["0171555"] = "/mine.jpg";
  const auto call = Ring(1, "0171555", "Meier");
  EXPECT_EQ(maxi.content.name + "|" + maxi.content.number + "|" + maxi.content.location + "|" + maxi.content.MSNAlias +
                "|" + maxi.content.picture,
            "Meier|0171555|Ort|Praxis|/mine.jpg");
  EXPECT_EQ(maxi.content.look.alpha, 150);
  screen.maxi.SetEndMark(2);
  screen.maxi.Hide();
  EXPECT_TRUE(maxi.isOpen);  // another call has ended
  EXPECT_EQ(maxi.content.endMark, MaxiEndMark::kNone);
  End(*call);
  screen.maxi.SetEndMark(2);
  EXPECT_EQ(maxi.content.endMark, MaxiEndMark::kBlocked);
  screen.maxi.Hide();
  EXPECT_FALSE(maxi.isOpen || screen.maxi.IsVisible());
  screen.maxi.SetEndMark(1);
  EXPECT_FALSE(maxi.isOpen);
  EXPECT_TRUE(screen.maxi.IsOpen());
  screen.maxi.Closed();
  EXPECT_FALSE(screen.maxi.IsOpen());
}

TEST_F(DisplayTrayTest, TheLargeWindowClosesByItsTimeOnlyWhereThatIsWanted) {
  settings.General.MaxiDisplayView = true;
  Ring(1, "0171555");
  loop.Advance(seconds(100));
  EXPECT_TRUE(maxi.isOpen);
  settings.MaxiDisplay.HideByTime = true;
  Ring(2, "0301234");
  loop.Advance(seconds(9));
  EXPECT_TRUE(maxi.isOpen);
  loop.Advance(seconds(1));
  EXPECT_FALSE(maxi.isOpen);
}

TEST(LogoSizeTest, APictureThatIsTooLargeIsScaledByItsLargerOverhangAndCentred) {
  struct Row {
    PictureSize picture;
    PicturePlace place;
  };
  const Row rows[] = {{{40, 20}, {30, 10, {40, 20}}},
                      {{100, 40}, {0, 0, {100, 40}}},
                      {{200, 40}, {0, 10, {100, 20}}},
                      {{200, 160}, {25, 0, {50, 40}}},
                      {{5000, 1}, {0, 19, {100, 1}}}};
  for (const Row& row : rows) {
    EXPECT_EQ(LogoPlace(row.picture, {100, 40}), row.place) << row.picture.width;
  }
}

}  // namespace
}  // namespace vorlix
