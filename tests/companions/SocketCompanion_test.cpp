#include "companions/shared/SocketCompanion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeMessageLink.h"
#include "fakes/FakeTcpClient.h"
#include "fakes/ManualReactor.h"

namespace vorlix {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr WindowHandle kMain = 4711;

class SocketCompanionTest : public testing::Test {
 protected:
  SocketCompanionTest() {
    link.onSend = [this](const FakeMessageLink::Message& message) {
      const std::uint32_t command = message.word - 16;
      if (command == 2) link.Deliver(message.word, std::to_string(kMain));
      if (command != 2) told.push_back(std::to_string(command) + message.text);
      return message.target == kMain;
    };
    EXPECT_TRUE(companion.Start({"fritz.box", 1012}));
  }

  // What the main program was told since the last call: the command's digit, then the text.
  Texts Told() { return std::exchange(told, {}); }
  // Seconds until the next attempt.
  int Wait() {
    const std::size_t before = client->connects.size();
    for (int seconds = 1; seconds <= 100; ++seconds) {
      reactor.Advance(1s);
      if (client->connects.size() > before) return seconds;
    }
    return -1;
  }

  ManualReactor reactor;
  FakeMessageLink link;
  FakeTcpClient* client = nullptr;
  Texts told, debugged;
  SocketCompanion companion{{reactor, link,
                             [this](TcpClient::Listener& listener) {
                               auto made = std::make_unique<FakeTcpClient>(listener);
                               client = made.get();
                               return made;
                             },
                             [this](const std::string& text) { debugged.push_back(text); }},
                            kMain,
                            16,
                            [](const std::string& line) {
                              return Texts(line.starts_with("200") ? 0 : line == "twice" ? 2 : 1, line);
                            }};
};

TEST_F(SocketCompanionTest, TellsEachChangeOfTheConnectionOnceAndDropsTheHalfLineOfALostOne) {
  EXPECT_THAT(client->connects, ElementsAre(FakeTcpClient::Target{"fritz.box", 1012}));
  EXPECT_THAT(Told(), IsEmpty());
  for (int i = 0; i < 3; ++i) {
    client->Drop("refused");
    Wait();
  }
  EXPECT_THAT(Told(), ElementsAre("7"));
  client->AcceptConnection();
  client->Receive("a;RING;0;\r\nb;RI");
  client->Receive("NG;1;\nhalf;RI");
  reactor.Advance(60s);
  client->Drop();
  Wait();
  client->AcceptConnection();
  client->Receive("c;RING;2;\r\n");
  EXPECT_THAT(Told(), ElementsAre("6", "1a;RING;0;", "1b;RING;1;", "7", "6", "1c;RING;2;"));
}

TEST_F(SocketCompanionTest, TriesLessAndLessOftenUntilAConnectionIsOfUse) {
  for (const int expected : {1, 2, 4, 8, 16, 32, 60, 60}) {
    client->Drop("refused");
    EXPECT_EQ(Wait(), expected);
  }
  using Seconds = std::chrono::seconds;
  for (const auto& [lasts, bytes, wait] : {std::tuple{Seconds(1), "", 60},
                                           {Seconds(1), "half;RI", 60},
                                           {Seconds(1), "200 only a greeting\r\n", 60},
                                           {Seconds(10), "", 1},
                                           {Seconds(9), "", 2},
                                           {Seconds(1), "a;RING\n", 1}}) {
    client->AcceptConnection();
    client->Receive(bytes);
    reactor.Advance(lasts);
    client->Drop();
    EXPECT_EQ(Wait(), wait) << lasts.count() << " " << bytes;
  }
}

TEST_F(SocketCompanionTest, HandsOverWhatTheTranslationMakesOfALine) {
  client->AcceptConnection();
  Told();
  client->Receive("200 hello\ntwice\n" + std::string(601, '6') + "\n");
  EXPECT_THAT(Told(), ElementsAre("1twice", "1twice", "1" + std::string(MessageLink::kMostText, '6')));
  EXPECT_THAT(debugged, Contains("not handed over: 200 hello"));
  EXPECT_THAT(debugged, Contains("line: " + std::string(601, '6')));
}

TEST(CompanionArguments, AreAHandleAndPerhapsDebug) {
  const std::pair<std::vector<const char*>, std::string> rows[] = {{{"4711"}, "4711"},
                                                                   {{"4711", "debug"}, "4711 debug"},
                                                                   {{"4711", "x"}, "4711"},
                                                                   {{}, "0"},
                                                                   {{""}, "0"},
                                                                   {{"47x"}, "0"},
                                                                   {{"-1"}, "0"},
                                                                   {{"4294967296"}, "0"}};
  for (auto [words, parsed] : rows) {
    words.insert(words.begin(), "SocketAVM");
    const auto [handle, debug] = ParseCompanionArguments(static_cast<int>(words.size()), words.data());
    EXPECT_EQ(std::to_string(handle) + (debug ? " debug" : ""), parsed);
  }
}

}  // namespace
}  // namespace vorlix
