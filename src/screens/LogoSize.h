// How large a picture is shown in the place that a line has for it, where it stands in the middle.
#pragma once

namespace vorlix {

struct PictureSize {
  int width = 0, height = 0;
  friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

// A picture that fits keeps its own size, a larger one is scaled by its larger overhang and keeps the
// ratio of its sides. No side becomes less than one point.
PictureSize LogoSize(PictureSize picture, PictureSize space);

}  // namespace vorlix
