// How the program reads and writes its data files: read whole, appended in one write, rewritten in place, kept safe by
// backup generations. Holds no state of its own; the write counter of the rotation is shared by all of one program.
//
// Paths are real paths with "/"; Folders::GetMainPath makes them.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "data/modAPI_INI.h"
#include "data/paths.h"
#include "platform/FileStore.h"
#include "services/DateTime.h"

namespace vorlix {

class clsFiles {
 public:
  // What the rotation shares across the program.
  struct Rotation {
    std::int16_t BackupWriteCounter = 0;
    std::function<int()> backupCountStep;  // the setting, 0 for a backup at each write; empty: no rotation
  };

  // All must outlive the object.
  clsFiles(FileStore& files, modAPI_INI& ini, const CivilClock& clock, Rotation& rotation)
      : files_(files), ini_(ini), clock_(clock), rotation_(rotation) {}

  FileStore& Store() { return files_; }

  // The marker of a run that goes on; a run that did not end in order leaves it set.
  void SetSession(bool running);
  bool IsLastSessionCrashed();

  // Appends a data line; each time the shared counter reaches the step, the file's backups are rotated first.
  bool FileWrite_Data(const std::string& path, std::string_view line, int backupCount);
  // Keeps `count` generations: ".bak" and ".b01" to ".b0" + (count - 1). `delay` runs before the renames and the copy.
  void FileMakeBackup(const std::string& path, int count, const std::function<void()>& delay = {});
  // Whether a file is missing, empty or cannot be read while its newest generation has content.
  bool IsPoorerThanBackup(const std::string& path);
  // Appends date, two blanks, time, two blanks and the text. A file above `maximumKB` (below 1: no limit) first loses
  // lines from its beginning, down to three quarters.
  bool FileWrite_Log(const std::string& path, std::string_view text, int maximumKB);

  // The whole file; empty when it is missing. lineCount counts CR LF, plus a last line without; a text without any CR
  // LF gives half its LF plus one, by which callers size their arrays.
  std::string fOpenFileToStream(const std::string& path, int& lineCount);
  // Splits the trimmed text and empties it; with CR LF as delimiter a text that has only LF is split at LF.
  static std::vector<std::string> fStreamToArray(std::string& stream, std::string_view delimiter = "\r\n");
  // Writes each element that is not empty, as a line; at most 32767 elements.
  bool WriteArrayToFile(const std::string& path, const std::vector<std::string>& lines);
  // Writes the text with a closing CR LF, behind what is there or in its place. A failure is logged and told.
  bool MakeFile(const std::string& path, std::string_view text, bool append);
  // True if the file has `maximum` lines or more; `count` is set to its lines.
  bool CheckFileMaxLines(const std::string& path, int maximum, int& count);
  int GetFileRowCount(const std::string& path);
  // `count` + 1 lines from the beginning, or the last ones from upper bound minus `count` on; -1 means all. Lines that
  // are comments (";") only when asked for.
  static std::string fStream_GetLastLines(const std::string& stream, int count, bool fromEnd, bool withComments);
  // Without line ends at the beginning and the end.
  static std::string TrimCR(std::string_view text);

  bool FileRename(const std::string& source, const std::string& target);
  bool FileDelete(const std::string& file);  // true if it does not exist
  bool FileCopy(const std::string& source, const std::string& target, bool overwrite);
  bool FileExist(const std::string& file) const { return files_.Stat(file).IsFile(); }
  bool fDirExist(std::string_view path, bool create);

 private:
  void DeleteOne(const std::string& step, const std::string& file);
  void RotateOne(const std::string& from, const std::string& to);
  void Report(const std::string& step, bool good, std::string_view failure) const;

  FileStore& files_;
  modAPI_INI& ini_;
  const CivilClock& clock_;
  Rotation& rotation_;
};

}  // namespace vorlix
