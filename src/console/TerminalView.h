// The terminal as the program's screen: lines go to standard output in UTF-8, each at once; message boxes are text; a
// question is asked only where somebody can answer it.
#pragma once

#include <string>
#include <string_view>

#include "screens/CallFeed.h"
#include "screens/FirstStart.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class TerminalView : public CallFeedView, public MsgBoxDoor, public FirstStartView {
 public:
  // The descriptor stays the caller's. A terminal that takes nothing, as one that was paused by hand, does not hold the
  // program: its lines wait, the oldest are given up beyond a quarter of a megabyte.
  explicit TerminalView(int output = 1) : output_(output) {}

  // What tells people apart from pipes and services: both ends are a terminal.
  static bool IsInteractive();

  void ShowLine(const std::string& line) override;

  // The box as lines behind its title. A yes/no question is not asked, since the loop must go on: its answer is no.
  MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool modal) override;

  std::optional<std::string> Ask(const std::string& question, const std::string& fallback) override;
  void Tell(const std::string& text) override;

 private:
  void Write(std::string_view text);
  bool IsWritable();

  int output_;
  std::string waiting_;  // UTF-8
  bool stalled_ = false;
};

}  // namespace vorlix
