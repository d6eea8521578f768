// A whole line over the machine's own library: driver in the network, library, session and calls.
#include <dlfcn.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/CapiServer.h"
#include "core/MainTimers.h"
#include "fakes/CapiCalls.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/Capi20Library.h"

namespace vorlix {
namespace {

using std::chrono::milliseconds;
using testing::Contains;
using testing::ElementsAre;

constexpr const char* kCall =
    "2e 00 07 00 02 82 01 80 01 01 00 00 10 00 07 81 35 35 35 30 31 32 0c 21 83 33 30 31 32 33 34 35 36 37 38 00 00 "
    "03 90 90 a3 00 02 91 81 00";
constexpr const char* kListenRequest = "1a 00 07 00 05 80 01 80 01 00 00 00 7f 00 00 00 72 00 07 1c 00 00 00 00 00 00";
constexpr const char* kConnectActive = "0f 00 07 00 03 82 02 80 01 01 00 00 00 00 00";
constexpr const char* kDisconnect = "0e 00 07 00 04 82 03 80 01 01 00 00 9a 34";
constexpr const char* kNewCall = "event 12 of 0: 03012345678 to 555012, id 257, CIP 16";
constexpr const char* kCallEnd = "event 14 of 0: id 257";

class CAPILine : public testing::Test, protected fakes::CapiCalls {
 protected:
  CAPILine() : fakes::CapiCalls(driver, events, watch) { events.line = &calls; }

  void SetUp() override {
    ASSERT_NE(dlopen(Capi20Library::kFile, RTLD_NOW), nullptr) << "the package libcapi20-3 is missing";
    ASSERT_TRUE(driver.IsDLLAvailable());
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
    return Until([&] { return testing::Value(tape, Contains(entry)); });
  }

  TemporaryFolder home;
  CapiServer server{port};
  TemporaryVariable variable{"HOME", (server.WriteConfiguration(home.Path()), port = server.Port(), home.Path())};
  fakes::Tape tape;
  fakes::TapedWatch watch{tape};
  fakes::RefusingEvents events{tape};
  MainTimers timers{loop};
  Capi20Library driver;

 private:
  static inline int port = 0;  // the library reads its configuration once
};

TEST_F(CAPILine, ARefusedCallIsTakenAndDropped) {
  events.refused = "03012345678";
  server.Say(kCall);
  ASSERT_TRUE(UntilTold(kNewCall));
  EXPECT_EQ(server.Next(), "11 00 07 00 01 80 02 80 01 01 00 00 00 00 00 00 00");
  EXPECT_EQ(server.Next(), "1b 00 07 00 02 83 00 00 01 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00");
  server.Say(kConnectActive);
  ASSERT_TRUE(UntilTold("event 15 of 0"));
  EXPECT_EQ(server.Next(), "0c 00 07 00 03 83 02 80 01 01 00 00");
  EXPECT_EQ(server.Next(), "0d 00 07 00 04 80 03 80 01 01 00 00 00");
  server.Say("0e 00 07 00 04 81 03 80 01 01 00 00 00 00");
  server.Say(kDisconnect);
  ASSERT_TRUE(UntilTold(kCallEnd));
  EXPECT_EQ(server.Next(), "0c 00 07 00 04 83 03 80 01 01 00 00");
}

TEST_F(CAPILine, ACallThatAnotherDeviceTakesIsLeftAlone) {
  server.Say(kCall);
  server.Say(kDisconnect);
  ASSERT_TRUE(UntilTold("over 257"));
  EXPECT_THAT(tape, ElementsAre("event 11 of 0", kNewCall, "event 13 of 0", kCallEnd, "over 257"));
  EXPECT_EQ(server.Next(), "11 00 07 00 01 80 02 80 01 01 00 00 00 00 00 00 00");
  EXPECT_EQ(server.Next(), "0c 00 07 00 04 83 03 80 01 01 00 00");
  EXPECT_EQ(server.Next(milliseconds(50)), "");
}

TEST_F(CAPILine, AServerMayGoAndComeBack) {
  server.Say(kCall);
  ASSERT_TRUE(UntilTold(kNewCall));
  server.Next();
  tape.clear();
  server.Stop();
  ASSERT_TRUE(UntilTold(kCallEnd));
  EXPECT_FALSE(session.IsUp());
  EXPECT_THAT(tape, ElementsAre("event 10 of 0", kCallEnd, "over 257"));
  tape.clear();
  loop.Advance(std::chrono::minutes(15));
  EXPECT_TRUE(tape.empty()) << tape.front();
  server.Start();
  ASSERT_TRUE(Until([&] { return session.IsUp(); }, milliseconds(4000)));
  EXPECT_THAT(tape, ElementsAre("event 9 of 0"));
  EXPECT_EQ(server.Next(), kListenRequest);
  server.Say(kCall);
  EXPECT_TRUE(UntilTold(kNewCall));
}

}  // namespace
}  // namespace vorlix
