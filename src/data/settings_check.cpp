// The start's checks of the settings file: can it be written, is it broken or lost, which version wrote it.
#include <optional>
#include <utility>

#include "data/modSettings.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/ini_document.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kDeleteLabel = "LoadSetting_DeleteErrorFile";
constexpr int kPrefixNoteVersion = 222;

std::string Lines(std::initializer_list<std::string> lines) {
  return Join(std::vector<std::string>(lines), kLineEnd);
}

std::string BackupAdvice() {
  return Lines({LoadLangKey("Message_BackupExists", "Eine Sicherung der Datei ist vorhanden!"_ansi),
                LoadLangKey("Message_RemoveFileExtByRename", "Entfernen Sie beim Umbenennen die Endung .bak!"_ansi)});
}

// The number of a version text: 300 for "v3.00"; nothing for one that is none.
std::optional<int> VersionNumber(const std::string& text) {
  const std::string digits = Replace(Replace(text, ".", ""), "v", "");
  return IsNumeric(digits) ? LeadingInteger(digits) : std::nullopt;
}

}  // namespace

// What cannot be read may hold one: it is not to be replaced.
bool modSettings::HoldsVersion(const std::string& path) const {
  std::string text;
  if (!ports_.files.Stat(path).IsFile()) return false;
  return !ports_.files.Read(path, text) || !IniDocument(text).Get("Vorlix-Version", "Version").value_or("").empty();
}

// Whether somebody has set anything in the file; the mark of the start's check is nobody's.
bool modSettings::HoldsSettings() const {
  std::string text;
  return ports_.files.Read(Path(), text) && IniDocument(text).HasEntriesBeside("FileCheck");
}

bool modSettings::KeepsBackup() const {
  return (isFresh_ || settings_.FileCheck.KeepBackup) && HoldsVersion(BackupPath());
}

bool modSettings::IsFirstStart() {
  return Trapped("modSettings.IsFirstStart", [&] {
    isFresh_ = !HoldsVersion(Path());
    if (!isFresh_) return false;
    const FileInfo info = ports_.files.Stat(Path());
    if (info.IsFile() && info.size == 0) return !HasBackup();
    if (HoldsSettings() || !HoldsVersion(BackupPath())) return true;
    restored_ = Restore();
    return false;
  });
}

modSettings::Restored modSettings::Restore() {
  Restored restored{.wasThere = ports_.files.Stat(Path()).IsFile(), .done = false, .putAside = {}};
  const std::string aside = FreeName(".defekt");
  IoResult result;
  if (restored.wasThere) result = ports_.files.Rename(Path(), aside);
  if (result && restored.wasThere) restored.putAside = aside;
  if (result) result = ports_.files.Copy(BackupPath(), Path(), false);
  if (!result) ErrorHandling().ErrorLogNew("modSettings.Restore", {}, result.error, result.text);
  restored.done = static_cast<bool>(result);
  // What was not replaced stands where it stood.
  if (!restored.done && !restored.putAside.empty() && ports_.files.Rename(aside, Path())) restored.putAside.clear();
  return restored;
}

// Beside the file, under a name that nothing else has.
std::string modSettings::FreeName(const std::string& ending) const {
  std::string name = Path() + ending;
  for (int number = 2; ports_.files.Stat(name) != FileInfo(); ++number) {
    name = Path() + ending + std::to_string(number);
  }
  return name;
}

std::string modSettings::WriteCheck() {
  const FileInfo info = ports_.files.Stat(Path());
  wasEmpty_ = info.IsFile() && info.size == 0;
  isFresh_ = !HoldsVersion(Path());
  const std::string written = std::to_string(ports_.clock.Now().AsNumber());
  ports_.ini.SetSettStr("FileCheck", "Check", written);
  return written;
}

bool modSettings::CheckConfigFile(const std::string& written, const std::string& read) {
  return Trapped("modSettings.CheckConfigFile", [&] {
    const std::optional<Restored> restored = std::exchange(restored_, std::nullopt);
    if (restored) TellRestored(*restored);
    if (!ports_.files.Stat(Path()).IsFile()) return true;
    if (written != read) {
      ErrorHandling().ErrorLogForceWrite("modSettings.CheckConfigFile", {}, 0,
                                         "Konfigurationsdatei nicht beschreibbar!"_ansi);
      return false;
    }
    if (wasEmpty_) {
      RemoveBrokenFile();
    } else if (!restored) {
      BackUp();
    }
    return true;
  });
}

void modSettings::BackUp() {
  if (!settings_.General.BackupAtStartUp || settings_.General.BackupCount < 1 || !ports_.backup) return;
  if (KeepsBackup() && !PutBackupAside()) return;
  isFresh_ = settings_.FileCheck.KeepBackup = false;
  ports_.ini.DeleteKey("FileCheck", "KeepBackup");
  ports_.backup(Path());
}

// The backup of lost settings outlives that of the new ones.
bool modSettings::PutBackupAside() {
  const std::string aside = FreeName(".frueher");
  const IoResult moved = ports_.files.Rename(BackupPath(), aside);
  if (!moved) {
    ErrorHandling().ErrorLogNew("modSettings.PutBackupAside", {}, moved.error, moved.text);
    return false;
  }
  ports_.messages.MsgBoxNew(
      Lines(
          {LoadLangKey("Message_BackupMoved", "Die Sicherung der früheren Einstellungen liegt jetzt in:"_ansi), aside}),
      kMsgInformation);
  return true;
}

void modSettings::TellRestored(const Restored& restored) {
  std::vector<std::string> lines{
      restored.wasThere ? LoadLangKey("Message_ConfigFileFault", "Die Konfigurationsdatei ist fehlerhaft!"_ansi)
                        : LoadLangKey("Message_ConfigFileMissing", "Die Konfigurationsdatei fehlt!"_ansi),
      restored.done ? LoadLangKey("Message_ConfigFileRestored",
                                  "Die Einstellungen wurden aus der Sicherung wiederhergestellt!"_ansi)
                    : BackupAdvice()};
  if (!restored.putAside.empty()) {
    lines.push_back(LoadLangKey("Message_FaultFileMoved", "Die fehlerhafte Datei liegt jetzt in:"_ansi));
    lines.push_back(restored.putAside);
  }
  ports_.messages.MsgBoxNew(Join(lines, kLineEnd), kMsgWarning);
}

void modSettings::RemoveBrokenFile() {
  const std::string advice =
      HasBackup() ? BackupAdvice()
                  : LoadLangKey("Message_ReConfigTheProgram", "Bitte stellen Sie das Programm neu ein!"_ansi);
  const bool deleted = static_cast<bool>(ports_.files.Remove(Path()));
  const std::string text =
      deleted ? Lines({LoadLangKey("Message_ConfigFileFault", "Die Konfigurationsdatei ist fehlerhaft!"_ansi),
                       LoadLangKey("Message_FaultFileDelete", "Die fehlerhafte Datei wurde gelöscht!"_ansi),
                       LoadLangKey("Message_CreateNewFile", "Es wird eine neue Datei angelegt!"_ansi), advice})
              : Lines({LoadLangKey("Message_ConfigFileFault", "Die Konfigurationsdatei ist fehlerhaft!"_ansi),
                       LoadLangKey("Message_PleaseDeleteFile", "Bitte löschen Sie die Datei:"_ansi), Path()});
  ports_.messages.MsgBoxNew(text, kMsgWarning);
}

void modSettings::CheckVersion() {
  const std::string former = settings_.VorlixVersion.Version;
  if (former.empty()) return;
  const auto version = VersionNumber(former);
  if (!version) {
    ErrorHandling().ErrorLogForceWrite(kDeleteLabel, {former});
    return;
  }
  if (version < kPrefixNoteVersion) TellPrefixNote();
  if (version < VersionNumber(ProgramVersionText())) TellNewVersion(former);
}

void modSettings::TellPrefixNote() {
  ports_.messages.MsgBoxNew(
      Lines({LoadLangKey("ModuleSettings_Msg_ImportantInfo", "Wichtige Information!"_ansi), "",
             LoadLangKey("ModuleSettings_Msg_ImportantInfo1",
                         "Bitte überprüfen Sie in den Einstellungen die Angabe \"Prefix national\"!"_ansi),
             LoadLangKey("ModuleSettings_Msg_ImportantInfo2",
                         "Auf einigen Systemen ist hier eine zusätzliche Null erforderlich!"_ansi),
             LoadLangKey("ModuleSettings_Msg_ImportantInfo3",
                         "Verwenden Sie zur Überprüfung den Dialog \"Prefix aktiv ermitteln\"!"_ansi)}),
      kMsgInformation);
}

// The errors of the former version say nothing about this one: counting begins anew.
void modSettings::TellNewVersion(const std::string& former) {
  const std::string now = ProgramVersionText();
  ports_.messages.MsgBoxNew(Lines({LoadLangKey("ModuleSettings_Msg_IsNewVersion", "Vorlix wurde aktualisiert!"_ansi),
                                   "", former + " --> " + now}),
                            kMsgInformation);
  SaveErrorMessageShow(true);
  const IoResult removed = ports_.files.Remove(ports_.folders.GetMainPath(clsErrorHandling::kFileLogError));
  if (!removed) ErrorHandling().ErrorLogNew(kDeleteLabel, {}, removed.error, removed.text);
}

}  // namespace vorlix
