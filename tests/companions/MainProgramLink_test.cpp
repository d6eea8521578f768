#include "companions/shared/MainProgramLink.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeMessageLink.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Sent = FakeMessageLink::Message;
using Texts = std::vector<std::string>;

constexpr WindowHandle kMain = 4711;
constexpr std::uint32_t kSource = 16;
constexpr MessageLink::Peer kMainPeer = 5;

class MainProgramLinkTest : public testing::Test {
 protected:
  // The main program answers each life sign.
  MainProgramLinkTest() {
    link.onSend = [this](const Sent& message) {
      if (!mainHears) return false;
      if (message.word == (kSource | 2) && mainAnswers) link.Deliver(kSource | 2, std::to_string(kMain), kMainPeer);
      if (message.word == (kSource | 1)) lines.push_back(message.text);
      return true;
    };
  }
  std::function<void(const std::string&)> Leave() {
    return [this](const std::string& reason) { reasons.push_back(reason); };
  }
  Sent Sign() const { return {kMain, kSource | 2, std::to_string(link.Own())}; }

  ManualReactor reactor;
  FakeMessageLink link;
  bool mainHears = true;
  bool mainAnswers = true;
  Texts lines;  // as the main program got them
  Texts reasons;
  MainProgramLink main{link, reactor, kMain, kSource, Leave()};
};

TEST_F(MainProgramLinkTest, GivesItsLifeSignAtOnceAndOftenEnoughForTheWatchdog) {
  ASSERT_TRUE(main.Start());
  EXPECT_THAT(link.TakeSent(), ElementsAre(Sign()));
  EXPECT_FALSE(link.tookOver);
  for (int i = 0; i < 20; ++i) {
    reactor.Advance(9s);  // the main program starts another instance after ten
    EXPECT_THAT(link.TakeSent(), testing::Contains(Sign()));
  }
}

TEST_F(MainProgramLinkTest, LeavesForGoodWhenThereIsNoMoreReasonToRun) {
  struct Row {
    // Before each life sign: nothing '.', the main program is deaf 'd', mute 'm' or ends 'g', tells to end 'e', other
    // words 'w' come, another process ends 'p', another instance takes the name 'o', also just before a line 't'.
    std::string happens;
    std::string reason;  // empty: it stays
  };
  const Row rows[] = {
      {"dd", "the main program is gone"},
      {"d.d.d", ""},
      {"mmmmmmmm", "the main program does not answer"},
      {"mmmmmm.mmmmmm", ""},
      {"..o", "another instance has taken over"},
      {"t", "another instance has taken over"},
      {"wp.", ""},
      {"e", "told to end"},
      {"g", "the main program is gone"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.happens);
    reasons.clear();
    MainProgramLink one(link, reactor, kMain, kSource, Leave());
    ASSERT_TRUE(one.Start());
    for (const char now : row.happens) {
      mainHears = now != 'd';
      mainAnswers = now != 'm';
      link.ownsEndpoint = now != 'o' && now != 't';
      if (now == 't') one.Tell(kHelperLine, "is the other's");
      if (now == 'g' || now == 'p') link.LosePeer(now == 'g' ? kMainPeer : kMainPeer + 1);
      if (now == 'e') link.Deliver(kSource | 5);
      for (const std::uint32_t word : {32u | 5, 0x100u | kSource | 5, kSource | 4, kSource | 1})
        if (now == 'w') link.Deliver(word);
      reactor.Advance(MainProgramLink::kLifeSign);
    }
    mainHears = mainAnswers = link.ownsEndpoint = true;
    EXPECT_EQ(reasons.empty() ? "" : reasons.front(), row.reason);
    EXPECT_THAT(lines, IsEmpty());
    if (row.reason.empty()) continue;
    link.TakeSent();
    one.Tell(kHelperLine, "late");
    reactor.Advance(100s);
    EXPECT_THAT(link.sent, IsEmpty());
    EXPECT_EQ(reasons.size(), 1u);
  }
}

TEST_F(MainProgramLinkTest, TellsAFormerInstanceToEndBeforeItTakesItsPlace) {
  link.canOpen = false;
  EXPECT_FALSE(main.Start());
  EXPECT_TRUE(link.tookOver);
  EXPECT_THAT(link.TakeSent(), ElementsAre(testing::Field(&Sent::word, kSource | 5)));
  link.onSend = [this](const Sent& message) {
    link.canOpen = true;
    return message.target == kMain;  // the former one does not answer
  };
  EXPECT_TRUE(main.Start());
  EXPECT_THAT(link.TakeSent(), ElementsAre(Sent{link.Own(), kSource | 5, ""}, Sign()));
}

TEST_F(MainProgramLinkTest, WhatABusyMainProgramDidNotTakeComesLaterInItsOrderTheLatestThousandLines) {
  const auto line = [](const char* text) { return Sent{kMain, kSource | 1, text}; };
  ASSERT_TRUE(main.Start());
  main.Tell(kHelperConnected);
  link.TakeSent();
  mainHears = false;
  main.Tell(kHelperLine, "1");
  main.Tell(kHelperLine, "2");
  reactor.Advance(4s);
  // Each attempt may last two seconds: one for the first line, one for the life sign.
  EXPECT_THAT(link.TakeSent(), ElementsAre(line("1"), Sign()));
  mainHears = true;
  main.Tell(kHelperLine, "3");
  reactor.Advance(4s);
  EXPECT_THAT(link.TakeSent(), ElementsAre(Sign(), line("1"), line("2"), line("3"), Sent{kMain, kSource | 6, ""}));
  main.Tell(kHelperLine, "4");
  EXPECT_THAT(link.TakeSent(), ElementsAre(line("4")));
  mainHears = false;
  for (int i = 0; i < 1500; ++i)
    main.Tell(kHelperLine, std::to_string(i));
  mainHears = true;
  lines.clear();
  reactor.Advance(4s);
  ASSERT_EQ(lines.size(), 1000u);
  EXPECT_EQ(lines.front() + lines.back(), "5001499");
}

}  // namespace
}  // namespace vorlix
