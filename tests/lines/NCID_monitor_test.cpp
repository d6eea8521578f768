#include "lines/NCID_monitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"
#include "fakes/MemoryLogStore.h"

namespace vorlix {
namespace {

using fakes::Tape;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto kCall = "CID: *DATE*11022010*TIME*1941*LINE*10069*NMBR*0301234567*MESG*NONE*NAME*NO NAME*";
constexpr auto kRings = "event 12 of 32: 0301234567 to 10069, id 0, CIP 16";
constexpr auto kRingsSimulated = "event 12 of 32: 0301234567 to 10069, id 0, CIP 16, simulated";

class NCID_monitorTest : public testing::Test {
 protected:
  // Hands the line over and gives what it sets off.
  Tape Play(const std::string& line, bool simulated = false) {
    tape.clear();
    monitor.NCID_GetMessage(line, simulated);
    return tape;
  }
  Tape Wait(int seconds) {
    tape.clear();
    while (seconds-- > 0) {
      monitor.TimerTick();
    }
    return tape;
  }

  Tape tape;
  FakeClock clock;
  MemoryLogStore logs;
  fakes::FixedLineSwitches switches;
  fakes::TapedEvents events{tape};
  PlainNumbers numbers;
  fakes::FewOwnNumbers ownNumbers;
  fakes::AskingPrefix prefixInput;
  fakes::OpenSimulation simulation;
  fakes::TapedWatch watch{tape};
  NCID_monitor monitor{{clock, logs, switches, events, numbers, ownNumbers, prefixInput, simulation, watch}};
};

TEST_F(NCID_monitorTest, AKeyIsFollowedByItsValueAndMESGEndsTheScan) {
  struct Row {
    const char* line;
    const char* number;
    const char* MSN;
  };
  const Row rows[] = {
      {kCall, "0301234567", "10069"},
      {"*nmbr*030*Line*7*", "030", "7"},
      {"CID: *NMBR*030*MESG*NONE*LINE*7*", "030", ""},
      {"CID: *LINE*NMBR*NMBR*030*", "030", "NMBR"},
      {"*NMBR*030*LINE*7*NMBR*031*", "031", "7"},
      {"*NMBR", "Unbekannt", ""},
      {"*NMBR**LINE*7*", "Unbekannt", "7"},
      {"*", "Unbekannt", ""},
      {"*NMBR*0\t3\r\n0*LINE*7\1*", "0 3  0", "7 "},
  };
  for (const Row& row : rows) {
    EXPECT_THAT(Play(row.line),
                ElementsAre("event 12 of 32: " + std::string(row.number) + " to " + row.MSN + ", id 0, CIP 16",
                            "event 13 of 32"))
        << row.line;
  }
}

TEST_F(NCID_monitorTest, TheRecordOfACallTakesItsMomentFromTheClock) {
  clock.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 0, 5));
  const auto call = monitor.NCID_CollectMessage(kCall);
  ASSERT_NE(call, nullptr);
  EXPECT_EQ(call->Key, "0301234567ID");
  EXPECT_EQ(call->CallDateView() + " " + call->CallTimeView(), "21.11.2026 08:00:05");
  EXPECT_EQ(call->AVMDirection, CallDirection::kIncoming);
  EXPECT_TRUE(call->Active && call->NewCall);
  EXPECT_EQ(monitor.NCID_CollectMessage("HUP"), nullptr);
}

TEST_F(NCID_monitorTest, TheTimerEndsACallFifteenSecondsAfterItsFirstLine) {
  Play(kCall);
  EXPECT_THAT(Wait(10), IsEmpty());
  Play(kCall);
  EXPECT_THAT(Wait(4), IsEmpty());
  EXPECT_THAT(Wait(1), ElementsAre("event 14 of 32: id 0", "over 0"));
  EXPECT_THAT(Wait(20), IsEmpty());
  // The next has its own fifteen seconds, also when it comes before the next tick.
  for (int i = 0; i < 2; ++i) {
    Play(kCall);
    EXPECT_THAT(Wait(14), IsEmpty());
    EXPECT_THAT(Wait(1), ElementsAre("event 14 of 32: id 0", "over 0"));
  }
}

TEST_F(NCID_monitorTest, ALineWithoutAStarEndsTheCallAtOnceAndTheNextHasItsFullTime) {
  Play(kCall);
  Wait(10);
  EXPECT_THAT(Play("HUP"), ElementsAre("event 14 of 32: id 0", "over 0"));
  Play(kCall);
  EXPECT_THAT(Wait(14), IsEmpty());
  tape.clear();
  monitor.ConnectionLost();
  EXPECT_THAT(tape, ElementsAre("event 14 of 32: id 0", "over 0"));
  tape.clear();
  monitor.ConnectionLost();
  EXPECT_THAT(tape, IsEmpty());
}

TEST_F(NCID_monitorTest, TheDriverOwnsEveryCallWhereThereIsOne) {
  switches.options.CallMode_CAPI = true;
  EXPECT_THAT(Play(kCall), IsEmpty());
  EXPECT_THAT(Play(""), IsEmpty());
  EXPECT_THAT(Wait(20), IsEmpty());
}

TEST_F(NCID_monitorTest, RealCallsAreDroppedWhileTheUserSimulatesOrTestsThePrefix) {
  simulation.open = true;
  EXPECT_THAT(Play(kCall), IsEmpty());
  EXPECT_THAT(Play(kCall, true), ElementsAre(kRingsSimulated, "event 13 of 32"));
  EXPECT_THAT(Wait(15), ElementsAre("event 14 of 32: id 0, simulated", "over 0"));
  simulation.open = false;
  prefixInput.asking = true;
  EXPECT_THAT(Play(kCall), IsEmpty());
  EXPECT_THAT(Play(kCall, true), ElementsAre(kRingsSimulated, "event 13 of 32"));
}

TEST_F(NCID_monitorTest, TheRulesAheadOfThePipelineChangeOrHoldBackACall) {
  const auto call = [](const std::string& number) { return "CID: *LINE*77*NMBR*" + number + "*MESG*NONE*"; };
  switches.options.SpezialCuttNull = true;
  EXPECT_THAT(Play(call("01711230")), Contains(HasSubstr(": 0171123 to 77")));
  switches.options.NoIntern = true;
  EXPECT_THAT(Play(call("1234")), ElementsAre("event 13 of 32"));
  switches.options.MSNLO = true;
  EXPECT_THAT(Play(call("0171123")), Contains(HasSubstr(": 0171123 to 77")));
  const auto own = std::make_shared<oDataMSN>();
  own->Key = "78";
  ownNumbers.table.Add(own);
  EXPECT_THAT(Play(call("0171123")), ElementsAre("event 13 of 32"));
}

TEST_F(NCID_monitorTest, TheRawLineIsLoggedForRealCallsOnly) {
  switches.options.DebugNCID = true;
  EXPECT_THAT(Play(kCall, true), Contains(kRingsSimulated));
  EXPECT_EQ(logs.Text(R"(\log\raw_ncid.txt)"), "");
  EXPECT_THAT(Play(kCall), Contains(kRings));
  EXPECT_THAT(logs.Text(R"(\log\raw_ncid.txt)"), HasSubstr("|" + std::string(kCall)));
}

}  // namespace
}  // namespace vorlix
