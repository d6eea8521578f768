#include "console/TerminalView.h"

#include <cstdio>
#include <iostream>
#include <unistd.h>

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {
namespace {

void Write(std::string_view text) {
  const std::string utf8 = ToUtf8(text);
  std::fwrite(utf8.data(), 1, utf8.size(), stdout);
  std::fflush(stdout);
}

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

}  // namespace vorlix
