// The start's checks of the settings file: can it be written, is it broken, which version wrote it.
#include "data/modSettings.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"
#include "services/version.h"

namespace vorlix {
namespace {

constexpr std::string_view kDeleteLabel = "LoadSetting_DeleteErrorFile";
constexpr int kPrefixNoteVersion = 222;

std::string Lines(std::initializer_list<std::string> lines) {
  return Join(std::vector<std::string>(lines), kLineEnd);
}

}  // namespace

std::string modSettings::WriteCheck() {
  const std::string written = std::to_string(ports_.clock.Now().AsNumber());
  ports_.ini.SetSettStr("FileCheck", "Check", written);
  return written;
}

bool modSettings::CheckConfigFile(const std::string& written, const std::string& read) {
  return Trapped("modSettings.CheckConfigFile", [&] {
    const std::string path = ports_.folders.GetMainPath({});
    const FileInfo info = ports_.files.Stat(path);
    if (!info.IsFile()) return true;
    if (written != read) {
      ErrorHandling().ErrorLogForceWrite("modSettings.CheckConfigFile", {}, 0,
                                         "Konfigurationsdatei nicht beschreibbar!"_ansi);
      return false;
    }
    if (info.size == 0) {
      RemoveBrokenFile(path);
      return true;
    }
    if (ports_.backup) ports_.backup(path);
    return true;
  });
}

void modSettings::RemoveBrokenFile(const std::string& path) {
  const bool hasBackup = ports_.files.Stat(path + ".bak").IsFile();
  const std::string advice =
      hasBackup
          ? Lines({LoadLangKey("Message_BackupExists", "Eine Sicherung der Datei ist vorhanden!"_ansi),
                   LoadLangKey("Message_RemoveFileExtByRename", "Entfernen Sie beim Umbenennen die Endung .bak!"_ansi)})
          : LoadLangKey("Message_ReConfigTheProgram", "Bitte stellen Sie das Programm neu ein!"_ansi);
  const bool deleted = static_cast<bool>(ports_.files.Remove(path));
  const std::string text =
      deleted ? Lines({LoadLangKey("Message_ConfigFileFault", "Die Konfigurationsdatei ist fehlerhaft!"_ansi),
                       LoadLangKey("Message_FaultFileDelete", "Die fehlerhafte Datei wurde gelöscht!"_ansi),
                       LoadLangKey("Message_CreateNewFile", "Es wird eine neue Datei angelegt!"_ansi), advice})
              : Lines({LoadLangKey("Message_ConfigFileFault", "Die Konfigurationsdatei ist fehlerhaft!"_ansi),
                       LoadLangKey("Message_PleaseDeleteFile", "Bitte löschen Sie die Datei:"_ansi), path});
  ports_.messages.MsgBoxNew(text, kMsgWarning);
}

void modSettings::CheckVersion() {
  const std::string former = settings_.VorlixVersion.Version;
  if (former.empty()) return;
  const std::string digits = Replace(Replace(former, ".", ""), "v", "");
  if (!IsDigits(digits)) {
    ErrorHandling().ErrorLogForceWrite(kDeleteLabel, {former});
    return;
  }
  const int version = LeadingInteger(digits).value_or(0);
  const int current = kVersionMajor * 100 + kVersionMinor * 10 + kVersionRevision;
  if (version < kPrefixNoteVersion) TellPrefixNote();
  if (version < current) TellNewVersion(former);
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
