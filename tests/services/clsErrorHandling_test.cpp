#include "services/clsErrorHandling.h"

#include <functional>
#include <system_error>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fakes/AttachedLog.h"
#include "fakes/FakeClock.h"
#include "services/clsStopWatch.h"
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
}

TEST_F(clsErrorHandlingTest, TheUserIsToldWhereToLookAndOfAFaultInTheHandlerItself) {
  handling.ErrorLogWithMsgBox("a.b", {}, 13, "no");
  EXPECT_EQ(std::exchange(shown, ""), "Es ist ein Fehler aufgetreten!\r\nsiehe Datei: \\log\\error.log|");
  logs.throws = true;
  Fail();
  EXPECT_EQ(shown, "Error in ExceptionHandler\r\nno access|");
}

TEST_F(clsErrorHandlingTest, AFaultInsideTheLoggingEndsThere) {
  logs.whileWriting = [this] { handling.ErrorLogNew("store.write", {}, 28, "no space"); };
  EXPECT_THAT(Cried([&] { Fail(); }), EndsWith(" store.write + 28 + no space\n"));
  EXPECT_THAT(ErrorLog(), EndsWith(" a.b + 13 + no\n"));
  logs.whileWriting = [] { throw 5; };
  Fail();
  EXPECT_EQ(shown, "Error in ExceptionHandler\r\nunknown fault|");
}

TEST_F(clsErrorHandlingTest, AFaultOfTheBoxThatTellsAFaultEndsThere) {
  int boxes = 0;
  logs.throws = true;
  handling.SetShowMessage([&](std::string_view, int, std::string_view) {
    ++boxes;
    handling.ErrorLogNew("box.Show", {}, 5, "no screen");
    throw Fault(5, "no screen");
  });
  EXPECT_THAT(Cried([&] { EXPECT_NO_THROW(Fail()); }), HasSubstr("Error in ExceptionHandler"));
  EXPECT_EQ(boxes, 1);
}

TEST_F(clsErrorHandlingTest, ALineThatTheLogRefusesIsNotLostInSilence) {
  logs.canWrite = false;
  EXPECT_THAT(Cried([&] { Fail(); }), EndsWith(" a.b + 13 + no\n"));
  EXPECT_EQ(shown, "Error in ExceptionHandler\r\nwrite \\log\\error.log: not possible|");
}

TEST_F(clsErrorHandlingTest, RepeatedRoutinesAreCountedAndHiddenStepsAreNot) {
  handling.Switches.TraceMode = true;
  Steps(3);
  Steps(1, "c.d");
  Steps(1);
  handling.TraceHideNextSteps(2);
  for (const char* routine : {"h.1", "h.2", "s.3"})
    handling.LogDebug_Trace(routine, {"x\r\ny"});
  EXPECT_THAT(Trace(), testing::ElementsAre("a.b 01", "a.b 02", "a.b 03", "c.d 01", "a.b 01", "s.3 01(S:x<CR>y)"));
  Steps(32770);
  EXPECT_EQ(Trace().back(), "a.b 32767");
}

TEST_F(clsErrorHandlingTest, TraceLinesGoOutInGroupsAndWaitWhileTheFileIsNotToBeHad) {
  handling.Switches.TraceMode = true;
  logs.files[R"(\log\trace.log)"] = "of a former run\r\n";
  logs.canWrite = false;
  Steps(60);
  EXPECT_EQ(logs.appends, 0);
  logs.canWrite = true;
  Steps(1);
  EXPECT_EQ(logs.appends, 1);
  EXPECT_EQ(Trace().size(), 61u);
  Steps(50);
  EXPECT_EQ(logs.appends, 1);  // a short queue waits
}

TEST_F(clsErrorHandlingTest, WhatWritingTheTraceTracesWaitsForTheNextFlush) {
  handling.Switches.TraceMode = true;
  logs.whileWriting = [this] { Steps(60, "store.append"); };
  Steps(1);
  EXPECT_THAT(Trace(), testing::ElementsAre("a.b 01"));
  logs.whileWriting = [] { throw Fault(5, "no disk"); };
  EXPECT_NO_THROW(handling.Trace_Flush());
  logs.whileWriting = nullptr;
  EXPECT_EQ(Trace().size(), 61u);
}

TEST_F(clsErrorHandlingTest, TheFirstTraceEntryWarnsWhenWanted) {
  handling.Switches.TraceMode = true;
  handling.TraceInfoMessage(true);
  Steps(2);
  EXPECT_EQ(shown,
            "Die Ablaufverfolgung ist aktiv!\r\nsiehe Datei: \\Vorlixspec.ini ([Debug] - TraceMode=1)\r\n\r\n"
            "Es werden in kurzer Zeit extrem viele Daten gespeichert!\r\nsiehe Datei: /data-root\\log\\trace.log|");
}

TEST_F(clsErrorHandlingTest, EachCategoryHasItsSwitch) {
  using Row = std::pair<bool DebugSwitches::*, void (clsErrorHandling::*)(std::string_view, const TraceParams&)>;
  const Row rows[] = {{&DebugSwitches::LogExport, &clsErrorHandling::LogDebug_Export},
                      {&DebugSwitches::LogCAPI, &clsErrorHandling::LogDebug_CAPI},
                      {&DebugSwitches::LogAVM, &clsErrorHandling::LogDebug_AVM},
                      {&DebugSwitches::LogNCID, &clsErrorHandling::LogDebug_NCID},
                      {&DebugSwitches::LogTAPI, &clsErrorHandling::LogDebug_TAPI},
                      {&DebugSwitches::LogOther, &clsErrorHandling::LogDebug_Other},
                      {&DebugSwitches::LogTiming, &clsErrorHandling::LogDebug_Timing}};
  for (const auto& [on, ownLog] : rows) {
    handling.Switches = {};
    handling.Switches.*on = true;
    logs.files.clear();
    for (const auto& [other, log] : rows)
      (handling.*log)(log == ownLog ? "own" : "other", {});
    EXPECT_EQ(logs.Text(R"(\log\debug.log)"), "own\n");
  }
  handling.LogDebug_Temp("t", {1});
  EXPECT_THAT(logs.Text(R"(\log\debug.log)"), EndsWith("t(N:1)\n"));
}

TEST(Trapped, TurnsWhateverIsThrownIntoALineAndAnEmptyResult) {
  const FakeClock clock;
  const AttachedLog log(clock);
  EXPECT_EQ(Trapped(
                "a.b", []() -> int { throw Fault(53, "file"); }, "x"),
            0);
  Trapped("a.c", [] { throw std::system_error(13, std::generic_category(), "open"); });
  EXPECT_EQ(Trapped("a.d", []() -> std::string { throw 5; }), "");
  EXPECT_EQ(Trapped("a.e", [] { return 7; }), 7);
  EXPECT_EQ(
      log.Errors(),
      "PRG v3.0 0:00:00:00  a.b + 53 + file Params(S:x)\nPRG v3.0 0:00:00:00  a.c + 13 + open: Permission denied\n"
      "PRG v3.0 0:00:00:00  a.d + 5 + unknown fault\n");
}

TEST(clsStopWatch, WritesEachStepWithItsTimeOnlyWhenTimingIsOn) {
  const FakeClock clock;
  const AttachedLog log(clock);
  std::chrono::milliseconds now{0};
  clsStopWatch watch([&] { return now; });
  for (const bool on : {false, true}) {
    ErrorHandling().Switches.LogTiming = on;
    watch.StartWatch("one", "g");
    now += std::chrono::milliseconds(5);
    watch.AddWatch("two", "g");
    now += std::chrono::milliseconds(7);
    watch.StopWatchAndMsg();
  }
  EXPECT_EQ(log.Debug(), "Timing | Over all: 12 ms | g, one: 5 ms | g, two: 7 ms\n");
}

}  // namespace
}  // namespace vorlix
