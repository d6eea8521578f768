// The loops on poll() and of the tests, and the timers of all.
#include <string>

#include <gtest/gtest.h>

#include "fakes/ManualReactor.h"
#include "platform/ReactorContract.h"
#include "platform/posix/PollReactor.h"

namespace vorlix {
namespace {

using Reactors = testing::Types<PollReactor, ManualReactor>;
INSTANTIATE_TYPED_TEST_SUITE_P(Loops, ReactorContract, Reactors);

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
  void ExpectTicks(const std::vector<std::pair<std::chrono::milliseconds, std::string>>& expected) {
    for (const auto& [moment, ticks] : expected)
      EXPECT_EQ(At(moment), ticks) << moment.count();
  }

  ManualReactor::ManualClock clock;
  TimerQueue queue{clock};
  std::string log;
};

TEST_F(TimerQueueTest, KeepsItsBeatWithoutMakingUpForMissedTicks) {
  const auto timer = Noting(10ms, 't'), zero = Noting(0ms, 'z');
  const auto silent = queue.MakeTimer(1ms, [] { FAIL() << "was never enabled"; });
  ExpectTicks({{9ms, ""}, {10ms, "t"}, {19ms, ""}, {21ms, "t"}, {30ms, "t"}, {65ms, "t"}, {69ms, ""}, {70ms, "t"}});
}

TEST_F(TimerQueueTest, WholeSecondsComeOntoTheBeatBehindTheFirstTickAndOthersDoNot) {
  At(300ms);
  const auto one = Noting(1s, '1'), two = Noting(2s, '2'), other = Noting(1500ms, 'o');
  ExpectTicks({{1299ms, ""}, {1300ms, "1"}, {2299ms, "o"}, {2300ms, "2"}, {2999ms, ""}, {3000ms, "1"}});
  ExpectTicks({{3300ms, "o"}, {3999ms, ""}, {4000ms, "1"}, {5000ms, "o12"}, {6000ms, "1"}, {7000ms, "o12"}});
}

TEST_F(TimerQueueTest, EnablingAgainAndANewIntervalStartAnew) {
  const auto timer = Noting(40ms, 't');
  ExpectTicks({{20ms, ""}});
  timer->SetEnabled(true);
  ExpectTicks({{59ms, ""}, {60ms, "t"}});
  timer->SetInterval(30ms);
  ExpectTicks({{89ms, ""}, {90ms, "t"}});
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

}  // namespace
}  // namespace vorlix
