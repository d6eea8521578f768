// The look of the display: colours, and the pictures by their paths. A view loads what it can and draws its own where a
// path is empty.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vorlix {

// 0xRRGGBB.
using Rgb = std::uint32_t;

struct Skin {
  std::string name;
  bool isClassic = false;  // the classic kind; else the image kind
  bool isNeutral = true;   // nothing of a skin could be used: colours stand for all, no picture is there
  Rgb colorText = 0xFFFFFF;
  Rgb colorMainBack = 0x808080;
  Rgb colorTextBack = 0x808080;
  // Real paths by the picture's name ("display_background", "button_stop", ...).
  std::map<std::string, std::string, std::less<>> pictures;

  // Empty for a picture that this skin has not.
  std::string Picture(std::string_view picture) const {
    const auto found = pictures.find(picture);
    return found == pictures.end() ? std::string() : found->second;
  }
};

}  // namespace vorlix
