// The desktop as the program's screen: bar, tray, large window, dialogs and message boxes, put together.
#pragma once

#include <memory>
#include <string>

#include "desktop/DesktopScreen.h"
#include "desktop/X11ForegroundWindow.h"
#include "desktop/dialogs/AboutBox.h"
#include "desktop/dialogs/AreaCodeDialog.h"
#include "desktop/dialogs/BlacklistWindow.h"
#include "desktop/dialogs/FirstStartDialog.h"
#include "desktop/dialogs/MessageBoxes.h"
#include "desktop/dialogs/SimulationDialog.h"
#include "screens/DoubleItemsQuestion.h"
#include "screens/Screen.h"
#include "screens/fEditBlacklist.h"

namespace vorlix {

class DesktopHost : public Screen {
 public:
  // The clock must outlive the object; the folder holds the program's icons, as a real path; `modules` tells a game.
  DesktopHost(const Clock& clock, const std::string& iconFolder, X11ForegroundWindow::Modules modules);
  ~DesktopHost() override;

  Reactor& Loop() { return screen_.Loop(); }

  CallerDisplay::Views Views() override { return {screen_.Bar(), screen_.Tray(), screen_.Maxi(), foreground_}; }
  std::vector<CallWatch*> Watchers() override { return {}; }
  MsgBoxDoor& Boxes() override { return boxes_; }
  FirstStartPage& FirstStart() override { return firstStart_; }
  fInputVorwahlView& AreaCodes() override { return areaCodes_; }
  AskForDoubleItems& DoubleItems() override { return doubles_; }
  bool CanAsk() override { return true; }
  void Tell(const std::string& text) override;
  // Dialogs run the toolkit's loop.
  void WaitWith(std::function<bool()>) override {}
  void OnSessionEnd(std::function<void()> ends) override { screen_.OnSessionEnd(std::move(ends)); }
  void ComeForward() override;
  void Open(const Program& program) override;
  bool HasClock() const override { return true; }
  void Tick() override;
  // May be called by what a window of ours has begun; the windows themselves go with a Close() outside of the loop.
  void Close() override;

 private:
  // The places of bar and large window in the settings.
  class StoredPlaces;
  struct Windows;

  DesktopScreen screen_;
  X11ForegroundWindow foreground_;
  MessageBoxes boxes_;
  FirstStartDialog firstStart_;
  AreaCodeDialog areaCodes_;
  DoubleItemsBox doubles_{boxes_};
  unsigned ticks_ = 0;
  std::unique_ptr<Windows> windows_;  // from Open() to a Close() outside of the loop
};

}  // namespace vorlix
