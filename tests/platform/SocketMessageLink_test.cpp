#include "platform/posix/SocketMessageLink.h"

#include <atomic>
#include <barrier>
#include <functional>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "fakes/ManualReactor.h"
#include "fakes/TemporaryFolder.h"
#include "platform/LinkPacket.h"
#include "platform/posix/LinkFolder.h"
#include "platform/posix/PollReactor.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;

class Recorder : public MessageLink::Receiver {
 public:
  void OnMessage(MessageLink::Peer, std::uint32_t word, const std::string& text) override {
    log += std::to_string(word) + ":" + text + " ";
    if (onMessage) onMessage(word);
  }
  void OnPeerGone(MessageLink::Peer) override { log += "gone "; }

  std::string log;
  std::function<void(std::uint32_t)> onMessage;
};

// What another program has.
struct Program {
  PollReactor loop;
  Recorder receiver;
  SocketMessageLink link{loop};
};

class SocketMessageLinkTest : public testing::Test {
 protected:
  static constexpr WindowHandle kOwn = 4711, kOther = 815;

  bool Until(const std::function<bool()>& holds) { return reactor.RunUntil(holds); }
  // Runs another program in a thread, beside this one's loop, until it has ended.
  void Beside(const std::function<void(Program&)>& other) {
    std::atomic<bool> hasEnded = false;
    const std::jthread thread([&] {
      const auto program = std::make_unique<Program>();
      const auto limit = program->loop.MakeTimer(10s, [&] { program->loop.Quit(); });
      limit->SetEnabled(true);
      other(*program);
      hasEnded = true;
    });
    EXPECT_TRUE(Until([&] { return hasEnded.load(); }));
  }
  // A connection that speaks for itself.
  Descriptor RawConnection() const {
    Descriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    const sockaddr_un address = LinkAddress(LinkPath(kOwn));
    EXPECT_EQ(connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    return socket;
  }
  static void Put(const Descriptor& socket, std::string_view bytes) {
    EXPECT_GT(send(socket.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL), 0);
  }
  static void Tell(const Descriptor& socket, std::uint32_t word) { Put(socket, LinkPacket(word, "").Bytes()); }

  TemporaryFolder folder;
  TemporaryVariable runtime{"XDG_RUNTIME_DIR", folder.Path()};
  ManualReactor reactor;
  Recorder receiver;
  SocketMessageLink link{reactor};
};

TEST_F(SocketMessageLinkTest, DeliversWordAndTextAndAnswersAlsoWhenTheReceiverCloses) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  receiver.onMessage = [&](std::uint32_t word) {
    if (word == 2) link.Close();
  };
  Beside([](Program& other) {
    EXPECT_TRUE(other.link.Send(kOwn, 17, "RING;\xFC"));
    EXPECT_TRUE(other.link.Send(kOwn, 0xFFFFFFFF, std::string(300, 'x')));
    EXPECT_TRUE(other.link.Send(kOwn, 1, std::string("a\0b", 3)));
    EXPECT_TRUE(other.link.Send(kOwn, 2, ""));
    EXPECT_FALSE(other.link.Send(kOther, 1, "nobody"));
  });
  EXPECT_EQ(receiver.log, "17:RING;\xFC 4294967295:" + std::string(255, 'x') + " 1:a 2: ");
  EXPECT_EQ(access(LinkPath(kOwn).c_str(), F_OK), -1);
}

TEST_F(SocketMessageLinkTest, TwoThatSendAtTheSameMomentDoNotWaitForEachOther) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  int answered = 0, echoes = 0;
  bool isOtherDone = false;
  receiver.onMessage = [&](std::uint32_t word) {
    if (word == 1 && link.Send(kOther, 10, "")) ++answered;
    if (word == 11 && ++echoes == 20) isOtherDone = link.Send(kOther, 99, "");
  };
  const auto start = std::chrono::steady_clock::now();
  Beside([](Program& other) {
    // Sends from inside the receiver, while that one sends from inside its own.
    other.receiver.onMessage = [&](std::uint32_t word) {
      if (word == 99) return other.loop.Quit();
      EXPECT_TRUE(other.link.Send(kOwn, word + 1, ""));
    };
    ASSERT_TRUE(other.link.Open(kOther, other.receiver));
    for (int i = 0; i < 20; ++i)
      EXPECT_TRUE(other.link.Send(kOwn, 1, ""));
    other.loop.Run();
  });
  EXPECT_TRUE(answered == 20 && isOtherDone) << receiver.log;
  EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
}

TEST_F(SocketMessageLinkTest, WhatArrivesDuringASendComesFromTheLoopInItsOrder) {
  Program own;
  ASSERT_TRUE(own.link.Open(kOwn, own.receiver));
  const std::string& log = own.receiver.log;
  const Descriptor peer = RawConnection();
  own.loop.RunPending();
  Tell(peer, 1);
  Tell(peer, 2);
  EXPECT_TRUE(own.link.Send(kOwn, 3, ""));  // to itself: answered at once as well
  EXPECT_EQ(log, "");
  Tell(peer, 4);
  own.receiver.onMessage = [&](std::uint32_t) {
    if (log.size() >= 12) own.loop.Quit();
  };
  own.loop.Run();
  // One message of each connection is taken per look, so 3 may come before 2; never is an order within one turned.
  EXPECT_TRUE(log.find("1:") < log.find("2:") && log.find("2:") < log.find("4:") && log.find("3:") < log.find("4:"))
      << log;
}

TEST_F(SocketMessageLinkTest, AMalformedPacketEndsItsConnectionAndNothingElse) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  const auto packet = [](std::uint32_t length, std::string text, std::string_view end = {"\0", 1}) {
    return std::string("\1\0\0\0", 4).append(reinterpret_cast<const char*>(&length), 4).append(text).append(end);
  };
  const Descriptor good = RawConnection();
  for (const std::string& bytes :
       {std::string("\1"), packet(0, "", ""), packet(2, "a", ""), packet(3, "a", ""), packet(1, "a"),
        packet(0xFFFFFFFF, "a"), packet(257, std::string(256, 'a')), std::string(100'000, '\0')}) {
    const Descriptor bad = RawConnection();
    Put(bad, bytes);
    Tell(good, 5);
    char answer = 0;
    EXPECT_TRUE(Until([&] { return recv(bad.Get(), &answer, 1, MSG_DONTWAIT) == 0; })) << bytes.size();
    EXPECT_TRUE(Until([&] { return recv(good.Get(), &answer, 1, MSG_DONTWAIT) == 1; }));
    EXPECT_EQ(std::exchange(receiver.log, ""), "5: ");
  }
}

TEST_F(SocketMessageLinkTest, FindsTheNextProcessBehindAHandleWhenTheKeptConnectionIsDead) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  // What a process that was killed leaves behind.
  const sockaddr_un stale = LinkAddress(LinkPath(kOther));
  ASSERT_EQ(bind(Descriptor(::socket(AF_UNIX, SOCK_SEQPACKET, 0)).Get(), reinterpret_cast<const sockaddr*>(&stale),
                 sizeof stale),
            0);
  Program unaware;  // its loop never runs, so it is not told of a connection's end
  receiver.onMessage = [&](std::uint32_t) {
    EXPECT_TRUE(link.Send(kOther, 1, ""));
    EXPECT_TRUE(unaware.link.Send(kOther, 99, ""));
  };
  for (int round = 0; round < 2; ++round) {
    Beside([](Program& other) {
      other.receiver.onMessage = [&](std::uint32_t word) {
        if (word == 99) other.loop.Quit();
      };
      ASSERT_TRUE(other.link.Open(kOther, other.receiver));
      EXPECT_TRUE(other.link.Send(kOwn, 2, ""));
      other.loop.Run();
    });
  }
  EXPECT_FALSE(link.Send(kOther, 1, ""));
}

TEST_F(SocketMessageLinkTest, WhatASlowProcessGotIsNotSentAgainAndItsLateAnswerCountsForNoOther) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  Program slow;
  ASSERT_TRUE(slow.link.Open(kOther, slow.receiver));
  const auto sendsAndWaits = [&](std::uint32_t word) {
    const auto start = std::chrono::steady_clock::now();
    return link.Send(kOther, word, "") && std::chrono::steady_clock::now() - start >= 1990ms;
  };
  const auto slowAnswers = [&] {
    for (int i = 0; i < 3; ++i)
      slow.loop.RunPending();
  };
  EXPECT_TRUE(sendsAndWaits(1));
  slowAnswers();
  EXPECT_TRUE(sendsAndWaits(2));
  slowAnswers();
  reactor.RunPending();
  slowAnswers();
  EXPECT_EQ(slow.receiver.log, "1: 2: ");
  EXPECT_TRUE(sendsAndWaits(3));
  slow.link.Close();  // without having read the third
  EXPECT_FALSE(link.Send(kOther, 4, ""));
}

TEST_F(SocketMessageLinkTest, OneHandleHasOneOwnerUntilAnotherTakesOver) {
  Recorder secondReceiver;
  SocketMessageLink second(reactor);
  EXPECT_FALSE(link.Open(0, receiver));
  ASSERT_TRUE(link.Open(kOwn, receiver));
  EXPECT_FALSE(second.Open(kOwn, secondReceiver));
  EXPECT_TRUE(link.OwnsEndpoint() && !second.OwnsEndpoint());
  ASSERT_TRUE(second.Open(kOwn, secondReceiver, true));
  EXPECT_FALSE(link.OwnsEndpoint());
  link.Close();  // the name is not its own any more
  EXPECT_TRUE(second.OwnsEndpoint());
  EXPECT_FALSE(link.Open(kOwn, receiver));
  Beside([](Program& other) { EXPECT_TRUE(other.link.Send(kOwn, 7, "")); });
  EXPECT_TRUE(Until([&] { return secondReceiver.log == "7: gone "; })) << secondReceiver.log;
  second.Close();
  EXPECT_TRUE(link.Open(kOwn, receiver));
}

TEST_F(SocketMessageLinkTest, OfManyThatOpenAtTheSameMomentOneSucceeds) {
  constexpr int kRounds = 100;
  std::atomic<int> opened = 0;
  std::barrier together(8);
  std::vector<std::jthread> copies;
  for (int i = 0; i < 8; ++i) {
    copies.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) {
        Program own;
        together.arrive_and_wait();
        if (own.link.Open(kOwn, own.receiver)) ++opened;
        together.arrive_and_wait();
      }
    });
  }
  copies.clear();
  EXPECT_EQ(opened, kRounds);
}

TEST_F(SocketMessageLinkTest, ItsNameIsMadeAgainWhenTheFolderOfTheLinksGoesAndComesBack) {
  const TemporaryFolder other;
  const TemporaryVariable temporary("TMPDIR", other.Path());
  ASSERT_TRUE(link.Open(kOwn, receiver));
  const Descriptor kept = RawConnection();
  reactor.RunPending();
  std::filesystem::remove_all(folder.Path());  // the end of the last session
  EXPECT_TRUE(link.OwnsEndpoint());
  reactor.Advance(6s);
  const std::string meanwhile = LinkPath(kOwn);
  EXPECT_TRUE(meanwhile.starts_with(other.Path()) && std::filesystem::exists(meanwhile)) << meanwhile;
  std::filesystem::create_directory(folder.Path());  // the next login
  reactor.Advance(6s);
  EXPECT_FALSE(std::filesystem::exists(meanwhile));
  EXPECT_TRUE(link.OwnsEndpoint());
  EXPECT_EQ(SocketMessageLink(reactor).Open(kOwn, receiver).state, LinkOpening::State::kInUse);
  Tell(kept, 7);
  EXPECT_TRUE(Until([&] { return receiver.log == "7: "; }));
}

TEST(LinkFolderTest, IsPrivateOrRefused) {
  const TemporaryFolder top;
  const std::string inside = top / "vorlix", moved = top / "moved";
  const TemporaryVariable runtime("XDG_RUNTIME_DIR", top.Path());
  EXPECT_EQ(LinkFolder(), inside);
  using std::filesystem::perms;
  EXPECT_EQ(std::filesystem::status(inside).permissions(), perms::owner_all);
  std::filesystem::permissions(inside, perms::owner_all | perms::group_read);
  EXPECT_EQ(LinkFolder(), "");
  std::filesystem::permissions(inside, perms::owner_all);
  std::filesystem::rename(inside, moved);
  std::filesystem::create_directory_symlink(moved, inside);
  EXPECT_EQ(LinkPath(1), "");

  const TemporaryVariable temporary("TMPDIR", top.Path());
  const TemporaryVariable without("XDG_RUNTIME_DIR", "");
  EXPECT_EQ(LinkFolder(), top / "vorlix-" + std::to_string(geteuid()));
}

}  // namespace
}  // namespace vorlix
