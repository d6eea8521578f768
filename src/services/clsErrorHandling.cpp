#include "services/clsErrorHandling.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
#include <limits>
#include <new>
#include <system_error>

#include "services/ansi.h"
#include "services/modAll_MsgBox.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"
#include "services/version.h"

namespace vorlix {
namespace {

constexpr std::int16_t kTraceGroup = 50;

std::string NumberText(double number) {
  std::array<char, 32> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
  return {text.data(), result.ptr};
}

std::string FieldOf(const TraceParam& param) {
  switch (param.kind) {
    case TraceParam::Kind::kText:
      return "S:" + param.text;
    case TraceParam::Kind::kFlag:
      return std::string("B:") + (param.number != 0 ? "1" : "0");
    case TraceParam::Kind::kNumber:
      return "N:" + NumberText(param.number);
    case TraceParam::Kind::kOther:
      break;
  }
  return {};
}

std::string ControlsNamed(std::string_view text) {
  std::string out;
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < 32) {
      out += "#[" + std::to_string(byte) + "]";
    } else {
      out += character;
    }
  }
  return out;
}

void WriteToTerminal(std::string_view text) {
  std::fprintf(stderr, "%s\n", ToUtf8(text).c_str());
}

// Set while a block runs, however it ends.
class Mark {
 public:
  explicit Mark(bool& flag) : flag_(flag) { flag_ = true; }
  ~Mark() { flag_ = false; }
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;

 private:
  bool& flag_;
};

}  // namespace

clsErrorHandling& ErrorHandling() {
  static clsErrorHandling handling;
  return handling;
}

clsErrorHandling::~clsErrorHandling() {
  Detach();
}

void clsErrorHandling::Attach(LogStore& store, const CivilClock& clock, std::string_view identifier) {
  store_ = &store;
  clock_ = &clock;
  identifier_ = identifier;
  startTime_ = clock.Now();
  rowCount_.reset();
}

void clsErrorHandling::Detach() {
  Trace_Flush();
  store_ = nullptr;
  clock_ = nullptr;
  showMessage_ = nullptr;
}

int clsErrorHandling::RowCount() const {
  if (store_ == nullptr || !store_->IsReady()) return 0;
  if (!rowCount_) rowCount_ = store_->RowCount(kFileLogError);
  return *rowCount_;
}

void clsErrorHandling::ErrorLogForceWrite(std::string_view routine, const TraceParams& params, int number,
                                          std::string_view description) {
  WriteErrorLine(routine, ParameterText(params), false, true, number, description);
}

void clsErrorHandling::ErrorLogWithMsgBox(std::string_view routine, const TraceParams& params, int number,
                                          std::string_view description) {
  WriteErrorLine(routine, ParameterText(params), true, false, number, description);
}

void clsErrorHandling::ErrorLogNew(std::string_view routine, const TraceParams& params, int number,
                                   std::string_view description) {
  WriteErrorLine(routine, ParameterText(params), false, false, number, description);
}

void clsErrorHandling::WriteErrorLine(std::string_view routine, const std::string& parameters, bool message, bool force,
                                      int number, std::string_view description) try {
  if (number == kFaultCancelled || (!force && number == 0)) return;
  if (Tracing())
    AddTraceEntry("!ERROR!", parameters + " - " + std::to_string(number) + ", " + std::string(description));
  std::string line = VersionText() + Uptime() + " " + std::string(routine);
  if (force || number != 0) line += " + " + std::to_string(number);
  if (force || !description.empty()) line += " + " + ControlsNamed(description);
  if (!parameters.empty()) line += " Params" + ControlsNamed(parameters);
  AppendToErrorLog(line);
  if (message && showMessage_) {
    const Texts& texts = LoadTexts();
    showMessage_(texts.errorRaised + std::string(kLineEnd) + texts.seeFile + ": " + std::string(kFileLogError),
                 kMsgWarning, {});
  }
} catch (...) {
  ShowOwnFault(trap::CurrentFault().second);
}

// Before the data root is known there is no file to write to, and a failing start must not be mute. A fault that comes
// up while a line is being written would come up again at every attempt to write it.
void clsErrorHandling::AppendToErrorLog(const std::string& line) {
  if (writing_ || store_ == nullptr || !store_->IsReady()) {
    WriteToTerminal(line);
    return;
  }
  const Mark mark(writing_);
  if (!store_->FileWrite_Log(kFileLogError, line, kErrorLogLimitKB)) {
    WriteToTerminal(line);
    throw std::runtime_error("write " + std::string(kFileLogError) + ": not possible");
  }
  rowCount_.reset();
}

// The last stop of every fault: nothing may leave it, and a box that fails in turn is not tried again.
void clsErrorHandling::ShowOwnFault(const std::string& description) noexcept try {
  const std::string text = "Error in ExceptionHandler" + std::string(kLineEnd) + description;
  if (!showMessage_ || showingOwnFault_) {
    WriteToTerminal(text);
    return;
  }
  const Mark mark(showingOwnFault_);
  showMessage_(text, kMsgWarning, {});
} catch (...) {
  std::fputs("Error in ExceptionHandler\n", stderr);
}

std::string clsErrorHandling::VersionText() const {
  return identifier_ + " v" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor);
}

// Days, hours, minutes and seconds since the program began, for the main program only; a blank keeps them off the
// version in front. A clock that was set back gives 0.
std::string clsErrorHandling::Uptime() const {
  if (identifier_ != "PRG" || clock_ == nullptr) return {};
  const long long seconds = std::max(0LL, std::llround(clock_->Now().DaysSince(startTime_) * 86400));
  return " " + std::to_string(seconds / 86400) + ":" + Padded(seconds / 3600 % 24, 2) + ":" +
         Padded(seconds / 60 % 60, 2) + ":" + Padded(seconds % 60, 2) + " ";
}

const clsErrorHandling::Texts& clsErrorHandling::LoadTexts() {
  if (!texts_) {
    texts_ = std::make_unique<Texts>(Texts{
        LoadLangKey("Message_ErrorRaised", "Es ist ein Fehler aufgetreten!"_ansi),
        LoadLangKey("Message_SeeFile", "siehe Datei"_ansi),
        LoadLangKey("Message_TracingIsActive", "Die Ablaufverfolgung ist aktiv!"_ansi),
        LoadLangKey("Message_MuchDataInShortTime", "Es werden in kurzer Zeit extrem viele Daten gespeichert!"_ansi)});
  }
  return *texts_;
}

void clsErrorHandling::LogDebug_Trace(std::string_view routine, const TraceParams& params) {
  if (!Tracing() || routine.empty()) return;
  AddTraceEntry(routine, ParameterText(params));
}

// A trace that cannot be kept must not keep the traced routine from running.
void clsErrorHandling::AddTraceEntry(std::string_view routine, const std::string& parameters) try {
  if (traceWarningPending_) WarnOfTracing();
  if (!CanTrace()) return;
  if (routine != lastRoutine_) repeatCount_ = 0;
  if (repeatCount_ < std::numeric_limits<std::int16_t>::max()) ++repeatCount_;
  lastRoutine_ = routine;
  const DateTime now = clock_ == nullptr ? DateTime() : clock_->Now();
  if (!traceQueue_) {
    traceQueue_ = std::make_unique<clsCollection>();
    traceQueue_->Queue_InfoDealy = kTraceGroup;
    traceQueue_->QueueAdded = [this] { Trace_Flush(); };
  }
  traceQueue_->Queue_Add(LogDatePrefix(now) + VersionText() + "  " + std::string(routine) + " " +
                         Padded(repeatCount_, 2) + ControlsNamed(parameters));
} catch (...) {
  ShowOwnFault(trap::CurrentFault().second);
}

void clsErrorHandling::WarnOfTracing() {
  if (store_ == nullptr || !store_->IsReady()) return;
  traceWarningPending_ = false;
  store_->Remove(kFileLogTrace);
  if (!traceWarningWanted_ || !showMessage_) return;
  const Texts& texts = LoadTexts();
  const std::string lineEnd(kLineEnd);
  showMessage_(texts.tracingIsActive + lineEnd + texts.seeFile + ": \\Vorlixspec.ini ([Debug] - TraceMode=1)" +
                   lineEnd + lineEnd + texts.muchData + lineEnd + texts.seeFile + ": " + store_->DataRoot() +
                   std::string(kFileLogTrace),
               kMsgInformation, "Vorlix - Tracing");
}

bool clsErrorHandling::CanTrace() {
  const bool hidden = hideCount_ > 0;
  if (hideCount_ != 0) --hideCount_;
  return !hidden;
}

// Writing may itself be traced: such lines join the queue behind those that go out, and wait for the next flush.
void clsErrorHandling::Trace_Flush() try {
  if (flushing_ || !traceQueue_ || store_ == nullptr || !store_->IsReady()) return;
  const std::size_t count = traceQueue_->Count();
  if (count == 0) return;
  const Mark mark(flushing_);
  std::string lines;
  for (const auto& entry : traceQueue_->GetCollection()) {
    lines += std::get<std::string>(entry.value) + std::string(kLineEnd);
  }
  if (!store_->AppendLines(kFileLogTrace, lines)) return;
  for (std::size_t i = 0; i < count; ++i) {
    traceQueue_->RemoveFirst();
  }
} catch (...) {
  ShowOwnFault(trap::CurrentFault().second);
}

std::string clsErrorHandling::ParameterText(const TraceParams& params) {
  if (params.empty()) return {};
  std::vector<std::string> fields;
  for (const TraceParam& param : params) {
    fields.push_back(FieldOf(param));
  }
  return "(" + Replace(Join(fields, ", "), kLineEnd, "<CR>") + ")";
}

void clsErrorHandling::WriteDebugLine(bool wanted, std::string_view text, const TraceParams& params) {
  if (!wanted || store_ == nullptr || !store_->IsReady()) return;
  store_->FileWrite_Log(kFileLogDebug, ControlsNamed(std::string(text) + ParameterText(params)), 0);
}

void clsErrorHandling::LogMissingText(std::string_view key, std::string_view fallback) {
  if (store_ == nullptr || !store_->IsReady()) return;
  store_->FileWrite_Log(R"(\log\language.log)",
                        VersionText() + " | " + std::string(key) + " | " + std::string(fallback), 0);
}

void clsErrorHandling::LogDebug_Export(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogExport, text, params);
}
void clsErrorHandling::LogDebug_TAPI(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogTAPI, text, params);
}
void clsErrorHandling::LogDebug_CAPI(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogCAPI, text, params);
}
void clsErrorHandling::LogDebug_AVM(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogAVM, text, params);
}
void clsErrorHandling::LogDebug_NCID(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogNCID, text, params);
}
void clsErrorHandling::LogDebug_Other(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogOther, text, params);
}
void clsErrorHandling::LogDebug_Timing(std::string_view text, const TraceParams& params) {
  WriteDebugLine(Switches.LogTiming, text, params);
}
void clsErrorHandling::LogDebug_Temp(std::string_view text, const TraceParams& params) {
  WriteDebugLine(true, text, params);
}

namespace trap {

std::pair<int, std::string> CurrentFault() {
  try {
    throw;
  } catch (const Fault& fault) {
    return {fault.Number(), fault.what()};
  } catch (const std::system_error& fault) {
    return {fault.code().value(), fault.what()};
  } catch (const std::bad_alloc& fault) {
    return {7, fault.what()};
  } catch (const std::overflow_error& fault) {
    return {6, fault.what()};
  } catch (const std::out_of_range& fault) {
    return {9, fault.what()};
  } catch (const std::exception& fault) {
    return {5, fault.what()};
  } catch (...) {
    return {5, "unknown fault"};
  }
}

void Report(std::string_view routine, const TraceParams& params) {
  const auto [number, description] = CurrentFault();
  ErrorHandling().ErrorLogNew(routine, params, number, description);
}

}  // namespace trap
}  // namespace vorlix
