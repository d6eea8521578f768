#include "data/clsFiles.h"

#include <utility>

#include "services/clsErrorHandling.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::size_t kMostElements = 32767;  // the width of a 16-bit loop index; callers rely on the fault beyond it
constexpr int kFaultOverflow = 6;
constexpr std::string_view kSessionFile = R"(\data\session.ini)";

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) {
    ++count;
  }
  return count;
}

std::size_t RowsOf(std::string_view text) {
  if (text.empty()) return 0;
  return CountOf(text, kLineEnd) + (text.ends_with(kLineEnd) ? 0 : 1);
}

bool IsComment(std::string_view line) {
  return Trim(line).starts_with(';');
}

// What is left of a text, at most so many bytes, when whole lines are cut off at its beginning.
std::string LastLines(const std::string& text, std::size_t most) {
  if (text.size() <= most) return text;
  const auto lineEnd = text.find('\n', text.size() - most - 1);
  return lineEnd == std::string::npos ? std::string() : text.substr(lineEnd + 1);
}

// What the names of a file's generations begin with.
std::string GenerationBase(const std::string& path) {
  const auto name = path.rfind('/') + 1;  // a folder keeps a ".txt" of its own
  return path.substr(0, name) + Replace(path.substr(name), ".txt", "");
}

std::string Newest(const std::string& base) {
  return base + ".bak";
}

std::string Generation(const std::string& base, int number) {
  return base + ".b0" + std::to_string(number);
}

}  // namespace

void clsFiles::SetSession(bool running) {
  ini_.SetSettStr("Session", "Run", running ? "1" : "0", kSessionFile);
}

bool clsFiles::IsLastSessionCrashed() {
  return ini_.GetSettBool("Session", "Run", false, kSessionFile);
}

bool clsFiles::FileWrite_Data(const std::string& path, std::string_view line, int backupCount) {
  return Trapped(
      "clsFiles_FileWrite_Data",
      [&] {
        if (FileExist(path) && rotation_.backupCountStep) {
          if (++rotation_.BackupWriteCounter >= rotation_.backupCountStep()) {
            rotation_.BackupWriteCounter = 0;
            FileMakeBackup(path, backupCount);
          }
        }
        return MakeFile(path, line, true);
      },
      path);
}

void clsFiles::FileMakeBackup(const std::string& path, int count, const std::function<void()>& delay) {
  if (count < 1) return;
  Trapped(
      "clsFiles_FileMakeBackup",
      [&] {
        const std::string base = GenerationBase(path);
        const std::string newest = Newest(base);
        if (count > 1) {
          DeleteOne("Del=", Generation(base, count - 1));
          if (delay) delay();
          for (int i = count - 2; i >= 1; --i) {
            RotateOne(Generation(base, i), Generation(base, i + 1));
          }
          RotateOne(newest, Generation(base, 1));
        } else {
          DeleteOne("Delete=", newest);
        }
        if (delay) delay();
        Report("Copy=" + newest, FileExist(path) && FileCopy(path, newest, true), "FileNotExist");
      },
      path, count);
}

bool clsFiles::IsPoorerThanBackup(const std::string& path) {
  std::string content;
  if (files_.Read(path, content) && !content.empty()) return false;
  return files_.Stat(Newest(GenerationBase(path))).size > 0;
}

void clsFiles::DeleteOne(const std::string& step, const std::string& file) {
  Report(step + file, FileExist(file) && FileDelete(file), " Not found");
}

void clsFiles::RotateOne(const std::string& from, const std::string& to) {
  const bool there = FileExist(from);
  Report("Ren=" + from, there && FileRename(from, to), there ? "FileExist" : " Not found");
}

// The rotation goes on whatever a single step gave; who looks for the reason switches the trace on.
void clsFiles::Report(const std::string& step, bool good, std::string_view failure) const {
  if (!ErrorHandling().Tracing()) return;
  ErrorHandling().LogDebug_Trace("clsFiles_FileMakeBackup", {step + std::string(good ? " OK" : failure)});
}

bool clsFiles::FileWrite_Log(const std::string& path, std::string_view text, int maximumKB) {
  const std::string line = LogDatePrefix(clock_.Now()) + std::string(text) + std::string(kLineEnd);
  const std::size_t limit = maximumKB < 1 ? 0 : static_cast<std::size_t>(maximumKB) * 1024;
  std::string log;
  // A log that cannot be read is not thrown away for being too long.
  if (limit == 0 || files_.Stat(path).size <= limit || !files_.Read(path, log)) {
    return static_cast<bool>(AppendMakingFolder(files_, path, line, false));
  }
  return static_cast<bool>(files_.Overwrite(path, LastLines(log, limit - limit / 4) + line));
}

std::string clsFiles::fOpenFileToStream(const std::string& path, int& lineCount) {
  return Trapped(
      "clsFiles_fOpenFileToStream",
      [&] {
        lineCount = 0;
        std::string text;
        if (!FileExist(path)) return text;
        if (const IoResult read = files_.Read(path, text); !read) throw Fault(read.error, read.text);
        const bool onlyLf =
            !text.empty() && text.find(kLineEnd) == std::string::npos && text.find('\n') != std::string::npos;
        lineCount = static_cast<int>(onlyLf ? CountOf(text, "\n") / 2 + 1 : RowsOf(text));
        return text;
      },
      path);
}

std::vector<std::string> clsFiles::fStreamToArray(std::string& stream, std::string_view delimiter) {
  const std::string text = std::exchange(stream, {});
  const bool onlyLf = delimiter == kLineEnd && text.find(kLineEnd) == std::string::npos;
  return Split(Trim(text), onlyLf ? "\n" : delimiter);
}

bool clsFiles::WriteArrayToFile(const std::string& path, const std::vector<std::string>& lines) {
  return Trapped(
      "clsFiles_WriteArrayToFile",
      [&] {
        if (lines.size() > kMostElements) throw Fault(kFaultOverflow, "Overflow");
        std::string text;
        for (const std::string& line : lines) {
          if (!line.empty()) text += line + std::string(kLineEnd);
        }
        const IoResult written = OverwriteMakingFolder(files_, path, text);
        if (!written) throw Fault(written.error, written.text);
        return true;
      },
      path);
}

bool clsFiles::MakeFile(const std::string& path, std::string_view text, bool append) {
  const std::string line = std::string(text) + std::string(kLineEnd);
  const IoResult written =
      append ? AppendMakingFolder(files_, path, line, true) : OverwriteMakingFolder(files_, path, line);
  if (!written) ErrorHandling().ErrorLogWithMsgBox("clsFiles_MakeFile", {path}, written.error, written.text);
  return static_cast<bool>(written);
}

bool clsFiles::CheckFileMaxLines(const std::string& path, int maximum, int& count) {
  count = GetFileRowCount(path);
  return count >= maximum;
}

int clsFiles::GetFileRowCount(const std::string& path) {
  std::string text;
  if (!FileExist(path) || !files_.Read(path, text)) return 0;
  return static_cast<int>(RowsOf(text));
}

std::string clsFiles::fStream_GetLastLines(const std::string& stream, int count, bool fromEnd, bool withComments) {
  std::string text = stream;
  const std::vector<std::string> lines = fStreamToArray(text);
  const int upper = static_cast<int>(lines.size()) - 1;
  const int wanted = count < 0 || count > upper ? upper : count;
  const int first = fromEnd ? upper - wanted : 0;
  std::string part;
  for (int i = first; i <= first + wanted; ++i) {
    const std::string& line = lines[static_cast<std::size_t>(i)];
    if (withComments || !IsComment(line)) part += line + std::string(kLineEnd);
  }
  return TrimCR(part);
}

std::string clsFiles::TrimCR(std::string_view text) {
  while (text.starts_with(kLineEnd))
    text.remove_prefix(2);
  while (text.ends_with(kLineEnd))
    text.remove_suffix(2);
  while (text.starts_with('\n'))
    text.remove_prefix(1);
  while (text.ends_with('\n'))
    text.remove_suffix(1);
  return std::string(text);
}

bool clsFiles::FileRename(const std::string& source, const std::string& target) {
  return static_cast<bool>(files_.Rename(source, target));
}

bool clsFiles::FileDelete(const std::string& file) {
  return static_cast<bool>(files_.Remove(file));
}

bool clsFiles::FileCopy(const std::string& source, const std::string& target, bool overwrite) {
  return static_cast<bool>(files_.Copy(source, target, overwrite));
}

bool clsFiles::fDirExist(std::string_view path, bool create) {
  if (path.empty()) return false;
  const std::string folder = WithoutFinalSlash(fFileSep(path));
  if (files_.Stat(folder).IsFolder()) return true;
  return create && MakeDirectory(files_, folder);
}

}  // namespace vorlix
