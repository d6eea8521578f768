#include "services/clsErrorHandling.h"

#include <functional>
#include <system_error>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/AttachedLog.h"
#include "fakes/FakeClock.h"
#include "services/text.h"

namespace vorlix {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

class clsErrorHandlingTest : public testing::Test {
 protected:
  clsErrorHandlingTest() {
    handling.Attach(logs, clock, "PRG");
    handling.SetShowMessage([this](std::string_view text, int, std::string_view) { shown += std::string(text) + "|"; });
  }
  ~clsErrorHandlingTest() override { handling.Detach(); }

  std::string ErrorLog() const { return logs.Text(R"(\log\error.log)"); }
  void Fail() { handling.ErrorLogNew("a.b", {}, 13, "no"); }
  void Steps(int count, const char* routine = "a.b") {
    for (int i = 0; i < count; ++i)
      handling.LogDebug_Trace(routine);
  }
  // What comes out at the standard error meanwhile.
  static std::string Cried(const std::function<void()>& work) {
    testing::internal::CaptureStderr();
    work();
    return testing::internal::GetCapturedStderr();
  }
  // The trace lines behind date and version, without what waits.
  std::vector<std::string> Trace() {
    handling.Trace_Flush();
    std::vector<std::string> lines = Split(logs.Text(R"(\log\trace.log)"), "\r\n");
    lines.pop_back();
    for (std::string& line : lines)
      line = line.substr(line.find("v3.0  ") + 6);
    return lines;
  }

  FakeClock clock;
  MemoryLogStore logs;
  std::string shown;
  clsErrorHandling handling;
};

TEST_F(clsErrorHandlingTest, AnErrorLineHasVersionUptimeRoutineFaultAndParameters) {
  clock.SetNow(clock.Now().AddSeconds(86400 + 3661));
  handling.ErrorLogNew("modX.Do", {"a\tb\r\nc", 7, true, 2.5, nullptr}, 13, "Type mismatch");
  EXPECT_EQ(ErrorLog(), "PRG v3.0 1:01:01:01  modX.Do + 13 + Type mismatch Params(S:a#[9]b<CR>c, N:7, B:1, N:2.5, )\n");
  EXPECT_EQ(handling.RowCount(), 1);
  clock.SetNow(clock.Now().AddDays(-7));  // set back to before the start
  handling.ErrorLogForceWrite("a.b");
  EXPECT_THAT(ErrorLog(), HasSubstr("v3.0 0:00:00:00  a.b"));
}

TEST_F(clsErrorHandlingTest, OnlyARealOrForcedFaultIsLoggedAndACancelledDialogNever) {
  handling.ErrorLogNew("a.b", {}, 0, "");
  handling.ErrorLogNew("a.b", {}, 401, "cancel");
  handling.ErrorLogForceWrite("a.b", {}, 401, "cancel");
  EXPECT_EQ(ErrorLog(), "");
  handling.ErrorLogForceWrite("a.b");
  EXPECT_THAT(ErrorLog(), EndsWith(" a.b + 0 + \n"));
  handling.ErrorLogWithMsgBox("a.b", {}, 13, "no");
  EXPECT_EQ(shown, "Es ist ein Fehler aufgetreten!\r\nsiehe Datei: \\log\\error.log|");
}

TEST_F(clsErrorHandlingTest, AFaultInsideTheLoggingEndsThere) {
  logs.whileWriting = [this] { handling.ErrorLogNew("store.write", {}, 28, "no space"); };
  EXPECT_THAT(Cried([&] { Fail(); }), EndsWith(" store.write + 28 + no space\n"));
  EXPECT_THAT(ErrorLog(), EndsWith(" a.b + 13 + no\n"));
  logs.whileWriting = [] { throw 5; };
  Fail();
  EXPECT_EQ(std::exchange(shown, ""), "Error in ExceptionHandler\r\nunknown fault|");
  logs.whileWriting = nullptr;
  logs.canWrite = false;
  EXPECT_THAT(Cried([&] { Fail(); }), EndsWith(" a.b + 13 + no\n"));
  EXPECT_EQ(shown, "Error in ExceptionHandler\r\nwrite \\log\\error.log: not possible|");
  int boxes = 0;
  handling.SetShowMessage([&](std::string_view, int, std::string_view) {
    ++boxes;
    handling.ErrorLogNew("box.Show", {}, 5, "no screen");
    throw Fault(5, "no screen");
  });
  EXPECT_THAT(Cried([&] { EXPECT_NO_THROW(Fail()); }), HasSubstr("Error in ExceptionHandler"));
  EXPECT_EQ(boxes, 1);
}

TEST_F(clsErrorHandlingTest, RepeatedRoutinesAreCountedAndHiddenStepsAreNot) {
  handling.Switches.TraceMode = true;
  handling.TraceInfoMessage(true);
  Steps(3);
  Steps(1, "c.d");
  Steps(1);
  handling.TraceHideNextSteps(2);
  for (const char* routine : {"h.1", "h.2", "s.3"})
    handling.LogDebug_Trace(routine, {"x\r\ny"});
  EXPECT_THAT(Trace(), testing::ElementsAre("a.b 01", "a.b 02", "a.b 03", "c.d 01", "a.b 01", "s.3 01(S:x<CR>y)"));
  EXPECT_THAT(shown, HasSubstr("siehe Datei: /data-root\\log\\trace.log|")) << "warned, and once";
}

TEST_F(clsErrorHandlingTest, WhatWritingTheTraceTracesWaitsForTheNextFlush) {
  handling.Switches.TraceMode = true;
  logs.whileWriting = [this] { Steps(60, "store.append"); };
  Steps(1);
  EXPECT_THAT(Trace(), testing::ElementsAre("a.b 01"));
  logs.whileWriting = nullptr;
  logs.canWrite = false;
  handling.Trace_Flush();
  logs.canWrite = true;
  EXPECT_EQ(Trace().size(), 61u);
}

TEST(Trapped, TurnsWhateverIsThrownIntoALineAndAnEmptyResult) {
  const FakeClock clock;
  const AttachedLog log(clock);
  const auto fails = []() -> int { throw Fault(53, "file"); };
  EXPECT_EQ(Trapped("a.b", fails, "x"), 0);
  Trapped("a.c", [] { throw std::system_error(13, std::generic_category(), "open"); });
  EXPECT_EQ(Trapped("a.d", []() -> std::string { throw 5; }), "");
  EXPECT_EQ(Trapped("a.e", [] { return 7; }), 7);
  EXPECT_EQ(Replace(log.Errors(), "PRG v3.0 0:00:00:00  ", ""),
            "a.b + 53 + file Params(S:x)\na.c + 13 + open: Permission denied\na.d + 5 + unknown fault\n");
}

}  // namespace
}  // namespace vorlix
