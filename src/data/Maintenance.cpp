#include "data/Maintenance.h"

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kBackupRoot = R"(\backup\)";
constexpr std::string_view kCommentFile = "_comment.txt";
constexpr std::string_view kBookFile = "Vorlixbook.txt";
constexpr std::string_view kJournalFile = "Vorlixjournal.txt";
constexpr std::string_view kSettingsFile = "Vorlix.ini";
constexpr int kMostGenerations = 8;

std::string FolderName(const DateTime& now) {
  return YearMonth(now.Year(), now.Month()) + Padded(now.Day(), 2) + "_" + Padded(now.Hour(), 2) +
         Padded(now.Minute(), 2) + Padded(now.Second(), 2);
}

}  // namespace

std::vector<Maintenance::Place> Maintenance::Places(const std::string& holidayCountry, const std::string& skin) const {
  const std::string book = ports_.folders.BookPath();
  const std::string data = ports_.folders.GetMainPath(R"(\data\)");
  return {
      {BackupItem::kBook, book, std::string(kBookFile), ""},
      {BackupItem::kJournal, book, std::string(kJournalFile), ""},
      {BackupItem::kBlacklist, data, "blacklist.dat", ""},
      {BackupItem::kSettings, data, std::string(kSettingsFile), ""},
      {BackupItem::kExportSettings, data, "sett_export.ini", ""},
      {BackupItem::kImportSettings, data, "sett_import.ini", ""},
      {BackupItem::kRouterSettings, data, "sett_socketavm.ini", ""},
      {BackupItem::kTAPISettings, data, "sett_TAPI.ini", ""},
      {BackupItem::kMailTemplate, data + "mail/", "mail_template.txt", "mail/"},
      {BackupItem::kSearchCounts, data + "search/", "inverscounts.ini", "search/"},
      {BackupItem::kHolidays, data + "holidays/", "holiday_" + holidayCountry + ".ini", "holidays/"},
      {BackupItem::kSkin, data + "designs/", "skin_" + skin + ".ini", ""},
      {BackupItem::kMailPassword, data, "mail.pwd", ""},
  };
}

std::string Maintenance::Maintenance_Backup(const std::set<BackupItem>& ticked, const std::string& comment,
                                            const std::string& holidayCountry, const std::string& skin) {
  return Trapped("fSettings.Maintenance_Backup", [&] {
    const std::string target = ports_.folders.GetMainPath(kBackupRoot) + FolderName(ports_.clock.Now()) + "/";
    std::string report;
    if (!MakeDirectory(ports_.files.Store(), target)) {
      report = LoadLangKey("Message_ErrorMakeDir", "Verzeichnis konnte nicht angelegt werden!"_ansi) +
               std::string(kLineEnd) + target;
      ports_.messages.MsgBoxForward(report, kMsgError, "Vorlix-Backup");
      return report;
    }
    for (const Place& place : Places(holidayCountry, skin)) {
      if (!ticked.contains(place.item)) continue;
      report += Maintenance_FileCopyBackup(place.folder, place.file, target + place.below) + std::string(kLineEnd);
    }
    if (!comment.empty()) ports_.files.MakeFile(target + std::string(kCommentFile), comment, false);
    ports_.messages.MsgBoxForward(report, kMsgInformation, "Vorlix-Backup");
    return report;
  });
}

// One line of the report.
std::string Maintenance::Maintenance_FileCopyBackup(const std::string& sourceFolder, const std::string& file,
                                                    const std::string& targetFolder) {
  MakeDirectory(ports_.files.Store(), targetFolder);
  const IoResult copied = ports_.files.Store().Copy(sourceFolder + file, targetFolder + file, true);
  return file + " - " + (copied ? std::string("OK") : copied.text);
}

std::vector<BackupEntry> Maintenance::Maintenance_LoadBackupDirs() {
  return Trapped("fSettings.Maintenance_LoadBackupDirs", [&] {
    std::vector<BackupEntry> entries;
    const std::string root = ports_.folders.GetMainPath(kBackupRoot);
    for (const std::string& name : ports_.files.Store().List(root)) {
      if (!ports_.files.Store().Stat(root + name).IsFolder()) continue;
      std::string comment;
      if (!ports_.files.Store().Read(root + name + "/" + std::string(kCommentFile), comment)) comment.clear();
      entries.push_back({"M" + std::to_string(entries.size() + 1), name, clsFiles::TrimCR(comment)});
    }
    AddGenerations(entries, "B", std::string(kBookFile));
    AddGenerations(entries, "J", std::string(kJournalFile));
    return entries;
  });
}

void Maintenance::AddGenerations(std::vector<BackupEntry>& entries, const char* kind, const std::string& file) {
  const std::string base = Replace(file, ".txt", "");
  for (int i = 0; i <= kMostGenerations; ++i) {
    const std::string name = base + (i == 0 ? ".bak" : ".b0" + std::to_string(i));
    const FileInfo info = ports_.files.Store().Stat(ports_.folders.BookPath() + name);
    if (info.IsFile()) entries.push_back({kind + std::to_string(i), name, {}, info.modified});
  }
}

bool Maintenance::Maintenance_Restore(const BackupEntry& entry) {
  return Trapped(
      "fSettings.Maintenance_Restore",
      [&] {
        if (entry.key.starts_with("M"))
          return RestoreFolder(ports_.folders.GetMainPath(kBackupRoot) + entry.name + "/");
        // A generation gets the name of its file again.
        const std::string file(entry.key.starts_with("B") ? kBookFile : kJournalFile);
        return RestoreFile(ports_.folders.BookPath() + entry.name, ports_.folders.BookPath() + file);
      },
      entry.key);
}

bool Maintenance::RestoreFolder(const std::string& folder) {
  const std::string data = ports_.folders.GetMainPath(R"(\data\)");
  bool good = true;
  for (const std::string& name : ports_.files.Store().List(folder)) {
    if (name == kCommentFile) continue;
    if (ports_.files.Store().Stat(folder + name).IsFolder()) {
      for (const std::string& inner : ports_.files.Store().List(folder + name)) {
        good = RestoreFile(folder + name + "/" + inner, data + name + "/" + inner) && good;
      }
      continue;
    }
    const bool inBookPath = name == kBookFile || name == kJournalFile;
    const bool skin = name.starts_with("skin_");
    const std::string target = inBookPath ? ports_.folders.BookPath() : skin ? data + "designs/" : data;
    good = RestoreFile(folder + name, target + name) && good;
  }
  return good;
}

bool Maintenance::RestoreFile(const std::string& source, const std::string& target) {
  const PathParts parts = fSplitPath(target);
  MakeDirectory(ports_.files.Store(), parts.path);
  if (!ports_.files.FileCopy(source, target, true)) return false;
  Block(parts.name + parts.extension);
  return true;
}

// What is older in memory must not overwrite what was restored.
void Maintenance::Block(const std::string& file) {
  if (file == kJournalFile) ports_.blocks.JournalWriteBlocked = true;
  if (file == kBookFile) ports_.blocks.BookWriteBlocked = true;
  if (file == kSettingsFile) ports_.blocks.SettingsWriteBlocked = true;
}

}  // namespace vorlix
