#include "platform/posix/PosixTcpClient.h"

#include <functional>
#include <map>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "fakes/Loopback.h"
#include "fakes/ManualReactor.h"
#include "platform/posix/TcpServer.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;

class ClientLog : public TcpClient::Listener {
 public:
  void OnConnected() override { Note("connected "); }
  void OnData(std::string_view bytes) override { Note(std::string(bytes)); }
  void OnClosed(const std::string& reason) override { Note("[" + reason + "]"); }

  std::string log;
  std::function<void()> onEvent;

 private:
  void Note(const std::string& text) {
    log += text;
    if (onEvent) onEvent();
  }
};

class ServerLog : public TcpServer::Listener {
 public:
  void OnClient(TcpServer::Client client) override { last = client; }
  void OnData(TcpServer::Client, std::string_view bytes) override { received += bytes; }
  void OnGone(TcpServer::Client) override { ++gone; }

  TcpServer::Client last = 0;
  std::string received;
  int gone = 0;
};

class PosixTcpClientTest : public testing::Test {
 protected:
  bool Until(const std::function<bool()>& holds) { return reactor.RunUntil(holds); }
  std::string Peer() const { return "127.0.0.1:" + std::to_string(server.Port()); }
  // What the listener heard since the last call, as soon as it is anything.
  std::string Heard() {
    EXPECT_TRUE(Until([&] { return !listener.log.empty(); }));
    return std::exchange(listener.log, "");
  }
  void ConnectToServer(const std::string& host = "127.0.0.1") {
    client->Connect(host, server.Port());
    EXPECT_EQ(listener.log, "");  // the result comes later, from the loop
    EXPECT_TRUE(Until([&] { return listener.log == "connected " && server.ClientCount() > 0; })) << listener.log;
    listener.log.clear();
  }
  static bool HasChildren() { return waitpid(-1, nullptr, WNOHANG) >= 0; }

  ManualReactor reactor;
  ServerLog serverListener;
  TcpServer server{reactor, serverListener};
  ClientLog listener;
  std::unique_ptr<PosixTcpClient> client = std::make_unique<PosixTcpClient>(reactor, listener);
};

TEST_F(PosixTcpClientTest, CarriesBytesBothWaysMoreThanTheSystemTakesAtOnce) {
  ASSERT_TRUE(server.Start());
  EXPECT_FALSE(client->Send("too early"));
  ConnectToServer();
  const std::string much(5'000'000, 'm');
  EXPECT_TRUE(client->Send(much));
  EXPECT_TRUE(client->Send("end"));
  EXPECT_TRUE(server.Send(serverListener.last, much));
  EXPECT_TRUE(Until([&] { return serverListener.received.size() == much.size() + 3 && listener.log == much; }));
  EXPECT_EQ(serverListener.received, much + "end");
  client->Close();
  EXPECT_TRUE(Until([&] { return serverListener.gone == 1; }));
  EXPECT_FALSE(client->Send("too late"));
  EXPECT_EQ(listener.log, much);
}

TEST_F(PosixTcpClientTest, TellsHowAttemptsAndConnectionsEndAndTriesAllAddresses) {
  ASSERT_TRUE(server.Start());
  ConnectToServer();
  server.DropAll();
  EXPECT_EQ(Heard(), "[connection to " + Peer() + ": ended by the other side]");
  server.Stop();
  client->Connect("127.0.0.1", server.Port());
  EXPECT_EQ(Heard(), "[connect to " + Peer() + ": Connection refused]");
  // The same port again, on IPv4 alone, while the name may stand for an IPv6 address first.
  ASSERT_TRUE(server.Start());
  ConnectToServer("localhost");
  EXPECT_FALSE(HasChildren());
}

TEST_F(PosixTcpClientTest, ALookUpThatFindsNothingOrIsGivenUpLeavesNoChild) {
  for (const std::string& host : {std::string("no-such-host.invalid"), std::string(), std::string("local\0host", 10)}) {
    client->Connect(host, 1012);
    EXPECT_TRUE(Heard().starts_with("[connect to " + host + ":1012: ")) << host;
    EXPECT_FALSE(HasChildren());
  }
  do {  // until the answer is not there at once
    listener.log.clear();
    client->Connect("slow-host.invalid", 1012);
    reactor.RunPending();
  } while (!listener.log.empty());
  client.reset();
  EXPECT_FALSE(HasChildren());
  reactor.Advance(60s);
  EXPECT_EQ(listener.log, "");
}

TEST_F(PosixTcpClientTest, AnAttemptWithoutAnAnswerEndsAfterTwentySeconds) {
  // A queue that is full leaves further attempts without an answer.
  int port = 0;
  const Descriptor listening = ListenOnLoopback(port, 0);
  std::vector<Descriptor> fillers;
  for (int i = 0; i < 4; ++i) {
    fillers.emplace_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
    static_cast<void>(connect(fillers.back().Get(), Loopback(port).Plain(), sizeof(sockaddr_in)));
  }
  client->Connect("127.0.0.1", static_cast<std::uint16_t>(port));
  reactor.Advance(19s);
  EXPECT_EQ(listener.log, "");
  reactor.Advance(1s);
  EXPECT_TRUE(listener.log.ends_with(": Connection timed out]")) << listener.log;
}

TEST_F(PosixTcpClientTest, TheListenerMayDestroyTheClientOrStartAnewInAnyEvent) {
  ASSERT_TRUE(server.Start());
  for (const auto& [event, cause] : std::map<std::string, std::function<void()>>{
           {"connected", [] {}},
           {"data", [&] { server.SendToAll("data"); }},
           {"[connection to", [&] { server.DropAll(); }},
       }) {
    listener.log.clear();
    listener.onEvent = [&, &awaited = event] {
      if (listener.log.find(awaited) != std::string::npos) client.reset();
    };
    client = std::make_unique<PosixTcpClient>(reactor, listener);
    client->Connect("127.0.0.1", server.Port());
    EXPECT_TRUE(Until([&] { return client == nullptr || server.ClientCount() > 0; }));
    cause();
    EXPECT_TRUE(Until([&] { return client == nullptr; })) << listener.log;
    server.DropAll();
  }
  listener.log.clear();
  listener.onEvent = [&] {
    if (listener.log.ends_with(']')) client->Connect("127.0.0.1", server.Port());
  };
  client = std::make_unique<PosixTcpClient>(reactor, listener);
  ConnectToServer();
  server.DropAll();
  EXPECT_TRUE(Until([&] { return listener.log.ends_with("]connected "); })) << listener.log;
}

}  // namespace
}  // namespace vorlix
