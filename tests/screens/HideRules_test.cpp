#include "screens/HideRules.h"

#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using std::chrono::seconds;

class HideRulesTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  HideRulesTest() {
    settings.General.HideFull = true;
    settings.General.HideTime = 10;
  }
  bool ShowsCall() const { return bar.content.lines.at(0).isCall; }
};

TEST_F(HideRulesTest, TheIdleBarHidesWhereTheSettingsSay) {
  struct Row {
    bool free, full, inTray, hasTray;
    BarPlace place;
  };
  const Row rows[] = {{false, false, false, true, BarPlace::kShown}, {true, false, false, true, BarPlace::kStrip},
                      {false, true, false, true, BarPlace::kGone},   {false, false, true, true, BarPlace::kTray},
                      {true, true, true, true, BarPlace::kTray},     {false, true, false, false, BarPlace::kStrip},
                      {false, false, true, false, BarPlace::kStrip}};
  for (const Row& row : rows) {
    screen.hiding.MouseEntered();
    settings.General.HideFree = row.free;
    settings.General.HideFull = row.full;
    settings.General.HideTray = row.inTray;
    tray.isThere = row.hasTray;
    Show();
    loop.Advance(seconds(9));
    EXPECT_EQ(bar.place, BarPlace::kShown);
    loop.Advance(seconds(1));
    EXPECT_EQ(bar.place, row.place);
  }
}

TEST_F(HideRulesTest, ACallBringsTheBarOutUnlessItMustNotPopUp) {
  struct Row {
    bool silent, balloon, game;
    BarPlace place;
  };
  PutGameInFront();
  for (const Row& row : {Row{true, false, false, BarPlace::kGone}, Row{false, true, false, BarPlace::kGone},
                         Row{false, false, true, BarPlace::kGone}, Row{false, false, false, BarPlace::kShown}}) {
    state.ActiveCallList.Clear();
    Show();
    loop.Advance(seconds(10));
    settings.General.SilentMode = row.silent;
    settings.General.AsBaloon = row.balloon;
    settings.General.NoViewGame = row.game;
    Ring(1, "0171555");
    EXPECT_EQ(bar.place, row.place);
  }
}

TEST_F(HideRulesTest, ACallerStaysOnTheBarUntilSomebodyHasBeenThere) {
  Show();
  timers.tmHide->SetEnabled(false);  // as the pipeline does at a new call
  const auto call = Ring(1, "0171555");
  screen.hiding.MouseLeft();
  End(*call);
  loop.Advance(seconds(100));
  EXPECT_EQ(bar.place, BarPlace::kShown);
  bar.isInUse = true;
  screen.hiding.MouseEntered();
  screen.hiding.MouseLeft();
  loop.Advance(seconds(30));
  EXPECT_EQ(bar.place, BarPlace::kShown);
  bar.isInUse = false;
  loop.Advance(seconds(10));
  EXPECT_EQ(bar.place, BarPlace::kGone);
  EXPECT_FALSE(timers.tmHide->Enabled());
  EXPECT_TRUE(ShowsCall());
}

TEST_F(HideRulesTest, TheTimeCountsFromWhereTheMouseLeft) {
  Show();
  loop.Advance(seconds(6));
  screen.hiding.MouseEntered();
  screen.hiding.MouseLeft();
  loop.Advance(seconds(9));
  EXPECT_EQ(bar.place, BarPlace::kShown);
  loop.Advance(seconds(1));
  EXPECT_EQ(bar.place, BarPlace::kGone);
}

TEST_F(HideRulesTest, WithHideAllwTheBarHidesOverACallToo) {
  settings.General.HideAllw = true;
  Show();
  const auto hidesTenSecondsAfter = [&](const auto& change) {
    loop.Advance(seconds(9));
    change();
    loop.Advance(seconds(9));
    EXPECT_EQ(bar.place, BarPlace::kShown);
    Show();  // the same calls
    loop.Advance(seconds(1));
    EXPECT_EQ(bar.place, BarPlace::kGone);
    screen.hiding.MouseEntered();
    screen.hiding.MouseLeft();
  };
  hidesTenSecondsAfter([&] { Ring(1, "0171555"); });
  hidesTenSecondsAfter([&] { Ring(2, "0301234"); });
  hidesTenSecondsAfter([&] { state.ActiveCallList.Clear(), Show(); });
}

TEST_F(HideRulesTest, ACallThatIsOverLeavesTheDisplayByItself) {
  settings.General.CallReset = true;
  settings.General.CallResetTime = 20;
  const auto call = Ring(1, "0171555");
  loop.Advance(seconds(60));
  EXPECT_TRUE(ShowsCall());
  End(*call);
  loop.Advance(seconds(19));
  EXPECT_TRUE(ShowsCall());
  loop.Advance(seconds(1));
  EXPECT_FALSE(ShowsCall());
  EXPECT_FALSE(timers.tmDisplayAutoReset->Enabled());
  loop.Advance(seconds(10));
  EXPECT_EQ(bar.place, BarPlace::kGone);
}

TEST_F(HideRulesTest, ABarThatWasCalledOutHidesAgain) {
  Show();
  loop.Advance(seconds(10));
  screen.hiding.Toggle();
  EXPECT_EQ(bar.place, BarPlace::kShown);
  loop.Advance(seconds(10));
  EXPECT_EQ(bar.place, BarPlace::kGone);
}

TEST_F(HideRulesTest, ACallThatIsNotShownDoesNotKeepAnIdleBarOut) {
  ownNumbers.silent = "1234";
  Show();
  timers.tmHide->SetEnabled(false);  // as the pipeline does at its beginning and end
  screen.hiding.OnEnded(*Take(1, "0171555"));
  state.ActiveCallList.Clear();
  screen.hiding.OnEnded(oDataCall());
  loop.Advance(seconds(10));
  EXPECT_EQ(bar.place, BarPlace::kGone);
}

TEST_F(HideRulesTest, AHiddenBarFollowsATrayThatComesAndGoes) {
  settings.General.HideTray = true;
  tray.isThere = false;
  Show();
  loop.Advance(seconds(10));
  for (const auto& [hasTray, place] : {std::pair(true, BarPlace::kTray), std::pair(false, BarPlace::kStrip)}) {
    tray.isThere = hasTray;
    screen.hiding.TrayChanged();
    EXPECT_EQ(bar.place, place);
  }
}

TEST_F(HideRulesTest, AHiddenCallDoesNotKeepTheLastOneOnTheDisplay) {
  settings.General.CallReset = settings.General.RejectedCallsDontShow = true;
  End(*Ring(1, "0171555"));
  timers.tmDisplayAutoReset->SetEnabled(false);  // as the pipeline does at a new call
  const auto hidden = Take(2, "0190");
  hidden->Blocked = true;
  state.ActiveCallList.Clear();
  screen.hiding.OnEnded(*hidden);
  loop.Advance(seconds(60));
  EXPECT_FALSE(ShowsCall());
}

TEST_F(HideRulesTest, WhoIsAtTheBarIsNotAskedWithoutPause) {
  settings.General.HideTime = 0;
  bar.isInUse = true;
  Show();
  loop.Advance(std::chrono::milliseconds(1));
  EXPECT_GE(timers.tmHide->Interval(), seconds(1));
}

TEST_F(HideRulesTest, NoTimeAtAllMeansAtOnce) {
  settings.General.HideTime = settings.General.CallResetTime = 0;
  settings.General.CallReset = true;
  End(*Ring(1, "0171555"));
  loop.Advance(seconds(1));
  EXPECT_FALSE(ShowsCall());
  EXPECT_EQ(bar.place, BarPlace::kGone);
}

TEST_F(HideRulesTest, AStateOfTheLinesIsNeverReset) {
  settings.General.CallReset = true;
  world.states.NCID = {true, true};
  Show();
  screen.hiding.MouseLeft();
  loop.Advance(seconds(11));
  EXPECT_FALSE(timers.tmDisplayAutoReset->Enabled());
}

TEST_F(HideRulesTest, ACommandBringsTheBarOutAndHidesIt) {
  screen.hiding.Toggle();
  EXPECT_EQ(bar.place, BarPlace::kGone);
  screen.clicks.TrayClick();
  EXPECT_EQ(bar.place, BarPlace::kShown);
  EXPECT_TRUE(world.tape.empty());
  screen.clicks.TrayClick();
  EXPECT_EQ(world.tape.back(), "open 0");
}

}  // namespace
}  // namespace vorlix
