#include "screens/ErrorMessage.h"

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"
#include "services/version.h"

namespace vorlix {
namespace {

// The user's own threshold counts once; from then on ten errors are worth the question, each hour again.
constexpr int kCountAfterAsking = 10;

}  // namespace

void ErrorMessage::Check() {
  Trapped("fErrorMessage.Check", [&] {
    const std::string log = ports_.folders.GetMainPath(clsErrorHandling::kFileLogError);
    if (!ports_.settings.ErrorMessage.Show || !ports_.files.FileExist(log)) return;
    const int wanted = ports_.settings.General.ErrorCount;
    int lines = 0;
    if (!ports_.files.CheckFileMaxLines(log, wanted, lines)) return;
    if (!ports_.files.FileExist(ReportProgram())) return;
    const bool send = Ask(wanted - wanted % 10);
    ports_.store.SaveErrorMessageCount(kCountAfterAsking);
    if (send) SendReport();
  });
}

// A message box has no check box for "never again", so its text names the setting that is one.
bool ErrorMessage::Ask(int lines) {
  const std::string text =
      LoadLangKey("Multiline_WindowErrorMessages",
                  "Das Fehlerprotokoll hat mehr als ### Einträge.<CR>Soll es an die Entwickler gesendet werden?"_ansi);
  const std::string never = LoadLangKey("ErrorMessage_Option_NoMessage", "Diese Meldung nicht mehr anzeigen"_ansi) +
                            ": [ErrorMessage] Show=0, " + ports_.folders.GetMainPath({});
  const std::string title = "Vorlix - " + LoadLangKey("ErrorMessage_Title", "Fehlerbehandlung"_ansi);
  return ports_.messages.MsgBoxForward(Replace(text, "###", std::to_string(lines)) + std::string(kLineEnd) + never,
                                       kMsgYesNo + kMsgQuestion, title) == MsgBoxAnswer::kYes;
}

void ErrorMessage::SendReport() {
  std::string argument =
      "mode=1|user=|mail=|ver=" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "|hw=";
  if (const std::string driver = ports_.driver ? ports_.driver() : ""; !driver.empty()) {
    argument += "(CAPI:" + driver + ")";
  }
  const std::string program = ReportProgram();
  if (ports_.start(program, argument)) return;
  ports_.messages.MsgBoxForward(
      LoadLangKey("Settings_Msg_FileNotFound", "Datei nicht gefunden!"_ansi) + std::string(kLineEnd) + program,
      kMsgWarning);
}

std::string ErrorMessage::ReportProgram() const {
  return ports_.folders.ProgramFolder() + "/errorreport";
}

}  // namespace vorlix
