// The one place where the program reports on itself: error log, routine trace and the category logs. One object exists
// in the process, made before anything else can fail and reached through ErrorHandling().
//
// Every public routine of the program runs its body through Trapped() (below): a fault ends the routine, stands in
// "error.log" as one line, and the caller sees an empty or false result.
#pragma once

#include <concepts>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "services/DateTime.h"
#include "services/clsCollection.h"

namespace vorlix {

// A fault with the number that the error log shows.
class Fault : public std::runtime_error {
 public:
  Fault(int number, const std::string& description) : std::runtime_error(description), number_(number) {}
  int Number() const { return number_; }

 private:
  int number_;
};

// Never logged, also when forced: the user gave up a dialog.
inline constexpr int kFaultCancelled = 401;

// One argument of a traced routine.
struct TraceParam {
  enum class Kind { kText, kFlag, kNumber, kOther };
  Kind kind = Kind::kOther;
  std::string text;
  double number = 0;

  TraceParam(std::string_view value) : kind(Kind::kText), text(value) {}
  TraceParam(const std::string& value) : kind(Kind::kText), text(value) {}
  TraceParam(const char* value) : kind(Kind::kText), text(value) {}
  template <class T>
  requires std::is_arithmetic_v<T> TraceParam(T value)
      : kind(std::same_as<T, bool> ? Kind::kFlag : Kind::kNumber), number(static_cast<double>(value)) {}
  TraceParam(std::nullptr_t) {}
};
using TraceParams = std::vector<TraceParam>;

// Where the log lines go. Paths begin with "\log\"; who implements it knows the data root.
class LogStore {
 public:
  virtual ~LogStore() = default;
  // False until the data root is known; nothing is written before, trace lines wait.
  virtual bool IsReady() const = 0;
  // Appends date, two blanks, time, two blanks and the text, trimming the file from its beginning when it is larger
  // than maximumKB (below 1: no limit).
  virtual bool FileWrite_Log(std::string_view path, std::string_view text, int maximumKB) = 0;
  // Appends whole lines, each already complete with CR LF, in one write; false when the file cannot be opened.
  virtual bool AppendLines(std::string_view path, std::string_view lines) = 0;
  virtual bool Remove(std::string_view path) = 0;
  virtual int RowCount(std::string_view path) = 0;
  // The data root as the user may read it, for messages.
  virtual std::string DataRoot() const = 0;
};

// The switches of "Vorlixspec.ini", section Debug.
struct DebugSwitches {
  bool TraceMode = false;
  bool LogExport = false;
  bool LogCAPI = false;
  bool LogAVM = false;
  bool LogNCID = false;
  bool LogTAPI = false;
  bool LogOther = false;
  bool LogTiming = false;
};

class clsErrorHandling {
 public:
  // Shows a message; style as for a message box. Set by the program once it has a way to show one.
  using ShowMessage = std::function<void(std::string_view text, int style, std::string_view title)>;

  static constexpr std::string_view kFileLogError = R"(\log\error.log)";
  static constexpr std::string_view kFileLogTrace = R"(\log\trace.log)";
  static constexpr std::string_view kFileLogDebug = R"(\log\debug.log)";
  static constexpr int kErrorLogLimitKB = 50;

  clsErrorHandling() = default;
  ~clsErrorHandling();
  clsErrorHandling(const clsErrorHandling&) = delete;
  clsErrorHandling& operator=(const clsErrorHandling&) = delete;

  // Connects the object to the program around it; before, nothing is written. All must outlive the object, or be taken
  // back with Detach(). identifier is "PRG" for the main program; a process without one writes "NON".
  void Attach(LogStore& store, const CivilClock& clock, std::string_view identifier);
  void Detach();
  void SetShowMessage(ShowMessage show) { showMessage_ = std::move(show); }

  DebugSwitches Switches;

  std::string_view FileLogError() const { return kFileLogError; }
  // Whether the first trace entry of a run warns the user.
  void TraceInfoMessage(bool wanted) { traceWarningWanted_ = wanted; }
  // Lines in "error.log"; the file is read for it only after a write.
  int RowCount() const;

  // The pending fault is the argument: number 0 and an empty description when none is pending.
  void ErrorLogForceWrite(std::string_view routine, const TraceParams& params = {}, int number = 0,
                          std::string_view description = {});
  void ErrorLogWithMsgBox(std::string_view routine, const TraceParams& params, int number,
                          std::string_view description);
  void ErrorLogNew(std::string_view routine, const TraceParams& params, int number, std::string_view description);

  bool Tracing() const { return Switches.TraceMode; }
  void LogDebug_Trace(std::string_view routine, const TraceParams& params = {});
  void Trace_Flush();
  // The next n trace entries are not written.
  void TraceHideNextSteps(std::int16_t n) { hideCount_ = n; }
  bool CanTrace();

  void LogDebug_Export(std::string_view text, const TraceParams& params = {});
  void LogDebug_TAPI(std::string_view text, const TraceParams& params = {});
  void LogDebug_CAPI(std::string_view text, const TraceParams& params = {});
  void LogDebug_AVM(std::string_view text, const TraceParams& params = {});
  void LogDebug_NCID(std::string_view text, const TraceParams& params = {});
  void LogDebug_Other(std::string_view text, const TraceParams& params = {});
  void LogDebug_Timing(std::string_view text, const TraceParams& params = {});
  // Without a switch: always writes.
  void LogDebug_Temp(std::string_view text, const TraceParams& params = {});

  // Notes a text that the language file lacks, in "\log\language.log".
  void LogMissingText(std::string_view key, std::string_view fallback);

  // The text of a parameter list: "(S:Meier, N:7)", empty for an empty list.
  static std::string ParameterText(const TraceParams& params);

 private:
  struct Texts {
    std::string errorRaised, seeFile, tracingIsActive, muchData;
  };

  void WriteErrorLine(std::string_view routine, const std::string& parameters, bool message, bool force, int number,
                      std::string_view description);
  void AppendToErrorLog(const std::string& line);
  void ShowOwnFault(const std::string& description) noexcept;
  void WriteDebugLine(bool wanted, std::string_view text, const TraceParams& params);
  void AddTraceEntry(std::string_view routine, const std::string& parameters);
  void WarnOfTracing();
  std::string VersionText() const;
  std::string Uptime() const;
  const Texts& LoadTexts();

  LogStore* store_ = nullptr;
  const CivilClock* clock_ = nullptr;
  std::string identifier_ = "NON";
  ShowMessage showMessage_;
  mutable std::optional<int> rowCount_;  // nothing: the log was written since
  DateTime startTime_;
  bool traceWarningPending_ = true;
  bool traceWarningWanted_ = false;
  std::int16_t hideCount_ = 0;
  std::unique_ptr<Texts> texts_;
  std::string lastRoutine_;
  std::int16_t repeatCount_ = 0;
  std::unique_ptr<clsCollection> traceQueue_;
  bool writing_ = false, flushing_ = false, showingOwnFault_ = false;
};

// The process-wide object.
clsErrorHandling& ErrorHandling();

namespace trap {
// The fault in flight (call it only inside a catch block), with the number under which the log shows it: a Fault's own,
// a system_error's errno, 7 for memory, 6 for overflow, 9 for a subscript out of range, 5 for anything else.
std::pair<int, std::string> CurrentFault();
void Report(std::string_view routine, const TraceParams& params);
}  // namespace trap

// Runs the body of a routine: writes its trace entry, and turns whatever it throws into a line of the error log and a
// value-initialised result. Routine names read "module.routine" or "class_routine". With tracing off it costs the test
// of one flag.
template <class Body, class... Params>
auto Trapped(std::string_view routine, Body&& body, const Params&... params) -> std::invoke_result_t<Body> {
  using Result = std::invoke_result_t<Body>;
  try {
    if (ErrorHandling().Tracing()) ErrorHandling().LogDebug_Trace(routine, TraceParams{TraceParam(params)...});
    return std::forward<Body>(body)();
  } catch (...) {
    trap::Report(routine, TraceParams{TraceParam(params)...});
  }
  if constexpr (!std::is_void_v<Result>) return Result{};
}

}  // namespace vorlix
