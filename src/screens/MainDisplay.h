// The caller display: one line for each call in progress, or one that tells how the sources stand. Each line has a
// record of its own, a copy of the call that search results and the book may change without touching the call. Calls
// that are over stay until the display is built anew or reset.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "core/CallPipeline.h"
#include "data/Settings.h"
#include "screens/DisplayTray.h"
#include "screens/GameDetection.h"
#include "screens/HideRules.h"
#include "screens/LineStates.h"
#include "screens/MainDisplayView.h"
#include "screens/ShownCalls.h"
#include "screens/display_ports.h"
#include "screens/fDisplayMaxi.h"

namespace vorlix {

class MainDisplay : public CallDisplay {
 public:
  struct Ports {
    MainDisplayView& view;
    const CivilClock& clock;
    const Settings& settings;
    const Skin& skin;
    const ShownCalls& calls;
    const LineStateSource& lines;
    const GameDetection& games;
    MainTimers& timers;
    PhoneBook& book;
    Blocking& blocking;
    DisplayLogos& logos;
    AutomaticSearch& search;
    CallerWindows& windows;
    DisplayTray& tray;
    fDisplayMaxi& maxi;
    HideRules& hiding;
    // A program start that waits for a search takes the result; may be empty.
    std::function<void(const std::string& number, const std::string& name, const std::string& address)> waitingRun;
  };

  // All ports must outlive the object.
  explicit MainDisplay(Ports ports) : ports_(std::move(ports)) {}

  // From now on the idle line shows the time (tmClock); a display without a clock saves the wake-ups.
  void RunClock();
  // Puts the skin on the display.
  void DisplayElementsLoad();

  void DisplayUpdate(bool search) override;
  void DisplayResize() override;
  void ChangeDisplayData(const std::string& idleText) override;
  void DisplayWidth() override;
  void ButtonEnableBell(int place, bool enabled) override;
  void ButtonEnableHangUp(int place, HangUpMode mode, bool enabled) override;
  // No bell rings any more.
  void ButtonDisableBells();
  void MarkBlocked(std::int32_t PLCI, const std::string& reason) override;

  // The idle state of line 0: the state of the sources in use, or "kein Anruf".
  void Display_NoCall(bool showState);
  // Fills the texts of a line; `text`, if there is one, is what it shows of its party.
  void ChangeDisplayData(std::size_t line, bool idle, const std::string& text);
  // Repaints a line after its record changed.
  void ReturnFromBook(std::size_t line);
  // The result of a reverse search; of two calls from one number only the first line shows it. "-": nothing found.
  void DisplayCallerUpdateByNumber(const std::string& number, const std::string& name, const std::string& address,
                                   bool useName);
  // After the book changed.
  void DisplayCallerUpdateWithBook();
  // The way back to idle; with `keepWindows` card window and new-calls list stay open.
  void DisplayReset(bool keepWindows);
  // The attached windows go and come with silent mode.
  void HideDisplay();

  // The record of a line; nothing on an idle one or outside.
  std::shared_ptr<oDataCall> Record(std::size_t line) const;
  // Line 0 shows a call, not an idle text.
  bool IsCallShown() const;
  // What the view was given last.
  const DisplayContent& Content() const { return content_; }

 private:
  struct Row {
    std::shared_ptr<oDataCall> record;
    DisplayLine shown;
    std::string announced;  // what tray and large window have told of it
    bool isFound = false;   // a search has given it its name
  };

  void TakeCalls();
  void KeepEndedCall();
  DisplayLine* LineOfCall(int place);
  static void Inherit(Row& row, const Row& former);
  void FillLine(std::size_t line, bool search);
  void ShowCard(const oDataCall& record);
  void ChooseLogo(Row& row);
  void StartSearch(const oDataCall& record, std::size_t line);
  void ShowCall(Row& row);
  void ShowColors(Row& row);
  void Announce(Row& row);
  void ShowIdle(std::size_t line, std::string text);  // a copy: it may be the line's own
  std::string PartyView(const oDataCall& record) const;
  void ShowLines();
  void ClockTick();

  Ports ports_;
  std::vector<Row> rows_{1};
  std::string lineState_;
  DisplayContent content_;
};

}  // namespace vorlix
