// Measures the named steps of the start-up and writes them to the timing log. Only LogTiming turns it on.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

class clsStopWatch {
 public:
  static constexpr std::size_t kMostEntries = 100;
  using Ticks = std::function<std::chrono::milliseconds()>;

  explicit clsStopWatch(Ticks ticks) : ticks_(std::move(ticks)) {}

  // Empties the table, opens the row "Over all" and the first step.
  void StartWatch(std::string_view name, std::string_view group = {});
  // Closes the current step and opens the next; with `end` only closes. Beyond 100 entries nothing is added.
  void AddWatch(std::string_view name, std::string_view group = {}, bool end = false);
  // Closes all and writes one block, each step's name and its time in " ms".
  void StopWatchAndMsg();

 private:
  struct Row {
    std::string name, group;
    std::chrono::milliseconds start{}, end{};
    bool open = true;
  };
  void CloseCurrent();

  Ticks ticks_;
  std::vector<Row> rows_;
};

}  // namespace vorlix
