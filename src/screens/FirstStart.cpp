#include "screens/FirstStart.h"

#include "services/ansi.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

std::optional<FirstStartAnswers> FirstStart::Run(const std::string& routerHost, const std::string& serverHost) {
  FirstStartAnswers answers;
  view_.Tell(LoadLangKey("FirstStart_Info_Welcome", "Willkommen bei Vorlix! Einige Fragen zum ersten Start:"_ansi));
  if (!AskSource(answers) || !AskHost(answers, routerHost, serverHost)) return std::nullopt;
  if (!AskCode(LoadLangKey("FirstStart_Label_State", "Eigene Landesvorwahl ohne Nullen"_ansi), "49", answers.myVWL) ||
      !AskCode(LoadLangKey("FirstStart_Label_City", "Eigene Ortsvorwahl ohne Null"_ansi), "", answers.myVWO)) {
    return std::nullopt;
  }
  return answers;
}

bool FirstStart::AskSource(FirstStartAnswers& answers) {
  const std::string question = LoadLangKey("FirstStart_Label_Source",
                                           "Woher kommen die Anrufe?<CR>  1  FRITZ!Box (Anrufmonitor)<CR>"
                                           "  2  NCID-Server<CR>  3  CAPI 2.0<CR>Auswahl"_ansi);
  while (const auto answer = view_.Ask(Replace(question, kLineEnd, "\n"), "1")) {
    answers.CallMode_AVM = *answer == "1";
    answers.CallMode_NCID = *answer == "2";
    answers.CallMode_CAPI = *answer == "3";
    if (answers.CallMode_AVM || answers.CallMode_NCID || answers.CallMode_CAPI) return true;
  }
  return false;
}

bool FirstStart::AskHost(FirstStartAnswers& answers, const std::string& routerHost, const std::string& serverHost) {
  if (answers.CallMode_CAPI) return true;
  const std::string question = answers.CallMode_AVM
                                   ? LoadLangKey("FirstStart_Label_Router", "Name oder Adresse der FRITZ!Box"_ansi)
                                   : LoadLangKey("FirstStart_Label_Server", "Name oder Adresse des NCID-Servers"_ansi);
  const auto host = view_.Ask(question, answers.CallMode_AVM ? routerHost : serverHost);
  if (host) answers.Host = *host;
  return host.has_value();
}

bool FirstStart::AskCode(const std::string& question, const std::string& fallback, std::string& code) {
  while (const auto answer = view_.Ask(question, fallback)) {
    if (IsDigits(*answer) && answer->front() != '0') {
      code = *answer;
      return true;
    }
    view_.Tell(
        LoadLangKey("InputAreaCode_Info_CheckChangeInput", "Bitte kontrollieren und ergänzen Sie die Angaben!"_ansi));
  }
  return false;
}

}  // namespace vorlix
