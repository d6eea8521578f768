// The terminal as the program's screen: lines go to standard output in UTF-8, each at once; message boxes are text; a
// question is asked only where somebody can answer it.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "screens/CallFeed.h"
#include "screens/FirstStart.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

class TerminalView : public CallFeedView, public MsgBoxDoor, public Questions {
 public:
  // The descriptors stay the caller's. A terminal that takes nothing, as one that was paused by hand, does not hold the
  // program: its lines wait, the oldest are given up beyond a quarter of a megabyte.
  explicit TerminalView(int output = 1, int input = 0) : output_(output), input_(input) {}

  // What a question does while nobody answers, again and again: lets the loop run for a moment. When it gives false,
  // the question is given up. Without it a question holds the program.
  void WaitWith(std::function<bool()> wait) { wait_ = std::move(wait); }

  // Shows what waits, as far as the terminal takes it by now.
  void Flush() { Write({}); }

  // What tells people apart from pipes and services: both ends are a terminal.
  static bool IsInteractive();

  void ShowLine(const std::string& line) override;

  // The box as lines behind its title. A modal yes/no question waits a minute where somebody may be there to answer it,
  // and meanwhile the loop runs; otherwise its answer is no.
  MsgBoxAnswer Show(std::string_view text, int style, std::string_view title, bool modal) override;

  // Reads what was typed and gives each line of it to `take`; false at the end of the input. What is typed while a
  // question waits is its answer.
  bool TakeTyped(const std::function<void(const std::string& line)>& take);

  std::optional<std::string> Ask(const std::string& question, const std::string& fallback) override;
  void Tell(const std::string& text) override;

 private:
  void Write(std::string_view text);
  bool IsWritable();
  MsgBoxAnswer AskYesNo();
  bool AwaitLine(std::string& line, std::chrono::seconds most = std::chrono::hours(24 * 365));
  bool ReadLine(std::string& line, std::chrono::steady_clock::time_point latest);
  bool IsReadable() const;
  bool ReadTyped();

  int output_;
  int input_;
  std::function<bool()> wait_;
  std::string typed_;    // what was typed beyond the line taken last
  std::string waiting_;  // UTF-8
  bool stalled_ = false;
  bool isAsking_ = false;
  bool isTaking_ = false;
};

}  // namespace vorlix
