// The start's checks of the settings file: can it be written, is it broken, which version wrote it.
#include <optional>

#include "data/modSettings.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {
namespace {

constexpr std::string_view kDeleteLabel = "LoadSetting_DeleteErrorFile";
constexpr int kPrefixNoteVersion = 222;

std::string Lines(std::initializer_list<std::string> lines) {
  return Join(std::vector<std::string>(lines), kLineEnd);
}

// The number of a version text: 300 for "v3.00"; nothing for one that is none.
std::optional<int> VersionNumber(const std::string& text) {
  const std::string digits = Replace(Replace(text, ".", ""), "v", "");
  return IsNumeric(digits) ? LeadingInteger(digits) : std::nullopt;
}

}  // namespace

std::string modSettings::WriteCheck() {
  const FileInfo info = ports_.files.Stat(ports_.folders.GetMainPath({}));
  wasEmpty_ = info.IsFile() && info.size == 0;
  const std::string written = std::to_string(ports_.clock.Now().AsNumber());
  ports_.ini.SetSettStr("FileCheck", "Check", written);
  return written;
}

bool modSettings::CheckConfigFile(const std::string& written, const std::string& read) {
  return Trapped("modSettings.CheckConfigFile", [&] {
    const std::string path = ports_.folders.GetMainPath({});
    if (!ports_.files.Stat(path).IsFile()) return true;
    if (written != read) {
      ErrorHandling().ErrorLogForceWrite("modSettings.CheckConfigFile", {}, 0,
                                         "Konfigurationsdatei nicht beschreibbar!"_ansi);
      return false;
    }
    if (wasEmpty_) {
      RemoveBrokenFile(path);
    } else if (settings_.General.BackupAtStartUp && settings_.General.BackupCount > 0 && ports_.backup) {
      ports_.backup(path);
    }
    return true;
  });
}

void modSettings::RemoveBrokenFile(const std::string& path) {
  const std::string advice =
      HasBackup(path)
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
