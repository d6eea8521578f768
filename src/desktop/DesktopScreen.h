// The desktop as the program's screen: bar, tray, large window, dialogs and message boxes, put together.
#pragma once

#include <memory>
#include <string>

#include "desktop/DesktopViews.h"
#include "desktop/DisplayLoss.h"
#include "desktop/StoredPlaces.h"
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

class DesktopScreen : public Screen {
 public:
  // The clock must outlive the object; the folder holds the program's icons, as a real path; `modules` tells a game.
  DesktopScreen(const Clock& clock, const std::string& iconFolder, X11ForegroundWindow::Modules modules);
  ~DesktopScreen() override;

  Reactor& Loop() { return views_.Loop(); }

  CallerDisplay::Views Views() override { return {views_.Bar(), views_.Tray(), views_.Maxi(), foreground_}; }
  std::vector<CallWatch*> Watchers() override { return {}; }
  MsgBoxDoor& Boxes() override { return boxes_; }
  FirstStartPage& FirstStart() override { return firstStart_; }
  fInputVorwahlView& AreaCodes() override { return areaCodes_; }
  AskForDoubleItems& DoubleItems() override { return doubles_; }
  bool CanAsk() override { return true; }
  void Tell(const std::string& text) override;
  // Dialogs run the toolkit's loop.
  void WaitWith(std::function<bool()>) override {}
  void OnSessionEnd(std::function<void()> ends) override { views_.OnSessionEnd(std::move(ends)); }
  void OnDisplayLost(std::function<void()> ends) override;
  void ComeForward() override;
  void Open(const Program& program) override;
  bool HasClock() const override { return true; }
  void Tick() override;
  void KeepPlaces() override;
  // May be called by what a window of ours has begun; the windows themselves go with a Close() outside of the loop.
  void Close() override;

 private:
  struct Windows;

  DesktopViews views_;
  std::unique_ptr<DisplayLoss> loss_;
  bool isLost_ = false;
  X11ForegroundWindow foreground_;
  MessageBoxes boxes_;
  FirstStartDialog firstStart_;
  AreaCodeDialog areaCodes_;
  DoubleItemsBox doubles_{boxes_};
  unsigned ticks_ = 0;
  std::unique_ptr<Windows> windows_;  // from Open() to a Close() outside of the loop
};

}  // namespace vorlix
