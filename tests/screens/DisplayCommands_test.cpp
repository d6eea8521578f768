#include "screens/DisplayCommands.h"

#include <gmock/gmock.h>

#include "data/modSettings.h"
#include "fakes/DataRoom.h"
#include "fakes/RecordingPorts.h"

namespace vorlix {
namespace {

using testing::ElementsAre;

class DisplayCommandsTest : public testing::Test, protected DataRoom {
 protected:
  std::shared_ptr<oDataCall> Ring(int PLCI) {
    const auto call = std::make_shared<oDataCall>();
    call->Key = std::to_string(PLCI);
    call->PLCI = PLCI;
    call->Active = true;
    state.ActiveCallList.Add(call);
    return call;
  }

  RecordingPorts ports;
  Settings settings;
  PipelineState state;
  DisplayCommands commands{{.settings = settings,
                            .state = state,
                            .display = ports,
                            .capi = ports,
                            .simulation = ports,
                            .silentModeChanged = [this] { ports.Note("silent mode"); },
                            .resetDisplay = [this] { ports.Note("reset"); },
                            .resetCAPI = [this] { ports.Note("CAPI reset"); }}};
};

TEST_F(DisplayCommandsTest, TheToolbarRefusesOneRingingCallAfterTheOther) {
  EXPECT_FALSE(commands.ClickFromToolbar());
  Ring(7)->Blocked = true;
  const auto first = Ring(8);
  const auto second = Ring(9);
  EXPECT_TRUE(commands.ClickFromToolbar());
  EXPECT_TRUE(first->Blocked && !first->Active && !second->Blocked);
  EXPECT_EQ(first->BlockFunction, 5);
  EXPECT_TRUE(commands.ClickFromToolbar());
  EXPECT_FALSE(commands.ClickFromToolbar());
  EXPECT_FALSE(commands.RejectCall(3));
  EXPECT_THAT(ports.Taken(), ElementsAre("hang-up 1 1 off", "refuse 8", "hang-up 2 1 off", "refuse 9"));
}

TEST_F(DisplayCommandsTest, WithoutADriverNothingIsRefused) {
  settings.General.CallMode_CAPI = false;
  const auto call = Ring(0);
  EXPECT_FALSE(commands.RejectCall(0));
  EXPECT_FALSE(call->Blocked);
  commands.mnuCAPIReset_Click();
  EXPECT_THAT(ports.Taken(), ElementsAre("hang-up 0 1 off"));
}

TEST_F(DisplayCommandsTest, EachMarkStandsForItselfAndIsSavedAtTheEnd) {
  commands.mnuBlockAll_Click();
  commands.mnuBlockAllByTime_Click();
  commands.mnuBlockAll_Click();
  commands.mnuSilentMode_Click();
  commands.mnuNoFunctionMail_Click();
  commands.mnuNoFunctionBatch_Click();
  EXPECT_THAT(ports.Taken(), ElementsAre("resize", "resize", "resize", "silent mode"));
  modSettings({ini, store, folders, clock, messages, {}}, settings).SaveSettings_Self();
  std::string stored;
  for (const char* key : {"BlockAll", "BlockAllByTime", "SilentMode", "MenuNoMail", "MenuNoBatch"}) {
    stored += ini.GetSettStr("General", key, "-");
  }
  EXPECT_EQ(stored, "01111");
}

}  // namespace
}  // namespace vorlix
