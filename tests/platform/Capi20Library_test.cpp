#include "platform/posix/Capi20Library.h"

#include "fakes/CapiMachine.h"

namespace vorlix {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr const char* kListen = "1a 00 07 00 05 80 01 80 01 00 00 00 7f 00 00 00 72 00 07 1c 00 00 00 00 00 00";
constexpr const char* kListenConfirmation = "0e 00 07 00 05 81 01 80 01 00 00 00 00 00";
constexpr const char* kDisconnect = "0e 00 07 00 04 82 03 80 01 01 00 00 90 34";

TEST(Capi20LibraryAbsent, WithoutTheLibraryNothingIsThere) {
  for (const char* file : {"libthere-is-none.so.3", "libm.so.6"}) {
    Capi20Library driver(file);
    std::uint32_t applId = 7;
    std::string text = "x";
    EXPECT_FALSE(driver.IsDLLAvailable());
    for (const std::uint32_t code : {driver.CAPI_INSTALLED(), driver.CAPI_REGISTER({}, applId),
                                     driver.CAPI_GET_MESSAGE(1, text), driver.CAPI_PUT_MESSAGE(1, "x")})
      EXPECT_EQ(code, kCapiNotInstalled);
    EXPECT_TRUE(applId == 0 && text.empty());
    driver.StartAsking();
    EXPECT_FALSE(driver.HasAnswered());
  }
}

class Capi20LibraryTest : public CapiMachine {
 protected:
  void TearDown() override {
    if (applId != 0) driver.CAPI_RELEASE(applId);
  }

  std::uint32_t Register() { return driver.CAPI_REGISTER({3072, 2, 7, 2048}, applId); }
  std::uint32_t Listen() { return driver.CAPI_PUT_MESSAGE(applId, fakes::FromHex(kListen)); }
  static bool Until(const std::function<bool()>& holds, milliseconds limit = std::chrono::seconds(10)) {
    const auto end = steady_clock::now() + limit;
    do {
      if (holds()) return true;
      std::this_thread::sleep_for(milliseconds(1));
    } while (steady_clock::now() < end);
    return false;
  }
  // Polls until there is something else than nothing.
  std::uint32_t Get(milliseconds limit = std::chrono::seconds(10)) {
    std::uint32_t code = kCapiQueueEmpty;
    Until([&] { return (code = driver.CAPI_GET_MESSAGE(applId, message)) != kCapiQueueEmpty; }, limit);
    return code;
  }
  std::string NextMessage() { return Get() == kCapiOk ? fakes::ToHex(message) : "none"; }

  std::uint32_t applId = 0;
  std::string message;
};

TEST_F(Capi20LibraryTest, TalksToADriver) {
  EXPECT_EQ(driver.CAPI_INSTALLED(), kCapiOk);
  CapiVersion version{};
  std::string maker;
  CapiProfile profile{};
  EXPECT_EQ(driver.CAPI_GET_VERSION(version) | driver.CAPI_GET_MANUFACTURER(maker), kCapiOk);
  EXPECT_TRUE(version[0] == 2 && !maker.empty());
  ASSERT_EQ(Register(), kCapiOk);
  EXPECT_EQ(applId, 7U);
  EXPECT_EQ(driver.CAPI_GET_PROFILE(profile, 1), kCapiOk);
  EXPECT_TRUE(profile[0] == 1 && profile[2] == 2);
  EXPECT_EQ(driver.CAPI_GET_MESSAGE(applId, message), kCapiQueueEmpty);
  EXPECT_EQ(Listen(), kCapiOk);
  EXPECT_EQ(server.Next(), kListen);
  EXPECT_EQ(NextMessage(), kListenConfirmation);
  EXPECT_EQ(driver.CAPI_RELEASE(applId), kCapiOk);
  EXPECT_EQ(driver.CAPI_GET_MESSAGE(applId, message), kCapiIllegalApplication);
}

TEST_F(Capi20LibraryTest, AMessageInPiecesIsWaitedForWithoutStandingStill) {
  ASSERT_EQ(Register(), kCapiOk);
  const std::string frame = std::string("\x80\x0e\0", 3) + fakes::FromHex(kDisconnect);
  server.SayBytes(frame.substr(0, 9));
  EXPECT_EQ(Get(milliseconds(100)), kCapiQueueEmpty);
  EXPECT_EQ(Listen(), kCapiOk);
  server.SayBytes(frame.substr(9) + frame);
  EXPECT_EQ(NextMessage(), kDisconnect);
  EXPECT_EQ(server.Next(), kListen) << "sent behind it";
  EXPECT_EQ(NextMessage(), kDisconnect);
  EXPECT_EQ(NextMessage(), kListenConfirmation);

  server.SayBytes(frame.substr(0, 5));
  EXPECT_EQ(Get(), kCapiIllegalApplication) << "the rest never comes";
  EXPECT_EQ(driver.CAPI_RELEASE(applId), kCapiOk);
  EXPECT_EQ(Register(), kCapiOk);
}

TEST_F(Capi20LibraryTest, ALengthBeyondTheMessageReadsNothingBeyondTheRoomAndOneBeyondAllRoomEndsTheRegistration) {
  ASSERT_EQ(Register(), kCapiOk);
  server.SayBytes(std::string("\x80\x0c\0", 3) + fakes::FromHex("ff ff 07 00 04 82 03 80 01 01 00 00"));
  EXPECT_EQ(Get(), kCapiOk);
  EXPECT_EQ(message.size(), CapiDriver::kLongestMessage);
  server.SayBytes("\x80\x60\xea" + std::string(60000, '\x60'));
  EXPECT_EQ(Get(), kCapiIllegalApplication);
  EXPECT_TRUE(message.empty());
}

TEST_F(Capi20LibraryTest, AServerMayGoAndComeBack) {
  ASSERT_EQ(Register(), kCapiOk);
  server.Stop();
  EXPECT_EQ(Get(), kCapiIllegalApplication);
  for (int i = 0; i < 3; ++i)
    Listen();  // no signal ends the program
  driver.CAPI_RELEASE(applId);
  driver.StartAsking();
  std::this_thread::sleep_for(milliseconds(100));
  EXPECT_FALSE(driver.HasAnswered());
  EXPECT_EQ(Register(), kCapiNotInstalled);

  server.Start();
  driver.StartAsking();
  EXPECT_TRUE(Until([&] { return driver.HasAnswered(); }));
  server.Stop();  // the connection for profiles is dead again
  server.Start();
  EXPECT_EQ(Register(), kCapiOk);
  CapiProfile profile{};
  EXPECT_EQ(driver.CAPI_GET_PROFILE(profile, 0), kCapiOk);
}

TEST_F(Capi20LibraryTest, AServerThatSaysNothingCountsAsNotThere) {
  server.answers = false;
  auto begin = steady_clock::now();
  EXPECT_EQ(Register(), kCapiNotInstalled);
  EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(6));
  begin = steady_clock::now();
  EXPECT_EQ(Register(), kCapiNotInstalled);
  EXPECT_EQ(driver.CAPI_INSTALLED(), kCapiNotInstalled);
  driver.StartAsking();
  EXPECT_FALSE(driver.HasAnswered());
  EXPECT_LT(steady_clock::now() - begin, std::chrono::seconds(1));

  server.Stop();  // brings the call back
  server.answers = true;
  server.Start();
  EXPECT_TRUE(Until([&] { return applId != 0 || Register() == kCapiOk; }));
}

}  // namespace
}  // namespace vorlix
