#include "screens/DisplayTray.h"

#include <gmock/gmock.h>

#include "fakes/DisplayRoom.h"
#include "screens/display_texts.h"
#include "services/ansi.h"

namespace vorlix {
namespace {

using std::chrono::seconds;
using testing::HasSubstr;

class DisplayTrayTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  DisplayTrayTest() { settings.General.AsBaloon = settings.General.MaxiDisplayView = true; }
};

TEST_F(DisplayTrayTest, TheBalloonTellsWhoCallsWhichNumber) {
  const std::tuple<std::string, std::string, std::string, std::string, std::string> rows[] = {
      {"Meier", "Berlin", "Praxis", "Anruf für 1234 (Praxis)", "Meier\r\nBerlin"},
      {"Meier", "", "1234", "Anruf für 1234", "Meier"},
      {"", "Berlin", "", "Anruf für 1234", "Berlin"},
  };
  for (const auto& [name, address, alias, expected, end] : rows) {
    const auto call = Take(1, "0171555", name);
    call->Address(address);
    call->MSNAlias = alias;
    std::string title, text;
    SetBaloonInfoCall(*call, "", title, text);
    EXPECT_EQ(ToUtf8(title), expected);
    EXPECT_EQ(text, "13.03.2024 12:00:00\r\n\r\nAnrufer:\r\n0171555 Ort\r\n\r\n" + end);
  }
}

TEST_F(DisplayTrayTest, WithoutBalloonsTheTipTellsOfTheCallThatGoesOn) {
  settings.General.AsBaloon = false;
  Ring(1, "0171555");
  const auto second = Ring(2, "0301234");
  EXPECT_THAT(tray.tip, HasSubstr("0301234"));
  End(*second);
  EXPECT_THAT(tray.tip, HasSubstr("0171555"));
  EXPECT_TRUE(tray.balloons.empty());
}

TEST_F(DisplayTrayTest, ABalloonComesOnceForEachCallAndAgainWithItsName) {
  Show();
  Ring(1, "0171555");
  Ring(2, "0301234");
  Show();
  ASSERT_EQ(tray.balloons.size(), 2U);
  EXPECT_EQ(tray.balloons[0].urgency, BalloonUrgency::kCritical);
  screen.display.DisplayCallerUpdateByNumber("0301234", "Meier", "", true);
  EXPECT_EQ(tray.balloons.size(), 3U);
  Take(3, "0190")->Blocked = true;
  Show();
  EXPECT_EQ(tray.balloons.back().urgency, BalloonUrgency::kLow);
  state.ActiveCallList.Clear();
  screen.tray.CreateTrayInfo("Ruf nicht mehr aktiv!", 60);
  EXPECT_EQ(tray.balloons.back().title, "AVM OK");
}

TEST_F(DisplayTrayTest, ABalloonLivesAsLongAsTheSettingsSayOrUntilItIsDismissed) {
  settings.General.HideTimeTray = 15;
  End(*Ring(1, "0171555"));  // the last one: its balloon stays
  loop.Advance(seconds(14));
  EXPECT_TRUE(tray.isOpen);
  loop.Advance(seconds(1));
  EXPECT_FALSE(tray.isOpen || screen.tray.IsShown());
  Ring(2, "0301234");
  screen.tray.BalloonDismissed();
  EXPECT_FALSE(screen.tray.IsShown());
  EXPECT_EQ(loop.UntilNextTick(), std::nullopt);
}

TEST_F(DisplayTrayTest, ABalloonGoesWithItsCallAndGivesWayToOneThatStillRings) {
  settings.General.RejectedCallsDontShow = true;
  const auto first = Ring(1, "0171555"), second = Ring(2, "0301234");
  End(*second);
  EXPECT_TRUE(tray.isOpen);
  EXPECT_THAT(tray.balloons.back().text, HasSubstr("0171555"));
  const auto third = Ring(3, "0301235");
  first->Active = false;  // somebody is talking by now
  End(*third);
  EXPECT_FALSE(tray.isOpen);
  state.ActiveCallList.Clear();
  const auto fourth = Ring(4, "0301236");
  Take(5, "0190")->Blocked = true;
  End(*fourth);
  EXPECT_FALSE(tray.isOpen);
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

TEST_F(DisplayTrayTest, NothingOpensForACallThatIsOverNorOverAGame) {
  End(*Ring(1, "0171555"));
  screen.maxi.Hide();
  tray.balloons.clear();
  screen.display.DisplayCallerUpdateByNumber("0171555", "Meier", "", true);
  EXPECT_TRUE(tray.balloons.empty() && !maxi.isOpen);
  PutGameInFront();
  Ring(2, "0301234");
  screen.tray.CreateTrayInfo("Ruf nicht mehr aktiv!", 60);
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
  screen.tray.OnEnded(*Take(9, "0900"));  // was hidden
  state.ActiveCallList.Clear();
  const auto untold = Ring(3, "0171");
  End(*untold);
  screen.tray.OnOver(3);
  EXPECT_EQ(tray.icon, TrayIcon::kIdle);
}

}  // namespace
}  // namespace vorlix
