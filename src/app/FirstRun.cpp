#include "app/FirstRun.h"

#include "services/ansi.h"
#include "services/modLanguage.h"

namespace vorlix {

void FirstRun::Ask() {
  ports_.store.LoadSetting();
  const bool canAsk = ports_.screen.CanAsk();
  const auto answers = canAsk ? FirstStart(ports_.screen.FirstStart()).Run(Proposal()) : std::nullopt;
  if (ports_.state.ExitInProgress) return;
  if (answers) Take(*answers);
  Store();
  if (!answers) TellWhere();
}

// What somebody has written into the file beforehand is proposed; else a router, which most people have.
FirstStartForm FirstRun::Proposal() {
  const auto& general = ports_.settings.General;
  FirstStartForm form{.routerHost = ports_.settings.FritzBox.Host, .serverHost = ports_.settings.NCID.Host};
  const bool wantsDriver = general.CallMode_CAPI && !ports_.ini.GetSettStr("General", "CallMode_CAPI", {}).empty();
  if (general.CallMode_NCID) form.source = kSourceNCID;
  if (wantsDriver) form.source = kSourceCAPI;
  if (general.CallMode_AVM) form.source = kSourceAVM;
  if (!general.myVWL.empty()) form.myVWL = general.myVWL;
  form.myVWO = general.myVWO;
  return form;
}

void FirstRun::Take(const FirstStartAnswers& answers) {
  auto& general = ports_.settings.General;
  general.CallMode_CAPI = answers.CallMode_CAPI;
  general.CallMode_AVM = answers.CallMode_AVM;
  general.CallMode_NCID = answers.CallMode_NCID;
  if (answers.CallMode_AVM) {
    general.AVM_SaveOutgoingCalls = true;
    ports_.settings.FritzBox.Host = answers.Host;
  }
  if (answers.CallMode_NCID) ports_.settings.NCID.Host = answers.Host;
  general.myVWL = answers.myVWL;
  general.myVWO = answers.myVWO;
}

void FirstRun::Store() {
  ports_.store.SaveSettings_Config();
  ports_.store.SaveVersion();
  ports_.store.SaveSettings_AVM();
  ports_.store.SaveSettings_NCID();
}

// Who has left the questions off sits before the screen.
void FirstRun::TellWhere() {
  const std::string hint =
      LoadLangKey("FirstStart_Info_EditFile",
                  "Erster Start mit Vorgaben. Für eine FRITZ!Box CallMode_CAPI=0 und CallMode_AVM=1 setzen in"_ansi) +
      " " + ports_.folders.GetMainPath({});
  if (!ports_.screen.CanAsk()) return ports_.screen.Tell(hint);
  ports_.messages.MsgBoxNew(hint, kMsgInformation);
}

}  // namespace vorlix
