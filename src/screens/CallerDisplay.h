// The caller display with all its parts, put together: bar, tray, large window, hiding, gestures. Members stand in the
// order in which they depend on each other.
#pragma once

#include <functional>
#include <string>

#include "screens/DisplayClicks.h"
#include "screens/MainDisplay.h"

namespace vorlix {

struct CallerDisplay {
  struct Views {
    MainDisplayView& bar;
    TrayView& tray;
    MaxiDisplayWindow& maxi;
    ForegroundWindow& foreground;
  };
  struct Ports {
    MessageLoop& loop;
    MainTimers& timers;
    Settings& settings;
    PipelineState& state;
    OwnNumbers& ownNumbers;
    const LineStateSource& lines;
    PhoneBook& book;
    Blocking& blocking;
    modAll_MsgBox& messages;
    CapiLine& capi;
    SimulationWindow& simulation;
    BlackListAdding& blackList;
    DisplayLogos& logos;
    AutomaticSearch& search;
    CallerWindows& callerWindows;
    DisplayWindows& windows;
    // Hooks; each may be left empty.
    std::function<void()> stopSound;
    std::function<void()> resetCAPI;
    std::function<std::string(const oDataCall&)> alertText;
    std::function<void(const std::string& number, const std::string& name, const std::string& address)> waitingRun;
  };

  // All views and ports must outlive the object.
  CallerDisplay(Views views, const Ports& ports);

  Skin skin;
  ShownCalls calls;
  GameDetection games;
  DisplayTray tray;
  fDisplayMaxi maxi;
  HideRules hiding;
  MainDisplay display;
  DisplayCommands commands;
  DisplayClicks clicks;
};

}  // namespace vorlix
