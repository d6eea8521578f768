#include "screens/DisplayClicks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"
#include "services/ansi.h"

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
  struct Row {
    int choice;
    std::vector<std::string> opened;
  };
  Show();
  for (const Row& row : {Row{0, {"open 0"}}, Row{3, {"open 3"}}, Row{4, {}}, Row{-1, {}}}) {
    settings.General.CallerClick = row.choice;
    EXPECT_EQ(DoubleClick(), row.opened);
    EXPECT_EQ(DoubleClick(9), row.opened);
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

TEST_F(DisplayClicksTest, TheStopButtonRefusesTheCallOfItsLineOnce) {
  settings.General.CallMode_CAPI = true;
  Ring(1, "0171555");
  const auto call = Ring(2, "0301234");
  screen.display.ButtonEnableHangUp(1, HangUpMode::kStop, true);
  world.Taken();
  screen.clicks.HangUpClick(0);
  screen.clicks.HangUpClick(7);
  EXPECT_THAT(world.Taken(), IsEmpty());
  screen.clicks.HangUpClick(1);
  screen.clicks.HangUpClick(1);
  EXPECT_THAT(world.Taken(), ElementsAre("refuse 2"));
  EXPECT_TRUE(call->Blocked);
}

TEST_F(DisplayClicksTest, TheButtonOfACallThatIsOverRefusesNoOther) {
  settings.General.CallMode_CAPI = true;
  Ring(1, "0171555");
  Ring(2, "0301234");
  screen.display.ButtonEnableHangUp(0, HangUpMode::kStop, true);
  state.ActiveCallList.RemoveByKeyName("1");
  screen.display.DisplayResize();
  world.Taken();
  screen.clicks.HangUpClick(0);
  EXPECT_THAT(world.Taken(), IsEmpty());
}

TEST_F(DisplayClicksTest, TheBellButtonEndsTheRinging) {
  Ring(1, "0171555");
  screen.display.ButtonEnableBell(0, true);
  timers.tmSoundRepeat->SetEnabled(true);
  screen.clicks.BellClick();
  EXPECT_FALSE(timers.tmSoundRepeat->Enabled());
  EXPECT_FALSE(bar.content.lines[0].bellEnabled);
}

TEST_F(DisplayClicksTest, WhatACallShowsAsItsNumberGoesOnTheBlacklist) {
  struct Row {
    const char* number;
    std::vector<std::string> taken;
  };
  for (const Row& row : {Row{"0190", {"list 0190 Meier"}}, Row{"Unbekannt", {"list Unbekannt Meier"}}, Row{"", {}}}) {
    state.ActiveCallList.Clear();
    Ring(1, row.number, "Meier");
    world.Taken();
    screen.clicks.BlacklistClick(0);
    EXPECT_EQ(world.Taken(), row.taken);
  }
}

}  // namespace
}  // namespace vorlix
