#include "reactions/SoundPlayer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/FakeSoundDevice.h"
#include "fakes/MemoryFileStore.h"

namespace vorlix {
namespace {

class SoundPlayerTest : public testing::Test {
 protected:
  SoundPlayerTest() {
    store.AddFolder("/program");
    store.AddFile("/data/data/callersound/0171.wav", "x");
    store.AddFile("/data/data/callersound/Unbekannt.wav", "x");
    store.AddFile("/data/data/0172.wav", "x");
  }
  void Ring(int second) {
    auto call = std::make_shared<oDataCall>();
    call->DataNumber(call->Key = "0171");
    call->CallDateTime = DateTime::FromCivil(2024, 1, 1, 8, 0, second);
    state.ActiveCallList.Clear();
    state.ActiveCallList.Add(call);
  }

  MemoryFileStore store;
  Folders folders{store, {.programFolder = "/program", .dataHome = "", .home = "", .chosenFolder = "/data"}};
  PipelineState state;
  FakeSoundDevice device;
  SoundPlayer player{{device, store, folders, state, [](const std::string& path) { return "/program/" + path; },
                      [](const std::string& number) { return number == "0171"; }}};
};

TEST_F(SoundPlayerTest, ACallersOwnSoundIsPlayedToItsEndOnceForEachCall) {
  Ring(1);
  EXPECT_TRUE(player.PlayPersonal("0171") && player.PlayPersonal("0171"));
  device.isPlaying = false;
  EXPECT_FALSE(player.PlayPersonal("0171"));
  Ring(30);
  EXPECT_TRUE(player.PlayPersonal("0171"));
  EXPECT_EQ(device.played.size(), 2U);
  player.Play("");
  player.Play("ring.wav");
  EXPECT_EQ(device.played.size(), 3U);
  EXPECT_EQ(device.played.back(), "/program/ring.wav");
}

TEST_F(SoundPlayerTest, OnlyTheDigitsOfANumberNameAFile) {
  for (const char* number : {"", "0172", "../0172", "Unbekannt", "0171.wav"})
    EXPECT_FALSE(player.PlayPersonal(number) || player.HaveCallerSoundFile(number)) << number;
  EXPECT_TRUE(player.HaveCallerSoundFile("0171"));
}

}  // namespace
}  // namespace vorlix
