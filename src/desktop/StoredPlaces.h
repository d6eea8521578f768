// The places of bar and large window in the settings.
#pragma once

#include "desktop/WindowPlaces.h"

namespace vorlix {

struct Settings;

class StoredPlaces : public WindowPlaces {
 public:
  // The settings must outlive the object; who saves them is not its business.
  explicit StoredPlaces(Settings& settings) : settings_(settings) {}

  std::optional<WindowPlace> Load(PlacedWindow window) override;
  void Save(PlacedWindow window, const WindowPlace& place) override;

 private:
  Settings& settings_;
};

}  // namespace vorlix
