#include "lines/AVM_monitor.h"

#include <array>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeClock.h"
#include "fakes/LineFakes.h"
#include "fakes/MemoryLogStore.h"

namespace vorlix {
namespace {

using fakes::Tape;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

class CountingBook : public NoPhoneBook {
 public:
  std::string counted;
  void CountDialled(const std::string& number) override { counted = number; }
};

class AVM_monitorTest : public testing::Test {
 protected:
  AVM_monitorTest() { switches.options.AVM_SaveOutgoingCalls = true; }

  // Hands the lines over and gives what they set off.
  Tape Play(std::initializer_list<const char*> lines, bool simulated = false) {
    tape.clear();
    for (const char* line : lines) {
      monitor.AVM_GetMessage(line, simulated);
    }
    return tape;
  }

  Tape tape;
  FakeClock clock;
  MemoryLogStore logs;
  fakes::FixedLineSwitches switches;
  fakes::TapedEvents events{tape};
  PlainNumbers numbers;
  fakes::FewOwnNumbers ownNumbers;
  CountingBook book;
  fakes::TapedRecords records{tape};
  NoJournalWindow journalWindow;
  NoNewCallsWindow newCallsWindow;
  fakes::AskingPrefix prefixInput;
  fakes::OpenSimulation simulation;
  fakes::TapedWatch watch{tape};
  AVM_monitor monitor{{clock, logs, switches, events, numbers, ownNumbers, book, records, journalWindow, newCallsWindow,
                       prefixInput, simulation, watch}};
};

TEST_F(AVM_monitorTest, AMissedCallRingsAndEnds) {
  EXPECT_THAT(Play({"09.05.21 21:21:25;RING;0;012345678901;01234567;SIP2;", "09.05.21 21:21:27;DISCONNECT;0;0;"}),
              ElementsAre("event 12 of 16: 012345678901 to 01234567, id 0, CIP 16", "event 13 of 16",
                          "event 14 of 16: id 0", "ended 012345678901"));
  EXPECT_EQ(monitor.AVMCallList().Count(), 0u);
}

TEST_F(AVM_monitorTest, AnAnsweredCallEndsForThePipelineWhenItIsTaken) {
  events.normalised = "071NORMAL";
  Play({"17.06.20 10:28:29;RING;0;07191100952;10069;SIP0;"});
  EXPECT_THAT(Play({"17.06.20 10:28:43;CONNECT;0;11;07191100952;"}),
              ElementsAre("event 14 of 16: id 0", "answered 071NORMAL"));
  // The duration finds the journal line by the pipeline's time and normal form.
  EXPECT_THAT(Play({"17.06.20 10:30:31;DISCONNECT;0;109;"}),
              ElementsAre("period 10:28:30 071NORMAL 109", "ended 071NORMAL"));
}

TEST_F(AVM_monitorTest, OutgoingCallsAreJournalledOnceAndNeverEnterThePipeline) {
  switches.options.myVWO = "7191";
  EXPECT_THAT(
      Play({"17.06.20 10:30:57;CALL;1;11;10069;100952;SIP0;", "17.06.20 10:31:00;DISCONNECT;1;0;"}),
      ElementsAre("dialled 07191100952", "journal 17.06.2020 10:30:57 07191100952 10069 1", "ended 07191100952"));
  EXPECT_EQ(book.counted, "07191100952");
  EXPECT_THAT(Play({"17.06.20 10:32:16;CALL;1;11;10069;0100952;SIP0", "17.06.20 10:32:23;CONNECT;1;11;100952;",
                    "17.06.20 10:37:34;DISCONNECT;1;312;"}),
              ElementsAre("dialled 0100952", "journal 17.06.2020 10:32:16 0100952 10069 1", "answered 0100952",
                          "period 10:32:16 0100952 312", "ended 0100952"));
}

TEST_F(AVM_monitorTest, OutgoingCallsStayOutOfTheJournalWhereTheUserWantsIt) {
  constexpr auto kCall = "17.06.20 10:30:57;CALL;1;11;10069;0952;SIP0;";
  constexpr auto kEnd = "17.06.20 10:31:00;DISCONNECT;1;0;";
  ownNumbers.notJournalled = "10069";
  EXPECT_THAT(Play({kCall, kEnd}), ElementsAre("dialled 0952", "ended 0952"));
  ownNumbers.notJournalled.clear();
  switches.options.AVM_SaveOutgoingCalls = false;
  EXPECT_THAT(Play({kCall, kEnd}), ElementsAre("dialled 0952", "ended 0952"));
}

TEST_F(AVM_monitorTest, InDualModeTheDriverOwnsIncomingCalls) {
  switches.options.CallMode_CAPI = true;
  EXPECT_THAT(Play({"28.08.10 10:21:37;RING;2;04066969012;1234;ISDN;", "28.08.10 10:25:40;CONNECT;2;4;04066969012;"}),
              ElementsAre("answered 04066969012"));
  EXPECT_THAT(Play({"28.08.10 10:28:48;CALL;1;4;1234;04066969012;ISDN;", "28.08.10 10:28:51;DISCONNECT;1;0;"}),
              Contains("journal 28.08.2010 10:28:48 04066969012 1234 1"));
}

TEST_F(AVM_monitorTest, TheRulesAheadOfThePipelineChangeOrHoldBackACall) {
  struct Row {
    const char* what;
    const char* number;
    void (*set)(LineOptions&);
    const char* forwarded;  // empty: only event 13 follows
  };
  const Row rows[] = {
      {"withheld", "", [](LineOptions&) {}, "Unbekannt"},
      {"trailing zero", "01711230", [](LineOptions& o) { o.SpezialCuttNull = true; }, "0171123"},
      {"no trailing zero", "0171123", [](LineOptions& o) { o.SpezialCuttNull = true; }, "0171123"},
      {"internal off", "1234", [](LineOptions& o) { o.NoIntern = true; }, ""},
      {"one digit more", "12345", [](LineOptions& o) { o.NoIntern = true; }, "12345"},
      {"control characters", "01\t71\r\n23", [](LineOptions&) {}, "01 71  23"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    switches.options = LineOptions{};
    row.set(switches.options);
    const std::string line = std::string("28.08.10 10:22:07;RING;0;") + row.number + ";77;ISDN;";
    const Tape played = Play({line.c_str()});
    if (*row.forwarded == 0) {
      EXPECT_THAT(played, ElementsAre("event 13 of 16"));
    } else {
      EXPECT_THAT(played, ElementsAre("event 12 of 16: " + std::string(row.forwarded) + " to 77, id 0, CIP 16",
                                      "event 13 of 16"));
    }
    Play({"28.08.10 10:22:09;DISCONNECT;0;0;"});
  }
}

TEST_F(AVM_monitorTest, RealCallsAreDroppedWhileTheUserSimulatesOrTestsThePrefix) {
  constexpr auto kRing = "28.08.10 10:22:07;RING;0;0123456;77;ISDN;";
  simulation.open = true;
  EXPECT_THAT(Play({kRing}), IsEmpty());
  EXPECT_THAT(Play({kRing}, true),
              ElementsAre("event 12 of 16: 0123456 to 77, id 0, CIP 16, simulated", "event 13 of 16"));
  simulation.open = false;
  prefixInput.asking = true;
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;1;0123456;77;ISDN;"}), IsEmpty());
}

TEST_F(AVM_monitorTest, TheRawLineIsLoggedForRealCallsOnly) {
  switches.options.DebugAVM = true;
  Play({"28.08.10 10:22:07;RING;0;0123456;77;ISDN;"});
  EXPECT_THAT(logs.Text(R"(\log\raw_avm.txt)"), testing::HasSubstr("|28.08.10 10:22:07;RING;0;0123456;77;ISDN;"));
  const std::string once = logs.Text(R"(\log\raw_avm.txt)");
  Play({"28.08.10 10:22:07;RING;1;0123456;77;ISDN;"}, true);
  EXPECT_EQ(logs.Text(R"(\log\raw_avm.txt)"), once);
}

TEST_F(AVM_monitorTest, ForeignOwnNumbersAreKnownOnlyWhereThereIsATable) {
  switches.options.MSNLO = true;
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;0;0111111;77;ISDN;"}),
              Contains("event 12 of 16: 0111111 to 77, id 0, CIP 16"));
  const auto own = std::make_shared<oDataMSN>();
  own->Key = "77";
  ownNumbers.table.Add(own);
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;1;0111111;78;ISDN;"}), ElementsAre("event 13 of 16"));
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;2;0111111;77;ISDN;"}),
              Contains("event 12 of 16: 0111111 to 77, id 2, CIP 16"));
}

TEST_F(AVM_monitorTest, ALineThatComesTwiceIsOneEvent) {
  events.normalised = "071NORMAL";
  for (const auto& [open, connect, end] :
       {std::array{"28.08.10 10:22:07;RING;0;0111111;77;ISDN;", "28.08.10 10:22:09;CONNECT;0;4;0111111;",
                   "28.08.10 10:22:19;DISCONNECT;0;10;"},
        std::array{"28.08.10 10:23:07;CALL;0;4;77;0222222;ISDN;", "28.08.10 10:23:09;CONNECT;0;4;0222222;",
                   "28.08.10 10:23:19;DISCONNECT;0;10;"}}) {
    EXPECT_THAT(Play({open}), Not(IsEmpty()));
    EXPECT_THAT(Play({open}), IsEmpty());
    EXPECT_THAT(Play({connect}), Not(IsEmpty()));
    EXPECT_THAT(Play({connect, open}), IsEmpty());
    EXPECT_THAT(Play({end}), Not(IsEmpty()));
    EXPECT_THAT(Play({end, connect}), IsEmpty());
  }
}

TEST_F(AVM_monitorTest, TheSecondsOfACallWithoutALineFindNoOther) {
  constexpr auto kConnect = "28.08.10 10:22:09;CONNECT;0;4;0;";
  constexpr auto kEnd = "28.08.10 10:22:19;DISCONNECT;0;10;";
  switches.options.AVM_SaveOutgoingCalls = false;
  EXPECT_THAT(Play({"28.08.10 10:22:07;CALL;0;4;77;0111111;ISDN;", kConnect, kEnd}),
              ElementsAre("dialled 0111111", "answered 0111111", "ended 0111111"));
  switches.options.NoIntern = true;
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;0;0111;77;ISDN;", kConnect, kEnd}),
              ElementsAre("event 13 of 16", "event 14 of 16: id 0", "answered 0111", "ended 0111"));
  // The driver has journalled this one.
  switches.options.CallMode_CAPI = true;
  EXPECT_THAT(Play({"28.08.10 10:22:07;RING;0;0111111;77;ISDN;", kConnect, kEnd}),
              Contains("period 10:22:07 0111111 10"));
}

TEST_F(AVM_monitorTest, AnIdThatIsStillOpenKeepsItsFirstCall) {
  Play({"28.08.10 10:22:07;RING;0;0111111;77;ISDN;", "28.08.10 10:22:08;RING;0;0222222;77;ISDN;"});
  EXPECT_THAT(Play({"28.08.10 10:22:09;DISCONNECT;0;0;"}), ElementsAre("event 14 of 16: id 0", "ended 0111111"));
  EXPECT_THAT(Play({"28.08.10 10:22:10;DISCONNECT;0;0;", "28.08.10 10:22:10;CONNECT;9;4;0;"}), IsEmpty());
}

TEST_F(AVM_monitorTest, ALostConnectionEndsWhatNobodyTookAndFreesEveryId) {
  Play({"28.08.10 10:22:07;RING;0;0111111;77;ISDN;", "28.08.10 10:22:07;CALL;1;4;77;0333333;ISDN;"});
  tape.clear();
  monitor.ConnectionLost();
  EXPECT_THAT(tape, ElementsAre("event 14 of 16: id 0", "ended 0111111", "journal 28.08.2010 10:22:07 0333333 77 1",
                                "ended 0333333"));
  tape.clear();
  monitor.ConnectionLost();
  EXPECT_THAT(tape, IsEmpty());
  // It was taken after all: its seconds go into the line that it has.
  EXPECT_THAT(Play({"28.08.10 10:23:00;CONNECT;1;4;0333333;", "28.08.10 10:24:00;DISCONNECT;1;60;"}),
              ElementsAre("answered 0333333", "period 10:22:07 0333333 60", "ended 0333333"));
  // The end of this one was missed; its id now belongs to an incoming call.
  Play({"28.08.10 10:25:00;CALL;1;4;77;0333333;ISDN;"});
  monitor.ConnectionLost();
  EXPECT_THAT(Play({"28.08.10 11:00:00;RING;1;0444444;77;ISDN;", "28.08.10 11:00:05;DISCONNECT;1;0;"}),
              ElementsAre("event 12 of 16: 0444444 to 77, id 1, CIP 16", "event 13 of 16", "event 14 of 16: id 1",
                          "ended 0444444"));
}

TEST_F(AVM_monitorTest, AStampThatIsNoDateTakesTheMomentOfTheLine) {
  clock.SetNow(DateTime::FromCivil(2026, 11, 21, 8, 0, 0));
  EXPECT_THAT(Play({"31.02.20 99:99:99;CALL;1;4;77;0333333;ISDN;", "x;DISCONNECT;1;0;"}),
              Contains("journal 21.11.2026 08:00:00 0333333 77 1"));
}

TEST_F(AVM_monitorTest, LinesOfOtherKindsSetNothingOff) {
  for (const char* line : {"", ";", "no semicolon", "28.08.10 10:22:07;", "28.08.10 10:22:07;SMS;0;1;2;",
                           "28.08.10 10:22:07;ring;0;1;2;", ";CONNECT;", ";DISCONNECT;0;5", ";;;;;;;;"}) {
    EXPECT_THAT(Play({line}), IsEmpty()) << line;
  }
}

TEST_F(AVM_monitorTest, RandomBytesNeverLeaveAControlCharacterInAJournalField) {
  std::mt19937 random(1);
  const std::string words[] = {";", "RING", "CALL", "CONNECT", "DISCONNECT",       "0",
                               "1", "\t",   "\n",   "\xFF",    "28.08.10 10:22:07"};
  for (int i = 0; i < 5000; ++i) {
    std::string line;
    for (unsigned k = random() % 12; k > 0; --k) {
      line +=
          random() % 4 == 0 ? std::string(1, static_cast<char>(random() % 256)) : words[random() % std::size(words)];
    }
    monitor.AVM_GetMessage(line, false);
  }
  for (const std::string& entry : tape) {
    EXPECT_EQ(entry.find_first_of(std::string("\t\r\n\0", 4)), std::string::npos) << entry;
  }
  EXPECT_FALSE(tape.empty());
}

}  // namespace
}  // namespace vorlix
