// The end of the program as one list of steps in their order: the driver is released before the helper programs, and
// the session ends when everything is written. Rooms attach their job to a step, as at the start.
#pragma once

#include <functional>
#include <map>
#include <utility>

#include "core/CallPipeline.h"

namespace vorlix {

enum class UnloadStep {
  kSaveAreaBuffer,
  kSaveSettings,
  kReleaseCAPI,
  kTerminateHelpers,
  kStopTimers,
  kRemoveHotKeys,
  kUnloadForms,
  kRemoveTray,
  kEndSession,
  kUnloadClasses,
  kRestart,
};

// Why the program closes.
enum class UnloadReason { kUser = 0, kSystem = 2 };

class ShutDown {
 public:
  using Job = std::function<void(UnloadReason)>;

  // Both must outlive the object.
  ShutDown(MainTimers& timers, PipelineState& state);

  // Unloads the book window when it still has something to do, and gives true; asked once before the closing.
  void SetPendingBook(std::function<bool()> unload) { unloadPendingBook_ = std::move(unload); }

  // Closes the program from the loop, once the routine that asked for it has returned (tmExit).
  void Request(UnloadReason reason);

  void On(UnloadStep step, Job job) { jobs_[step] = std::move(job); }
  // A step's job runs only where this holds.
  void When(UnloadStep step, std::function<bool()> condition) { conditions_[step] = std::move(condition); }
  // Runs the steps; a second call, from a second signal, does nothing.
  void Run(UnloadReason reason);

 private:
  void ExitTick();

  MainTimers& timers_;
  PipelineState& state_;
  std::function<bool()> unloadPendingBook_;
  UnloadReason reason_ = UnloadReason::kUser;
  std::map<UnloadStep, Job> jobs_;
  std::map<UnloadStep, std::function<bool()>> conditions_;
  bool running_ = false;
};

}  // namespace vorlix
