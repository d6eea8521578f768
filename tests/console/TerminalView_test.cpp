#include "console/TerminalView.h"

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace vorlix {
namespace {

class TerminalViewTest : public testing::Test {
 protected:
  TerminalViewTest() { EXPECT_EQ(pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0); }
  ~TerminalViewTest() override {
    close(ends[0]);
    close(ends[1]);
  }
  std::string Taken() {
    std::string text;
    char buffer[65536];
    for (ssize_t got = 0; (got = read(ends[0], buffer, sizeof buffer)) > 0;) {
      text.append(buffer, static_cast<std::size_t>(got));
    }
    return text;
  }
  int ends[2]{};
};

TEST_F(TerminalViewTest, SpeaksUtf8AndCarriesNoCommand) {
  TerminalView view(ends[1]);
  view.ShowLine("Gew\xE4hlt \x1B[2J");
  EXPECT_EQ(Taken(), "Gew\xC3\xA4hlt  [2J\n");
  EXPECT_EQ(view.Show("a\r\nb", kMsgYesNo + kMsgQuestion, "Vorlix", true), MsgBoxAnswer::kNo);
  EXPECT_EQ(Taken(), "[!] Vorlix: a\n[!] Vorlix: b\n");
}

TEST_F(TerminalViewTest, APausedTerminalDoesNotHoldTheProgramAndShowsTheLatestAfterwards) {
  TerminalView view(ends[1]);
  for (int i = 0; i < 10000; ++i) {
    view.ShowLine(std::string(100, 'x') + std::to_string(i));
  }
  std::string shown = Taken();
  for (int i = 0; i < 10; ++i) {
    view.ShowLine("on");
    shown += Taken();
  }
  EXPECT_NE(shown.find("x9999\n"), std::string::npos);
  EXPECT_TRUE(shown.ends_with("on\n"));
}

}  // namespace
}  // namespace vorlix
