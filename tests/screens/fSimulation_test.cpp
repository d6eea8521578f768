#include "screens/fSimulation.h"

#include <gmock/gmock.h>

#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class fSimulationTest : public testing::Test {
 protected:
  fSimulationTest() {
    clock.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 5, 0));
    settings.General.CallMode_CAPI = false;
    settings.General.CallMode_AVM = true;
    simulation.Form_Load();
  }

  void Modes(bool CAPI, bool AVM, bool NCID) {
    settings.General.CallMode_CAPI = CAPI;
    settings.General.CallMode_AVM = AVM;
    settings.General.CallMode_NCID = NCID;
  }
  fakes::Tape Taken() { return std::exchange(tape, {}); }

  fakes::Tape tape;
  FakeClock clock;
  Settings settings;
  fakes::FewOwnNumbers ownNumbers;
  int channels = 0;
  fSimulation simulation{{clock, settings, ownNumbers,
                          [this](int event) {
                            const auto& call = simulation.GetSimulationsData();
                            tape.push_back("CAPI " + std::to_string(event) + " of " + std::to_string(call.PLCI) +
                                           (event == 0 ? ": " + call.DataNumber + " to " + call.MSN : ""));
                          },
                          [this](const std::string& line) { tape.push_back("AVM " + line); },
                          [this](const std::string& line) { tape.push_back("NCID " + line); },
                          [this] { return channels; }, [this] { tape.emplace_back("reset"); }}};
};

TEST_F(fSimulationTest, RingsByTheFirstSourceAndEndsByAllOfThem) {
  channels = 4;
  Modes(true, true, true);
  simulation.cmdSim_Click("30123", "77", true);
  simulation.cmdSim_Click("30124", "78", true);
  EXPECT_THAT(Taken(), ElementsAre("CAPI 0 of 0: 30123 to 77", "CAPI 0 of 1: 30124 to 78"));
  simulation.cmdTrennen_Click(0);
  EXPECT_THAT(Taken(), ElementsAre("CAPI 2 of 0", "AVM 21.11.2026 08:05:00;DISCONNECT;0;15;", "NCID "));
  Modes(false, true, true);
  simulation.cmdSim_Click("30\r1;23", "7;7", true);
  EXPECT_THAT(Taken(), ElementsAre("AVM 21.11.2026 08:05:00;RING;0;030123;77;ISDN;"));
  Modes(false, false, true);
  simulation.cmdSim_Click("30123", "77", true);
  EXPECT_THAT(Taken(), ElementsAre("NCID CID: *DATE*11022010*TIME*1941*LINE*77*NMBR*030123*MESG*NONE*NAME*NO NAME*"));
}

TEST_F(fSimulationTest, ThePrefixStandsInFrontOfWhatIsNoInternalNumber) {
  const std::tuple<const char*, const char*, bool, const char*, const char*> rows[] = {
      {"", "30123", true, "30123", "030123"},   {"", "43123", false, "043123", "0043123"},
      {"0", "30123", true, "030123", "030123"}, {"0", "1234", true, "1234", "1234 (interne Nummer)"},
      {"0", "", true, "", "Unbekannt"},
  };
  Modes(true, false, false);
  for (const auto& [myVWOP, number, isNational, sent, label] : rows) {
    settings.General.myVWOP = myVWOP;
    simulation.Form_Load();
    EXPECT_TRUE(simulation.cmdSim_Click(number, "7", isNational));
    EXPECT_EQ(simulation.GetSimulationsData().DataNumber, sent);
    EXPECT_EQ(simulation.Label(0), label);
  }
}

TEST_F(fSimulationTest, HasAsManyLinesAsTheDriverWithinLimits) {
  const std::pair<int, int> rows[] = {{0, 2}, {1, 1}, {4, 4}, {30, 5}};
  for (const auto& [count, lines] : rows) {
    channels = count;
    simulation.Form_Load();
    for (int line = 0; line < lines; ++line)
      EXPECT_TRUE(simulation.cmdSim_Click("30123", "7", true)) << count;
    EXPECT_FALSE(simulation.CanRing() || simulation.cmdSim_Click("30123", "7", true));
    simulation.cmdTrennen_Click(lines - 1);
    EXPECT_EQ(simulation.Label(lines - 1), "");
    EXPECT_TRUE(simulation.CanRing());
  }
}

TEST_F(fSimulationTest, ClosingEndsWhatRingsBeforeRealCallsAreSeenAgain) {
  simulation.cmdSim_Click("30123", "7", true);
  Taken();
  simulation.cmdCancel_Click();
  EXPECT_THAT(Taken(), ElementsAre("AVM 21.11.2026 08:05:00;DISCONNECT;0;15;", "reset"));
  EXPECT_FALSE(simulation.IsOpen());
  EXPECT_FALSE(simulation.cmdSim_Click("30123", "7", true));
  simulation.cmdTrennen_Click(-1);
  simulation.cmdTrennen_Click(16);
  EXPECT_THAT(Taken(), IsEmpty());
}

}  // namespace
}  // namespace vorlix
