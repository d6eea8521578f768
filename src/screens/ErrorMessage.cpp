#include "screens/ErrorMessage.h"

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"
#include "services/version.h"

namespace vorlix {
namespace {

constexpr int kCountAfterAsking = 10;

}  // namespace

void ErrorMessage::Check() {
  Trapped("fErrorMessage.Check", [&] {
    const std::string log = ports_.folders.GetMainPath(clsErrorHandling::kFileLogError);
    if (!ports_.settings.ErrorMessage.Show || !ports_.files.FileExist(log)) return;
    const int wanted = ports_.settings.General.ErrorCount;
    int lines = 0;
    if (!ports_.files.CheckFileMaxLines(log, wanted, lines)) return;
    if (!ports_.files.FileExist(ports_.folders.ProgramFolder() + "/errorreport")) return;
    // Once asked, every ten further errors are worth the question.
    ports_.store.SaveErrorMessageCount(kCountAfterAsking);
    if (Ask(wanted - wanted % 10)) SendReport();
  });
}

bool ErrorMessage::Ask(int lines) {
  const std::string text =
      LoadLangKey("Multiline_WindowErrorMessages",
                  "Das Fehlerprotokoll hat mehr als ### Einträge.<CR>Soll es an die Entwickler gesendet werden?"_ansi);
  const std::string title = "Vorlix - " + LoadLangKey("ErrorMessage_Title", "Fehlerbehandlung"_ansi);
  return ports_.messages.MsgBoxForward(Replace(text, "###", std::to_string(lines)), kMsgYesNo + kMsgQuestion, title) ==
         MsgBoxAnswer::kYes;
}

void ErrorMessage::SendReport() {
  std::string argument =
      "mode=1|user=|mail=|ver=" + std::to_string(kVersionMajor) + "." + std::to_string(kVersionMinor) + "|hw=";
  if (const std::string driver = ports_.driver ? ports_.driver() : ""; !driver.empty()) {
    argument += "(CAPI:" + driver + ")";
  }
  ports_.start(ports_.folders.ProgramFolder() + "/errorreport", argument);
}

}  // namespace vorlix
