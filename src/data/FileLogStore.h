// The log files of the error handling, in the data folder.
#pragma once

#include "data/Folders.h"
#include "data/clsFiles.h"
#include "services/clsErrorHandling.h"

namespace vorlix {

class FileLogStore : public LogStore {
 public:
  // Both must outlive the object.
  FileLogStore(clsFiles& files, const Folders& folders) : files_(files), folders_(folders) {}

  bool IsReady() const override { return !folders_.ProgramData().empty(); }
  bool FileWrite_Log(std::string_view path, std::string_view text, int maximumKB) override {
    return files_.FileWrite_Log(folders_.GetMainPath(path), text, maximumKB);
  }
  bool AppendLines(std::string_view path, std::string_view lines) override {
    return static_cast<bool>(AppendMakingFolder(files_.Store(), folders_.GetMainPath(path), lines, false));
  }
  bool Remove(std::string_view path) override { return files_.FileDelete(folders_.GetMainPath(path)); }
  int RowCount(std::string_view path) override { return files_.GetFileRowCount(folders_.GetMainPath(path)); }
  std::string DataRoot() const override { return folders_.ProgramData(); }

 private:
  clsFiles& files_;
  const Folders& folders_;
};

}  // namespace vorlix
