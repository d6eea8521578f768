#include "lines/NCID_monitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/SocketLines.h"

namespace vorlix {
namespace {

using fakes::Tape;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto kCall = "CID: *DATE*11022010*TIME*1941*LINE*10069*NMBR*0301234567*MESG*NONE*NAME*NO NAME*";
constexpr auto kRingsSimulated = "event 12 of 32: 0301234567 to 10069, id 0, CIP 16, simulated";
constexpr auto kShown = "event 13 of 32", kCallEnd = "event 14 of 32: id 0";

class NCID_monitorTest : public testing::Test, protected fakes::NcidLine {
 protected:
  // Hands the line over and gives what it sets off.
  Tape Play(const std::string& line, bool simulated = false) {
    tape.clear();
    monitor.NCID_GetMessage(line, simulated);
    return tape;
  }
  Tape Wait(int seconds) {
    tape.clear();
    while (seconds-- > 0)
      monitor.TimerTick();
    return tape;
  }
  Tape Lose() {
    tape.clear();
    monitor.ConnectionLost();
    return tape;
  }
};

TEST_F(NCID_monitorTest, AKeyIsFollowedByItsValueAndMESGEndsTheScan) {
  const std::pair<std::string, std::string> rows[] = {
      {kCall, "0301234567 to 10069"},
      {"*nmbr*030*Line*7*", "030 to 7"},
      {"CID: *NMBR*030*MESG*NONE*LINE*7*", "030 to "},
      {"CID: *LINE*NMBR*NMBR*030*", "030 to NMBR"},
      {"*NMBR", "Unbekannt to "},
      {"*NMBR**LINE*7*", "Unbekannt to 7"},
      {"*NMBR*0\t3\r\n0*LINE*7\1*", "0 3  0 to 7 "},
  };
  for (const auto& [line, call] : rows)
    EXPECT_THAT(Play(line), ElementsAre("event 12 of 32: " + call + ", id 0, CIP 16", kShown)) << line;
}

TEST_F(NCID_monitorTest, ACallEndsFifteenSecondsAfterItsFirstLineOrWithALineWithoutAStarOrWithTheConnection) {
  Play(kCall);
  EXPECT_THAT(Wait(10), IsEmpty());
  // The next has its own fifteen seconds, also when it comes before the next tick.
  for (const int left : {4, 14}) {
    Play(kCall);
    EXPECT_THAT(Wait(left), IsEmpty());
    EXPECT_THAT(Wait(1), ElementsAre(kCallEnd, "over 0"));
  }
  EXPECT_THAT(Wait(20), IsEmpty());
  Play(kCall);
  Wait(10);
  EXPECT_THAT(Play("HUP"), ElementsAre(kCallEnd, "over 0"));
  Play(kCall);
  EXPECT_THAT(Wait(14), IsEmpty());
  EXPECT_THAT(Lose(), ElementsAre(kCallEnd, "over 0"));
  EXPECT_THAT(Lose(), IsEmpty());
}

TEST_F(NCID_monitorTest, TheDriverOwnsEveryCallWhereThereIsOne) {
  switches.options.CallMode_CAPI = true;
  for (const char* line : {kCall, ""})
    EXPECT_THAT(Play(line), IsEmpty());
  EXPECT_THAT(Wait(20), IsEmpty());
}

TEST_F(NCID_monitorTest, RealCallsAreLoggedAndDroppedWhileTheUserSimulatesOrTestsThePrefix) {
  switches.options.DebugNCID = true;
  simulation.open = true;
  EXPECT_THAT(Play(kCall), IsEmpty());
  EXPECT_THAT(Play(kCall, true), ElementsAre(kRingsSimulated, kShown));
  EXPECT_THAT(Wait(15), ElementsAre("event 14 of 32: id 0, simulated", "over 0"));
  simulation.open = false;
  prefixInput.asking = true;
  EXPECT_THAT(Play(kCall), IsEmpty());
  EXPECT_THAT(Play(kCall, true), ElementsAre(kRingsSimulated, kShown));
  prefixInput.asking = false;
  Play(kCall);
  EXPECT_EQ(logs.Text(R"(\log\raw_ncid.txt)"), "13.03.2024 12:00:00|" + std::string(kCall) + "\n");
}

TEST_F(NCID_monitorTest, TheRulesAheadOfThePipelineChangeOrHoldBackACall) {
  switches.options.SpezialCuttNull = switches.options.NoIntern = true;
  EXPECT_THAT(Play("*LINE*77*NMBR*01711230*"), ElementsAre("event 12 of 32: 0171123 to 77, id 0, CIP 16", kShown));
  EXPECT_THAT(Play("*LINE*77*NMBR*1234*"), ElementsAre(kShown));
}

}  // namespace
}  // namespace vorlix
