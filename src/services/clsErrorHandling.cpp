#include "services/clsErrorHandling.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <exception>
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
  rowCount_ = store.IsReady() ? store.RowCount(kFileLogError) : 0;
}

void clsErrorHandling::Detach() {
  Trace_Flush();
  store_ = nullptr;
  clock_ = nullptr;
  showMessage_ = nullptr;
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
  if (store_ == nullptr || !store_->IsReady()) {
    // Before the data root is known there is no file to write to; a failing start must not be mute.
    std::fprintf(stderr, "%s\n", ToUtf8(line).c_str());
  } else {
    store_->FileWrite_Log(kFileLogError, line, kErrorLogLimitKB);
    rowCount_ = store_->RowCount(kFileLogError);
  }
  if (message && showMessage_) {
    const Texts& texts = LoadTexts();
    showMessage_(texts.errorRaised + std::string(kLineEnd) + texts.seeFile + ": " + std::string(kFileLogError),
                 kMsgWarning, {});
  }
} catch (const std::exception& fault) {
  if (showMessage_) showMessage_("Error in ExceptionHandler" + std::string(kLineEnd) + fault.what(), kMsgWarning, {});
}

std::string clsErrorHandling::VersionText() const {
  return identifier_ + " v" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor);
}

// Days, hours, minutes and seconds since the program began, for the main program only; a blank keeps them off the
// version in front.
std::string clsErrorHandling::Uptime() const {
  if (identifier_ != "PRG" || clock_ == nullptr) return {};
  const long long seconds = std::llround(clock_->Now().DaysSince(startTime_) * 86400);
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

void clsErrorHandling::AddTraceEntry(std::string_view routine, const std::string& parameters) {
  if (traceWarningPending_) WarnOfTracing();
  if (!CanTrace()) return;
  repeatCount_ = static_cast<std::int16_t>(routine == lastRoutine_ ? repeatCount_ + 1 : 1);
  lastRoutine_ = routine;
  const DateTime now = clock_ == nullptr ? DateTime() : clock_->Now();
  if (!traceQueue_) {
    traceQueue_ = std::make_unique<clsCollection>();
    traceQueue_->Queue_InfoDealy = kTraceGroup;
    traceQueue_->QueueAdded = [this] { Trace_Flush(); };
  }
  traceQueue_->Queue_Add(LogDatePrefix(now) + VersionText() + "  " + std::string(routine) + " " +
                         Padded(repeatCount_, 2) + ControlsNamed(parameters));
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

void clsErrorHandling::Trace_Flush() {
  if (!traceQueue_ || traceQueue_->Count() == 0 || store_ == nullptr || !store_->IsReady()) return;
  std::string lines;
  for (const auto& entry : traceQueue_->GetCollection()) {
    lines += std::get<std::string>(entry.value) + std::string(kLineEnd);
  }
  if (store_->AppendLines(kFileLogTrace, lines)) traceQueue_->Clear();
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
