#include "platform/posix/SocketMessageLink.h"

#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
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

// What another process has.
struct Program {
  PollReactor loop;
  Recorder receiver;
  SocketMessageLink link{loop};
};

// A process of the test's own, which reports by its exit code.
class Child {
 public:
  explicit Child(const std::function<int()>& body) : id_(fork()) {
    if (id_ == 0) _exit(body());
  }
  ~Child() { Kill(); }
  void Kill() {
    if (id_ > 0) kill(id_, SIGKILL);
    Collect(0);
  }
  // -1 as long as it runs.
  int Code() {
    Collect(WNOHANG);
    return id_ > 0 ? -1 : code_;
  }

 private:
  void Collect(int options) {
    int status = 0;
    if (id_ <= 0 || waitpid(id_, &status, options) != id_) return;
    id_ = 0;
    code_ = WIFEXITED(status) ? WEXITSTATUS(status) : 255;
  }

  pid_t id_;
  int code_ = 255;
};

class SocketMessageLinkTest : public testing::Test {
 protected:
  static constexpr WindowHandle kOwn = 4711, kOther = 815;

  bool Until(const std::function<bool()>& holds) { return reactor.RunUntil(holds); }
  int CodeOf(Child& child) {
    Until([&] { return child.Code() >= 0; });
    return child.Code();
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
  // A process with that endpoint, answering until it is killed; a message of its own tells that it is there.
  Child Answering(WindowHandle handle) {
    return Child([handle] {
      Program own;
      if (!own.link.Open(handle, own.receiver) || !own.link.Send(kOwn, 2, std::to_string(handle))) return 1;
      own.loop.Run();
      return 0;
    });
  }

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
  Child sender([] {
    Program own;
    const bool sent = own.link.Send(kOwn, 17, "RING;\xFC") && own.link.Send(kOwn, 0xFFFFFFFF, std::string(300, 'x')) &&
                      own.link.Send(kOwn, 1, std::string("a\0b", 3)) && own.link.Send(kOwn, 2, "");
    return sent && !own.link.Send(kOther, 1, "nobody") ? 0 : 1;
  });
  EXPECT_EQ(CodeOf(sender), 0);
  EXPECT_EQ(receiver.log, "17:RING;\xFC 4294967295:" + std::string(255, 'x') + " 1:a 2: ");
  EXPECT_EQ(access(LinkPath(kOwn).c_str(), F_OK), -1);
}

TEST_F(SocketMessageLinkTest, TwoThatSendAtTheSameMomentDoNotWaitForEachOther) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  Child other([] {
    Program own;
    // Sends from inside the receiver, while that one sends from inside its own.
    own.receiver.onMessage = [&](std::uint32_t word) {
      if (word == 99) return own.loop.Quit();
      if (!own.link.Send(kOwn, word + 1, "")) _exit(2);
    };
    bool sent = own.link.Open(kOther, own.receiver).state == LinkOpening::State::kOpen;
    for (int i = 0; i < 20; ++i)
      sent = sent && own.link.Send(kOwn, 1, "");
    if (sent) own.loop.Run();
    return own.receiver.log.ends_with("99: ") ? 0 : 1;
  });
  int answered = 0, echoes = 0;
  receiver.onMessage = [&](std::uint32_t word) {
    if (word == 1 && link.Send(kOther, 10, "")) ++answered;
    if (word == 11) ++echoes;
  };
  EXPECT_TRUE(Until([&] { return answered == 20 && echoes == 20; })) << receiver.log;
  EXPECT_TRUE(link.Send(kOther, 99, ""));
  EXPECT_EQ(CodeOf(other), 0);
}

TEST_F(SocketMessageLinkTest, WhatArrivesDuringASendComesFromTheLoopInItsOrder) {
  Program own;
  ASSERT_TRUE(own.link.Open(kOwn, own.receiver));
  const std::string& log = own.receiver.log;
  const Descriptor peer = RawConnection();
  own.loop.RunPending();
  Put(peer, LinkPacket(1, "").Bytes());
  Put(peer, LinkPacket(2, "").Bytes());
  EXPECT_TRUE(own.link.Send(kOwn, 3, ""));  // to itself: answered at once as well
  EXPECT_EQ(log, "");
  Put(peer, LinkPacket(4, "").Bytes());
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
  const auto packet = [](std::uint32_t length, std::string text) {
    std::string bytes("\1\0\0\0....", 8);
    std::memcpy(bytes.data() + 4, &length, 4);
    return bytes + text;
  };
  const std::string_view end("\0", 1);
  const Descriptor good = RawConnection();
  for (const std::string& bytes :
       {std::string("\1"), packet(0, ""), packet(2, std::string("a")), packet(1, "a"), packet(3, "a\0"),
        packet(1, std::string("a").append(end)), packet(0xFFFFFFFF, std::string("a").append(end)),
        packet(257, std::string(256, 'a').append(end)), std::string(100'000, '\0')}) {
    const Descriptor bad = RawConnection();
    Put(bad, bytes);
    Put(good, LinkPacket(5, "ok").Bytes());
    char answer = 0;
    EXPECT_TRUE(Until([&] { return recv(bad.Get(), &answer, 1, MSG_DONTWAIT) == 0; })) << bytes.size();
    EXPECT_TRUE(Until([&] { return recv(good.Get(), &answer, 1, MSG_DONTWAIT) == 1; }));
    EXPECT_EQ(std::exchange(receiver.log, ""), "5:ok ");
  }
}

TEST_F(SocketMessageLinkTest, FindsTheNextProcessBehindAHandleWhenTheKeptConnectionIsDead) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  Program unaware;  // its loop never runs, so it is not told of a connection's end
  for (int round = 0; round < 2; ++round) {
    Child other = Answering(kOther);
    ASSERT_TRUE(Until([&] { return receiver.log.find("2:815") != std::string::npos; }));
    EXPECT_TRUE(link.Send(kOther, 1, "") && unaware.link.Send(kOther, 1, "")) << round;
    receiver.log.clear();
    other.Kill();  // leaves its socket file behind, which the next one replaces
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

TEST_F(SocketMessageLinkTest, ADyingProcessGotWhatItHadRead) {
  ASSERT_TRUE(link.Open(kOwn, receiver));
  for (const bool reads : {true, false}) {
    receiver.log.clear();
    Child dying([reads] {
      Program own;
      own.receiver.onMessage = [](std::uint32_t) { _exit(0); };
      if (!own.link.Open(kOther, own.receiver) || !own.link.Send(kOwn, 2, "")) return 1;
      if (reads) own.loop.Run();
      usleep(300'000);
      return 0;
    });
    ASSERT_TRUE(Until([&] { return receiver.log.starts_with("2:"); }));
    EXPECT_EQ(link.Send(kOther, 1, ""), reads);
    EXPECT_EQ(CodeOf(dying), 0);
    Until([&] { return receiver.log.ends_with("gone "); });
  }
}

TEST_F(SocketMessageLinkTest, OneHandleHasOneOwnerUntilAnotherTakesOver) {
  SocketMessageLink second(reactor), third(reactor);
  Recorder secondReceiver;
  EXPECT_FALSE(link.Open(0, receiver));
  ASSERT_TRUE(link.Open(kOwn, receiver));
  EXPECT_FALSE(second.Open(kOwn, secondReceiver));
  EXPECT_TRUE(link.OwnsEndpoint() && !second.OwnsEndpoint());
  ASSERT_TRUE(second.Open(kOwn, secondReceiver, true));
  EXPECT_FALSE(link.OwnsEndpoint());
  link.Close();  // the name is not its own any more
  EXPECT_TRUE(second.OwnsEndpoint());
  EXPECT_FALSE(third.Open(kOwn, receiver));
  Child sender([] { return Program().link.Send(kOwn, 7, "") ? 0 : 1; });
  EXPECT_EQ(CodeOf(sender), 0);
  EXPECT_TRUE(Until([&] { return secondReceiver.log == "7: gone "; })) << secondReceiver.log;
  EXPECT_EQ(receiver.log, "");
  second.Close();
  EXPECT_TRUE(third.Open(kOwn, receiver));
}

TEST_F(SocketMessageLinkTest, OfManyProcessesThatOpenAtTheSameMomentOneSucceeds) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::vector<std::unique_ptr<Child>> children;
  for (int i = 0; i < 8; ++i) {
    children.push_back(std::make_unique<Child>([&] {
      close(ends[1]);
      char none = 0;
      static_cast<void>(!read(ends[0], &none, 1));  // the start: all at once
      const bool opened{link.Open(kOwn, receiver)};
      usleep(300'000);
      if (opened) _exit(link.OwnsEndpoint() ? 10 : 11);
      return 0;
    }));
  }
  close(ends[1]);
  close(ends[0]);
  int owners = 0;
  for (const auto& child : children)
    owners += CodeOf(*child);
  EXPECT_EQ(owners, 10);
  EXPECT_TRUE(link.Open(kOwn, receiver));  // the owner is gone without having cleaned up
}

TEST_F(SocketMessageLinkTest, ItsNameIsMadeAgainWhenTheFolderOfTheLinksGoesAndComesBack) {
  const TemporaryFolder other;
  const TemporaryVariable temporary("TMPDIR", other.Path());
  ASSERT_TRUE(link.Open(kOwn, receiver));
  const std::string first = LinkPath(kOwn);
  const Descriptor kept = RawConnection();
  reactor.RunPending();
  std::filesystem::remove_all(folder.Path());  // the end of the last session
  EXPECT_TRUE(link.OwnsEndpoint());
  reactor.Advance(6s);
  const std::string second = LinkPath(kOwn);
  EXPECT_NE(second, first);
  EXPECT_TRUE(std::filesystem::exists(second));
  std::filesystem::create_directory(folder.Path());  // the next login
  reactor.Advance(6s);
  EXPECT_FALSE(std::filesystem::exists(second));
  EXPECT_TRUE(link.OwnsEndpoint());
  EXPECT_EQ(SocketMessageLink(reactor).Open(kOwn, receiver).state, LinkOpening::State::kInUse);
  Put(kept, LinkPacket(7, "").Bytes());
  EXPECT_TRUE(Until([&] { return receiver.log == "7: "; }));
}

TEST_F(SocketMessageLinkTest, TellsWhyAnEndpointCannotBeMade) {
  const TemporaryVariable tooLong("XDG_RUNTIME_DIR", folder.Path() + std::string(100, '/'));
  const LinkOpening opening = link.Open(kOwn, receiver);
  EXPECT_EQ(opening.state, LinkOpening::State::kFailed);
  EXPECT_TRUE(opening.reason.ends_with("/vorlix: File name too long")) << opening.reason;
}

TEST(LinkFolderTest, IsPrivateOrRefused) {
  const TemporaryFolder top;
  const std::string inside = top / "vorlix";
  const TemporaryVariable runtime("XDG_RUNTIME_DIR", top.Path());
  EXPECT_EQ(LinkFolder(), inside);
  struct stat info {};
  ASSERT_EQ(stat(inside.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0700u);
  chmod(inside.c_str(), 0750);
  EXPECT_EQ(LinkFolder(), "");
  std::filesystem::rename(inside, top / "moved");
  chmod((top / "moved").c_str(), 0700);
  ASSERT_EQ(symlink((top / "moved").c_str(), inside.c_str()), 0);
  EXPECT_EQ(LinkFolder(), "");
  EXPECT_EQ(LinkPath(1), "");

  const std::string name = "/vorlix-" + std::to_string(geteuid());
  const TemporaryVariable temporary("TMPDIR", top.Path());
  const TemporaryVariable without("XDG_RUNTIME_DIR", "");
  EXPECT_EQ(LinkFolder(), top.Path() + name);
  const TemporaryVariable tooLong("TMPDIR", top.Path() + std::string(100, '/'));
  EXPECT_EQ(LinkPath(1), "");
}

TEST(MessageLinkTest, AHandleStandsForATextAndIsNeverZeroOrNegative) {
  EXPECT_NE(HandleForText("/home/anna/.local/share/Vorlix"), HandleForText("/home/bert/.local/share/Vorlix"));
  EXPECT_EQ(HandleForText(""), 0x811C9DC5u & 0x7FFFFFFFu);
  EXPECT_EQ(HandleForText("foobar"), 0xBF9CF968u & 0x7FFFFFFFu);
}

}  // namespace
}  // namespace vorlix
