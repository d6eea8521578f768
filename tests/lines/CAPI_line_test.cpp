// A whole line over the machine's own library: driver in the network, library, session and calls.
#include <gmock/gmock.h>

#include "core/MainTimers.h"
#include "fakes/CapiCalls.h"
#include "fakes/CapiMachine.h"

namespace vorlix {
namespace {

using namespace fakes;
using std::chrono::milliseconds;
using testing::ElementsAre;

constexpr const char* kListenRequest = "1a 00 07 00 05 80 01 80 01 00 00 00 7f 00 00 00 72 00 07 1c 00 00 00 00 00 00";

class CAPILine : public CapiMachine, protected CapiCalls {
 protected:
  CAPILine() : CapiCalls(driver, events, watch) { events.line = &calls; }

  void SetUp() override {
    ASSERT_NO_FATAL_FAILURE(CapiMachine::SetUp());
    timers.tmCAPI->SetTick([this] { calls.tmCAPI_Timer(*timers.tmCAPI); });
    timers.tmCAPI->SetEnabled(true);  // as the end of the initialisation does
    session.CAPIInit(false);
    ASSERT_TRUE(session.IsUp());
    ASSERT_EQ(server.Next(), kListenRequest);
    tape.clear();
  }
  void TearDown() override { session.CAPIRelease(false); }

  // Lets the program's time pass, and a little real time for the network, until `done`.
  bool Until(const std::function<bool()>& done, milliseconds step = milliseconds(400)) {
    for (int i = 0; i < 2000 && !done(); ++i) {
      loop.Advance(step);
      std::this_thread::sleep_for(milliseconds(1));
    }
    return done();
  }
  bool UntilTold(const std::string& entry) {
    return Until([&] { return testing::Value(tape, testing::Contains(entry)); });
  }

  Tape tape;
  TapedWatch watch{tape};
  RefusingEvents events{tape};
  MainTimers timers{loop};
};

TEST_F(CAPILine, CallsComeThroughAndEndWithAServerThatMayComeBack) {
  server.Say(kCallIndication);
  ASSERT_TRUE(UntilTold(kNewCall));
  EXPECT_EQ(server.Next(), kAlertRequest);
  tape.clear();
  server.Stop();
  ASSERT_TRUE(UntilTold("over 257"));
  EXPECT_THAT(tape, ElementsAre("event 10 of 0", kCallEnd, "over 257"));
  tape.clear();
  loop.Advance(std::chrono::minutes(15));
  EXPECT_TRUE(tape.empty()) << tape.front();
  server.Start();
  ASSERT_TRUE(Until([&] { return session.IsUp(); }, milliseconds(4000)));
  EXPECT_THAT(tape, ElementsAre("event 9 of 0"));
  EXPECT_EQ(server.Next(), kListenRequest);
  server.Say(kCallIndication);
  EXPECT_TRUE(UntilTold(kNewCall));
}

}  // namespace
}  // namespace vorlix
