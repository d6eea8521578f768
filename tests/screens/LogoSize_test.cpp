#include "screens/LogoSize.h"

#include <gtest/gtest.h>

namespace vorlix {
namespace {

TEST(LogoSizeTest, APictureThatIsTooLargeIsScaledByItsLargerOverhang) {
  const std::pair<PictureSize, PictureSize> rows[] = {{{40, 20}, {40, 20}},
                                                      {{100, 40}, {100, 40}},
                                                      {{200, 40}, {100, 20}},
                                                      {{200, 160}, {50, 40}},
                                                      {{5000, 1}, {100, 1}}};
  for (const auto& [picture, shown] : rows)
    EXPECT_EQ(LogoSize(picture, {100, 40}), shown) << picture.width;
}

}  // namespace
}  // namespace vorlix
