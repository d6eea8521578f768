#include "screens/fInputVorwahl.h"

#include "screens/FirstStart.h"
#include "services/ansi.h"
#include "services/clsErrorHandling.h"
#include "services/modLanguage.h"
#include "services/text.h"

namespace vorlix {

bool fInputVorwahl::CheckData(const std::string& myVWL, const std::string& myVWO) {
  return FirstStart::IsCode(myVWL) && FirstStart::IsCode(myVWO);
}

void fInputVorwahl::Open() {
  // Both sources may finish their start while the questions stand.
  if (open_ || !ports_.canAsk()) return;
  open_ = true;
  const auto& general = ports_.settings.General;
  AskCodes({FirstStart::WrongNote(), {general.myVWL, general.myVWO}});
}

// A view that fails must not keep the questions from being asked at the next start of a source.
void fInputVorwahl::AskCodes(const AreaCodePage& page) {
  const bool asked = Trapped("fInputVorwahl.Open", [&] {
    ports_.view.AskCodes(page, [this](const auto& codes) { TakeCodes(codes); });
    return true;
  });
  if (!asked) Close();
}

void fInputVorwahl::TakeCodes(const std::optional<AreaCodes>& codes) {
  if (!codes) return Close();
  auto& general = ports_.settings.General;
  if (!CheckData(codes->myVWL, codes->myVWO)) {
    return AskCodes(
        {FirstStart::WrongNote(), *codes, !FirstStart::IsCode(codes->myVWL), !FirstStart::IsCode(codes->myVWO)});
  }
  general.myVWL = codes->myVWL;
  general.myVWO = codes->myVWO;
  if (general.CallMode_CAPI) return AskTestCall();
  Finish();
}

void fInputVorwahl::AskTestCall() {
  PrefixActiveCheck_ = true;
  const bool asked = Trapped("fInputVorwahl.AskTestCall", [&] {
    ports_.view.AskTestCall(
        LoadLangKey("InputAreaCode_Info_CallYourself",
                    "Rufen Sie jetzt von einem anderen Anschluss im Inland die eigene Nummer an."_ansi),
        [this] { Finish(); });
    return true;
  });
  if (!asked) Close();
}

void fInputVorwahl::DataToPrefixCheck(const std::string& number, const std::string& infoPrefix,
                                      const std::string& zeros) {
  ports_.settings.General.myVWOP = infoPrefix + zeros;
  ports_.view.ShowTestCall(
      LoadLangKey("Display_Msg_ReceivedNumber", "Übermittelte Nummer"_ansi) + ": " + number + ", " +
      LoadLangKey("Display_Msg_RecommendPrefix", "Empfohlener Prefix für Rufe aus dem Inland"_ansi) + ": \"" +
      ports_.settings.General.myVWOP + "\"");
}

void fInputVorwahl::Finish() {
  Trapped("fInputVorwahl.Finish", [&] { Store(); });
  Close();
}

void fInputVorwahl::Store() {
  const auto& general = ports_.settings.General;
  ports_.reloadTables();
  ports_.store.SaveOwnPrefix(general.myVWL, general.myVWO, general.myVWOP);
}

void fInputVorwahl::Close() {
  PrefixActiveCheck_ = false;
  open_ = false;
  ports_.view.Close();
}

// An empty answer leaves off.
void AreaCodeQuestions::AskCodes(const AreaCodePage& page,
                                 std::function<void(const std::optional<AreaCodes>&)> answered) {
  view_.Tell(page.note);
  const auto myVWL = view_.Ask(FirstStart::Label({}, FirstStartField::kState), page.codes.myVWL);
  if (!myVWL || myVWL->empty()) return answered(std::nullopt);
  const auto myVWO = view_.Ask(FirstStart::Label({}, FirstStartField::kCity), page.codes.myVWO);
  if (!myVWO || myVWO->empty()) return answered(std::nullopt);
  answered(AreaCodes{*myVWL, *myVWO});
}

void AreaCodeQuestions::AskTestCall(const std::string& text, std::function<void()> finished) {
  view_.Ask(
      text + " " +
          LoadLangKey("InputAreaCode_Info_PressEnter", "Danach, oder um das zu überspringen, die Eingabetaste"_ansi),
      {});
  finished();
}

}  // namespace vorlix
