// The terminal as the program's screen: the course of the calls as lines, questions one after the other, commands
// typed.
#pragma once

#include "console/TerminalView.h"
#include "screens/CallFeed.h"
#include "screens/DoubleItemsQuestion.h"
#include "screens/Screen.h"
#include "screens/null_views.h"

namespace vorlix {

class TerminalScreen : public Screen {
 public:
  // The clock must outlive the object.
  explicit TerminalScreen(const CivilClock& clock) : feed_(terminal_, clock) {}

  CallerDisplay::Views Views() override { return {feed_, tray_, maxi_, foreground_}; }
  std::vector<CallWatch*> Watchers() override { return {&feed_}; }
  MsgBoxDoor& Boxes() override { return terminal_; }
  FirstStartPage& FirstStart() override { return firstStart_; }
  fInputVorwahlView& AreaCodes() override { return areaCodes_; }
  AskForDoubleItems& DoubleItems() override { return doubles_; }
  bool CanAsk() override { return TerminalView::IsInteractive(); }
  void Tell(const std::string& text) override { terminal_.ShowLine(text); }
  void WaitWith(std::function<bool()> wait) override { terminal_.WaitWith(std::move(wait)); }
  void Open(const Program& program) override;
  void Tick() override { terminal_.Flush(); }
  void Close() override;

  CallFeedView& Lines() { return terminal_; }
  // Reads what was typed; false when nothing more will come.
  bool TakeTyped();

 private:
  TerminalView terminal_;
  CallFeed feed_;
  NoTrayView tray_;
  NoMaxiDisplayWindow maxi_;
  NoForegroundWindow foreground_;
  FirstStartQuestions firstStart_{terminal_};
  AreaCodeQuestions areaCodes_{terminal_};
  DoubleItemsQuestion doubles_{terminal_, [] { return TerminalView::IsInteractive(); }};
  TypedCommands* commands_ = nullptr;
};

}  // namespace vorlix
