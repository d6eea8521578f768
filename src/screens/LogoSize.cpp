#include "screens/LogoSize.h"

#include <algorithm>
#include <cmath>

namespace vorlix {

PictureSize LogoSize(PictureSize picture, PictureSize space) {
  if (picture.width <= space.width && picture.height <= space.height) return picture;
  if (space.width <= 0 || space.height <= 0) return {};
  const double overhang =
      std::max(double(picture.width) / double(space.width), double(picture.height) / double(space.height));
  const auto scaled = [&](int side) { return std::max(1, static_cast<int>(std::lround(double(side) / overhang))); };
  return {scaled(picture.width), scaled(picture.height)};
}

}  // namespace vorlix
