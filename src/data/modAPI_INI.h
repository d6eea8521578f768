// Access to the settings files, one key at a time. Files keep their bytes but for the line of a key that is written.
// A file is read once and kept until another program changes it; several writes in a Batch cost one write of the file.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "data/Folders.h"
#include "data/WriteBlocks.h"
#include "platform/FileStore.h"
#include "services/ini_document.h"

namespace vorlix {

class modAPI_INI {
 public:
  // All must outlive the object.
  modAPI_INI(FileStore& files, const Folders& folders, const WriteBlocks& blocks)
      : files_(files), folders_(folders), blocks_(blocks) {}

  // While one lives, files are read at most once and written when the last one goes.
  class Batch {
   public:
    explicit Batch(modAPI_INI& ini) : ini_(ini) { ++ini_.batches_; }
    ~Batch() { ini_.EndBatch(); }
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

   private:
    modAPI_INI& ini_;
  };

  std::string GetMainPath(std::string_view file) const { return folders_.GetMainPath(file); }

  // At most 2047 characters. An empty value gives the default with `defaultIfEmpty`, one that is no number with
  // `numericOnly`. `file` is a logical name; empty means the main settings file.
  std::string GetSettStr(std::string_view section, std::string_view key, std::string_view fallback,
                         std::string_view file = {}, bool defaultIfEmpty = false, bool numericOnly = false);
  // The leading whole number of the value. With minimum and maximum both 0 no range applies.
  int GetSettLng(std::string_view section, std::string_view key, int fallback, int minimum = 0, int maximum = 0,
                 bool useDefaultOutside = false, std::string_view file = {});
  bool GetSettBool(std::string_view section, std::string_view key, bool fallback, std::string_view file = {});
  // At most 254 characters, as a number with four decimal places.
  double GetSettCur(std::string_view section, std::string_view key, double fallback, std::string_view file = {});

  // Writes one value; does nothing while SettingsWriteBlocked is set. A file that cannot be written gives no error
  // here: the check at the start finds it.
  void SetSettStr(std::string_view section, std::string_view key, std::string_view value, std::string_view file = {});

  // A comment below the head of a section of the main settings file, unless one stands there.
  void SetComment(std::string_view section, std::string_view text);

  // Not subject to that flag.
  void DeleteKey(std::string_view section, std::string_view key, std::string_view file = {});
  void DeleteSection(std::string_view section, std::string_view file = {});

  // A value below the minimum becomes the minimum, one above the maximum the maximum, unless that is 0, which means no
  // upper limit. With `useDefaultOutside` a value outside gives the default.
  static int Range(int minimum, int maximum, int value, bool useDefaultOutside, int fallback);

 private:
  struct File {
    FileInfo info;
    IniDocument document;
    bool readable = true;
    bool changed = false;
    bool fresh = false;  // checked within the current batch
  };

  File& Load(std::string_view file);
  void Changed(const std::string& path, File& file);
  void Write(const std::string& path, File& file);
  void EndBatch();

  FileStore& files_;
  const Folders& folders_;
  const WriteBlocks& blocks_;
  std::map<std::string, File> loaded_;
  int batches_ = 0;
};

}  // namespace vorlix
