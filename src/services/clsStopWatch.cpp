#include "services/clsStopWatch.h"

#include "services/clsErrorHandling.h"
#include "services/text.h"

namespace vorlix {

void clsStopWatch::StartWatch(std::string_view name, std::string_view group) {
  rows_.clear();
  if (!ErrorHandling().Switches.LogTiming) return;
  const auto now = ticks_();
  rows_.push_back({"Over all", {}, now, {}, true});
  rows_.push_back({std::string(name), std::string(group), now, {}, true});
}

void clsStopWatch::AddWatch(std::string_view name, std::string_view group, bool end) {
  if (rows_.empty()) return;
  CloseCurrent();
  if (!end && rows_.size() < kMostEntries) rows_.push_back({std::string(name), std::string(group), ticks_(), {}, true});
}

void clsStopWatch::StopWatchAndMsg() {
  if (rows_.empty()) return;
  CloseCurrent();
  rows_.front().end = ticks_();
  std::string block = "Timing";
  for (const Row& row : rows_) {
    const std::string group = row.group.empty() ? "" : row.group + ", ";
    block += " | " + group + row.name + ": " + std::to_string((row.end - row.start).count()) + " ms";
  }
  ErrorHandling().LogDebug_Timing(block);
  rows_.clear();
}

// The row "Over all" stays open to the end.
void clsStopWatch::CloseCurrent() {
  Row& current = rows_.back();
  if (rows_.size() < 2 || !current.open) return;
  current.end = ticks_();
  current.open = false;
}

}  // namespace vorlix
