#include "core/CallPipeline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/RecordingPorts.h"

namespace vorlix {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;

class CallPipelineTest : public testing::Test {
 protected:
  std::vector<std::string> Event(int event, int id = 0, const std::string& number = {}, bool simulated = false,
                                 int source = kSourceAVM) {
    std::string travelling = number;
    ports.tape.clear();
    rang = pipeline.CAPI_FunctionsForwarder(source, event, id, 16, travelling, number.empty() ? "" : "77", simulated);
    normalised = travelling;
    loop.RunPending();  // what is left for the loop
    return ports.Taken();
  }
  std::vector<std::string> Ring(const std::string& number, int id = 0, bool simulated = false) {
    return Event(kEventNewCall, id, number, simulated);
  }
  std::vector<std::string> End(int id = 0, bool simulated = false) { return Event(kEventCallEnd, id, {}, simulated); }

  ManualReactor loop;
  RecordingPorts ports;
  NoMaxiDisplay maxi;
  NoCardWindow card;
  modAll_MsgBox messages{ports};
  MainTimers timers{loop};
  PipelineState state;
  CallPipeline pipeline{
      {loop,  timers, ports, messages, ports, ports, ports, ports, ports, ports, ports, ports, ports, ports,
       ports, ports,  ports, ports,    ports, ports, maxi,  card,  ports, ports, ports, ports, ports},
      state};
  DateTime rang;
  std::string normalised;
};

TEST_F(CallPipelineTest, ACallIsLookedUpJudgedShownAndJournalledAtItsEnd) {
  loop.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 0, 0));
  EXPECT_THAT(Ring("+49301", 3),
              ElementsAre("book 0049301 add count", "judge", "display", "resize", "bell 0 on", "hang-up 0 2 off"));
  EXPECT_EQ(normalised, "0049301");
  EXPECT_EQ(state.LastNumber, "0049301");
  EXPECT_EQ(rang, DateTime::FromCivil(2026, 11, 21, 8, 0, 0));
  const auto call = state.ActiveCallList.ItemByKeyAs<oDataCall>("3");
  ASSERT_TRUE(call);
  EXPECT_TRUE(call->Active);
  EXPECT_FALSE(timers.tmClock->Enabled());
  EXPECT_THAT(End(3), ElementsAre("journal line of 0049301", "hang-up 0 2 on", "bell 0 off", "resize"));
  EXPECT_TRUE(call->NewCall);
  EXPECT_EQ(state.ActiveCallList.Count(), 0u);
  EXPECT_THAT(End(3), IsEmpty());
}

TEST_F(CallPipelineTest, TheEndOfOneOfTwoCallsRedrawsAndTheLastResets) {
  Ring("1", 1);
  EXPECT_THAT(Ring("2", 2), Contains("bell 1 on"));
  EXPECT_THAT(End(1), ElementsAre("journal line of 1", "display", "resize"));
  EXPECT_THAT(End(2), Contains("bell 0 off"));
}

TEST_F(CallPipelineTest, ARefusedCallIsDroppedAndJournalledAndHiddenWhereWanted) {
  ports.isRefused = true;
  EXPECT_THAT(Ring("1"), ElementsAre("book 1 add count", "judge", "display", "resize", "refuse 0"));
  EXPECT_FALSE(state.ActiveCallList.ItemByKeyAs<oDataCall>("0")->Active);
  End();
  ports.options.RejectedCallsDontShow = true;
  timers.tmClock->SetEnabled(true);
  EXPECT_THAT(Ring("1"), ElementsAre("book 1 add count", "judge", "refuse 0"));
  EXPECT_TRUE(timers.tmClock->Enabled());
  EXPECT_THAT(End(), ElementsAre("journal line of 1"));
}

TEST_F(CallPipelineTest, TheMainMenuRefusesByItsTwoSwitches) {
  const auto own = std::make_shared<oDataMSN>();
  own->Key = own->MSN = "77";
  ports.ownNumbers.Add(own);
  using Row = std::tuple<std::string, int, int>;  // all, by time, period on, refused before; own number; function
  for (const auto& [given, menu, function] :
       {Row{"all on", 0, 0}, Row{"all on", 1, 1}, Row{"all on", 3, 1}, Row{"all on", 2, 0}, Row{"time on", 2, 1},
        Row{"time", 2, 0}, Row{"time on", 1, 0}, Row{"all time refused", 3, 3}}) {
    own->BlockByMSN_b_BlockMainMenu = static_cast<std::int16_t>(menu);
    ports.options.mnuBlockAll = given.starts_with("all");
    ports.options.mnuBlockAllByTime = given.find("time") != std::string::npos;
    ports.isPeriodOn = given.ends_with("on");
    ports.isRefused = given.ends_with("refused");
    Ring("1");
    const auto call = state.ActiveCallList.ItemByKeyAs<oDataCall>("0");
    EXPECT_EQ(call->Blocked, function != 0) << given << menu;
    EXPECT_EQ(call->BlockFunction, function) << given << menu;
    End();
  }
}

TEST_F(CallPipelineTest, ARemoteControlCallHasNoReactionsButItsJournalLine) {
  ports.isRemote = true;
  ports.options.CopyOption = 2;
  ports.options.Export = ports.options.Run = ports.options.MailActive = true;
  EXPECT_THAT(Ring("1"), ElementsAre("book 1 add count", "display", "resize", "bell 0 on", "hang-up 0 2 off"));
  EXPECT_THAT(End(), testing::AllOf(IsSupersetOf({"journal line of 1", "active 0", "export 2"}),
                                    Not(Contains("add mail of 1"))));
}

TEST_F(CallPipelineTest, ASimulatedCallWritesNothingUnlessWanted) {
  ports.options.Export = ports.options.MailActive = true;
  EXPECT_THAT(Ring("1", 0, true), IsSupersetOf({"book 1 add", "display without search"}));
  EXPECT_THAT(End(0, true), ElementsAre("hang-up 0 2 on", "bell 0 off", "resize", "period <MailSend>", "send mail"));
  ports.options.SimWrite = true;
  EXPECT_THAT(Ring("1", 0, true), Contains("book 1 add count"));
  EXPECT_THAT(End(0, true), IsSupersetOf({"journal line of 1", "add mail of 1", "export 2"}));
}

TEST_F(CallPipelineTest, TheOwnNumbersSwitchesTakeEachFunctionOff) {
  ports.options.ByCall = ports.options.Run = true;
  for (const auto& [off, missing] :
       {std::pair{"0", "display"}, {"1", "journal line of 1"}, {"2", "book 1 add count"}, {"3", "run 1 0"}}) {
    ports.functionsOff = off;
    EXPECT_THAT(Ring("1"), Not(Contains(missing))) << off;
    EXPECT_THAT(End(), Not(Contains(missing))) << off;
  }
  ports.functionsOff = "4";
  timers.tmSoundRepeat->SetEnabled(false);
  Ring("1");
  EXPECT_FALSE(timers.tmSoundRepeat->Enabled());
}

TEST_F(CallPipelineTest, ProgramsRunNowOrAfterTheSearch) {
  ports.options.Run = ports.options.AutoSearch = true;
  using Row = std::tuple<const char*, bool, bool, const char*>;
  for (const auto& [name, delay, refresh, run] :
       {Row{"", true, true, "run 1 1"}, Row{"", false, true, "run 1 2"}, Row{"", false, false, "run 1 0"},
        Row{"Meier", true, true, "run 1 0"}}) {
    ports.name = name;
    ports.options.RunInversDelay = delay;
    ports.options.RunInversRefresh = refresh;
    EXPECT_THAT(Ring("1"), Contains(run));
    End();
  }
  ports.options.mnuNoFunctionBatch = true;
  EXPECT_THAT(Ring("1"), Not(Contains("run 1 0")));
}

TEST_F(CallPipelineTest, MailGoesOutAtTheStartOrAtTheEnd) {
  ports.options.MailActive = ports.options.SendAll = true;
  for (const bool atStart : {true, false}) {
    ports.options.SendPrio = atStart;
    const auto start = Ring("1"), end = End();
    EXPECT_THAT(atStart ? start : end, IsSupersetOf({"period <MailSend>", "add mail of 1", "send mail"}));
    EXPECT_THAT(atStart ? end : start, Not(Contains("add mail of 1")));
  }
  ports.isSearching = ports.options.AutoSearch = ports.options.MailInversDelay = true;
  ports.options.InversDelayTime = 7;
  Ring("1");
  EXPECT_THAT(End(), Not(Contains("send mail")));
  EXPECT_TRUE(timers.tmMailWaitReverse->Enabled());
  EXPECT_EQ(timers.tmMailWaitReverse->Interval(), std::chrono::seconds(7));
}

TEST_F(CallPipelineTest, OpenWindowsAndMapsAreTold) {
  ports.options.ViewDataByCall = ports.options.AutoOpenPlan = ports.options.AutoOpenRoute = true;
  ports.address = "Weg 1";
  ports.isJournalOpen = true;
  EXPECT_THAT(Ring("1"), IsSupersetOf({"journal window view", "plan Weg 1", "route Weg 1"}));
  EXPECT_THAT(End(), IsSupersetOf({"journal window reset", "window add"}));
  ports.isJournalOpen = false;
  ports.options.NewCalls = ports.options.AsBaloon = ports.isBalloonShown = true;
  Ring("1");
  EXPECT_THAT(End(), IsSupersetOf({"new calls", "balloon Ruf nicht mehr aktiv!"}));
}

TEST_F(CallPipelineTest, AConnectedRefusalIsHeardMarkedAndEnded) {
  ports.isRefused = ports.options.ByBlock = true;
  ports.options.SndBlock = "block.wav";
  Ring("1", 4, true);
  EXPECT_THAT(Event(kEventConnectActive, 4, {}, true),
              ElementsAre("period <SoundByBlock>", "play block.wav", "mark 4 reason 3", "end simulated 4"));
  ports.options.RejectedCallsDontBatch = true;
  EXPECT_THAT(Event(kEventConnectActive, 4), ElementsAre("period <SoundByBlock>", "play block.wav"));
  ports.options.RejectedCallsDontShow = true;
  ports.options.RejectedCallsDontBatch = false;
  EXPECT_THAT(Event(kEventConnectActive, 4), ElementsAre("mark 4 reason 3"));
  EXPECT_THAT(Event(kEventConnectActive, 5), IsEmpty());
}

TEST_F(CallPipelineTest, TheSoundRepeatsSixTimesEveryThreeSeconds) {
  ports.options.ByCall = ports.options.Repeat = ports.options.PersonalFail = true;
  ports.options.SndCall = "call.wav";
  Ring("1");
  loop.Advance(std::chrono::minutes(1));
  EXPECT_EQ(std::count(ports.tape.begin(), ports.tape.end(), "play call.wav"), 7);
  EXPECT_FALSE(timers.tmSoundRepeat->Enabled());
  End();
  ports.options.Repeat = false;
  ports.options.PersonalUse = true;
  ports.personalSound = "2";
  Ring("2");
  loop.Advance(std::chrono::minutes(1));
  EXPECT_THAT(ports.tape, ElementsAre("period <SoundByCall>", "play personal"));
}

TEST_F(CallPipelineTest, TheLinesTellHowTheyStand) {
  for (const auto& [country, area] : {std::pair{"49", "30"}, {"0049", "30"}, {"49", "030"}, {"", "30"}, {"49", ""}}) {
    const bool isWrong = std::string(country) + area != "4930";
    ports.options.myVWL = country;
    ports.options.myVWO = area;
    for (const int event : {kEventRouterLost, kEventRouterUp, kEventCAPIRegistered})
      EXPECT_EQ(testing::Value(Event(event), Contains("ask prefix")), isWrong && event != kEventRouterLost) << country;
    EXPECT_THAT(Event(kEventNCIDUp), Not(Contains("ask prefix")));
    EXPECT_TRUE(state.SocketConnected);
    EXPECT_THAT(Event(kEventRouterLost), ElementsAre("display", "resize"));
    EXPECT_FALSE(state.SocketConnected);
  }
  ports.options.CallMode_CAPI = true;
  EXPECT_THAT(Event(kEventRouterUp), Not(Contains("ask prefix")));
  Event(kEventCAPIInitEnd);
  EXPECT_TRUE(timers.tmCAPI->Enabled());
}

TEST_F(CallPipelineTest, AStartWithTheSystemStopsOnlyOnTheBoxesOfAMissingFileAndAFailedListen) {
  for (const bool byAuto : {false, true}) {
    ports.options.startedByAuto = byAuto;
    for (const int event : {4, 5, 6, 7, 10}) {
      const bool isShown = testing::Value(Event(event), Contains(testing::StartsWith("box ")));
      EXPECT_EQ(isShown, !byAuto || event == 4 || event == 10) << event;
    }
  }
  EXPECT_THAT(Event(5), ElementsAre(testing::StartsWith("idle "), "width"));
}

TEST_F(CallPipelineTest, ASecondLookUpWaitsForTheFirst) {
  ports.options.BookRefresh = true;
  Event(kEventLock);
  EXPECT_TRUE(state.PipelineBusy && !timers.tmFileWatch->Enabled());
  Ring("1", 1);
  loop.Post([&] { Event(kEventNewCallEnd); });
  Event(kEventLock);  // returns once the posted end has run
  EXPECT_TRUE(state.PipelineBusy);
  Event(kEventNewCallEnd);
  EXPECT_TRUE(!state.PipelineBusy && timers.tmFileWatch->Enabled());
  Event(kEventLock);
  state.ExitInProgress = true;
  Event(kEventLock);  // a closing program waits for nobody
}

}  // namespace
}  // namespace vorlix
