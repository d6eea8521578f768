// A LogStore that keeps its files in memory and can fail on demand. Log lines carry no date, so that a test can name
// them.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>

#include "services/clsErrorHandling.h"

namespace vorlix {

class MemoryLogStore : public LogStore {
 public:
  bool ready = true;
  bool canWrite = true;
  bool throws = false;
  std::function<void()> whileWriting;  // runs inside each write
  int appends = 0;
  std::map<std::string, std::string> files;

  std::string Text(const std::string& path) const {
    const auto file = files.find(path);
    return file == files.end() ? std::string() : file->second;
  }

  bool IsReady() const override { return ready; }
  bool FileWrite_Log(std::string_view path, std::string_view text, int) override {
    if (whileWriting) whileWriting();
    if (throws) throw Fault(70, "no access");
    if (canWrite) files[std::string(path)] += std::string(text) + "\n";
    return canWrite;
  }
  bool AppendLines(std::string_view path, std::string_view lines) override {
    if (whileWriting) whileWriting();
    if (!canWrite) return false;
    ++appends;
    files[std::string(path)] += lines;
    return true;
  }
  bool Remove(std::string_view path) override { return files.erase(std::string(path)) > 0; }
  int RowCount(std::string_view path) override {
    const std::string text = Text(std::string(path));
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  }
  std::string DataRoot() const override { return "/data-root"; }
};

}  // namespace vorlix
