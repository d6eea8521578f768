#include "data/JournalAuslagern.h"

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

#include "data/journal_line.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/modTimePeriods.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kArchiveFolder = R"(\archiv\)";
constexpr const char* kRoutine = "modJournal.JournalAuslagern";
constexpr int kMostArchives = 499;  // of one period
constexpr std::size_t kFewestLinesKept = 25;
constexpr std::size_t kMonthDigits = 6;

// A box lets the message loop run, and with it another archiving: each takes back what it set and no more.
class FlagHeld {
 public:
  explicit FlagHeld(bool& flag) : flag_(flag), before_(std::exchange(flag, true)) {}
  ~FlagHeld() { flag_ = before_; }
  FlagHeld(const FlagHeld&) = delete;
  FlagHeld& operator=(const FlagHeld&) = delete;

 private:
  bool& flag_;
  bool before_;
};

std::string Lines(const std::string& first, const std::string& second) {
  return first + std::string(kLineEnd) + second;
}

std::string ErrorSave() {
  return LoadLangKey("Journal_Msg_ErrorSave", "Sicherung fehlgeschlagen!"_ansi);
}

// The month of a line as "yyyymm", read as it stands: what is no date may still sort.
std::string MonthOf(std::string_view line) {
  const std::string_view date = line.substr(0, line.find('\t'));
  const std::vector<std::string> parts = Split(date, ".");
  if (parts.size() >= 3) return parts[2] + parts[1];
  const DateTime day = CDateNew(date, {});
  return day ? YearMonth(day.Year(), day.Month()) : std::string();
}

// The lines of the period's month and all newer ones, at least 25, in the order of the file. A line without a date goes
// with the one behind it.
std::vector<std::string> LinesToKeep(std::string_view journal, const std::string& period) {
  const std::vector<std::string_view> lines = JournalLines(journal);
  std::vector<std::string> kept;
  std::string month;
  for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
    if (line->find('\t') == std::string_view::npos) continue;
    if (std::string own = MonthOf(*line); !own.empty()) month = std::move(own);
    if (period > month && kept.size() >= kFewestLinesKept) break;
    kept.emplace_back(*line);
  }
  std::reverse(kept.begin(), kept.end());
  return kept;
}

}  // namespace

bool JournalArchiver::JournalAuslagern(bool interactive, const std::string& period, bool byMaximum) {
  return Trapped(
      kRoutine,
      [&] {
        {
          const FlagHeld archiving(ports_.flags.JournalArchiving);
          if (ports_.flags.JournalLoading) return false;
          if (!Archive({interactive, period, interactive ? std::string() : Reason(byMaximum)})) return false;
        }
        if (ports_.reload) ports_.reload();
        return true;
      },
      interactive, period, byMaximum);
}

std::string JournalArchiver::Reason(bool byMaximum) const {
  const std::string gap = std::string(kLineEnd) + std::string(kLineEnd);
  if (byMaximum) {
    return LoadLangKey("Journal_Msg_JournalHas", "Die Journal-Datei hat"_ansi) + " " +
           std::to_string(modJournal::kMostLines) + " " +
           LoadLangKey("Journal_Msg_ItemsReached", "Einträge erreicht!"_ansi) + gap;
  }
  switch (ports_.settings.Journal.Backup) {
    case 1:
      return LoadLangKey("Journal_Msg_BackupMonth", "Monatliche Sicherung der Journal-Datei!"_ansi) + gap;
    case 2:
      return LoadLangKey("Journal_Msg_BackupQuart", "Quartals Sicherung der Journal-Datei!"_ansi) + gap;
    case 3:
      return LoadLangKey("Journal_Msg_BackupYear", "Jährliche Sicherung der Journal-Datei!"_ansi) + gap;
    default:
      return {};
  }
}

std::optional<std::string> JournalArchiver::FreeName(const std::string& period) const {
  const std::string base = ports_.folders.GetMainPath(std::string(kArchiveFolder) + period + ".txt.0");
  for (int n = 1; n <= kMostArchives; ++n) {
    std::string name = base + Padded(n, 2);
    if (ports_.files.Store().Stat(name).kind == FileInfo::Kind::kMissing) return name;
  }
  return std::nullopt;
}

bool JournalArchiver::Archive(const Run& run) {
  const std::string journal = JournalPathIn(ports_.folders);
  const auto archive = FreeName(run.period);
  if (!archive) {
    TellTooMany(run);
    return false;
  }
  if (!ports_.files.FileExist(journal)) {
    TellNoJournal(run);
    return false;
  }
  MakeDirectory(ports_.files.Store(), ports_.folders.GetMainPath(kArchiveFolder));
  const bool done =
      ports_.settings.Journal.AssumeLast ? KeepLast(run, journal, *archive) : MoveAll(run, journal, *archive);
  if (done) TellDone(run, *archive);
  return done;
}

bool JournalArchiver::MoveAll(const Run& run, const std::string& journal, const std::string& archive) {
  const IoResult moved = Move(journal, archive);
  if (moved) return true;
  ErrorHandling().ErrorLogNew(kRoutine, {archive}, moved.error, moved.text);
  TellFailure(run, ErrorSave(), LoadLangKey("Journal_Msg_ErrorFileRename", "Umbenennen fehlgeschlagen!"_ansi));
  return false;
}

// The folder of the journal may be another disk's than that of the archives.
IoResult JournalArchiver::Move(const std::string& journal, const std::string& archive) {
  IoResult moved = ports_.files.Store().Rename(journal, archive);
  if (moved.error != EXDEV) return moved;
  moved = Copy(journal, archive);
  if (!moved) return moved;
  moved = ports_.files.Store().Remove(journal);
  if (!moved) ports_.files.FileDelete(archive);
  return moved;
}

bool JournalArchiver::KeepLast(const Run& run, const std::string& journal, const std::string& archive) {
  std::string text;
  IoResult copied = ports_.files.Store().Read(journal, text);
  const std::vector<std::string> kept = LinesToKeep(text, run.period);
  if (copied) copied = Copy(journal, archive);
  if (!copied) {
    ErrorHandling().ErrorLogNew(kRoutine, {archive}, copied.error, copied.text);
    TellFailure(run, ErrorSave(), LoadLangKey("Message_Error_Copy", "Fehler beim Kopieren!"_ansi));
    return false;
  }
  if (ports_.files.WriteArrayToFile(journal, kept)) return true;
  // With the journal as it was, each further try would leave one more copy of it.
  std::string now;
  if (ports_.files.Store().Read(journal, now) && now == text) ports_.files.FileDelete(archive);
  TellFailure(run, ErrorSave(), LoadLangKey("Journal_Msg_ErrorMsg", "Fehlermeldung:"_ansi) + " WriteArrayToFile");
  return false;
}

// Half an archive is not left behind: the journal is still whole.
IoResult JournalArchiver::Copy(const std::string& journal, const std::string& archive) {
  IoResult copied = ports_.files.Store().Copy(journal, archive, true);
  if (!copied) ports_.files.FileDelete(archive);
  return copied;
}

void JournalArchiver::TellFailure(const Run& run, const std::string& what, const std::string& more) {
  const std::string first =
      run.interactive ? what : LoadLangKey("Journal_Msg_ErrorAutoSave", "Automatische Sicherung fehlgeschlagen!"_ansi);
  Show(run, Lines(first, more), kMsgError);
}

// Without anybody there the first line says what was tried, and the reason follows whole.
void JournalArchiver::TellTooMany(const Run& run) {
  const std::string reason = LoadLangKey("Journal_Msg_ToManyFiles", "Zu viele Journal-Sicherungsdateien!"_ansi);
  const std::string advice =
      LoadLangKey("Journal_Msg_DeleteOldFiles", "Bitte ältere Dateien löschen oder an anderer Stelle sichern!"_ansi);
  TellFailure(run, reason, run.interactive ? advice : Lines(reason, advice));
}

void JournalArchiver::TellNoJournal(const Run& run) {
  if (run.interactive) {
    Show(run,
         Lines(LoadLangKey("Journal_Msg_JournalNotFound", "Journal-Datei nicht gefunden!"_ansi),
               LoadLangKey("Journal_Msg_NewFileNext", "Datei wird beim nächsten Anruf neu angelegt!"_ansi)),
         kMsgInformation);
  } else if (!ports_.settings.Journal.ErrView) {
    Show(run,
         Lines(LoadLangKey("Journal_Msg_NoDataInJournal", "Es befinden keine Daten im Journal!"_ansi),
               LoadLangKey("Journal_Msg_NoBackupNeeded", "Eine Sicherung ist nicht notwendig!"_ansi)),
         kMsgInformation);
  }
}

// Who asked for it sees the list reloaded.
void JournalArchiver::TellDone(const Run& run, const std::string& archive) {
  if (run.interactive || ports_.settings.Journal.ErrView) return;
  Show(run, LoadLangKey("Journal_Msg_DataSaveTo", "Die Sicherung erfolgte in"_ansi) + " " + archive, kMsgInformation);
}

void JournalArchiver::Show(const Run& run, const std::string& text, int style) {
  if (run.interactive) {
    ports_.messages.MsgBoxModal(text, style);
  } else {
    ports_.messages.MsgBoxNew(run.reason + text, style);
  }
}

void JournalArchiver::ClearOldArchives() {
  Trapped("modJournal.ClearOldArchives", [&] {
    const DateTime now = ports_.clock.Now();
    const std::string limit = YearMonth(now.Year() - 1, now.Month());
    const std::string folder = ports_.folders.GetMainPath(kArchiveFolder);
    for (const std::string& name : ports_.files.Store().List(folder)) {
      const std::string month = name.substr(0, kMonthDigits);
      const bool old = month.size() == kMonthDigits && IsDigits(month) && month < limit;
      if (old && ports_.files.FileExist(folder + name)) ports_.files.FileDelete(folder + name);
    }
  });
}

}  // namespace vorlix
