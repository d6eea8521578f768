// The user's own backup of all data, and its restore.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "data/Folders.h"
#include "data/WriteBlocks.h"
#include "data/clsFiles.h"
#include "services/modAll_MsgBox.h"

namespace vorlix {

enum class BackupItem {
  kBook,
  kJournal,
  kBlacklist,
  kSettings,
  kExportSettings,
  kImportSettings,
  kRouterSettings,
  kTAPISettings,
  kMailTemplate,
  kSearchCounts,
  kHolidays,
  kSkin,
  kMailPassword,
};

// One entry of the restore list. The key tells its kind: "M" a backup folder, "B" a generation of the book, "J" one of
// the journal, each with a number.
struct BackupEntry {
  std::string key;
  std::string name;           // the folder's name, or that of the generation's file
  std::string comment;        // of a folder; empty where there is none
  std::int64_t modified = 0;  // of a generation; as FileInfo::modified
};

class Maintenance {
 public:
  struct Ports {
    clsFiles& files;
    const Folders& folders;
    const CivilClock& clock;
    modAll_MsgBox& messages;
    WriteBlocks& blocks;
  };

  // All ports must outlive the object.
  explicit Maintenance(Ports ports) : ports_(ports) {}

  // Copies the ticked items into a new folder below "\backup\" named by the moment, with the comment if there is one,
  // and shows the report. `holidayCountry` and `skin` name the files of those two. Gives the report, a line for each
  // file.
  std::string Maintenance_Backup(const std::set<BackupItem>& ticked, const std::string& comment,
                                 const std::string& holidayCountry, const std::string& skin);

  // The folders in "\backup\", then the generations of book and journal.
  std::vector<BackupEntry> Maintenance_LoadBackupDirs();

  // Copies the files of an entry back to their places; a comment never. What was restored is not written again in this
  // run. False when a file could not be copied.
  bool Maintenance_Restore(const BackupEntry& entry);

 private:
  struct Place {
    BackupItem item;
    std::string folder;  // where the file lies
    std::string file;
    std::string below;  // folder within the backup, with a final "/"; empty: the backup itself
  };
  std::vector<Place> Places(const std::string& holidayCountry, const std::string& skin) const;
  std::string Maintenance_FileCopyBackup(const std::string& sourceFolder, const std::string& file,
                                         const std::string& targetFolder);
  void AddGenerations(std::vector<BackupEntry>& entries, const char* kind, const std::string& file);
  bool RestoreFolder(const std::string& folder);
  bool RestoreFile(const std::string& source, const std::string& target);
  void Block(const std::string& file);

  Ports ports_;
};

}  // namespace vorlix
