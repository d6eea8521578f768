#include "console/TerminalView.h"

#include <algorithm>
#include <cerrno>
#include <iostream>
#include <poll.h>
#include <unistd.h>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kMostWaiting = 256 * 1024;
// What a pipe that calls itself writable takes without blocking.
constexpr std::size_t kPortion = 4096;
constexpr int kPatience = 250;  // milliseconds

}  // namespace

bool TerminalView::IsInteractive() {
  return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

void TerminalView::ShowLine(const std::string& line) {
  Write(WithoutControls(line) + "\n");
}

MsgBoxAnswer TerminalView::Show(std::string_view text, int style, std::string_view title, bool) {
  return Trapped("TerminalView.Show", [&] {
    const char* mark = (style & kMsgInformation) == kMsgInformation ? "i" : "!";
    for (const std::string& line : Split(Replace(text, kLineEnd, "\n"), "\n")) {
      Write("[" + std::string(mark) + "] " + WithoutControls(title) + ": " + WithoutControls(line) + "\n");
    }
    return (style & kMsgYesNo) == kMsgYesNo ? MsgBoxAnswer::kNo : MsgBoxAnswer::kOk;
  });
}

std::optional<std::string> TerminalView::Ask(const std::string& question, const std::string& fallback) {
  Write(question + (fallback.empty() ? "" : " [" + fallback + "]") + ": ");
  std::string answer;
  if (!std::getline(std::cin, answer)) return std::nullopt;
  const std::string text(Trim(WithoutControls(FromUtf8(answer))));
  return text.empty() ? fallback : text;
}

void TerminalView::Tell(const std::string& text) {
  Write(text + "\n");
}

void TerminalView::Write(std::string_view text) {
  waiting_ += ToUtf8(text);
  if (waiting_.size() > kMostWaiting) waiting_.erase(0, waiting_.find('\n', waiting_.size() - kMostWaiting) + 1);
  while (!waiting_.empty() && IsWritable()) {
    const ssize_t written = write(output_, waiting_.data(), std::min(waiting_.size(), kPortion));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) waiting_.clear();  // nobody looks any more
    if (written > 0) waiting_.erase(0, static_cast<std::size_t>(written));
  }
}

// A slow reader gets a moment; one that stands still costs it only once.
bool TerminalView::IsWritable() {
  pollfd wanted{output_, POLLOUT, 0};
  stalled_ = poll(&wanted, 1, stalled_ ? 0 : kPatience) == 0;
  return !stalled_;
}

}  // namespace vorlix
