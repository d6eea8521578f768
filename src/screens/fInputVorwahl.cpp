#include "screens/fInputVorwahl.h"

#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

bool fInputVorwahl::CheckData(const std::string& myVWL, const std::string& myVWO) {
  return IsDigits(myVWL) && !myVWL.starts_with("00") && IsDigits(myVWO) && !myVWO.starts_with("0");
}

void fInputVorwahl::Open() {
  // Both sources may finish their start while the questions stand.
  if (open_ || !ports_.canAsk()) return;
  open_ = true;
  Trapped("fInputVorwahl.Open", [&] {
    if (!AskCodes()) return;
    if (ports_.settings.General.CallMode_CAPI) {
      PrefixActiveCheck_ = true;
      ports_.view.Ask(LoadLangKey("InputAreaCode_Info_CallYourself",
                                  "Rufen Sie jetzt von einem anderen Anschluss im Inland die eigene Nummer an. "
                                  "Danach, oder um das zu überspringen, die Eingabetaste"_ansi),
                      {});
    }
    Store();
  });
  PrefixActiveCheck_ = false;
  open_ = false;
}

bool fInputVorwahl::AskCodes() {
  auto& general = ports_.settings.General;
  ports_.view.Tell(
      LoadLangKey("InputAreaCode_Info_CheckChangeInput", "Bitte kontrollieren und ergänzen Sie die Angaben!"_ansi));
  while (true) {
    const auto state =
        ports_.view.Ask(LoadLangKey("FirstStart_Label_State", "Eigene Landesvorwahl ohne Nullen"_ansi), general.myVWL);
    if (!state || state->empty()) return false;
    const auto city =
        ports_.view.Ask(LoadLangKey("FirstStart_Label_City", "Eigene Ortsvorwahl ohne Null"_ansi), general.myVWO);
    if (!city || city->empty()) return false;
    if (CheckData(*state, *city)) {
      general.myVWL = *state;
      general.myVWO = *city;
      return true;
    }
    ports_.view.Tell(
        LoadLangKey("InputAreaCode_Info_CheckChangeInput", "Bitte kontrollieren und ergänzen Sie die Angaben!"_ansi));
  }
}

void fInputVorwahl::DataToPrefixCheck(const std::string& number, const std::string& infoPrefix,
                                      const std::string& zeros) {
  ports_.settings.General.myVWOP = infoPrefix + zeros;
  ports_.view.Tell(LoadLangKey("Display_Msg_ReceivedNumber", "Übermittelte Nummer"_ansi) + ": " + number + ", " +
                   LoadLangKey("Display_Msg_RecommendPrefix", "Empfohlener Prefix für Rufe aus dem Inland"_ansi) +
                   ": \"" + ports_.settings.General.myVWOP + "\"");
}

void fInputVorwahl::Store() {
  const auto& general = ports_.settings.General;
  ports_.reloadTables();
  const modAPI_INI::Batch once(ports_.ini);
  ports_.ini.SetSettStr("General", "myVWL", general.myVWL);
  ports_.ini.SetSettStr("General", "myVWO", general.myVWO);
  ports_.ini.SetSettStr("General", "myVWOP", general.myVWOP.empty() ? "-" : general.myVWOP);
}

}  // namespace vorlix
