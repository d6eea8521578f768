// The start of the program as one list of phases in their order. Rooms attach their job to a phase; a phase without a
// job only leaves its trace. Each phase runs under the error trap: one that fails is logged, and the start goes on.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/MessageLoop.h"
#include "services/clsStopWatch.h"

namespace vorlix {

// In the order in which they run.
enum class StartPhase {
  kOperatingSystem,
  kOtherCopy,
  kPaths,
  kClosingAlready,
  kFirstRunDefaults,
  kFirstStart,
  kServiceLink,
  kGlobalLanguage,
  kLanguage,
  kCheckDirectories,
  kClearOldFilesAndPaths,
  kCheckReverseOfJournal,
  kDialPads,
  kLoadTAPIData,
  kMSNRead,
  kLoadSetting,
  kDisplayElementsLoad,
  kInitArrays,
  kInitObjects,
  kFileBackup,
  kMailTemplates,
  kSetDisplayFont,
  kLoadOVW,
  kLoadLVW,
  kLoadProvider,
  kSearch,
  kSetMultiMonPos,
  kNumberCache,
  kLoadCursorData,
  kBlackList,
  kLoadFeiertage,
  kBookDataRead,
  kLoadVCardArray,
  kSettHotKeys,
  kOpenRestore,
  kTimers,
  kInitWait,
  kShowTrayIcon,
  kLoadSettingsAVM,
  kLoadSettingsNCID,
  kRegisterCAPI,
  kRegisterAVM,
  kRegisterNCID,
  kPreload,
  kLoadNewCalls,
  kLoadVCard,
  kUnloadSplashScreen,
  kSetSession,
  kButtons,
  kDisplayResize,
};

enum class StartResult {
  kGoOn,
  kEnd,   // the program ends here
  kWait,  // goes on when Continue() is called
};

class StartUp {
 public:
  using Job = std::function<StartResult()>;

  // The loop must outlive the object.
  explicit StartUp(MessageLoop& loop);

  void On(StartPhase phase, Job job) { jobs_[phase] = std::move(job); }
  // A job that never ends or holds the start.
  void Do(StartPhase phase, std::function<void()> job);
  // The traces in front of a phase's job are written, and the job runs, only where this holds.
  void When(StartPhase phase, std::function<bool()> condition) { conditions_[phase] = std::move(condition); }

  // Ends the start in front of the next phase once this holds.
  void EndWhen(std::function<bool()> isClosing) { isClosing_ = std::move(isClosing); }

  // Runs the phases from the first; false when the program is to end. A phase that waits gives true, and Continue()
  // runs the rest later.
  bool Run();
  bool Continue();
  // True once that phase is over.
  bool HasRun(StartPhase phase) const;
  // True once the last phase has run.
  bool IsComplete() const { return complete_; }

 private:
  StartResult RunPhase(std::size_t index);

  clsStopWatch watch_;
  std::map<StartPhase, Job> jobs_;
  std::map<StartPhase, std::function<bool()>> conditions_;
  std::function<bool()> isClosing_;
  std::size_t next_ = 0;
  bool complete_ = false;
};

// Waits once without holding the loop, then calls back. Destroying it ends the wait without a call.
class StartWait {
 public:
  StartWait(MessageLoop& loop, std::chrono::seconds duration, std::function<void()> then);

 private:
  std::unique_ptr<Timer> timer_;
};

}  // namespace vorlix
