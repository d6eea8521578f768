// What a gesture on the bar or the tray icon does.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/CallPipeline.h"
#include "data/Settings.h"
#include "data/modBook.h"
#include "screens/DisplayCommands.h"
#include "screens/MainDisplay.h"
#include "screens/display_ports.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class DisplayClicks {
 public:
  struct Ports {
    MainDisplay& display;
    DisplayTray& tray;
    HideRules& hiding;
    const Settings& settings;
    MainTimers& timers;
    Blocking& blocking;
    PhoneBook& book;
    DisplayWindows& windows;
    modAll_MsgBox& messages;
    DisplayCommands& commands;
    BlackListAdding& blackList;
    std::function<void()> stopSound;  // may be empty
  };

  // All ports must outlive the object.
  explicit DisplayClicks(Ports ports) : ports_(std::move(ports)) {}

  // A double click on a line: the quick editor, or what `CallerClick` says.
  void DisplayDblClickAction(std::size_t line);
  // A click on the time field.
  void TimeClick();
  // A click on the tray icon: brings a hidden bar out first.
  void TrayClick();
  // The button at the end of a line: refuses the call, or takes the display back to idle.
  void HangUpClick(std::size_t line);
  // Silences the ringing.
  void BellClick();
  // Puts the number of a line's call on the blacklist.
  void BlacklistClick(std::size_t line);
  // The user's own way back to idle: missed calls count as seen.
  void ResetClick();

 private:
  bool TellBlock(std::size_t line);
  bool OpenEditor(const oDataCall& record);
  void OpenWindow(int choice);

  Ports ports_;
};

}  // namespace vorlix
