// The contract of a loop, for every implementation to keep:
// INSTANTIATE_TYPED_TEST_SUITE_P(Name, ReactorContract, testing::Types<...>). Only here does a test really wait; it
// compares with what the clock says, never with what it hoped to sleep.
#pragma once

#include <algorithm>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <sys/socket.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/Reactor.h"

namespace vorlix {

using namespace std::chrono_literals;

// Its time passes only when a test says so.
template <class AnyReactor>
concept Manual = requires(AnyReactor& reactor) {
  reactor.Advance(1ms);
};

template <class AnyReactor>
void Let(AnyReactor& reactor, std::chrono::milliseconds time) {
  if constexpr (Manual<AnyReactor>) {
    reactor.Advance(time);
  } else {
    auto end = reactor.MakeTimer(time, [&] { reactor.Quit(); });
    end->SetEnabled(true);
    reactor.Run();
  }
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

TYPED_TEST_SUITE_P(ReactorContract);

TYPED_TEST_P(ReactorContract, TicksAfterEachIntervalAndNeverEarly) {
  const auto start = this->Steady();
  int ticks = 0;
  auto timer = this->Ticking(10ms, [&] { EXPECT_GE(this->Steady() - start, ++ticks * 10ms); });
  while (ticks < 3)
    Let(this->reactor, 10ms);
}

TYPED_TEST_P(ReactorContract, TimersOfWholeSecondsTickTogetherFromTheSecondTimeOnWheneverTheyBegan) {
  const auto noting = [this](char name) {
    return [this, name] {
      this->log += name;
      this->reactor.Post([this] { this->log += '|'; });
    };
  };
  const auto one = this->Ticking(1s, noting('1'));
  Let(this->reactor, 20ms);
  const auto two = this->Ticking(1s, noting('2'));
  while (std::ranges::count(this->log, '2') < 2)
    Let(this->reactor, 20ms);
  EXPECT_TRUE(this->log.starts_with("1|2|") && this->log.ends_with("12||")) << this->log;
}

TYPED_TEST_P(ReactorContract, CallsKeepTheirOrderAlsoWhenPostedByACallAndAQuitCountsOnce) {
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

TYPED_TEST_P(ReactorContract, CallsPostedByATickOrAWatchDoNotWaitAndNothingThrownStopsTheLoop) {
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

TYPED_TEST_P(ReactorContract, RunPendingInsideATickRunsTheOthersButNotThatTick) {
  auto outer = this->Ticking(1ms, [&] {
    this->log += '(';
    if constexpr (!Manual<TypeParam>) usleep(5'000);
    this->reactor.Post([&] { this->log += 'p'; });
    this->reactor.RunPending();
    this->log += ')';
  });
  Let(this->reactor, 1ms);
  outer.reset();
  EXPECT_EQ(this->log.substr(0, 3), "(p)");
  EXPECT_EQ(this->log.find("(("), std::string::npos);
}

TYPED_TEST_P(ReactorContract, AWatchTellsReadAndWriteAsWanted) {
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

TYPED_TEST_P(ReactorContract, AWatchMayStopItselfAndOthersInItsCallback) {
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

REGISTER_TYPED_TEST_SUITE_P(ReactorContract, TicksAfterEachIntervalAndNeverEarly,
                            TimersOfWholeSecondsTickTogetherFromTheSecondTimeOnWheneverTheyBegan,
                            CallsKeepTheirOrderAlsoWhenPostedByACallAndAQuitCountsOnce,
                            CallsPostedByATickOrAWatchDoNotWaitAndNothingThrownStopsTheLoop,
                            RunPendingInsideATickRunsTheOthersButNotThatTick, AWatchTellsReadAndWriteAsWanted,
                            AWatchMayStopItselfAndOthersInItsCallback);

}  // namespace vorlix
