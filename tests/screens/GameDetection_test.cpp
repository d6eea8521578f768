#include "screens/GameDetection.h"

#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

class GameDetectionTest : public testing::Test, public DisplayRoom<RecordingBar> {};

TEST_F(GameDetectionTest, OnlyAFullScreenProgramWithAGamesLibraryIsAGame) {
  PutGameInFront();
  EXPECT_TRUE(screen.games.fAnzeigeVerboten());
  const auto game = world.foreground;
  const auto isGame = [&](auto change) {
    world.foreground = game;
    change();
    return screen.games.fAnzeigeVerboten();
  };
  EXPECT_FALSE(isGame([&] { world.foreground.fillsScreen = false; }));
  EXPECT_FALSE(isGame([&] { world.foreground.isDesktop = true; }));
  EXPECT_FALSE(isGame([&] { world.foreground.modules = {"/usr/lib/libm.so", "xd3d9.dll", ""}; }));
  EXPECT_TRUE(isGame([&] { settings.DirectX.Moduls = "a.so; D3D9.dll ;"; }));
  EXPECT_FALSE(isGame([&] { settings.General.NoViewGame = false; }));
}

}  // namespace
}  // namespace vorlix
