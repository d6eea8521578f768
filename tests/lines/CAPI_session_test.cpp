#include "lines/CAPI_session.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/LineFakes.h"
#include "fakes/ManualReactor.h"
#include "fakes/ScriptedCapiDriver.h"

namespace vorlix {
namespace {

using fakes::Tape;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using ListenState = CAPI_session::ListenState;

const std::string kRegister = "register(3072,2,7,2048) ";

class CAPISession : public testing::Test {
 protected:
  Tape Init(bool byUser = false) {
    tape.clear();
    driver.calls.clear();
    session.CAPIInit(byUser);
    return tape;
  }
  // Polls for that long, as the timer does.
  void Poll(std::chrono::milliseconds time) {
    std::string message;
    for (; time.count() > 0; time -= std::chrono::milliseconds(400)) {
      session.GetMessage(message);
      loop.Advance(std::chrono::milliseconds(400));
    }
  }

  ListenState Listening() const { return session.Controllers()[0].listen; }

  Tape tape;
  ManualReactor loop;
  fakes::FixedLineSwitches switches;
  fakes::ScriptedCapiDriver driver;
  fakes::TapedEvents events{tape};
  CapiSwitches reread;
  CAPI_session session{{driver, events, switches, loop, [this] { return reread; }, [this] { tape.push_back("state"); }},
                       {}};
};

TEST_F(CAPISession, RegistersAndListensAsksForTheLibraryOnceAndReleasesAtTheEndOfTheSystemOnlyWhereWanted) {
  EXPECT_THAT(Init(), ElementsAre("event 8 of 0", "event 9 of 0"));
  EXPECT_EQ(driver.calls, "dll installed version " + kRegister + "profile(1) ");
  EXPECT_THAT(driver.sent,
              ElementsAre("1a 00 07 00 05 80 01 80 01 00 00 00 7f 00 00 00 72 00 07 1c 00 00 00 00 00 00"));
  EXPECT_EQ(Listening(), ListenState::kListening);
  EXPECT_TRUE(session.Controllers()[0].supported && session.IsUp());
  EXPECT_EQ(session.DriverText() + " " + std::to_string(session.CountBChannels()), "Maker/2.0-1.5 2");
  EXPECT_THAT(Init(true), ElementsAre("state", "event 9 of 0"));
  EXPECT_EQ(driver.calls, "release(7) version " + kRegister + "profile(1) ");

  session.CAPIRelease(true);
  EXPECT_TRUE(session.IsUp());
  switches.options.CapiReleaseByShutdown = true;
  session.CAPIRelease(true);
  EXPECT_FALSE(session.IsUp());
}

TEST_F(CAPISession, TellsWhatIsWrong) {
  const struct {
    bool isThere;
    std::uint32_t installed, registering, putting;
    Tape told;
  } rows[] = {
      {false, 0, 0, 0, {"event 4 of 0"}},
      {true, 0x1009, 0, 0, {"event 5 of 0"}},
      {true, 0, 0x1009, 0, {"event 6 of 0"}},
      {true, 0, 0x1001, 0, {"event 7 of 0"}},
      {true, 0, 0, 0x1008, {"event 8 of 0", "event 10 of 0", "event 9 of 0"}},
  };
  for (const auto& row : rows) {
    fakes::ScriptedCapiDriver failing;
    failing.isThere = row.isThere;
    failing.installed = row.installed;
    failing.registering = row.registering;
    failing.putting = row.putting;
    CAPI_session other{{failing, events, switches, loop, {}, [] {}}, {}};
    tape.clear();
    other.CAPIInit(false);
    EXPECT_EQ(tape, row.told);
    EXPECT_EQ(other.IsUp(), row.putting != 0);
    EXPECT_EQ(other.IsWaiting(), row.isThere && row.putting == 0);
  }
}

TEST_F(CAPISession, ListensOnTheControllersOfTheSettingAsFarAsThereCanBeAny) {
  const struct {
    const char* setting;
    std::uint32_t controllers;
    const char* active;
  } rows[] = {{"10000", 1, "1"}, {"1", 2, "01"}, {"101", 3, "101"}, {"", 1, "0"}, {"01000", 2, "01"}};
  for (const auto& row : rows) {
    switches.options.ControllerActive = row.setting;
    driver.controllers = row.controllers;
    Init();
    std::string active;
    for (const auto& controller : session.Controllers())
      active += controller.active ? '1' : '0';
    EXPECT_EQ(active, row.active) << row.setting;
    EXPECT_EQ(driver.Sent().size(), static_cast<std::size_t>(std::ranges::count(active, '1')));
  }
  driver.controllers = 65535;
  Init();
  EXPECT_EQ(session.Controllers().size(), 127U);
}

TEST_F(CAPISession, AConfirmationMayComeLaterAndACallBeforeIt) {
  const auto toldWhilePolling = [this] {
    tape.clear();
    Poll(std::chrono::seconds(2));
    return tape;
  };
  driver.confirmsListen = false;
  driver.Say("0c 00 07 00 04 82 03 80 01 01 00 00");
  Init();
  std::string message;
  EXPECT_EQ(session.GetMessage(message), CAPI_session::Reading::kMessage);
  EXPECT_EQ(session.GetMessage(message), CAPI_session::Reading::kNothing);
  driver.Say("0e 00 07 00 05 81 01 00 09 00 00 00 02 20");  // of another controller
  for (int twice = 0; twice < 2; ++twice)
    driver.Say("0e 00 07 00 05 81 01 00 01 00 00 00 02 20");
  EXPECT_THAT(toldWhilePolling(), ElementsAre("event 10 of 0"));
  EXPECT_EQ(Listening(), ListenState::kRefused);

  Init();
  driver.Say("0a 00 07 00 05 81 01 00 01 00");
  EXPECT_THAT(toldWhilePolling(), ElementsAre("event 10 of 0")) << "a confirmation without its code";
}

TEST_F(CAPISession, TheSpecFileSetsTheMasksAndIsReadAgainAfterACall) {
  CapiSwitches first;
  first.LoadThisValues = first.SkipVersionAndManufact = true;
  first.InfoMask = 0x3FF;
  first.CIPMask = 0x1FFF03FF;
  reread.InfoMask = 1;
  reread.LoadThisValues = true;
  CAPI_session other{{driver, events, switches, loop, [this] { return reread; }, [] {}}, first};
  other.CAPIInit(false);
  EXPECT_EQ(other.DriverText(), "");
  other.CAPIReset(false, true);
  other.CAPIReset(true, false);
  EXPECT_THAT(driver.sent, ElementsAre(HasSubstr("ff 03 00 00 ff 03 ff 1f"), HasSubstr("ff 03 00 00 ff 03 ff 1f"),
                                       HasSubstr("01 00 00 00 00 00 00 00")));
}

TEST_F(CAPISession, ALostDriverIsToldOnceAndTriedAgain) {
  Init();
  driver.calls.clear();
  tape.clear();
  driver.whenEmpty = kCapiIllegalApplication;
  driver.isReachable = false;
  Poll(std::chrono::hours(2));
  EXPECT_THAT(tape, ElementsAre("state", "event 10 of 0"));
  // After 30 s, 60 s, 120 s, ... then every ten minutes; each time the answer is waited for.
  EXPECT_EQ(driver.calls.substr(0, 11), "release(7) ");
  const auto asked = (driver.calls.size() - 11) / 4;
  EXPECT_EQ(asked, 15U) << driver.calls;

  tape.clear();
  driver.calls.clear();
  driver.whenEmpty = kCapiQueueEmpty;
  driver.isReachable = true;
  driver.registering = 0x1008;
  Poll(std::chrono::minutes(11));
  EXPECT_THAT(tape, IsEmpty()) << "still refused";
  driver.registering = kCapiOk;
  Poll(std::chrono::minutes(11));
  EXPECT_TRUE(session.IsUp());
  EXPECT_THAT(tape, ElementsAre("state", "event 9 of 0"));

  tape.clear();
  driver.whenEmpty = kCapiIllegalApplication;
  Poll(std::chrono::seconds(2));
  EXPECT_THAT(tape, ElementsAre("state")) << "a line that comes and goes is told of once";
}

}  // namespace
}  // namespace vorlix
