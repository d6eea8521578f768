#include "screens/DisplayClicks.h"

#include <gmock/gmock.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DisplayClicksTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  std::vector<std::string> DoubleClick(std::size_t line = 0) {
    world.Taken();
    screen.clicks.DisplayDblClickAction(line);
    return world.Taken();
  }
};

TEST_F(DisplayClicksTest, ADoubleClickEditsACallerAsTheBookKnowsIt) {
  world.hasEditor = true;
  world.names["0171555"] = "Meier";
  Ring(1, "0171555");
  timers.tmHide->SetEnabled(true);
  EXPECT_THAT(DoubleClick(), ElementsAre("edit 0171555 Meier"));
  EXPECT_FALSE(timers.tmHide->Enabled());
  settings.General.DirectEdit = false;
  EXPECT_THAT(DoubleClick(), ElementsAre("open 1"));
}

TEST_F(DisplayClicksTest, WhereThereIsNoCallOrNoEditorTheSettingSaysWhatOpens) {
  Show();
  settings.General.CallerClick = 3;
  EXPECT_THAT(DoubleClick(), ElementsAre("open 3"));
  EXPECT_THAT(DoubleClick(9), ElementsAre("open 3"));
  for (const int wrong : {4, -1}) {
    settings.General.CallerClick = wrong;
    EXPECT_THAT(DoubleClick(), IsEmpty());
  }
  settings.General.CallerClick = 2;
  Ring(1, "0171555");
  EXPECT_THAT(DoubleClick(), ElementsAre("open 2"));
}

TEST_F(DisplayClicksTest, ANumberOfTheBlacklistIsToldAndNotEdited) {
  world.hasEditor = true;
  Ring(1, "0190");
  world.listed = "0190";  // since then
  EXPECT_THAT(DoubleClick(), ElementsAre("box reason 6"));
  EXPECT_TRUE(bar.content.lines[0].isRefused);
}

TEST_F(DisplayClicksTest, TheStopButtonRefusesTheCallOfItsLineOnceAndNoOther) {
  settings.General.CallMode_CAPI = true;
  Ring(1, "0171555");
  const auto call = Ring(2, "0301234");
  for (const int line : {0, 1})
    screen.display.ButtonEnableHangUp(line, HangUpMode::kStop, true);
  state.ActiveCallList.RemoveByKeyName("1");  // it is over, its line is still there
  world.Taken();
  screen.clicks.HangUpClick(0);
  screen.clicks.HangUpClick(7);
  EXPECT_THAT(world.Taken(), IsEmpty());
  screen.clicks.HangUpClick(1);
  screen.clicks.HangUpClick(1);
  EXPECT_THAT(world.Taken(), ElementsAre("refuse 2"));
  EXPECT_TRUE(call->Blocked);
}

TEST_F(DisplayClicksTest, TheBellButtonEndsTheRinging) {
  Ring(1, "0171555");
  screen.display.ButtonEnableBell(0, true);
  timers.tmSoundRepeat->SetEnabled(true);
  screen.clicks.BellClick();
  EXPECT_FALSE(timers.tmSoundRepeat->Enabled() || bar.content.lines[0].bellEnabled);
}

TEST_F(DisplayClicksTest, WhatACallShowsAsItsNumberGoesOnTheBlacklist) {
  Ring(1, "Unbekannt", "Meier");
  Ring(2, "", "Meier");
  world.Taken();
  screen.clicks.BlacklistClick(0);
  screen.clicks.BlacklistClick(1);
  EXPECT_THAT(world.Taken(), ElementsAre("list Unbekannt Meier"));
}

}  // namespace
}  // namespace vorlix
