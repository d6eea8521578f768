// The files of this machine. Regular files and folders are what it knows; anything else counts as missing and is
// refused, so that a FIFO in the data folder cannot hang the program. Character devices may be written. New files are
// for this user only.
#pragma once

#include "platform/FileStore.h"

namespace vorlix {

class PosixFileStore : public FileStore {
 public:
  FileInfo Stat(const std::string& path) const override;
  IoResult Read(const std::string& path, std::string& bytes) const override;
  IoResult Overwrite(const std::string& path, std::string_view bytes) override;
  IoResult Append(const std::string& path, std::string_view bytes, bool ownLine = false) override;
  IoResult Rename(const std::string& from, const std::string& to) override;
  IoResult Remove(const std::string& path) override;
  IoResult Copy(const std::string& from, const std::string& to, bool overwrite) override;
  IoResult MakeFolder(const std::string& path) override;
  std::vector<std::string> List(const std::string& path) const override;
  bool IsWritableFolder(const std::string& path) const override;
};

}  // namespace vorlix
