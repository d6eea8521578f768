#include "desktop/StoredPlaces.h"

#include <algorithm>

#include "screens/Screen.h"

namespace vorlix {
namespace {

struct Members {
  std::string& screen;
  int &left, &top, &leftOnScreen, &topOnScreen, &width;
};

Members MembersOf(Settings& settings, PlacedWindow window) {
  auto& all = settings.Dimensions;
  if (window == PlacedWindow::kDisplay) {
    return {all.DisplayScreenName, all.DisplayLeft,  all.DisplayTop,
            all.DisplayLeftMM,     all.DisplayTopMM, all.DisplayWidth};
  }
  return {all.MaxiDispScreenName, all.MaxiDispLeft,  all.MaxiDispTop,
          all.MaxiDispLeftMM,     all.MaxiDispTopMM, all.MaxiDispWidth};
}

// No screen is wider; sums of what somebody has typed into the file must not overflow.
int Held(int points) {
  return std::clamp(points, -100'000, 100'000);
}

}  // namespace

std::optional<WindowPlace> StoredPlaces::Load(PlacedWindow window) {
  const Members place = MembersOf(settings_, window);
  if (place.screen == "0" || place.screen.empty()) return std::nullopt;
  return WindowPlace{
      place.screen,     Held(place.left), Held(place.top), Held(place.leftOnScreen), Held(place.topOnScreen),
      Held(place.width)};
}

void StoredPlaces::Save(PlacedWindow window, const WindowPlace& place) {
  const Members members = MembersOf(settings_, window);
  members.screen = place.screen;
  members.left = place.left;
  members.top = place.top;
  members.leftOnScreen = place.leftOnScreen;
  members.topOnScreen = place.topOnScreen;
  members.width = place.width;
}

}  // namespace vorlix
