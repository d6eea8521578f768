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
  EXPECT_EQ(link.opened, 0);
  EXPECT_THAT(link.sent, IsEmpty());
  EXPECT_THAT(processes.started, IsEmpty());
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
  link.sendSucceeds = false;
  Start();
  EXPECT_EQ(Log(), kNoAnswer);
  link.sendSucceeds = true;
  Say("wait");
  link.LosePeer(7);
  link.LosePeer();
  EXPECT_EQ(Log(), kNoAnswer + kNoAnswer);
  EXPECT_THAT(Say("wait"), ElementsAre("ok"));  // a new link begins anew
  state.ExitInProgress = true;
  link.LosePeer();
  isLogged = false;
  link.Deliver(99, "x");
  EXPECT_EQ(Log(), kNoAnswer + kNoAnswer);
}

TEST_F(ServiceLinkTest, FaultsOfTheLinkAreLoggedByCodeAndName) {
  link.canOpen = false;
  Start();
  service.txtDDE_LinkError(11);
  service.txtDDE_LinkError(99);
  EXPECT_EQ(Log(), "[Vorlix]  6 Mode-Error\n[Vorlix]  11 Memory-Overflow\n[Vorlix]  99 \n");
}

TEST_F(ServiceLinkTest, ShowsItsStateEachSecondWhileThatIsWanted) {
  Start();
  std::string shown;
  const auto shownAfterASecond = [&] {
    loop.Advance(1s);
    return shown;
  };
  service.ShowStatus([&](const std::string& name) { shown = name; });
  EXPECT_EQ(shownAfterASecond(), "Service bereit zum Start!");
  service.StartService();
  EXPECT_EQ(shownAfterASecond(), "Service wird gestartet!");
  EXPECT_THAT(processes.started, ElementsAre(Program{kProgram, {}}));
  Say("wait");
  EXPECT_EQ(shownAfterASecond(), "Service ist aktiv!");
  service.ShowStatus({});
  link.LosePeer();
  EXPECT_EQ(shownAfterASecond(), "Service ist aktiv!");
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
}

}  // namespace
}  // namespace vorlix
