#include "platform/posix/PosixFileStore.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <exception>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/posix/Descriptor.h"
#include "services/ansi.h"
#include "services/text.h"

namespace vorlix {
namespace {

IoResult Failure(std::string_view what, const std::string& path, int error) {
  return {error, FailureText(std::string(what) + " " + path, error)};
}

IoResult Result(bool good, std::string_view what, const std::string& path) {
  return good ? IoResult{} : Failure(what, path, errno);
}

// The error log is written through this store, so a fault in here is not reported there but given back. What can be
// thrown comes from texts and buffers that find no room, whatever its type.
template <class Body>
IoResult Guarded(const std::string& path, Body&& body) {
  try {
    return body();
  } catch (const std::exception&) {
    return Failure("open", path, ENOMEM);
  }
}

// An opened file with the state that it was found in.
struct File {
  Descriptor descriptor;
  bool regular = false;
  std::uint64_t size = 0;
};

// Opening never waits: a FIFO without another end would.
IoResult Open(const std::string& path, int flags, File& file) {
  const std::string systemPath = SystemText(path);
  file.descriptor = Descriptor(open(systemPath.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600));
  struct stat info {};
  if (!file.descriptor || fstat(file.descriptor.Get(), &info) != 0) return Failure("open", path, errno);
  file.regular = S_ISREG(info.st_mode);
  file.size = static_cast<std::uint64_t>(info.st_size);
  if (S_ISDIR(info.st_mode)) return Failure("open", path, EISDIR);
  const bool writing = (flags & O_ACCMODE) != O_RDONLY;
  return file.regular || (writing && S_ISCHR(info.st_mode)) ? IoResult{} : Failure("open", path, EINVAL);
}

// Gives the file a length; a device has none.
bool Cut(const File& file, std::uint64_t size) {
  return !file.regular || ftruncate(file.descriptor.Get(), static_cast<off_t>(size)) == 0;
}

bool PutFromStart(const File& file, std::string_view bytes) {
  // Room for what the file grows by is taken first: if there is none, the old content stays whole. Not every file
  // system can do that, and then the write itself tells.
  if (file.regular && bytes.size() > file.size &&
      fallocate(file.descriptor.Get(), FALLOC_FL_KEEP_SIZE, static_cast<off_t>(file.size),
                static_cast<off_t>(bytes.size() - file.size)) != 0 &&
      (errno == ENOSPC || errno == EDQUOT || errno == EFBIG)) {
    return false;
  }
  for (std::size_t done = 0; done < bytes.size();) {
    const auto part = pwrite(file.descriptor.Get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) return false;
    done += static_cast<std::size_t>(part);
  }
  return Cut(file, bytes.size());
}

IoResult Put(const std::string& path, int flags, std::string_view bytes) {
  File file;
  if (auto opened = Open(path, O_WRONLY | O_CREAT | flags, file); !opened) return opened;
  if (!PutFromStart(file, bytes)) {
    const int error = errno;
    if (file.size == 0) Cut(file, 0);
    return Failure("write", path, error);
  }
  const int closed = file.descriptor.Close();
  return closed == 0 ? IoResult{} : Failure("close", path, closed);
}

bool EndsWithLineEnd(const File& file) {
  char last = '\n';
  if (file.size > 0) static_cast<void>(pread(file.descriptor.Get(), &last, 1, static_cast<off_t>(file.size - 1)));
  return last == '\n';
}

// Takes a part of a line back. Another process may have written meanwhile: a line in front of the part stays, and one
// behind it keeps the part where it is.
void TakeBack(const File& file, std::size_t written) {
  const off_t end = lseek(file.descriptor.Get(), 0, SEEK_CUR);
  struct stat info {};
  if (!file.regular || end < 0 || fstat(file.descriptor.Get(), &info) != 0 || info.st_size != end) return;
  Cut(file, static_cast<std::uint64_t>(end) - written);
}

IoResult WriteAtEnd(File& file, const std::string& path, std::string_view bytes) {
  ssize_t written = 0;
  do {
    written = bytes.empty() ? 0 : write(file.descriptor.Get(), bytes.data(), bytes.size());
  } while (written < 0 && errno == EINTR);
  if (written < 0) return Failure("write", path, errno);
  if (static_cast<std::size_t>(written) < bytes.size()) {
    TakeBack(file, static_cast<std::size_t>(written));
    return Failure("write", path, ENOSPC);
  }
  const int closed = file.descriptor.Close();
  return closed == 0 ? IoResult{} : Failure("close", path, closed);
}

IoResult ReadAll(const File& file, const std::string& path, std::string& bytes) {
  std::size_t done = 0;
  bytes.resize(file.size + 1);  // one more, so that the end is seen by the same read
  while (true) {
    if (done == bytes.size()) bytes.resize(bytes.size() * 2);
    const auto part = read(file.descriptor.Get(), bytes.data() + done, bytes.size() - done);
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) {
      const int error = errno;
      bytes.clear();
      return Failure("read", path, error);
    }
    if (part == 0) break;
    done += static_cast<std::size_t>(part);
  }
  bytes.resize(done);
  return {};
}

}  // namespace

FileInfo PosixFileStore::Stat(const std::string& path) const {
  struct stat info {};
  FileInfo result;
  if (stat(SystemText(path).c_str(), &info) != 0) return result;
  if (S_ISREG(info.st_mode)) result.kind = FileInfo::Kind::kFile;
  if (S_ISDIR(info.st_mode)) result.kind = FileInfo::Kind::kFolder;
  if (result.kind == FileInfo::Kind::kMissing) return result;
  result.size = static_cast<std::uint64_t>(info.st_size);
  result.modified = std::int64_t{info.st_mtim.tv_sec} * 1'000'000'000 + info.st_mtim.tv_nsec;
  result.device = info.st_dev;
  result.identity = info.st_ino ^ (std::uint64_t{info.st_dev} << 48);
  return result;
}

IoResult PosixFileStore::Read(const std::string& path, std::string& bytes) const {
  return Guarded(path, [&] {
    bytes.clear();
    File file;
    const auto opened = Open(path, O_RDONLY, file);
    return opened ? ReadAll(file, path, bytes) : opened;
  });
}

IoResult PosixFileStore::Overwrite(const std::string& path, std::string_view bytes) {
  return Guarded(path, [&] { return Put(path, 0, bytes); });
}

IoResult PosixFileStore::Append(const std::string& path, std::string_view bytes, bool ownLine) {
  return Guarded(path, [&] {
    File file;
    const auto opened = Open(path, (ownLine ? O_RDWR : O_WRONLY) | O_APPEND | O_CREAT, file);
    if (!opened) return opened;
    if (!ownLine || EndsWithLineEnd(file)) return WriteAtEnd(file, path, bytes);
    return WriteAtEnd(file, path, std::string(kLineEnd).append(bytes));
  });
}

IoResult PosixFileStore::Rename(const std::string& from, const std::string& to) {
  return Guarded(from, [&] {
    return Result(rename(SystemText(from).c_str(), SystemText(to).c_str()) == 0, "rename " + from + " to", to);
  });
}

IoResult PosixFileStore::Remove(const std::string& path) {
  return Guarded(path,
                 [&] { return Result(unlink(SystemText(path).c_str()) == 0 || errno == ENOENT, "remove", path); });
}

IoResult PosixFileStore::Copy(const std::string& from, const std::string& to, bool overwrite) {
  return Guarded(from, [&] {
    std::string bytes;
    if (auto content = Read(from, bytes); !content) return content;
    auto copied = Put(to, O_EXCL, bytes);
    if (copied.error == EEXIST) return overwrite ? Put(to, 0, bytes) : copied;
    // An empty file in place of a copy would count as one.
    if (!copied) unlink(SystemText(to).c_str());
    return copied;
  });
}

IoResult PosixFileStore::MakeFolder(const std::string& path) {
  return Guarded(path, [&] { return Result(mkdir(SystemText(path).c_str(), 0700) == 0, "make folder", path); });
}

std::vector<std::string> PosixFileStore::List(const std::string& path) const {
  std::vector<std::string> names;
  const auto end = [](DIR* folder) { closedir(folder); };
  const std::unique_ptr<DIR, decltype(end)> folder(opendir(SystemText(path).c_str()), end);
  while (const dirent* entry = folder ? readdir(folder.get()) : nullptr) {
    const std::string name = FromUtf8(entry->d_name);
    if (name != "." && name != "..") names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool PosixFileStore::IsWritableFolder(const std::string& path) const {
  return Stat(path).IsFolder() && faccessat(AT_FDCWD, SystemText(path).c_str(), W_OK | X_OK, AT_EACCESS) == 0;
}

}  // namespace vorlix
