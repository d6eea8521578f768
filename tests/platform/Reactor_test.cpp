// The contract of a loop, kept by the one on poll() and by the manual one of the tests alike. Only here does a test
// really wait; it compares with what the clock says, never with what it hoped to sleep.
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/ManualReactor.h"
#include "fakes/TemporaryFolder.h"
#include "platform/posix/PollReactor.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;

void Let(ManualReactor& reactor, std::chrono::milliseconds time) {
  reactor.Advance(time);
}
void Let(PollReactor& reactor, std::chrono::milliseconds time) {
  auto end = reactor.MakeTimer(time, [&] { reactor.Quit(); });
  end->SetEnabled(true);
  reactor.Run();
}

struct SocketPair {
  int ends[2];
  SocketPair() { EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends), 0); }
  ~SocketPair() {
    close(ends[0]);
    close(ends[1]);
  }
  void Fill() const { EXPECT_EQ(write(ends[1], "x", 1), 1); }
  void Drain() const {
    char byte = 0;
    while (read(ends[0], &byte, 1) == 1) {
    }
  }
};

template <class ReactorUnderTest>
class ReactorContract : public testing::Test {
 protected:
  std::chrono::milliseconds Steady() const { return reactor.GetClock().Steady(); }
  std::unique_ptr<Timer> Ticking(std::chrono::milliseconds interval, std::function<void()> tick) {
    auto timer = reactor.MakeTimer(interval, std::move(tick));
    timer->SetEnabled(true);
    return timer;
  }

  ReactorUnderTest reactor;
  std::string log;
};

using Reactors = testing::Types<PollReactor, ManualReactor>;
TYPED_TEST_SUITE(ReactorContract, Reactors);

TYPED_TEST(ReactorContract, TicksAfterEachIntervalAndNeverEarly) {
  const auto start = this->Steady();
  int ticks = 0;
  auto timer = this->Ticking(10ms, [&] { EXPECT_GE(this->Steady() - start, ++ticks * 10ms); });
  while (ticks < 3)
    Let(this->reactor, 10ms);
}

TYPED_TEST(ReactorContract, CallsKeepTheirOrderAlsoWhenPostedByACallAndAQuitCountsOnce) {
  this->reactor.Quit();
  this->reactor.Run();
  this->reactor.Post([&] {
    this->log += '1';
    this->reactor.Post([&] { this->log += '3'; });
    this->reactor.RunPending();  // runs what stands behind, not itself
    this->log += '4';
  });
  this->reactor.Post([&] {
    this->log += '2';
    this->reactor.Quit();
  });
  EXPECT_EQ(this->log, "");
  this->reactor.Run();
  EXPECT_EQ(this->log, "1234");
}

TYPED_TEST(ReactorContract, CallsPostedByATickOrAWatchDoNotWaitAndNothingThrownStopsTheLoop) {
  SocketPair pair;
  auto watch = this->reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready ready) {
    EXPECT_TRUE(ready.read && !ready.write);
    pair.Drain();
    this->reactor.Post([&] { this->log += 'p'; });
    throw std::runtime_error("watch");
  });
  auto tick = this->Ticking(1ms, [&] {
    this->reactor.Post([&] {
      pair.Fill();
      throw 7;
    });
    throw std::runtime_error("tick");
  });
  while (this->log.size() < 2)
    Let(this->reactor, 5ms);
}

TYPED_TEST(ReactorContract, RunPendingInsideATickRunsTheOthersButNotThatTick) {
  auto outer = this->Ticking(1ms, [&] {
    this->log += '(';
    if constexpr (std::is_same_v<TypeParam, PollReactor>) usleep(5'000);
    this->reactor.Post([&] { this->log += 'p'; });
    this->reactor.RunPending();
    this->log += ')';
  });
  Let(this->reactor, 1ms);
  outer.reset();
  EXPECT_EQ(this->log.substr(0, 3), "(p)");
  EXPECT_EQ(this->log.find("(("), std::string::npos);
}

TYPED_TEST(ReactorContract, AWatchTellsReadAndWriteAsWanted) {
  SocketPair pair;
  Reactor::Ready last;
  auto watch = this->reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready ready) {
    last = ready;
    this->log += 'w';
  });
  const auto asked = [&](bool read, bool write) {
    watch->WantRead(read);
    watch->WantWrite(write);
    last = {};
    this->reactor.RunPending();
    return std::pair(last.read, last.write);
  };
  EXPECT_EQ(asked(true, false), std::pair(false, false));
  EXPECT_EQ(asked(true, true), std::pair(false, true));
  pair.Fill();
  EXPECT_EQ(asked(true, true), std::pair(true, true));
  EXPECT_EQ(asked(true, false), std::pair(true, false));  // still there: level-triggered
  EXPECT_EQ(asked(false, false), std::pair(false, false));
  shutdown(pair.ends[1], SHUT_RDWR);
  EXPECT_EQ(asked(false, true), std::pair(false, true));
  EXPECT_EQ(this->log, "wwww");
}

TYPED_TEST(ReactorContract, AWatchMayStopItselfAndOthersInItsCallback) {
  SocketPair one, two;
  std::unique_ptr<Watch> first, second;
  const auto ready = [this, &first, &second](char name) {
    this->log += name;
    this->reactor.RunPending();  // may run the other one, but not this one again
    first.reset();
    second.reset();
    this->log += name;
  };
  first = this->reactor.WatchDescriptor(one.ends[0], [&](Reactor::Ready) { ready('1'); });
  second = this->reactor.WatchDescriptor(two.ends[0], [&](Reactor::Ready) { ready('2'); });
  one.Fill();
  two.Fill();
  this->reactor.RunPending();
  this->reactor.RunPending();
  EXPECT_EQ(this->log, "1221");
}

// The timers of both loops, at moments that the test gives.
class TimerQueueTest : public testing::Test {
 protected:
  std::unique_ptr<Timer> Ticking(std::chrono::milliseconds interval, std::function<void()> tick) {
    auto timer = queue.MakeTimer(interval, std::move(tick));
    timer->SetEnabled(true);
    return timer;
  }
  std::unique_ptr<Timer> Noting(std::chrono::milliseconds interval, char name) {
    return Ticking(interval, [this, name] { log += name; });
  }
  // What ticks when the loop looks at that moment.
  std::string At(std::chrono::milliseconds moment) {
    clock.steady = moment;
    queue.RunDue();
    return std::exchange(log, "");
  }

  ManualReactor::ManualClock clock;
  TimerQueue queue{clock};
  std::string log;
};

TEST_F(TimerQueueTest, KeepsItsBeatWithoutMakingUpForMissedTicks) {
  const auto timer = Noting(10ms, 't'), zero = Noting(0ms, 'z');
  const auto silent = queue.MakeTimer(1ms, [] { FAIL() << "was never enabled"; });
  for (const auto& [moment, ticks] : std::vector<std::pair<std::chrono::milliseconds, std::string>>{
           {9ms, ""}, {10ms, "t"}, {19ms, ""}, {21ms, "t"}, {30ms, "t"}, {65ms, "t"}, {69ms, ""}, {70ms, "t"}}) {
    EXPECT_EQ(At(moment), ticks) << moment.count();
  }
}

TEST_F(TimerQueueTest, EnablingAgainAndANewIntervalStartAnew) {
  const auto timer = Noting(40ms, 't');
  EXPECT_EQ(At(20ms), "");
  timer->SetEnabled(true);
  EXPECT_EQ(At(59ms), "");
  EXPECT_EQ(At(60ms), "t");
  timer->SetInterval(30ms);
  EXPECT_EQ(timer->Interval(), 30ms);
  EXPECT_EQ(At(89ms), "");
  EXPECT_EQ(At(90ms), "t");
}

TEST_F(TimerQueueTest, TicksInTheOrderOfTheMomentsThenOfTheStart) {
  const auto third = Noting(100ms, '3'), first = Noting(60ms, '1'), second = Noting(60ms, '2');
  EXPECT_EQ(At(101ms), "123");
}

TEST_F(TimerQueueTest, ATickMayDisableReplaceAndDestroyItsTimerAndAnotherThatIsDueToo) {
  std::unique_ptr<Timer> disabled, replaced, destroyed, other;
  disabled = Ticking(1ms, [&] {
    log += 'd';
    disabled->SetEnabled(false);
  });
  replaced = Ticking(1ms, [&, text = std::string("still here after the replacement")] {
    replaced->SetTick({});
    log += text.front();
  });
  destroyed = Ticking(1ms, [&, text = std::string("x and more than a small text holds")] {
    destroyed.reset();
    other.reset();
    log += text.front();
  });
  other = Noting(1ms, 'o');
  EXPECT_EQ(At(1ms) + At(2ms), "dsx");
}

TEST_F(TimerQueueTest, TimersCloseTogetherShareAWakeUpAndSilentOnesCostNone) {
  std::vector<std::unique_ptr<Timer>> timers;
  timers.push_back(Ticking(1ms, {}));
  EXPECT_EQ(queue.MaySleep(), std::nullopt);
  for (const auto interval : {100ms, 102ms, 105ms, 106ms})
    timers.push_back(Noting(interval, 't'));
  EXPECT_EQ(queue.MaySleep(), 105ms);
  queue.Post([] {});
  EXPECT_EQ(queue.MaySleep(), 0ms);
}

TEST(SystemClockTest, TellsLocalTimeAndFollowsTheTimeZone) {
  const SystemClock clock;
  const auto nowIn = [&](const char* zone) {
    const TemporaryVariable variable("TZ", zone);
    return clock.Now();
  };
  const DateTime utc = nowIn("UTC0"), east = nowIn("XXX-5");
  const std::time_t now = std::time(nullptr);
  EXPECT_NEAR(utc.DaysSince(DateTime::FromCivil(1970, 1, 1)), static_cast<double>(now) / 86400, 0.001);
  EXPECT_NEAR(east.DaysSince(utc), 5.0 / 24, 0.001);
}

}  // namespace
}  // namespace vorlix
