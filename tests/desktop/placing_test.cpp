#include "desktop/placing.h"

#include <fstream>

#include <gtest/gtest.h>

#include "fakes/OffscreenApplication.h"
#include "fakes/TemporaryFolder.h"

namespace vorlix {
namespace {

// Monitor A had 1920 points when the window was left in its lower right corner, and B has moved up since.
TEST(PlacingTest, AWindowStaysOnItsMonitorWhateverHasBecomeOfThat) {
  const TemporaryFolder folder;
  std::ofstream(folder / "screens.json") << R"({"screens": [
      {"name": "A", "x": 0, "y": 0, "width": 1280, "height": 720, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
      {"name": "B", "x": 1280, "y": 0, "width": 1920, "height": 1080, "logicalDpi": 96, "logicalBaseDpi": 96,
       "dpr": 1}]})";
  const OffscreenApplication application("offscreen:configfile=" + (folder / "screens.json"));
  const QRect a(0, 0, 1280, 720), b(1280, 0, 1920, 1080);
  const QPoint onB(1600, 1060);
  EXPECT_EQ(AreaOf("A", onB), a);
  EXPECT_EQ(AreaOf("gone", onB), b);
  EXPECT_EQ(AreaAt({-500, 300}), a);  // the nearest
  EXPECT_EQ(AreaAt({1900, 5000}), b);
  EXPECT_EQ(CornerOf({"B", 1, 2, 30, 40, 640}), QPoint(1310, 40));
  EXPECT_EQ(CornerOf({"gone", 1, 2, 30, 40, 640}), QPoint(1, 2));
}

}  // namespace
}  // namespace vorlix
