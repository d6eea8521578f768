// The contract of a loop, for every implementation to keep:
// INSTANTIATE_TYPED_TEST_SUITE_P(Name, ReactorContract, testing::Types<...>). Only here does a test really wait; it
// compares with what the clock says, never with what it hoped to sleep.
#pragma once

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
  std::unique_ptr<Timer> Ticking(std::chrono::milliseconds interval, std::function<void()> tick) {
    auto timer = reactor.MakeTimer(interval, std::move(tick));
    timer->SetEnabled(true);
    return timer;
  }

  ReactorUnderTest reactor;
  std::string log;
};

TYPED_TEST_SUITE_P(ReactorContract);

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
  std::string told;
  auto watch = this->reactor.WatchDescriptor(pair.ends[0], [&](Reactor::Ready ready) {
    told += ready.read ? "r" : "";
    told += ready.write ? "w" : "";
  });
  const auto toldWhenAsked = [&](bool read, bool write) {
    watch->WantRead(read);
    watch->WantWrite(write);
    this->reactor.RunPending();
    return std::exchange(told, "");
  };
  EXPECT_EQ(toldWhenAsked(true, false), "");
  EXPECT_EQ(toldWhenAsked(true, true), "w");
  pair.Fill();
  EXPECT_EQ(toldWhenAsked(true, true), "rw");
  EXPECT_EQ(toldWhenAsked(true, false), "r");  // still there: level-triggered
  EXPECT_EQ(toldWhenAsked(false, false), "");
  shutdown(pair.ends[1], SHUT_RDWR);
  EXPECT_EQ(toldWhenAsked(false, true), "w");
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

REGISTER_TYPED_TEST_SUITE_P(ReactorContract, CallsKeepTheirOrderAlsoWhenPostedByACallAndAQuitCountsOnce,
                            CallsPostedByATickOrAWatchDoNotWaitAndNothingThrownStopsTheLoop,
                            RunPendingInsideATickRunsTheOthersButNotThatTick, AWatchTellsReadAndWriteAsWanted,
                            AWatchMayStopItselfAndOthersInItsCallback);

}  // namespace vorlix
