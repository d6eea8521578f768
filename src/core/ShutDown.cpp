#include "core/ShutDown.h"

#include <string>
#include <utility>

#include "services/clsErrorHandling.h"

namespace vorlix {
namespace {

struct StepRow {
  UnloadStep step;
  const char* trace;  // nullptr: none
};

constexpr StepRow kSteps[] = {
    {UnloadStep::kSaveAreaBuffer, "Unload save area buffer"},
    {UnloadStep::kSaveSettings, "Unload save settings"},
    {UnloadStep::kReleaseCAPI, "Unload CAPI release"},
    {UnloadStep::kTerminateHelpers, "Unload AVM callback"},
    {UnloadStep::kStopTimers, "Unload stop timers"},
    {UnloadStep::kRemoveHotKeys, "Unload remove hotkeys"},
    {UnloadStep::kUnloadForms, "Unload forms"},
    {UnloadStep::kRemoveTray, "Unload remove tray"},
    {UnloadStep::kEndSession, "Unload session"},
    {UnloadStep::kUnloadClasses, "Unload classes"},
    {UnloadStep::kRestart, nullptr},
};

void Trace(std::string_view step) {
  ErrorHandling().LogDebug_Timing(step);
}

}  // namespace

ShutDown::ShutDown(MainTimers& timers, PipelineState& state) : timers_(timers), state_(state) {
  timers_.tmExit->SetTick([this] { ExitTick(); });
}

void ShutDown::Request(UnloadReason reason) {
  reason_ = reason;
  state_.ExitInProgress = true;
  timers_.tmExit->SetEnabled(true);
}

void ShutDown::ExitTick() {
  const auto unload = std::exchange(unloadPendingBook_, nullptr);
  if (unload && unload()) return;  // the timer runs again
  timers_.tmExit->SetEnabled(false);
  Run(reason_);
}

void ShutDown::Run(UnloadReason reason) {
  if (std::exchange(running_, true)) return;
  state_.ExitInProgress = true;
  Trace(reason == UnloadReason::kSystem ? "Unloading by system" : "Unloading by user");
  Trace("Unloading ok");
  for (const StepRow& row : kSteps) {
    if (row.trace != nullptr) Trace(row.trace);
    const auto condition = conditions_.find(row.step);
    const bool isWanted = condition == conditions_.end() || condition->second();
    if (const auto job = jobs_.find(row.step); isWanted && job != jobs_.end()) {
      Trapped(
          "fMain.Form_Unload", [&] { job->second(reason); }, row.trace == nullptr ? "" : row.trace);
    }
    if (row.step == UnloadStep::kUnloadClasses) Trace("Unload complete");
  }
}

}  // namespace vorlix
