#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "core/MainTimers.h"
#include "fakes/CapiCalls.h"
#include "fakes/ScriptedCapiDriver.h"
#include "lines/modCallFunctions_CAPI.h"

namespace vorlix {
namespace {

using namespace fakes;
using testing::ElementsAre;
using testing::IsEmpty;

class CAPICalls : public testing::Test, protected CapiCalls {
 protected:
  CAPICalls() : CapiCalls(driver, events, watch) {
    events.line = &calls;
    session.CAPIInit(true);
    driver.sent.clear();
  }

  // Plays the driver's messages and gives what the pipeline heard.
  Tape Play(std::initializer_list<const char*> messages) {
    tape.clear();
    for (const char* message : messages)
      Take(FromHex(message));
    return tape;
  }
  void Take(std::string message) {
    driver.script.push_back(std::move(message));
    calls.CAPI_GetMessage(false, 0);
  }
  // How a call with those structures is passed on.
  std::string Passed(const std::string& structures) {
    std::string message = FromHex("00 00 07 00 02 82 01 80 01 01 00 00 10 00") + structures;
    message[0] = static_cast<char>(message.size() & 0xFF);
    message[1] = static_cast<char>(message.size() >> 8);
    tape.clear();
    Take(message);
    for (const std::string& entry : tape) {
      if (entry.starts_with("event 12 of 0: ")) return entry.substr(15, entry.find(", id") - 15) + " [" + prefix + "]";
    }
    return "nothing";
  }

  Tape tape;
  ScriptedCapiDriver driver;
  RefusingEvents events{tape};
  TapedWatch watch{tape};
};

TEST_F(CAPICalls, ACallThatAnotherDeviceTakesIsLeftAloneAndWithBusyOnBusyTheNetworkHearsNothing) {
  const Tape whole = {"event 11 of 0", kNewCall, "event 13 of 0", kCallEnd, "over 257"};
  EXPECT_EQ(Play({kCallIndication, kEndIndication}), whole);
  EXPECT_THAT(driver.Sent(), ElementsAre(kAlertRequest, kEndResponse));
  switches.options.BusyOnBusy = true;
  EXPECT_EQ(Play({kCallIndication, kEndIndication}), whole);
  EXPECT_THAT(driver.Sent(), ElementsAre(kEndResponse));
}

TEST_F(CAPICalls, ARefusedCallIsTakenAndDropped) {
  events.refused = "03012345678";
  EXPECT_THAT(Play({kCallIndication, kActiveIndication, kHangUpConfirmation, kEndIndication}),
              ElementsAre("event 11 of 0", kNewCall, "event 13 of 0", "event 15 of 0", kCallEnd, "over 257"));
  EXPECT_THAT(driver.sent, ElementsAre(kAlertRequest, kAcceptResponse, kActiveResponse, kHangUpRequest, kEndResponse));
}

TEST_F(CAPICalls, ACallThatIsNotPassedOnIsIgnoredAtTheDriverAndCannotBreakItsLineInTheLog) {
  switches.options.NoIntern = switches.options.Debug = true;
  EXPECT_EQ(Passed(FromHex("05 81 0d 0a 35 09 04 00 80 34 32")), "nothing");
  EXPECT_THAT(driver.sent,
              ElementsAre("1b 00 07 00 02 83 00 00 01 01 00 00 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00"));
  EXPECT_EQ(logs.Text(R"(\log\raw_capi.txt)"),
            "13.03.2024 12:00:00|    5   \x80"
            "42 PLCI=257 CIP=16\n");
}

TEST_F(CAPICalls, InformationIsAnsweredAndAnswersAreNot) {
  EXPECT_THAT(Play({
                  "0f 00 07 00 08 82 04 80 01 01 00 00 01 80 00",                                // call progress
                  "19 00 07 00 08 82 06 80 02 01 00 00 28 00 0a 4d 75 73 74 65 72 20 4d 61 78",  // display
                  "0e 00 07 00 04 81 03 00 01 01 00 00 00 00",                                   // DISCONNECT_CONF
                  "0e 00 07 00 02 81 02 00 01 01 00 00 00 00",                                   // CONNECT_CONF
                  "0c 00 07 00 03 83 02 80 01 01 00 00",                                         // a response
                  "10 00 07 00 ff 82 09 80 01 01 00 00 00 00 00 00",                             // MANUFACTURER_IND
              }),
              IsEmpty());
  EXPECT_THAT(driver.sent, ElementsAre("0c 00 07 00 08 83 04 80 01 01 00 00", "0c 00 07 00 08 83 06 80 02 01 00 00"));
}

struct {
  const char* what;
  const char* structures;  // hex
  const char* passed;      // number, own number and prefix
} constexpr kNumbers[] = {
    {"international", "07 81 35 35 35 30 31 32 0d 11 83 34 39 33 30 31 32 33 34 35 36 37",
     "0049301234567 to 555012 [00]"},
    {"national", "03 c1 31 32 0a 21 83 33 30 31 32 33 34 35 36", "030123456 to 12 [0]"},
    {"unknown type, own zeros", "08 80 35 35 35 30 31 32 33 07 01 80 30 30 34 39 31", "00491 to 5550123 [00]"},
    {"internal", "03 80 32 31 04 00 80 34 32", "42 to 21 []"},
    {"no presentation octet", "03 80 32 31 04 a1 33 30 31", "0301 to 21 [0]"},
    {"withheld", "07 81 35 35 35 30 31 32 02 01 a3", "Unbekannt to 555012 []"},
    {"nothing about the caller", "07 81 35 35 35 30 31 32 00 00", "Unbekannt to 555012 []"},
    {"no own number", "00 05 21 83 33 30 31", "0301 to  [0]"},
    {"signs among the digits", "06 91 34 2a 35 20 36 08 00 80 2a 33 31 23 34 39", "3149 to 56 []"},
    {"16-bit length", "ff 03 00 81 35 35 ff 05 00 21 83 33 30 31", "0301 to 55 [0]"},
    {"16-bit length past the end", "03 81 35 35 ff ff ff 21 83 33 30 31", "0301 to 55 [0]"},
    {"length past the end", "fe 81 35 35 35", "Unbekannt to 555 []"},
    {"a length alone", "ff", "Unbekannt to  []"},
    {"no structures", "", "Unbekannt to  []"},
};

TEST_F(CAPICalls, NumbersOfAllKindsAreFound) {
  for (const auto& row : kNumbers)
    EXPECT_EQ(Passed(FromHex(row.structures)), row.passed) << row.what;
  // Only so much of the structures is looked at.
  EXPECT_EQ(Passed(FromHex("03 81 35 35 fa 01 80") + std::string(248, '7')), std::string(234, '7') + " to 55 []");
}

TEST_F(CAPICalls, ALocalCallGetsTheOwnAreaCode) {
  switches.options.SpezialAddAreaCodeIfHide = true;
  switches.options.myVWO = "30";
  const std::string local = FromHex("03 80 32 31 07 00 80 35 35 35 31 32");
  EXPECT_EQ(Passed(local), "55512 to 21 []");
  switches.options.myVWOP = "0";
  EXPECT_EQ(Passed(local), "03055512 to 21 [0]");
  EXPECT_EQ(Passed(FromHex("03 80 32 31 06 00 80 35 35 35 31")), "5551 to 21 []") << "an internal number";
  EXPECT_EQ(Passed(FromHex("03 80 32 31 07 00 80 30 35 35 31 32")), "05512 to 21 [0]") << "zeros of its own";
  EXPECT_EQ(Passed(FromHex("03 80 32 31 07 11 80 35 35 35 31 32")), "0055512 to 21 [00]") << "international";
}

TEST_F(CAPICalls, ATestCallOnlyShowsWhatTheNetworkSends) {
  prefixInput.asking = true;
  EXPECT_THAT(Play({kCallIndication}), ElementsAre("event 11 of 0", "event 13 of 0"));
  EXPECT_EQ(tested, "3012345678/0/");
  EXPECT_EQ(prefix, "0");
  EXPECT_THAT(driver.sent, IsEmpty());
}

TEST_F(CAPICalls, HalfMessagesNeitherHangNorStayInTheList) {
  const std::string whole = FromHex(kCallIndication);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    tape.clear();
    Take(whole.substr(0, length));
    EXPECT_EQ(tape.size(), length < 12 ? 0U : 3U) << length;
  }
  driver.sent.clear();
  // Lengths below a header, the bare PLCI, a PLCI cut off, and a body longer than the message says.
  EXPECT_THAT(Play({"07 00 07 00 04 82 03 80 01 01 00 00", "00 00 07 00 04 82 03 80 01 01 00 00",
                    "0b 00 07 00 04 82 03 80 01 01 00 00", "0c 00 07 00 04 82 03 80 01 01 00 00 90 34"}),
              ElementsAre(kCallEnd, "over 257"));
  EXPECT_THAT(driver.sent, ElementsAre(kEndResponse));
}

TEST_F(CAPICalls, ASimulatedCallSendsNothingAndRealOnesWait) {
  simulation.open = true;
  events.refused = "0301234567";
  EXPECT_THAT(Play({kCallIndication}), IsEmpty());
  calls.CAPI_GetMessage(true, modCallFunctions_CAPI::kConnectInd);
  calls.CAPI_GetMessage(true, modCallFunctions_CAPI::kDisconnectInd);
  EXPECT_THAT(tape,
              ElementsAre("event 11 of 0", "event 12 of 0: 0301234567 to 42, id 5, CIP -1, simulated",
                          "event 15 of 0, simulated", "event 13 of 0", "event 14 of 0: id 5, simulated", "over 5"));
  EXPECT_EQ(driver.script.size(), 1U);
  EXPECT_THAT(driver.sent, IsEmpty());
}

TEST_F(CAPICalls, ABurstIsWorkedOffOneMessageATick) {
  MainTimers timers(loop);
  timers.tmCAPI->SetTick([&] { calls.tmCAPI_Timer(*timers.tmCAPI); });
  timers.tmCAPI->SetEnabled(true);
  driver.script = {3, FromHex(kEndIndication)};
  for (std::size_t answers = 1; answers <= 3; ++answers) {
    loop.Advance(std::chrono::milliseconds(400));
    EXPECT_EQ(driver.sent.size(), answers);
  }
}

TEST_F(CAPICalls, OpenCallsOfALostOrRenewedRegistrationEnd) {
  const auto reset = [&] {
    tape.clear();
    calls.CAPIReset();
    return tape;
  };
  Play({kCallIndication});
  driver.Sent();
  driver.whenEmpty = kCapiIllegalApplication;
  tape.clear();
  calls.CAPI_GetMessage(false, 0);
  EXPECT_THAT(tape, ElementsAre("event 10 of 0", kCallEnd, "over 257"));
  EXPECT_THAT(reset(), IsEmpty());  // the end of the last call asks for it; the driver is being waited for
  calls.CAPIHangUp(257);
  EXPECT_THAT(driver.sent, IsEmpty());

  driver.whenEmpty = kCapiQueueEmpty;
  calls.CAPIReset(false, true);
  Play({kCallIndication});
  EXPECT_THAT(reset(), ElementsAre(kCallEnd, "over 257", "event 8 of 0", "event 9 of 0"));
  Play({kCallIndication, kEndIndication});
  EXPECT_THAT(reset(), ElementsAre("event 8 of 0", "event 9 of 0"));
}

}  // namespace
}  // namespace vorlix
