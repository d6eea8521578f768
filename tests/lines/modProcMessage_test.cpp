#include "lines/modProcMessage.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/AttachedLog.h"
#include "fakes/FakeClock.h"
#include "fakes/FakeMessageLink.h"
#include "fakes/FakeProcesses.h"
#include "fakes/LineFakes.h"
#include "fakes/MemoryFileStore.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr WindowHandle kOwn = 4711;
constexpr MessageLink::Peer kHelper = 5;

class modProcMessageTest : public testing::Test, public SocketSource {
 protected:
  modProcMessageTest() {
    files.AddFile("/opt/vorlix/SocketAVM", "program");
    link.Open(kOwn, proc);
    proc.Bind(kSourceAVM, *this);
  }

  void GetMessage(const std::string& line, bool) override { tape.push_back("line " + line); }
  void ConnectionLost() override { tape.push_back("connection lost"); }

  void Say(HelperCommand command, const std::string& text = {}) { link.Deliver(16u | command, text, kHelper); }
  void StartAndGreet() {
    EXPECT_TRUE(proc.Socket_Proc_Init(kSourceAVM));
    Say(kHelperLifeSign, "815");
  }
  void Tick(int seconds) {
    while (seconds-- > 0)
      proc.TimerTick();
  }
  fakes::Tape Taken() { return std::exchange(tape, {}); }

  fakes::Tape tape;
  MemoryFileStore files;
  FakeMessageLink link;
  FakeProcesses processes;
  fakes::TapedEvents events{tape};
  PipelineState state;
  modProcMessage proc{{link, processes, files, events, state}, "/opt/vorlix"};
};

TEST_F(modProcMessageTest, StartsAHelperThatIsThereAnswersItsLifeSignAndHandsLinesAndStatesOn) {
  EXPECT_FALSE(proc.Socket_Proc_Init(kSourceNCID) || proc.Socket_Proc_Init(99));
  StartAndGreet();
  EXPECT_THAT(processes.started, ElementsAre(FakeProcesses::Program{"/opt/vorlix/SocketAVM", {"4711"}}));
  EXPECT_THAT(link.TakeSent(), ElementsAre(FakeMessageLink::Message{815, 16 | kHelperLifeSign, "4711"}));
  Say(kHelperConnected);
  EXPECT_TRUE(proc.IsUp(kSourceAVM));
  Say(kHelperLine, "a;RING;0;");
  Say(kHelperLost);
  EXPECT_FALSE(proc.IsUp(kSourceAVM));
  EXPECT_THAT(Taken(), ElementsAre("event 1 of 16", "line a;RING;0;", "connection lost", "event 0 of 16"));
}

TEST_F(modProcMessageTest, AHelperWithoutLifeSignForTenSecondsIsStartedAgain) {
  proc.Socket_Proc_Init(kSourceAVM);
  Tick(9);
  Say(kHelperLifeSign, "815");
  Tick(9);
  EXPECT_EQ(processes.started.size(), 1u);
  Say(kHelperLifeSign, "no number");  // does not count as a sign
  Tick(1);
  EXPECT_EQ(processes.started.size(), 2u);
  Tick(10);
  Say(kHelperNewStart);
  EXPECT_EQ(processes.started.size(), 4u);
}

TEST_F(modProcMessageTest, TheDeathOfAHelperThatWasUpIsALostConnection) {
  StartAndGreet();
  link.LosePeer(kHelper);
  EXPECT_THAT(Taken(), IsEmpty());
  Say(kHelperConnected);
  link.LosePeer(kHelper + 1);
  EXPECT_THAT(Taken(), ElementsAre("event 1 of 16"));
  link.LosePeer(kHelper);
  EXPECT_THAT(Taken(), ElementsAre("connection lost", "event 0 of 16"));
}

TEST_F(modProcMessageTest, AHelperThatDoesNotComeUpOrFallsSilentIsALostConnectionOnce) {
  const FakeClock clock;
  const AttachedLog log(clock);
  for (const bool starts : {false, true}) {
    processes.startSucceeds = starts;
    EXPECT_TRUE(proc.Socket_Proc_Init(kSourceAVM));
    Tick(9);
    EXPECT_THAT(Taken(), IsEmpty());
    Tick(21);
    EXPECT_THAT(Taken(), ElementsAre("connection lost", "event 0 of 16"));
  }
  EXPECT_TRUE(processes.refused.size() == 4 && processes.started.size() == 4);
  Say(kHelperLifeSign, "815");
  Say(kHelperConnected);
  Tick(30);
  EXPECT_THAT(Taken(), ElementsAre("event 1 of 16", "connection lost", "event 0 of 16"));
  const std::string errors = log.Errors();  // the start that failed, and each of three silences
  EXPECT_THAT(errors, testing::HasSubstr("start /opt/vorlix/SocketAVM: Permission denied"));
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 4);
}

TEST_F(modProcMessageTest, TerminateTellsTheHelperToEndAndHearsItNoMore) {
  StartAndGreet();
  state.SocketConnected = true;
  link.TakeSent();
  link.ownsEndpoint = false;  // it may be the helper of another copy by now
  proc.Socket_Proc_Terminate();
  EXPECT_THAT(link.TakeSent(), IsEmpty());
  link.ownsEndpoint = true;
  proc.Socket_Proc_Terminate();
  EXPECT_FALSE(state.SocketConnected);
  EXPECT_THAT(link.TakeSent(), ElementsAre(FakeMessageLink::Message{815, 16 | kHelperEnd, ""}));
  Say(kHelperLine, "late");
  Tick(20);
  EXPECT_THAT(Taken(), ElementsAre("connection lost", "connection lost"));
  EXPECT_EQ(processes.started.size(), 1u);
}

TEST_F(modProcMessageTest, StrangeMessagesAreIgnored) {
  Say(kHelperLine, "before any start");
  proc.Socket_Proc_Init(kSourceAVM);
  for (const std::uint32_t word : {0u, 1u, 16u, 16u | 3u, 16u | 5u, 32u | 1u, 0xFFFFFFF9u})
    link.Deliver(word, "x", kHelper);
  for (const char* handle : {"99999999999999999999", "-1"})
    Say(kHelperLifeSign, handle);
  EXPECT_THAT(Taken(), IsEmpty());
  EXPECT_THAT(link.TakeSent(), IsEmpty());
}

}  // namespace
}  // namespace vorlix
