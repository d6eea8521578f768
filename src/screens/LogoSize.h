// How a picture is put into the place that a line has for it.
#pragma once

namespace vorlix {

struct PictureSize {
  int width = 0, height = 0;
  friend bool operator==(const PictureSize&, const PictureSize&) = default;
};

struct PicturePlace {
  int left = 0, top = 0;
  PictureSize size;
  friend bool operator==(const PicturePlace&, const PicturePlace&) = default;
};

// LoadLogoImage: a picture that fits keeps its own size, a larger one is scaled by its larger overhang and keeps the
// ratio of its sides. No side becomes less than one point.
PictureSize LogoSize(PictureSize picture, PictureSize space);
// DisplayLogoPos: in the middle of the space.
PicturePlace LogoPlace(PictureSize picture, PictureSize space);

}  // namespace vorlix
