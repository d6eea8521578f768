#include "console/TerminalView.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>
#include <utility>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kMostWaiting = 256 * 1024;
// What a pipe that calls itself writable takes without blocking.
constexpr std::size_t kPortion = 4096;
// Nobody types a longer line.
constexpr std::size_t kMostTyped = 4096;
// A question in the middle of a call must not keep the next ones waiting for ever.
constexpr std::chrono::seconds kMostThought{60};
constexpr int kPatience = 250;  // milliseconds

}  // namespace

bool TerminalView::IsInteractive() {
  return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

void TerminalView::ShowLine(const std::string& line) {
  Write(WithoutControls(line) + "\n");
}

MsgBoxAnswer TerminalView::Show(std::string_view text, int style, std::string_view title, bool modal) {
  return Trapped("TerminalView.Show", [&] {
    const char* mark = (style & kMsgInformation) == kMsgInformation ? "i" : "!";
    for (const std::string& line : Split(Replace(text, kLineEnd, "\n"), "\n")) {
      Write("[" + std::string(mark) + "] " + WithoutControls(title) + ": " + WithoutControls(line) + "\n");
    }
    if (!IsQuestion(style)) return MsgBoxAnswer::kOk;
    return modal && wait_ && !isAsking_ && IsInteractive() ? AskYesNo() : MsgBoxAnswer::kNo;
  });
}

std::optional<std::string> TerminalView::Ask(const std::string& question, const std::string& fallback) {
  Write(question + (fallback.empty() ? "" : " [" + fallback + "]") + ": ");
  std::string answer;
  if (!AwaitLine(answer)) {
    Write("\n");
    return std::nullopt;
  }
  const std::string text(Trim(WithoutControls(FromUtf8(answer))));
  return text.empty() ? fallback : text;
}

MsgBoxAnswer TerminalView::AskYesNo() {
  const std::string yes = LoadLangKey("Console_String_Yes", "j"_ansi);
  Write("    (" + yes + "/" + LoadLangKey("Console_String_No", "n"_ansi) + ") ");
  std::string answer;
  const bool isYes = AwaitLine(answer, kMostThought) && EqualNoCase(Trim(FromUtf8(answer)), yes);
  if (answer.empty()) Write("\n");
  return isYes ? MsgBoxAnswer::kYes : MsgBoxAnswer::kNo;
}

// A last line may lack its end.
bool TerminalView::AwaitLine(std::string& line, std::chrono::seconds most) {
  const auto end = std::chrono::steady_clock::now() + most;
  isAsking_ = true;
  const bool answered = ReadLine(line, end);
  isAsking_ = false;
  return answered;
}

bool TerminalView::ReadLine(std::string& line, std::chrono::steady_clock::time_point latest) {
  std::size_t end = 0;
  while ((end = typed_.find('\n')) == std::string::npos) {
    if (!IsReadable()) {
      if (wait_ && (!wait_() || std::chrono::steady_clock::now() > latest)) return false;
    } else if (!ReadTyped()) {
      line = std::exchange(typed_, {});
      return !line.empty();
    }
  }
  line = typed_.substr(0, end);
  typed_.erase(0, end + 1);
  return true;
}

bool TerminalView::TakeTyped(const std::function<void(const std::string&)>& take) {
  // A command lets the loop run, and what is typed then must wait for its turn.
  if (isAsking_ || isTaking_) return true;
  const bool goesOn = ReadTyped();
  if (!goesOn && !typed_.empty()) typed_ += '\n';
  isTaking_ = true;
  for (std::size_t end = typed_.find('\n'); end != std::string::npos; end = typed_.find('\n')) {
    const std::string line = FromUtf8(typed_.substr(0, end));
    typed_.erase(0, end + 1);
    take(line);
  }
  isTaking_ = false;
  if (typed_.size() > kMostTyped) typed_.clear();
  return goesOn;
}

bool TerminalView::IsReadable() const {
  pollfd wanted{input_, POLLIN, 0};
  return poll(&wanted, 1, wait_ ? 0 : -1) > 0;
}

// False at the end of the input.
bool TerminalView::ReadTyped() {
  std::array<char, 4096> buffer;
  const ssize_t got = read(input_, buffer.data(), buffer.size());
  if (got < 0) return errno == EINTR || errno == EAGAIN;
  typed_.append(buffer.data(), static_cast<std::size_t>(got));
  return got > 0;
}

void TerminalView::Tell(const std::string& text) {
  ShowLine(text);
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
