#include "desktop/BarGeometry.h"

#include <gtest/gtest.h>

namespace vorlix {
namespace {

const QRect kArea(0, 30, 1000, 700);  // below a panel

TEST(BarGeometryTest, ADraggedBarIsTakenByNearEdgesAndStaysOnTheScreen) {
  const std::tuple<QPoint, QPoint> rows[] = {
      {{15, 45}, {0, 30}},       {{16, 46}, {16, 46}},   {{590, 685}, {600, 690}},
      {{2000, -500}, {600, 30}}, {{-50, 900}, {0, 690}},
  };
  for (const auto& [dragged, taken] : rows)
    EXPECT_EQ(Snapped(QRect(dragged, QSize(400, 40)), kArea).topLeft(), taken) << dragged.x();
}

TEST(BarGeometryTest, GrowsUpwardsOnTheLowerEdgeAndDownwardsElsewhere) {
  const QRect below(100, 690, 400, 40), free(100, 300, 400, 40);
  EXPECT_EQ(WithHeight(below, 72, kArea), QRect(100, 658, 400, 72));
  EXPECT_EQ(WithHeight(WithHeight(below, 72, kArea), 40, kArea), below);
  EXPECT_EQ(WithHeight(free, 72, kArea), QRect(100, 300, 400, 72));
  EXPECT_EQ(WithHeight(free, 5000, kArea), QRect(100, 30, 400, 700));
  EXPECT_EQ(WithHeight(below, 72, QRect()), QRect(100, 690, 400, 72));
}

TEST(BarGeometryTest, KeepsToTheEdgesThatItTouchedWhenTheScreenChanges) {
  const QRect smaller(0, 30, 800, 570);
  const std::tuple<QRect, QRect, QRect> rows[] = {
      {{600, 690, 400, 40}, smaller, {400, 560, 400, 40}},
      {{0, 30, 400, 40}, smaller, {0, 30, 400, 40}},
      {{500, 300, 400, 40}, smaller, {400, 300, 400, 40}},
      {{0, 690, 1000, 40}, smaller, {0, 560, 800, 40}},
      {{600, 690, 400, 40}, {2000, 0, 3000, 900}, {4600, 860, 400, 40}},
      {{600, 690, 400, 40}, QRect(), {600, 690, 400, 40}},
  };
  for (const auto& [bar, area, expected] : rows)
    EXPECT_EQ(Followed(bar, kArea, area), expected) << bar.x() << " " << area.width();
}

TEST(BarGeometryTest, IsMadeWiderAtItsFreeEndOnly) {
  const QRect left(0, 300, 400, 40), right(600, 300, 400, 40);
  const std::tuple<QRect, int, QRect> rows[] = {
      {left, 100, {0, 300, 500, 40}},     {left, -300, {0, 300, 240, 40}},   {left, 5000, {0, 300, 1000, 40}},
      {right, -100, {500, 300, 500, 40}}, {right, 300, {760, 300, 240, 40}},
  };
  for (const auto& [bar, way, expected] : rows)
    EXPECT_EQ(Sized(bar, way, 240, kArea), expected) << bar.x() << " " << way;
}

TEST(BarGeometryTest, HiddenTheGripStaysAtTheOuterEdge) {
  EXPECT_EQ(StripOf(QRect(600, 690, 400, 40), 12, kArea), QRect(988, 690, 12, 40));
  EXPECT_EQ(StripOf(QRect(0, 300, 400, 40), 12, kArea), QRect(0, 300, 12, 40));
}

}  // namespace
}  // namespace vorlix
