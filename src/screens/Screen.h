// What the program is seen and asked on: a terminal or a desktop. Made before the program and destroyed after it.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "data/modBook.h"
#include "data/modSettings.h"
#include "reactions/Blacklist.h"
#include "screens/CallerDisplay.h"
#include "screens/FirstStart.h"
#include "screens/TrayMenu.h"
#include "screens/TypedCommands.h"
#include "screens/about_text.h"
#include "screens/fInputVorwahl.h"
#include "screens/fSimulation.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class Screen {
 public:
  // The program behind the screen, once its settings are loaded.
  struct Program {
    CallerDisplay& display;
    TrayMenu& menu;
    TypedCommands& commands;
    fSimulation& simulation;
    Blacklist& blacklist;
    Settings& settings;
    modSettings& settingsStore;
    modAll_MsgBox& messages;
    std::function<void(oDataCall& call)> identify;  // name and own number's alias
    AboutFacts about;
    std::function<LineStates()> lineStates;
    std::function<void()> quit;
  };

  virtual ~Screen() = default;

  virtual CallerDisplay::Views Views() = 0;
  // Who else follows the course of the calls.
  virtual std::vector<CallWatch*> Watchers() = 0;
  virtual MsgBoxDoor& Boxes() = 0;
  virtual FirstStartPage& FirstStart() = 0;
  virtual fInputVorwahlView& AreaCodes() = 0;
  virtual AskForDoubleItems& DoubleItems() = 0;
  // Somebody may be there to answer.
  virtual bool CanAsk() = 0;
  // A line for whoever started the program.
  virtual void Tell(const std::string& text) = 0;
  // What a question does while nobody answers: lets the loop run; false gives it up.
  virtual void WaitWith(std::function<bool()> wait) = 0;

  // What is done when the desktop's session ends, and the program with it; also before Open().
  virtual void OnSessionEnd(std::function<void()>) {}
  // What is done when the desktop has gone and the process is about to end: at once, without the loop or the screen.
  virtual void OnDisplayLost(std::function<void()>) {}
  // Somebody has started the program once more, and looks for it.
  virtual void ComeForward() {}
  // The idle line shows the time.
  virtual bool HasClock() const { return false; }
  // The display goes on the screen, and gestures reach the program from here on.
  virtual void Open(const Program& program) = 0;
  // Once a second.
  virtual void Tick() = 0;
  // The places of the windows that are open go into the settings, which are about to be saved.
  virtual void KeepPlaces() {}
  // Takes all off the screen and forgets the program.
  virtual void Close() = 0;
};

}  // namespace vorlix
