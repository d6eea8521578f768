// The window of the blacklist with the input of one entry. It draws what fEditBlacklist says and passes gestures on.
#pragma once

#include <memory>

#include "desktop/dialogs/DialogPlace.h"
#include "screens/fEditBlacklist.h"

namespace vorlix {

class BlacklistWindow : public fEditBlacklistView {
 public:
  explicit BlacklistWindow(DialogPlace place);
  ~BlacklistWindow() override;
  BlacklistWindow(const BlacklistWindow&) = delete;
  BlacklistWindow& operator=(const BlacklistWindow&) = delete;

  // Once, before Open(); must outlive what the user does in the window.
  void Attach(fEditBlacklist& presenter) { presenter_ = &presenter; }
  // Opens the window, or brings it to the front.
  void Open();
  // Also done when the window closes.
  void KeepPlace();

  void ShowLines(const std::vector<Line>& lines, int selected) override;
  void OpenInput(const std::string& text, int index) override;
  void Close() override;

 private:
  class Window;

  DialogPlace place_;
  fEditBlacklist* presenter_ = nullptr;
  std::unique_ptr<Window> window_;  // while it is open or was once
};

}  // namespace vorlix
