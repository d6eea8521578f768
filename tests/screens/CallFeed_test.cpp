#include "screens/CallFeed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"
#include "fakes/FakeClock.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Terminal : public CallFeedView {
 public:
  Terminal() { clock.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 0, 0)); }

  // Without the date and time in front.
  void ShowLine(const std::string& line) override { lines.push_back(line.substr(21)); }

  std::vector<std::string> lines;
  FakeClock clock;
};

class CallFeedTest : public testing::Test, public Terminal, public DisplayRoom<CallFeed> {
 protected:
  CallFeedTest() : DisplayRoom(static_cast<CallFeedView&>(*this), clock) {}

  std::shared_ptr<oDataCall> Ring(int id, const std::string& number, bool blocked = false) {
    auto call = std::make_shared<oDataCall>(&numbers);
    call->Key = std::to_string(id);
    call->PLCI = id;
    call->DataNumber(number);
    call->MSN = "1234";
    call->CallDateTime = clock.Now();
    call->NewCall = true;
    call->Blocked = blocked;
    state.ActiveCallList.Add(call);
    return call;
  }
  std::vector<std::string> Taken() { return std::exchange(lines, {}); }

  PlainNumbers numbers;
};

TEST_F(CallFeedTest, TellsTheStateOfTheSourcesInUseWheneverItChanges) {
  screen.display.DisplayUpdate(true);
  screen.display.DisplayUpdate(true);
  world.states = {.CAPI = {true, true}, .AVM = {true, false}, .NCID = {true, true}};
  screen.display.DisplayUpdate(true);
  world.states = {};
  screen.display.DisplayUpdate(true);
  EXPECT_THAT(Taken(), ElementsAre("Leitung     AVM OK", "Leitung     CAPI2.0 Init OK/AVM Fehler/NCID OK",
                                   "Leitung     kein Anruf"));
}

TEST_F(CallFeedTest, ShowsTheCourseOfACallInOneLineForEachStep) {
  screen.display.DisplayUpdate(true);
  Taken();
  const auto call = Ring(2, "0171555");
  screen.display.DisplayUpdate(true);
  screen.display.DisplayUpdate(true);
  call->NewCall = false;
  bar.OnAnswered(*call);
  call->AVMCallperiod = 3725;
  bar.OnEnded(*call);
  EXPECT_THAT(Taken(),
              ElementsAre("Anruf       0171555 an 1234", "Angenommen  0171555", "Beendet     0171555, 1:02:05"));
}

TEST_F(CallFeedTest, TellsMissedFromUnreachedCalls) {
  screen.display.DisplayUpdate(true);
  Taken();
  const auto missed = Ring(0, "0171555");
  screen.display.DisplayUpdate(true);
  bar.OnEnded(*missed);
  oDataCall dialled(&numbers);
  dialled.PLCI = 1;
  dialled.DataNumber("0301");
  dialled.MSN = "77";
  dialled.NewCall = true;
  dialled.AVMDirection = CallDirection::kOutgoing;
  bar.OnDialled(dialled);
  bar.OnEnded(dialled);
  EXPECT_THAT(Taken(), ElementsAre("Anruf       0171555 an 1234", "Entgangen   0171555", "Gew\xE4hlt     0301 von 77",
                                   "Erfolglos   0301"));
}

TEST_F(CallFeedTest, SaysThatACallWasRefused) {
  screen.display.DisplayUpdate(true);
  Taken();
  Ring(0, "0190", true);
  screen.display.DisplayUpdate(true);
  EXPECT_THAT(Taken(), ElementsAre("Anruf       0190 an 1234", "Abgewiesen  0190"));
}

TEST_F(CallFeedTest, ACallThatWasNotShownHasNoEndEither) {
  const auto hidden = Ring(0, "0190", true);
  bar.OnAnswered(*hidden);
  bar.OnEnded(*hidden);
  EXPECT_THAT(Taken(), IsEmpty());
}

TEST_F(CallFeedTest, AnIdThatIsUsedAgainIsANewCall) {
  const auto first = Ring(0, "0171");
  screen.display.DisplayUpdate(true);
  state.ActiveCallList.RemoveByKeyName("0");
  Taken();
  clock.SetNow(clock.Now().AddSeconds(60));
  Ring(0, "0172");
  screen.display.DisplayUpdate(true);
  EXPECT_THAT(Taken(), ElementsAre("Anruf       0172 an 1234"));
}

TEST_F(CallFeedTest, NothingFromTheNetworkCanCommandTheTerminal) {
  Ring(0, "01\x1B[2J\r71");
  screen.display.DisplayUpdate(true);
  ASSERT_FALSE(lines.empty());
  for (const std::string& line : lines) {
    EXPECT_EQ(line.find_first_of("\x1B\r\n"), std::string::npos);
  }
}

}  // namespace
}  // namespace vorlix
