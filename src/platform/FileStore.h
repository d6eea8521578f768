// Files and folders. Paths are Windows-1252 texts with "/"; the implementation turns them into the system's form. A
// write is whole or says why not: no routine leaves a half line behind. This port has more methods than others because
// a test must be able to fail each of them on its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vorlix {

// How an operation went: error is 0, or the system's error number with a text "open journal.txt: Permission denied".
struct [[nodiscard]] IoResult {
  int error = 0;
  std::string text;
  explicit operator bool() const { return error == 0; }
};

struct FileInfo {
  enum class Kind { kMissing, kFile, kFolder };
  Kind kind = Kind::kMissing;
  std::uint64_t size = 0;
  std::int64_t modified = 0;   // nanoseconds since 1970, UTC; only for comparing
  std::uint64_t identity = 0;  // another file under the same name has another
  std::uint64_t device = 0;    // the drive that it lies on
  bool IsFile() const { return kind == Kind::kFile; }
  bool IsFolder() const { return kind == Kind::kFolder; }
  friend bool operator==(const FileInfo&, const FileInfo&) = default;
};

class FileStore {
 public:
  virtual ~FileStore() = default;

  virtual FileInfo Stat(const std::string& path) const = 0;
  virtual IoResult Read(const std::string& path, std::string& bytes) const = 0;
  // Puts `bytes` in place of the file's content, or makes the file: in place, one write over the old content, the
  // length cut last. On a full disk the old content may be damaged from the front, never silently.
  virtual IoResult Overwrite(const std::string& path, std::string_view bytes) = 0;
  // Adds `bytes` at the end in one write, or makes the file. If not all of them fit, the part is taken back.
  // With `ownLine`, a file that does not end with a line end gets one first, within the same write.
  virtual IoResult Append(const std::string& path, std::string_view bytes, bool ownLine = false) = 0;
  virtual IoResult Rename(const std::string& from, const std::string& to) = 0;
  // A file that does not exist counts as removed.
  virtual IoResult Remove(const std::string& path) = 0;
  // A target that was made for it and could not be filled is removed.
  virtual IoResult Copy(const std::string& from, const std::string& to, bool overwrite) = 0;
  // Makes one folder, its parents must exist; mode 0700.
  virtual IoResult MakeFolder(const std::string& path) = 0;
  // Names in a folder, sorted, without "." and ".."; empty when it cannot be read.
  virtual std::vector<std::string> List(const std::string& path) const = 0;
  // Whether this user may make files in the folder.
  virtual bool IsWritableFolder(const std::string& path) const = 0;
};

}  // namespace vorlix
