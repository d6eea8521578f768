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
  // What tells people apart from pipes and services: both ends are a terminal.
  static bool IsInteractive();

  void ShowLine(const std::string& line) override;

  // The box as lines behind its title. A yes/no question is not asked, since the loop must go on: its answer is no.
  MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool modal) override;

  std::optional<std::string> Ask(const std::string& question, const std::string& fallback) override;
  void Tell(const std::string& text) override;
};

}  // namespace vorlix
