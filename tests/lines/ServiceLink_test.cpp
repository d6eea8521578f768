#include "lines/ServiceLink.h"

#include <gmock/gmock.h>

#include "fakes/DataRoom.h"
#include "fakes/FakeMessageLink.h"
#include "fakes/FakeProcesses.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

using Program = FakeProcesses::Program;

const std::string kProgram = "/program/Vorlixservice";

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
  EXPECT_EQ(Log(),
            "[Vorlix]  Kontrolle \xFC"
            "bernommen!\n");
  EXPECT_THAT(Say("vorlix"), IsEmpty());
  EXPECT_THAT(Log(), HasSubstr("[Vorlix]  CAPI-Anmeldung durch Service nicht m\xF6glich!\n"));
  EXPECT_THAT(boxes.shown, ElementsAre(HasSubstr("Vorlix-NTService")));
  loop.Advance(1min);
  EXPECT_EQ(link.opened, 1);
  EXPECT_THAT(link.sent, IsEmpty());
}

TEST_F(ServiceLinkTest, ASilentOrLostServiceStandsInTheLog) {
  link.sendSucceeds = false;
  Start();
  EXPECT_EQ(Log(), "[Vorlix]  Service antwortet nicht!\n");
  link.sendSucceeds = true;
  log.files.clear();
  Say("wait");
  link.LosePeer(7);
  EXPECT_EQ(Log(), "");
  link.LosePeer();
  EXPECT_EQ(Log(), "[Vorlix]  Service antwortet nicht!\n");
  EXPECT_THAT(Say("wait"), ElementsAre("ok"));  // a new link begins anew
  log.files.clear();
  state.ExitInProgress = true;
  link.LosePeer();
  isLogged = false;
  link.Deliver(99, "x");
  EXPECT_EQ(Log(), "");
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
  service.ShowStatus([&](const std::string& name) { shown = name; });
  loop.Advance(1s);
  EXPECT_EQ(shown, "Service bereit zum Start!");
  service.StartService();
  loop.Advance(1s);
  EXPECT_THAT(processes.started, ElementsAre(Program{kProgram, {}}));
  EXPECT_EQ(shown, "Service wird gestartet!");
  Say("wait");
  loop.Advance(1s);
  EXPECT_EQ(shown, "Service ist aktiv!");
  service.ShowStatus({});
  link.LosePeer();
  loop.Advance(5s);
  EXPECT_EQ(shown, "Service ist aktiv!");
}

TEST_F(ServiceLinkTest, InstallsAndRemovesOnceForEachChange) {
  Start();
  for (const bool wanted : {true, true, false}) {
    service.WantInstalled(wanted);
    loop.Advance(2s);
  }
  EXPECT_EQ(service.ServiceStatus(), ServiceState::kNotInstalled);
  processes.startSucceeds = false;
  service.WantInstalled(true);
  loop.Advance(2s);
  EXPECT_EQ(service.ServiceStatus(), ServiceState::kNotInstalled);
  EXPECT_THAT(processes.started, ElementsAre(Program{kProgram, {"-install"}}, Program{kProgram, {"-uninstall"}}));
}

}  // namespace
}  // namespace vorlix
