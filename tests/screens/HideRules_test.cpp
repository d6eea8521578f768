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
  // Where the bar is after as many seconds.
  BarPlace After(int time) {
    loop.Advance(seconds(time));
    return bar.place;
  }
};

TEST_F(HideRulesTest, TheIdleBarHidesWhereTheSettingsSay) {
  const std::tuple<bool, bool, bool, bool, BarPlace> rows[] = {
      {false, false, false, true, BarPlace::kShown}, {true, false, false, true, BarPlace::kStrip},
      {false, true, false, true, BarPlace::kGone},   {false, false, true, true, BarPlace::kTray},
      {true, true, true, true, BarPlace::kTray},     {false, true, false, false, BarPlace::kStrip},
      {false, false, true, false, BarPlace::kStrip}};
  for (const auto& [free, full, inTray, hasTray, place] : rows) {
    screen.hiding.MouseEntered();
    settings.General.HideFree = free;
    settings.General.HideFull = full;
    settings.General.HideTray = inTray;
    tray.isThere = hasTray;
    Show();
    EXPECT_EQ(After(9), BarPlace::kShown);
    EXPECT_EQ(After(1), place);
  }
}

TEST_F(HideRulesTest, ACallBringsTheBarOutUnlessItMustNotPopUp) {
  PutGameInFront();
  settings.General.NoViewGame = false;
  Show();
  loop.Advance(seconds(10));
  for (bool Settings::GeneralSection::*reason :
       {&Settings::GeneralSection::SilentMode, &Settings::GeneralSection::AsBaloon,
        &Settings::GeneralSection::NoViewGame}) {
    settings.General.*reason = true;
    Ring(1, "0171555");
    EXPECT_EQ(bar.place, BarPlace::kGone);
    settings.General.*reason = false;
  }
  Ring(2, "0171555");
  EXPECT_EQ(bar.place, BarPlace::kShown);
}

TEST_F(HideRulesTest, ACallerStaysOnTheBarUntilSomebodyHasBeenThere) {
  Show();
  timers.tmHide->SetEnabled(false);  // as the pipeline does at a new call
  const auto call = Ring(1, "0171555");
  screen.hiding.MouseLeft();
  End(*call);
  EXPECT_EQ(After(100), BarPlace::kShown);
  bar.isInUse = true;
  screen.hiding.MouseEntered();
  screen.hiding.MouseLeft();
  EXPECT_EQ(After(30), BarPlace::kShown);
  bar.isInUse = false;
  EXPECT_EQ(After(10), BarPlace::kGone);
  EXPECT_FALSE(timers.tmHide->Enabled());
  EXPECT_TRUE(ShowsCall());
}

TEST_F(HideRulesTest, WithHideAllwTheBarHidesOverACallToo) {
  settings.General.HideAllw = true;
  Show();
  const auto hidesTenSecondsAfter = [&](const auto& change) {
    loop.Advance(seconds(9));
    change();
    EXPECT_EQ(After(9), BarPlace::kShown);
    Show();  // the same calls
    EXPECT_EQ(After(1), BarPlace::kGone);
    screen.hiding.MouseEntered();
    screen.hiding.MouseLeft();
  };
  hidesTenSecondsAfter([&] { Ring(1, "0171555"); });
  hidesTenSecondsAfter([&] { Ring(2, "0301234"); });
  hidesTenSecondsAfter([&] { state.ActiveCallList.Clear(), Show(); });
}

TEST_F(HideRulesTest, ACallThatIsOverLeavesTheDisplayByItselfAndALineStateStays) {
  settings.General.CallReset = true;
  settings.General.CallResetTime = 20;
  const auto call = Ring(1, "0171555");
  loop.Advance(seconds(60));
  End(*call);
  loop.Advance(seconds(19));
  EXPECT_TRUE(ShowsCall());
  loop.Advance(seconds(1));
  EXPECT_FALSE(ShowsCall());
  EXPECT_EQ(After(10), BarPlace::kGone);
  world.states.NCID = {true, true};
  Show();
  screen.hiding.MouseLeft();
  EXPECT_FALSE(timers.tmDisplayAutoReset->Enabled());
}

TEST_F(HideRulesTest, AHiddenCallKeepsNeitherAnIdleBarOutNorTheLastCallOnTheDisplay) {
  settings.General.CallReset = settings.General.RejectedCallsDontShow = true;
  const auto hiddenCall = [&] {
    timers.tmHide->SetEnabled(false);  // as the pipeline does at a new call
    timers.tmDisplayAutoReset->SetEnabled(false);
    const auto hidden = Take(2, "0190");
    hidden->Blocked = true;
    state.ActiveCallList.Clear();
    screen.hiding.OnEnded(*hidden);
    loop.Advance(seconds(60));
  };
  Show();
  hiddenCall();
  EXPECT_EQ(bar.place, BarPlace::kGone);
  End(*Ring(1, "0171555"));
  hiddenCall();
  EXPECT_FALSE(ShowsCall());
}

TEST_F(HideRulesTest, AHiddenBarFollowsATrayThatComesAndGoes) {
  settings.General.HideTray = true;
  tray.isThere = false;
  Show();
  screen.hiding.TrayChanged();
  EXPECT_EQ(bar.place, BarPlace::kShown);
  loop.Advance(seconds(10));
  for (const auto& [hasTray, place] : {std::pair(true, BarPlace::kTray), std::pair(false, BarPlace::kStrip)}) {
    tray.isThere = hasTray;
    screen.hiding.TrayChanged();
    EXPECT_EQ(bar.place, place);
  }
}

TEST_F(HideRulesTest, NoTimeAtAllMeansAtOnceButWhoIsAtTheBarIsNotAskedWithoutPause) {
  settings.General.HideTime = settings.General.CallResetTime = 0;
  settings.General.CallReset = bar.isInUse = true;
  End(*Ring(1, "0171555"));
  loop.Advance(std::chrono::milliseconds(2));
  EXPECT_FALSE(ShowsCall());
  EXPECT_GE(timers.tmHide->Interval(), seconds(1));
  bar.isInUse = false;
  EXPECT_EQ(After(1), BarPlace::kGone);
}

TEST_F(HideRulesTest, ACommandBringsTheBarOutAndHidesItAndLeftOutItHidesAgain) {
  screen.hiding.Toggle();
  EXPECT_EQ(bar.place, BarPlace::kGone);
  screen.clicks.TrayClick();
  EXPECT_EQ(bar.place, BarPlace::kShown);
  EXPECT_TRUE(world.tape.empty());
  screen.clicks.TrayClick();
  EXPECT_EQ(world.tape.back(), "open 0");
  loop.Advance(seconds(6));
  screen.hiding.MouseEntered();
  screen.hiding.MouseLeft();  // the time counts from here
  EXPECT_EQ(After(9), BarPlace::kShown);
  EXPECT_EQ(After(1), BarPlace::kGone);
}

}  // namespace
}  // namespace vorlix
