#include "screens/fDisplayMaxi.h"

#include <gtest/gtest.h>

#include "fakes/DisplayRoom.h"

namespace vorlix {
namespace {

using std::chrono::seconds;

class fDisplayMaxiTest : public testing::Test, public DisplayRoom<RecordingBar> {
 protected:
  fDisplayMaxiTest() { settings.General.MaxiDisplayView = true; }
};

TEST_F(fDisplayMaxiTest, ShowsTheCallAndItsEnd) {
  world.pictures["0171555"] = "/mine.jpg";
  const auto call = Ring(1, "0171555", "Meier");
  const MaxiContent& now = maxi.content;
  EXPECT_EQ(now.name + now.number + now.location + now.MSNAlias + now.picture, "Meier0171555OrtPraxis/mine.jpg");
  screen.maxi.SetEndMark(EndMark::kBlocked);
  screen.maxi.Hide();
  EXPECT_TRUE(maxi.isOpen && now.endMark == EndMark::kNone);  // another call has ended
  End(*call);
  screen.maxi.SetEndMark(EndMark::kBlocked);
  screen.maxi.SetEndMark(EndMark::kEnded);  // of another call
  EXPECT_EQ(now.endMark, EndMark::kBlocked);
  screen.maxi.Hide();
  EXPECT_FALSE(maxi.isOpen || screen.maxi.IsVisible());
  screen.maxi.SetEndMark(EndMark::kEnded);
  EXPECT_TRUE(!maxi.isOpen && screen.maxi.IsOpen());
  screen.maxi.Closed();
  EXPECT_FALSE(screen.maxi.IsOpen());
}

TEST_F(fDisplayMaxiTest, ClosesByItsTimeOnlyWhereThatIsWanted) {
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
