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
  view.Tell("Bert\x1B[2J");
  EXPECT_EQ(Taken(), "Gew\xC3\xA4hlt  [2J\nBert [2J\n");
  EXPECT_EQ(view.Show("a\r\nb", kMsgYesNo + kMsgQuestion, "Vorlix", true), MsgBoxAnswer::kNo);
  EXPECT_EQ(Taken(), "[!] Vorlix: a\n[!] Vorlix: b\n");
}

TEST_F(TerminalViewTest, APausedTerminalDoesNotHoldTheProgramAndAFlushShowsTheLatestAfterwards) {
  TerminalView view(ends[1]);
  for (int i = 0; i < 10000; ++i)
    view.ShowLine(std::string(100, 'x') + std::to_string(i));
  std::string shown = Taken();
  for (int i = 0; i < 10; ++i) {
    view.Flush();
    shown += Taken();
  }
  EXPECT_TRUE(shown.ends_with("x9999\n"));
  view.ShowLine("on");
  EXPECT_EQ(Taken(), "on\n");
}

TEST_F(TerminalViewTest, AQuestionLetsTheProgramRunAndIsGivenUpWhenItCloses) {
  int typed[2];
  ASSERT_EQ(pipe2(typed, O_CLOEXEC), 0);
  TerminalView view(ends[1], typed[0]);
  int waits = 0;
  const auto type = [&](std::string_view text) {
    EXPECT_EQ(write(typed[1], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  };
  view.WaitWith([&] {
    if (++waits == 2) type("b\xC3\xA4");
    if (waits == 3) type(" \x1B\nnext\n\n");
    return waits < 4;
  });
  EXPECT_EQ(view.Ask("Ort", "x"), "b\xE4");
  EXPECT_EQ(waits, 3);
  EXPECT_EQ(view.Ask("Ort", "x"), "next");  // was typed ahead
  EXPECT_EQ(view.Ask("Ort", "x"), "x");
  EXPECT_EQ(view.Ask("Ort", "x"), std::nullopt);
  EXPECT_EQ(waits, 4);
  type("no end");
  close(typed[1]);
  EXPECT_EQ(view.Ask("Ort", "x"), "no end");
  EXPECT_EQ(view.Ask("Ort", "x"), std::nullopt);
  close(typed[0]);
}

}  // namespace
}  // namespace vorlix
