// What the caller display needs of the rest of the system.
#pragma once

#include <string>
#include <vector>

#include "core/oDataCall.h"

namespace vorlix {

// The pictures beside a call; real paths of files that exist, empty where there is none.
class DisplayLogos {
 public:
  virtual ~DisplayLogos() = default;
  // Of the caller, from the book's data.
  virtual std::string BookPicture(const oDataCall& call) = 0;
  // Of the number's network or country.
  virtual std::string NumberPicture(const std::string& number) = 0;
};

// The automatic reverse search of a call that nobody knows.
class AutomaticSearch {
 public:
  virtual ~AutomaticSearch() = default;
  // The call's number is numeric and no internal one. Its result comes back by MainDisplay's
  // DisplayCallerUpdateByNumber.
  virtual void Start(const oDataCall& call, int line) = 0;
};

// The windows that hang on the bar: card window and new-calls list.
class CallerWindows {
 public:
  virtual ~CallerWindows() = default;
  virtual void ShowCard(const oDataCall& call) = 0;
  // The closing routines do nothing when there is nothing to close.
  virtual void CloseCard() = 0;
  virtual void CloseNewCalls() = 0;
  // Shows or hides those that are open.
  virtual void SetVisible(bool visible) = 0;
  virtual void MoveAlong() = 0;
};

// What a click on the display opens; the values of the setting `CallerClick`.
enum class DisplayWindow { kJournal = 0, kBook = 1, kNewCalls = 2, kAppointments = 3 };

class DisplayWindows {
 public:
  virtual ~DisplayWindows() = default;
  // Opens the quick editor for a number with what the book knows of it; false when there is no editor.
  virtual bool OpenEditor(const oDataCall& call) = 0;
  // False when there is no such window.
  virtual bool Open(DisplayWindow window) = 0;
};

// The window that has the screen, as the desktop tells.
class ForegroundWindow {
 public:
  struct State {
    bool fillsScreen = false;
    bool isDesktop = false;            // the desktop itself
    std::vector<std::string> modules;  // names or paths of the libraries that its process has loaded
  };
  virtual ~ForegroundWindow() = default;
  virtual State Read() = 0;
};

}  // namespace vorlix
