#include "screens/fDisplayMaxi.h"

#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using std::chrono::seconds;

class fDisplayMaxiTest : public testing::Test, public DisplayRoom<RecordingBar> {};

TEST_F(fDisplayMaxiTest, ShowsTheCallAndItsEnd) {
  settings.General.MaxiDisplayView = true;
  settings.MaxiDisplay.Alpha = 150;
  world.pictures["0171555"] = "/mine.jpg";
  const auto call = Ring(1, "0171555", "Meier");
  EXPECT_EQ(maxi.content.name + "|" + maxi.content.number + "|" + maxi.content.location + "|" + maxi.content.MSNAlias +
                "|" + maxi.content.picture,
            "Meier|0171555|Ort|Praxis|/mine.jpg");
  EXPECT_EQ(maxi.content.look.alpha, 150);
  screen.maxi.SetEndMark(EndMark::kBlocked);
  screen.maxi.Hide();
  EXPECT_TRUE(maxi.isOpen);  // another call has ended
  EXPECT_EQ(maxi.content.endMark, EndMark::kNone);
  End(*call);
  screen.maxi.SetEndMark(EndMark::kBlocked);
  screen.maxi.SetEndMark(EndMark::kEnded);  // of another call
  EXPECT_EQ(maxi.content.endMark, EndMark::kBlocked);
  screen.maxi.Hide();
  EXPECT_FALSE(maxi.isOpen || screen.maxi.IsVisible());
  screen.maxi.SetEndMark(EndMark::kEnded);
  EXPECT_FALSE(maxi.isOpen);
  EXPECT_TRUE(screen.maxi.IsOpen());
  screen.maxi.Closed();
  EXPECT_FALSE(screen.maxi.IsOpen());
}

TEST_F(fDisplayMaxiTest, ClosesByItsTimeOnlyWhereThatIsWanted) {
  settings.General.MaxiDisplayView = true;
  Ring(1, "0171555");
  loop.Advance(seconds(100));
  EXPECT_TRUE(maxi.isOpen);
  settings.MaxiDisplay.HideByTime = true;
  Ring(2, "0301234");
  loop.Advance(seconds(9));
  EXPECT_TRUE(maxi.isOpen);
  loop.Advance(seconds(1));
  EXPECT_FALSE(maxi.isOpen);
}

}  // namespace
}  // namespace vorlix
