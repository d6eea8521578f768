#include "screens/DisplayCommands.h"

#include <gmock/gmock.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

class DisplayCommandsTest : public testing::Test, public DisplayRoom<RecordingBar> {};

TEST_F(DisplayCommandsTest, TheToolbarRefusesOneRingingCallAfterTheOtherWhereThereIsADriver) {
  EXPECT_FALSE(screen.commands.ClickFromToolbar());
  Take(7, "0190")->Blocked = true;
  const auto first = Ring(8, "0171"), second = Ring(9, "0172");
  screen.display.ButtonEnableHangUp(1, HangUpMode::kStop, true);
  world.Taken();
  EXPECT_FALSE(screen.commands.RejectCall(8) || first->Blocked);
  settings.General.CallMode_CAPI = true;
  EXPECT_TRUE(screen.commands.ClickFromToolbar());
  EXPECT_TRUE(first->Blocked && !first->Active && !second->Blocked);
  EXPECT_EQ(first->BlockFunction, 5);
  EXPECT_FALSE(bar.content.lines.at(1).hangUpEnabled);
  EXPECT_TRUE(screen.commands.ClickFromToolbar());
  EXPECT_FALSE(screen.commands.ClickFromToolbar());
  EXPECT_FALSE(screen.commands.RejectCall(7) || screen.commands.RejectCall(3));
  EXPECT_THAT(world.Taken(), ElementsAre("refuse 8", "refuse 9"));
}

TEST_F(DisplayCommandsTest, EachMarkStandsForItself) {
  const auto& general = settings.General;
  screen.commands.mnuBlockAllByTime_Click();
  EXPECT_TRUE(bar.content.rejectsAll);
  screen.commands.mnuBlockAllByTime_Click();
  screen.commands.mnuBlockAll_Click();
  screen.commands.mnuNoFunctionMail_Click();
  screen.commands.mnuNoFunctionBatch_Click();
  EXPECT_TRUE(general.BlockAll && !general.BlockAllByTime && general.MenuNoMail && general.MenuNoBatch);
}

}  // namespace
}  // namespace vorlix
