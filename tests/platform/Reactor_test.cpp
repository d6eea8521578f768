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
  auto silent = this->reactor.MakeTimer(1ms, [] { FAIL() << "was never enabled"; });
  auto zero = this->Ticking(0ms, [] { FAIL() << "has no interval"; });
  while (ticks < 3)
    Let(this->reactor, 10ms);
  EXPECT_EQ(timer->Interval(), 10ms);
}

TYPED_TEST(ReactorContract, EnablingAgainAndANewIntervalStartAnew) {
  auto timer = this->Ticking(40ms, [&] { this->log += 't'; });
  Let(this->reactor, 20ms);
  timer->SetEnabled(true);
  const auto enabled = this->Steady();
  while (this->log.empty())
    Let(this->reactor, 5ms);
  EXPECT_GE(this->Steady() - enabled, 40ms);
  timer->SetInterval(30ms);
  const auto changed = this->Steady();
  while (this->log.size() < 2)
    Let(this->reactor, 5ms);
  EXPECT_GE(this->Steady() - changed, 30ms);
}

TYPED_TEST(ReactorContract, ATickMayDisableReplaceAndDestroyItsTimer) {
  std::unique_ptr<Timer> disabled, replaced, destroyed;
  disabled = this->Ticking(1ms, [&] {
    this->log += 'd';
    disabled->SetEnabled(false);
  });
  replaced = this->Ticking(1ms, [&, text = std::string("still here after the replacement")] {
    replaced->SetTick({});
    this->log += text.front();
  });
  destroyed = this->Ticking(1ms, [&, text = std::string("x and more than a small text holds")] {
    destroyed.reset();
    this->log += text.front();
  });
  Let(this->reactor, 20ms);
  EXPECT_EQ(this->log, "dsx");
}

TYPED_TEST(ReactorContract, ATickMayDestroyAnotherTimerThatIsDueToo) {
  std::unique_ptr<Timer> first, second;
  const auto tick = [this](std::unique_ptr<Timer>& other) {
    this->log += '1';
    other.reset();
  };
  first = this->Ticking(5ms, [&] { tick(second); });
  second = this->Ticking(5ms, [&] { tick(first); });
  usleep(10'000);
  Let(this->reactor, 5ms);
  first.reset();
  EXPECT_EQ(this->log.substr(0, 1), "1");
  EXPECT_EQ(second, nullptr);
}

TYPED_TEST(ReactorContract, TicksComeInTheOrderOfTheirMomentsThenOfTheirStart) {
  auto third = this->Ticking(100ms, [&] { this->log += '3'; });
  auto first = this->Ticking(60ms, [&] { this->log += '1'; });
  auto second = this->Ticking(60ms, [&] { this->log += '2'; });
  Let(this->reactor, 101ms);
  EXPECT_EQ(this->log.substr(0, 3), "123");
}

TYPED_TEST(ReactorContract, MissedTicksAreNotMadeUpFor) {
  int ticks = 0;
  auto slow = this->Ticking(100ms, [&] {
    if (++ticks == 1) usleep(350'000);  // the manual loop's time stands still, it has nothing to make up for
    if (ticks == 2) this->reactor.Quit();
  });
  const auto start = this->Steady();
  while (ticks < 2)
    Let(this->reactor, 100ms);
  slow->SetEnabled(false);
  EXPECT_EQ(ticks, 2);
  EXPECT_GE(this->Steady() - start, 200ms);
  this->reactor.RunPending();
  EXPECT_EQ(ticks, 2);
}

TYPED_TEST(ReactorContract, CallsKeepTheirOrderAlsoWhenPostedByACall) {
  this->reactor.Post([&] {
    this->log += '1';
    this->reactor.Post([&] { this->log += '3'; });
    this->reactor.RunPending();  // runs what stands behind, not itself
    this->log += '4';
  });
  this->reactor.Post([&] { this->log += '2'; });
  EXPECT_EQ(this->log, "");
  this->reactor.RunPending();
  EXPECT_EQ(this->log, "1234");
}

TYPED_TEST(ReactorContract, AThrowingCallbackDoesNotStopTheLoop) {
  SocketPair pair;
  pair.Fill();
  auto watch = this->reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready) {
    pair.Drain();
    throw std::runtime_error("watch");
  });
  auto bad = this->Ticking(1ms, [] { throw std::runtime_error("tick"); });
  auto good = this->Ticking(2ms, [&] { this->log += 't'; });
  this->reactor.Post([] { throw 7; });
  this->reactor.Post([&] { this->log += 'p'; });
  while (this->log.size() < 3)
    Let(this->reactor, 5ms);
  EXPECT_EQ(this->log.substr(0, 3), "ptt");
}

TYPED_TEST(ReactorContract, ACallPostedByATickOrAWatchDoesNotWait) {
  SocketPair pair;
  auto far = this->Ticking(1h, [&] { this->log += "too late"; });
  std::unique_ptr<Timer> tick = this->Ticking(1ms, [&] {
    tick.reset();
    this->reactor.Post([&] { pair.Fill(); });
  });
  auto watch = this->reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready ready) {
    EXPECT_TRUE(ready.read && !ready.write);
    pair.Drain();
    this->reactor.Post([&] { this->log += 'p'; });
  });
  while (this->log.empty())
    Let(this->reactor, 5ms);
  EXPECT_EQ(this->log, "p");
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

TYPED_TEST(ReactorContract, AQuitBeforeRunCountsOnce) {
  this->reactor.Quit();
  this->reactor.Run();
  this->reactor.Post([&] {
    this->log += 'p';
    this->reactor.Quit();
  });
  this->reactor.Run();
  EXPECT_EQ(this->log, "p");
}

TEST(TimerQueueTest, TimersCloseTogetherShareAWakeUpAndSilentOnesCostNone) {
  ManualReactor::ManualClock clock;
  TimerQueue queue(clock);
  std::vector<std::unique_ptr<Timer>> timers;
  const auto add = [&](std::chrono::milliseconds interval, std::function<void()> tick) {
    timers.push_back(queue.MakeTimer(interval, std::move(tick)));
    timers.back()->SetEnabled(true);
  };
  add(1ms, {});
  EXPECT_EQ(queue.MaySleep(), std::nullopt);
  for (const auto interval : {100ms, 102ms, 105ms, 106ms})
    add(interval, [] {});
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

TEST(ManualReactorTest, MovesBothTimesAndTicksAtTheVirtualMoments) {
  ManualReactor reactor;
  reactor.SetNow(DateTime::FromCivil(2024, 12, 31, 23, 59, 58));
  std::vector<DateTime> moments;
  auto timer = reactor.MakeTimer(1500ms, [&] { moments.push_back(reactor.GetClock().Now()); });
  timer->SetEnabled(true);
  reactor.Advance(3s);
  EXPECT_EQ(moments,
            (std::vector{DateTime::FromCivil(2024, 12, 31, 23, 59, 59), DateTime::FromCivil(2025, 1, 1, 0, 0, 1)}));
  reactor.SetNow(DateTime::FromCivil(2020, 1, 1));
  EXPECT_EQ(reactor.UntilNextTick(), 1500ms);
}

}  // namespace
}  // namespace vorlix
