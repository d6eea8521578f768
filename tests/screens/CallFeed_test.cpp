#include "screens/CallFeed.h"

#include <gmock/gmock.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Terminal : public CallFeedView {
 public:
  // Without the date and time in front.
  void ShowLine(const std::string& line) override { lines.push_back(line.substr(21)); }
  std::vector<std::string> Taken() { return std::exchange(lines, {}); }

  std::vector<std::string> lines;
};

class CallFeedTest : public testing::Test, public Terminal, public DisplayRoom<CallFeed> {
 protected:
  CallFeedTest() : DisplayRoom(static_cast<CallFeedView&>(*this)) {}
};

TEST_F(CallFeedTest, TellsTheStateOfTheSourcesInUseWheneverItChanges) {
  Show();
  Show();
  world.states = {.CAPI = {true, true}, .AVM = {true, false}, .NCID = {true, true}};
  Show();
  world.states = {};
  Show();
  EXPECT_THAT(Taken(), ElementsAre("Leitung     AVM OK", "Leitung     CAPI2.0 Init OK/AVM Fehler/NCID OK",
                                   "Leitung     kein Anruf"));
}

TEST_F(CallFeedTest, EachStepOfACallIsOneLine) {
  Show();
  Taken();
  const auto answered = Ring(1, "0171", "Meier");
  Show();
  answered->NewCall = false;
  bar.OnAnswered(*answered);
  answered->AVMCallperiod = 3725;
  bar.OnEnded(*answered);
  EXPECT_THAT(Taken(), ElementsAre("Anruf       Meier (0171 Ort) an Praxis (1234)", "Angenommen  Meier (0171 Ort)",
                                   "Beendet     Meier (0171 Ort), 1:02:05"));
  state.ActiveCallList.Clear();
  bar.OnEnded(*Ring(2, "0172"));
  const auto dialled = Take(3, "01\x1B\r73");
  dialled->AVMDirection = CallDirection::kOutgoing;
  bar.OnDialled(*dialled);
  bar.OnEnded(*dialled);
  EXPECT_THAT(Taken(), ElementsAre("Anruf       0172 Ort an Praxis (1234)", "Entgangen   0172 Ort",
                                   "Gew\xE4hlt     01  73 Ort von Praxis (1234)", "Erfolglos   01  73 Ort"));
  Take(4, "0190")->Blocked = true;
  Show();
  EXPECT_THAT(Taken(), testing::Contains("Abgewiesen  0190 Ort"));
}

TEST_F(CallFeedTest, ACallThatWasNotShownHasNoEndEitherAndAnIdThatIsUsedAgainIsANewCall) {
  const auto hidden = Take(1, "0190");
  bar.OnAnswered(*hidden);
  bar.OnEnded(*hidden);
  EXPECT_THAT(Taken(), IsEmpty());
  Show();
  Taken();
  state.ActiveCallList.Clear();
  loop.Advance(std::chrono::minutes(1));
  Ring(1, "0172");
  EXPECT_THAT(Taken(), ElementsAre("Anruf       0172 Ort an Praxis (1234)"));
}

}  // namespace
}  // namespace vorlix
