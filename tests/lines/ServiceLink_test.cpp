#include "lines/ServiceLink.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "fakes/FakeMessageLink.h"
#include "fakes/FakeProcesses.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

using Program = FakeProcesses::Program;

const std::string kProgram = "/program/Vorlixservice";
const std::string kNoAnswer = "[Vorlix]  Service antwortet nicht!\n";
const std::string kModeError = "[Vorlix]  6 Mode-Error\n";

class ServiceLinkTest : public testing::Test, protected DataRoom {
 protected:
  void Start() {
    store.AddFile(kProgram, "program");
    timers.AllTimerStart();
    timers.tmServiceStatus->SetEnabled(true);
    loop.Advance(1s);
  }
  std::vector<std::string> Say(const std::string& text) {
    link.TakeSent();
    link.Deliver(kServiceText, text);
    std::vector<std::string> executed;
    for (const auto& message : link.TakeSent()) {
      if (message.target == ServiceLink::ServiceHandle() && message.word == kServiceExecute)
        executed.push_back(message.text);
    }
    return executed;
  }
  std::string Log() const { return log.Text(R"(\log\ntservice.log)"); }

  ManualReactor loop;
  MainTimers timers{loop};
  FakeMessageLink link;
  FakeProcesses processes;
  PipelineState state;
  bool isLogged = true;
  ServiceLink service{
      {link, processes, store, timers, log, messages, state, [this] { return isLogged; }, [] { return 25; }},
      "/program",
      "/vorlix"};
};

TEST_F(ServiceLinkTest, AMachineWithoutTheServiceNoticesNothing) {
  timers.AllTimerStart();
  service.StartService();
  loop.Advance(10s);
  EXPECT_TRUE(link.opened == 0 && link.sent.empty() && processes.started.empty());
  EXPECT_EQ(Log(), "");
  EXPECT_EQ(service.ServiceStatus(), ServiceState::kNotInstalled);
}

TEST_F(ServiceLinkTest, TakesTheLineOverInTheStepsThatTheServiceTells) {
  Start();
  EXPECT_THAT(link.TakeSent(), ElementsAre(FakeMessageLink::Message{ServiceLink::ServiceHandle(), kServiceOpen,
                                                                    std::to_string(link.Own())}));
  EXPECT_THAT(Say("anything"), IsEmpty());
  EXPECT_THAT(Say("Wait"), ElementsAre("ok"));
  EXPECT_THAT(Say("Wait"), IsEmpty());  // no change
  EXPECT_THAT(Say("VorlixOK"), ElementsAre("hallo"));
  EXPECT_THAT(Say("vorlix"), IsEmpty());
  EXPECT_EQ(Log(),
            "[Vorlix]  Kontrolle \xFC"
            "bernommen!\n[Vorlix]  CAPI-Anmeldung durch Service nicht m\xF6glich!\n");
  EXPECT_THAT(boxes.shown, ElementsAre(testing::HasSubstr("Vorlix-NTService")));
  loop.Advance(1min);
  EXPECT_EQ(link.opened, 1);
  EXPECT_THAT(link.sent, IsEmpty());
}

TEST_F(ServiceLinkTest, ASilentOrLostServiceStandsInTheLog) {
  link.canOpen = false;
  Start();
  EXPECT_EQ(Log(), kModeError);
  link.canOpen = true;
  link.sendSucceeds = false;
  Start();
  link.sendSucceeds = true;
  Say("wait");
  link.LosePeer(7);
  link.LosePeer();
  EXPECT_EQ(Log(), kModeError + kNoAnswer + kNoAnswer);
  EXPECT_THAT(Say("wait"), ElementsAre("ok"));  // a new link begins anew
  state.ExitInProgress = true;
  link.LosePeer();
  isLogged = false;
  link.Deliver(99, "x");
  EXPECT_EQ(Log(), kModeError + kNoAnswer + kNoAnswer);
}

TEST_F(ServiceLinkTest, ShowsItsStateEachSecondWhileThatIsWanted) {
  Start();
  std::string shown;
  const auto expectASecondLater = [&](const char* name) {
    loop.Advance(1s);
    EXPECT_EQ(shown, name);
  };
  service.ShowStatus([&](const std::string& name) { shown = name; });
  expectASecondLater("Service bereit zum Start!");
  service.StartService();
  expectASecondLater("Service wird gestartet!");
  EXPECT_THAT(processes.started, ElementsAre(Program{kProgram, {}}));
  Say("wait");
  expectASecondLater("Service ist aktiv!");
  service.ShowStatus({});
  link.LosePeer();
  expectASecondLater("Service ist aktiv!");
}

TEST_F(ServiceLinkTest, InstallsAndRemovesOnceForEachChange) {
  Start();
  for (const bool wanted : {true, true, false, true}) {
    service.WantInstalled(wanted);
    loop.Advance(2s);
    processes.startSucceeds = processes.started.size() < 2;
  }
  EXPECT_EQ(service.ServiceStatus(), ServiceState::kNotInstalled);
  EXPECT_THAT(processes.started, ElementsAre(Program{kProgram, {"-install"}}, Program{kProgram, {"-uninstall"}}));
  EXPECT_EQ(processes.refused.size(), 1u);
}

}  // namespace
}  // namespace vorlix
