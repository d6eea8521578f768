#include "lines/AVM_monitor.h"

#include <algorithm>
#include <cctype>
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/AttachedLog.h"
#include "fakes/SocketLines.h"

namespace vorlix {
namespace {

using fakes::Tape;
using testing::ElementsAre;
using testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string kRing = "RING;0;0111111;77;ISDN;", kCall = "CALL;0;4;77;0222222;ISDN;";
const std::string kConnect = "CONNECT;0;4;0;", kEnd = "DISCONNECT;0;0;", kEndOfTen = "DISCONNECT;0;10;";
const std::string kRings = "event 12 of 16: 0111111 to 77, id 0, CIP 16";
const std::string kShown = "event 13 of 16", kOver = "event 14 of 16: id 0";
const std::string kJournalled = "journal 28.08.2010 10:22:07 0222222 77 1";

class AVM_monitorTest : public testing::Test, protected fakes::RouterLine {
 protected:
  AVM_monitorTest() { switches.options.AVM_SaveOutgoingCalls = true; }

  // Hands the lines over, a kind of line without a moment at 10:22:07, and gives what they set off.
  Tape Play(const Lines& lines, bool simulated = false) {
    tape.clear();
    for (const std::string& line : lines)
      monitor.AVM_GetMessage(std::isupper(line[0]) != 0 ? "28.08.10 10:22:07;" + line : line, simulated);
    return tape;
  }
  Tape Lose() {
    tape.clear();
    monitor.ConnectionLost();
    return tape;
  }
};

TEST_F(AVM_monitorTest, EachKindOfCallTellsItsStepsInTheirOrder) {
  LineOptions& options = switches.options;
  const Lines missed{kRing, kEnd}, taken{kRing, kConnect, kEndOfTen};
  const Lines notReached{kCall, kEnd}, reached{kCall, kConnect, kEndOfTen};
  const Tape toldOnly{"dialled 0222222", "answered 0222222", "ended 0222222"};
  struct Row {
    const char* what;
    Lines lines;
    Tape told;
    std::function<void()> set = [] {};
  };
  const Row rows[] = {
      {"missed", missed, {kRings, kShown, kOver, "ended 0111111"}},
      // The duration finds the journal line by the pipeline's time and normal form.
      {"taken",
       taken,
       {kRings, kShown, kOver, "answered 071NORMAL", "period 10:28:30 071NORMAL 10", "ended 071NORMAL"},
       [&] { events.normalised = "071NORMAL"; }},
      {"not reached", notReached, {"dialled 0222222", kJournalled, "ended 0222222"}},
      {"reached",
       reached,
       {"dialled 0222222", kJournalled, "answered 0222222", "period 10:22:07 0222222 10", "ended 0222222"}},
      {"dialled without area code", {"CALL;0;11;77;100952"}, {"dialled 07191100952"}, [&] { options.myVWO = "7191"; }},
      {"an own number without journal", reached, toldOnly, [&] { ownNumbers.notJournalled = "77"; }},
      {"no journal of outgoing calls", reached, toldOnly, [&] { options.AVM_SaveOutgoingCalls = false; }},
      {"internal, so without a line that the seconds could find",
       {"RING;0;0111;77;ISDN;", kConnect, kEndOfTen},
       {kShown, kOver, "answered 0111", "ended 0111"},
       [&] { options.NoIntern = true; }},
      {"the driver owns incoming calls and has journalled this one",
       taken,
       {"answered 0111111", "period 10:22:07 0111111 10", "ended 0111111"},
       [&] { options.CallMode_CAPI = true; }},
      {"an id that is still open keeps its first call",
       {kRing, "RING;0;0333333;77;ISDN;", kEnd, kEnd, kConnect},
       {kRings, kShown, "event 12 of 16: 0333333 to 77, id 0, CIP 16", kShown, kOver, "ended 0111111"}},
      {"a stamp that is no date takes the clock's moment",
       {"31.02.20 99:99:99;" + kCall, "x;" + kEnd},
       {"dialled 0222222", "journal 13.03.2024 12:00:00 0222222 77 1", "ended 0222222"}},
  };
  for (const Row& row : rows) {
    options = {};
    options.AVM_SaveOutgoingCalls = true;
    events.normalised = ownNumbers.notJournalled = "";
    row.set();
    EXPECT_EQ(Play(row.lines), row.told) << row.what;
    Play({kEnd});
  }
  EXPECT_EQ(book.counted, "0222222");
  EXPECT_EQ(monitor.AVMCallList().Count(), 0u);
}

TEST_F(AVM_monitorTest, TheRulesAheadOfThePipelineChangeOrHoldBackACall) {
  LineOptions& options = switches.options;
  const auto plain = [] {};
  const auto cut = [&] { options.SpezialCuttNull = true; };
  const auto noIntern = [&] { options.NoIntern = true; };
  const auto onlyOwn = [&] { options.MSNLO = true; };
  const auto own = [&](const char* MSN) {
    onlyOwn();
    const auto entry = std::make_shared<oDataMSN>();
    entry->Key = MSN;
    ownNumbers.table.Add(entry);
  };
  struct Row {
    const char* number;
    std::function<void()> set;
    const char* forwarded;  // empty: only the end of the new call follows
  };
  for (const Row& row :
       {Row{"", plain, "Unbekannt"}, Row{"01711230", cut, "0171123"}, Row{"0171123", cut, "0171123"},
        Row{"1234", noIntern, ""}, Row{"12345", noIntern, "12345"}, Row{"01\t71\r\n23", plain, "01 71  23"},
        Row{"0111", onlyOwn, "0111"}, Row{"0111", [&] { own("78"); }, ""}, Row{"0111", [&] { own("77"); }, "0111"}}) {
    options = {};
    row.set();
    const Tape played = Play({std::string("RING;0;") + row.number + ";77;ISDN;"});
    const std::string passedOn = "event 12 of 16: " + std::string(row.forwarded) + " to 77, id 0, CIP 16";
    EXPECT_EQ(played, *row.forwarded == 0 ? Tape{kShown} : (Tape{passedOn, kShown})) << row.number;
    Play({kEnd});
  }
}

TEST_F(AVM_monitorTest, RealCallsAreLoggedAndDroppedWhileTheUserSimulatesOrTestsThePrefix) {
  switches.options.DebugAVM = true;
  simulation.open = true;
  EXPECT_THAT(Play({kRing}), IsEmpty());
  EXPECT_THAT(Play({kRing}, true), ElementsAre(kRings + ", simulated", kShown));
  simulation.open = false;
  prefixInput.asking = true;
  EXPECT_THAT(Play({"RING;1;0111111;77;ISDN;"}), IsEmpty());
  prefixInput.asking = false;
  Play({"RING;2;0111111;77;ISDN;"});
  EXPECT_EQ(logs.Text(R"(\log\raw_avm.txt)"), "13.03.2024 12:00:00|28.08.10 10:22:07;RING;2;0111111;77;ISDN;\n");
}

TEST_F(AVM_monitorTest, ALineThatComesTwiceIsOneEvent) {
  events.normalised = "071NORMAL";
  for (const std::string& open : {kRing, kCall}) {
    EXPECT_FALSE(Play({open}).empty());
    EXPECT_THAT(Play({open}), IsEmpty());
    EXPECT_FALSE(Play({kConnect}).empty());
    EXPECT_THAT(Play({kConnect, open}), IsEmpty());
    EXPECT_FALSE(Play({kEndOfTen}).empty());
    EXPECT_THAT(Play({kEndOfTen, kConnect}), IsEmpty());
  }
}

TEST_F(AVM_monitorTest, ALostConnectionEndsWhatNobodyTookAndFreesEveryId) {
  Play({kCall, "RING;1;0111111;77;ISDN;"});
  EXPECT_THAT(Lose(), ElementsAre(kJournalled, "ended 0222222", "event 14 of 16: id 1", "ended 0111111"));
  EXPECT_THAT(Lose(), IsEmpty());
  // It was taken after all: its seconds go into the line that it has.
  EXPECT_THAT(Play({kConnect, kEndOfTen}),
              ElementsAre("answered 0222222", "period 10:22:07 0222222 10", "ended 0222222"));
  // The end of this one was missed; its id now belongs to an incoming call.
  Play({kCall});
  Lose();
  EXPECT_THAT(Play({kRing, kEnd}), ElementsAre(kRings, kShown, kOver, "ended 0111111"));
}

TEST_F(AVM_monitorTest, MoreCallsThanARouterHasMakeRoomForTheNextOne) {
  const AttachedLog log(clock);
  const auto ring = [this](int id) { return Play({"RING;" + std::to_string(id) + ";0111111;77;SIP0;"}); };
  const auto rings = [](int id) { return "event 12 of 16: 0111111 to 77, id " + std::to_string(id) + ", CIP 16"; };
  for (int id = 1000; id < 1256; ++id)
    EXPECT_EQ(ring(id), (Tape{rings(id), kShown}));
  Play({"CONNECT;1001;4;0;"});
  EXPECT_EQ(ring(1), (Tape{"event 14 of 16: id 1000", "ended 0111111", rings(1), kShown}));
  EXPECT_EQ(ring(2), (Tape{rings(2), kShown})) << "it was taken, and stands in the journal";
  const std::string errors = log.Errors();
  EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1);
  Lose();
  EXPECT_EQ(ring(3), (Tape{rings(3), kShown}));
  EXPECT_EQ(monitor.AVMCallList().Count(), 1u);
}

TEST_F(AVM_monitorTest, LinesOfOtherKindsAndHalfOnesSetNothingOff) {
  for (const char* line : {"", ";", "no semicolon", "28.08.10 10:22:07;", "SMS;0;1;2;", "28.08.10 10:22:07;ring;0;1;2;",
                           ";CONNECT;", ";DISCONNECT;0;5", ";;;;;;;;", "CONNECT;9;4;0;"}) {
    EXPECT_THAT(Play({line}), IsEmpty()) << line;
  }
}

TEST_F(AVM_monitorTest, AnyBytesInAnyFieldLeaveNoControlCharacterInARecord) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string any(3, static_cast<char>(byte));
    for (const char* kind : {"RING;", "CALL;", "CONNECT;", "DISCONNECT;"})
      monitor.AVM_GetMessage(any + ";" + kind + any + ";" + any + ";" + any + ";" + any + ";" + any, false);
  }
  EXPECT_GT(tape.size(), 1000u);
  for (const std::string& entry : tape)
    EXPECT_EQ(entry.find_first_of(std::string("\t\r\n\0", 4)), std::string::npos) << entry;
}

}  // namespace
}  // namespace vorlix
